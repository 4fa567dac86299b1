#include "oz/ozBlendEquation.h"

#include <GL/gl.h>
#include <GL/glext.h>
#include <string.h>

#include "node/glSupport.h"
#include "node/visit.h"
#include "oz/ozDrawAction.h"
#include "platform/ozDeviceRecord.h"

namespace {

char *extensions = nullptr;
void(APIENTRY *blendEquation)(GLenum mode) = nullptr;

// By BlendEqEnum. The last two values belong to the extension that brings the minimum and maximum by alpha.
GLenum const Equations[] = {GL_FUNC_ADD, GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT, GL_MIN, GL_MAX, 0x8320, 0x8321};

bool fetch(char const *name) {
  blendEquation = reinterpret_cast<void(APIENTRY *)(GLenum)>(ozGetProcAddress(name));
  return blendEquation != nullptr;
}

int detect() {
  char const *const version = ozGLVersion();
  if (!version) return 0;
  if (strncmp(version, "1.2", 3) == 0 && ozHasExtension(extensions, "GL_ARB_imaging")) {
    if (!fetch("glBlendEquation")) return 0;
    return ozHasExtension(extensions, "ZTKX_blend_alpha_minmax") ? 3 : 2;
  }
  return ozHasExtension(extensions, "GL_EXT_blend_minmax") && ozHasExtension(extensions, "GL_EXT_blend_subtract") &&
                 fetch("glBlendEquationEXT")
             ? 1
             : 0;
}

} // namespace

int ozBlendEquation::_supported = -1;

OZ_DEFINE_INSTANCES(ozBlendEquation)

OZ_DEFINE_TYPE(ozBlendEquation, "BlendEquation", ozGroup) {
  ozSFEnum::addTypeField(type, "eqMode", 3, ADD_BEQ, &ozBlendEquation::_eqMode);
}

ozBlendEquation::ozBlendEquation(ozType *type) : ozGroup(type) {
  if (_supported < 0) extensionDetect();
  initFieldDefaults(_ClassType);
}

ozBlendEquation::~ozBlendEquation() { destroyFieldContents(_ClassType); }

void ozBlendEquation::extensionDetect() { _supported = detect(); }

// What needs support level 3 is replaced elsewhere.
static int usable(int mode, int level) {
  return (mode == ozBlendEquation::ALPHA_MIN_BEQ || mode == ozBlendEquation::ALPHA_MAX_BEQ) && level < 3
             ? ozBlendEquation::ADD_BEQ
             : mode;
}

ozBlendEquation::BlendEqEnum ozBlendEquation::getEqMode() { return read(3, _eqMode); }
void ozBlendEquation::setEqMode(BlendEqEnum mode) {
  store(3, _eqMode, static_cast<BlendEqEnum>(usable(mode, _supported)));
}

ozTravDirective ozBlendEquation::drawVisit(ozDrawAction *action) {
  if (_supported == 0) return TRAV_PRUNE;
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    int const mode = usable(_eqMode, _supported);
    bool const known = mode >= 0 && mode < static_cast<int>(sizeof Equations / sizeof *Equations);
    GLint before = GL_FUNC_ADD;
    glGetIntegerv(GL_BLEND_EQUATION, &before);
    if (known) blendEquation(Equations[mode]);
    ozTravDirective const verdict = ozVisitChildren<&ozNode::drawVisit>(_children, action);
    blendEquation(static_cast<GLenum>(before));
    return verdict;
  });
}
