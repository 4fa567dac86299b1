#include "oz/ozFog.h"

#include <GL/gl.h>

#include "node/visit.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"

OZ_DEFINE_INSTANCES(ozFog)
OZ_DEFINE_TYPE_AFTER(ozFog, "Fog", ozNode, ozContext) {
  static char const *const names[] = {"LINEAR_FOG", "EXP_FOG", "EXP2_FOG"};
  static int const values[] = {LINEAR_FOG, EXP_FOG, EXP2_FOG};
  ozSFUByte::addTypeField(type, "on", 2, 1, &ozFog::_on);
  ozSFEnum::addTypeField(type, "mode", 3, EXP_FOG, &ozFog::_mode);
  type->defineEnums(3, 3, names, values);
  ozSFFloat::addTypeField(type, "density", 4, 1.0f, &ozFog::_density);
  ozSFFloat::addTypeField(type, "start", 5, 0.0f, &ozFog::_start);
  ozSFFloat::addTypeField(type, "end", 6, 1.0f, &ozFog::_end);
  ozSFFloat::addTypeField(type, "index", 7, 1.0f, &ozFog::_index);
  ozSFVec4f::addTypeField(type, "color", 8, ozVec4f(0, 0, 0, 0), &ozFog::_color);
}

ozFog::ozFog(ozType *type) : ozNode(type), _defined(0) { initFieldDefaults(_ClassType); }
ozFog::~ozFog() { destroyFieldContents(_ClassType); }

void ozFog::fieldChanged(short id) {
  _glId.changed();
  ozNode::fieldChanged(id);
}

ozTravDirective ozFog::drawVisit(ozDrawAction *action) {
  return ozVisitFrame(this, action, [=] { return draw(action), TRAV_CONT; });
}

void ozFog::draw(ozDrawAction *action) {
  cleanFields();
  ozContext *const context = action->getContext();
  if (!context->syncFogState(this)) return;
  bool const dirty = _glId.isDirty(context);
  if (dirty || !_defined) define();
}

bool ozFog::sameAs(ozFog const *other) const {
  return _on == other->_on && _mode == other->_mode && _density == other->_density && _start == other->_start &&
         _end == other->_end && _index == other->_index && _color == other->_color;
}

void ozFog::pop(ozFog *other, ozContext *context) {
  bool const dirty = _glId.isDirty(context);
  if (dirty || !sameAs(other)) define();
}

void ozFog::define() {
  static int const modes[] = {GL_LINEAR, GL_EXP, GL_EXP2};
  _defined = 1;
  if (static_cast<unsigned int>(_mode) <= EXP2_FOG) glFogi(GL_FOG_MODE, modes[_mode]);
  glFogf(GL_FOG_DENSITY, _density);
  glFogf(GL_FOG_START, _start);
  glFogf(GL_FOG_END, _end);
  glFogf(GL_FOG_INDEX, _index);
  glFogfv(GL_FOG_COLOR, _color._v);
}
