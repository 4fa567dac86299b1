// Transparency and blending. GL_BLEND is no item of its own: it follows the pair of blend functions, each of which
// looks at the other. Nothing is sorted here, and depth writes are left alone.

#include <GL/gl.h>

#include "gfx/ozContextItem.h"

using ozGL::enable;
using ozGL::token;

namespace {

GLenum const SrcBlendFuncs[] = {GL_ZERO,
                                GL_ONE,
                                GL_DST_COLOR,
                                GL_ONE_MINUS_DST_COLOR,
                                GL_SRC_ALPHA_SATURATE,
                                GL_SRC_ALPHA,
                                GL_ONE_MINUS_SRC_ALPHA,
                                GL_DST_ALPHA,
                                GL_ONE_MINUS_DST_ALPHA};
GLenum const DstBlendFuncs[] = {GL_ZERO,      GL_ONE,
                                GL_SRC_COLOR, GL_ONE_MINUS_SRC_COLOR,
                                GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA,
                                GL_DST_ALPHA, GL_ONE_MINUS_DST_ALPHA};

bool isStipple(int mode) { return mode == ozContext::FAST_TRANSP || mode == ozContext::SCREEN_DOOR_TRANSP; }
bool isTranspMode(int mode) { return static_cast<unsigned int>(mode) <= ozContext::SCREEN_DOOR_TRANSP; }

} // namespace

void ozContext::setSrcBlendFunc(SrcBlendFuncEnum func) {
  if (setItem(SRC_BLEND_FUNC_ITEM, &_ozGfx::srcBlendFunc, func)) issueSrcBlendFunc();
}

void ozContext::setDstBlendFunc(DstBlendFuncEnum func) {
  if (setItem(DST_BLEND_FUNC_ITEM, &_ozGfx::dstBlendFunc, func)) issueDstBlendFunc();
}

// No mask learns of it, and changing both costs two calls of glBlendFunc: both as meant.
void ozContext::setBlendFuncs(SrcBlendFuncEnum src, DstBlendFuncEnum dst) {
  if (_whichSetState == _defaultState) {
    _defaultState->srcBlendFunc = src;
    _defaultState->dstBlendFunc = dst;
    _stateDirty = 1;
  }
  if (_curState->srcBlendFunc != src) {
    _curState->srcBlendFunc = src;
    issueSrcBlendFunc();
  }
  if (_curState->dstBlendFunc != dst) {
    _curState->dstBlendFunc = dst;
    issueDstBlendFunc();
  }
}

// Each looks for the neutral value of the partner only, so going back to ONE can leave GL_BLEND on. Meant.
void ozContext::issueSrcBlendFunc() {
  if (token(SrcBlendFuncs, _curState->srcBlendFunc) == ozGL::NO_TOKEN) return;
  if (_curState->dstBlendFunc == ZERO_DBLEND) enable(GL_BLEND, _curState->srcBlendFunc != ONE_SBLEND);
  issueBlendFunc();
}

void ozContext::issueDstBlendFunc() {
  if (token(DstBlendFuncs, _curState->dstBlendFunc) == ozGL::NO_TOKEN) return;
  if (_curState->srcBlendFunc == ONE_SBLEND) enable(GL_BLEND, _curState->dstBlendFunc != ZERO_DBLEND);
  issueBlendFunc();
}

void ozContext::issueBlendFunc() {
  GLenum const src = token(SrcBlendFuncs, _curState->srcBlendFunc);
  GLenum const dst = token(DstBlendFuncs, _curState->dstBlendFunc);
  if (src != ozGL::NO_TOKEN && dst != ozGL::NO_TOKEN) glBlendFunc(src, dst);
}

void ozContext::setTranspEnable(unsigned char on) {
  if (!setItem(TRANSP_ENABLE_ITEM, &_ozGfx::transpEnable, on)) return;
  TranspModeEnum const mode = _curState->transpMode;
  if (!isTranspMode(mode)) return;
  if (isStipple(mode)) {
    enable(GL_POLYGON_STIPPLE, on);
    if (on) setBlendFuncs(ONE_SBLEND, ZERO_DBLEND);
  } else if (on) {
    setBlendFuncs(SRC_ALPHA_SBLEND, ONE_MINUS_SRC_ALPHA_DBLEND);
  } else {
    setBlendFuncs(ONE_SBLEND, ZERO_DBLEND);
  }
}

void ozContext::setTranspMode(TranspModeEnum mode) {
  if (!setItem(TRANSP_MODE_ITEM, &_ozGfx::transpMode, mode)) return;
  if (!_curState->transpEnable || !isTranspMode(mode)) return;
  enable(GL_POLYGON_STIPPLE, isStipple(mode));
  if (isStipple(mode))
    setBlendFuncs(ONE_SBLEND, ZERO_DBLEND);
  else
    setBlendFuncs(SRC_ALPHA_SBLEND, ONE_MINUS_SRC_ALPHA_DBLEND);
}
