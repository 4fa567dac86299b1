#include "oz/ozTexGen.h"

#include <GL/gl.h>

#include "oz/ozContext.h"

OZ_DEFINE_INSTANCES(ozTexGen)
OZ_DEFINE_TYPE_AFTER(ozTexGen, "TexGen", ozContainer, ozContext) {
  ozSFEnum::addTypeField(type, "modeS", 0, OFF, &ozTexGen::_modeS);
  ozSFEnum::addTypeField(type, "modeT", 1, OFF, &ozTexGen::_modeT);
  ozSFEnum::addTypeField(type, "modeR", 2, OFF, &ozTexGen::_modeR);
  ozSFEnum::addTypeField(type, "modeQ", 3, OFF, &ozTexGen::_modeQ);
  static char const *const names[] = {"OFF", "EYE_LINEAR", "EYE_LINEAR_IDENT", "OBJECT_LINEAR", "SPHERE_MAP"};
  static int const values[] = {OFF, EYE_LINEAR, EYE_LINEAR_IDENT, OBJECT_LINEAR, SPHERE_MAP};
  for (short id = 0; id < 4; ++id) type->defineEnums(id, 5, names, values);
  ozSFVec4f::addTypeField(type, "planeS", 4, ozVec4f(1, 0, 0, 0), &ozTexGen::_planeS);
  ozSFVec4f::addTypeField(type, "planeT", 5, ozVec4f(0, 1, 0, 0), &ozTexGen::_planeT);
  ozSFVec4f::addTypeField(type, "planeR", 6, ozVec4f(0, 0, 1, 0), &ozTexGen::_planeR);
  ozSFVec4f::addTypeField(type, "planeQ", 7, ozVec4f(0, 0, 0, 1), &ozTexGen::_planeQ);
}

ozTexGen::ozTexGen(ozType *type) : ozContainer(type) { initFieldDefaults(_ClassType); }

ozTexGen::~ozTexGen() {
  ozContext::forget(this);
  destroyFieldContents(_ClassType);
}

// The field is not touched: a connected field does not hear of it. Meant.
void ozTexGen::fieldChanged(short id) {
  if (_ClassType->isAncestorField(id)) return ozContainer::fieldChanged(id);
  _glId.changed();
}

void ozTexGen::draw(ozContext *context) {
  static GLenum const coordinates[] = {GL_S, GL_T, GL_R, GL_Q};
  static GLenum const enables[] = {GL_TEXTURE_GEN_S, GL_TEXTURE_GEN_T, GL_TEXTURE_GEN_R, GL_TEXTURE_GEN_Q};
  cleanFields();
  int const modes[] = {_modeS, _modeT, _modeR, _modeQ};
  ozVec4f const *const planes[] = {&_planeS, &_planeT, &_planeR, &_planeQ};

  // Every plane goes in as an object plane, that of EYE_LINEAR too. Meant.
  bool pushed = false;
  for (int i = 0; i < 4; ++i) {
    GLenum const coordinate = coordinates[i];
    switch (modes[i]) {
    case EYE_LINEAR:
      glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR);
      glTexGenfv(coordinate, GL_OBJECT_PLANE, planes[i]->_v);
      break;
    case EYE_LINEAR_IDENT:
      if (!pushed) {
        glMatrixMode(GL_MODELVIEW);
        glPushMatrix();
        glLoadIdentity();
        pushed = true;
      }
      glTexGenfv(coordinate, GL_OBJECT_PLANE, planes[i]->_v);
      glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
      break;
    case OBJECT_LINEAR:
      glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR);
      glTexGenfv(coordinate, GL_OBJECT_PLANE, planes[i]->_v);
      break;
    case SPHERE_MAP:
      glTexGeni(coordinate, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP);
      break;
    }
  }
  if (pushed) glPopMatrix();

  if (!context->getTexGenEnable()) return;
  for (int i = 0; i < 4; ++i) {
    if (modes[i])
      glEnable(enables[i]);
    else
      glDisable(enables[i]);
  }
}
