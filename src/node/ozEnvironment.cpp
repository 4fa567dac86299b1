#include "oz/ozEnvironment.h"

#include "node/visit.h"
#include "oz/ozContext.h"
#include "oz/ozDrawAction.h"
#include "oz/ozFog.h"
#include "oz/ozLight.h"

OZ_DEFINE_INSTANCES(ozEnvironment)
OZ_DEFINE_TYPE(ozEnvironment, "Environment", ozGroup) {
  ozMFRef::addTypeField(type, "light", 3, ozLight::getClassType(), &ozEnvironment::_lights);
  ozSFRef::addTypeField(type, "fog", 4, ozFog::getClassType(), &ozEnvironment::_fog);
}

ozEnvironment::ozEnvironment(ozType *type) : ozGroup(type), _lights(1) {
  initFieldDefaults(_ClassType);
  _light = static_cast<ozMFRef *>(getField(3));
}
ozEnvironment::~ozEnvironment() { destroyFieldContents(_ClassType); }

void ozEnvironment::setFog(ozFog *fog) { storeRef(4, _fog, fog); }

ozTravDirective ozEnvironment::drawVisit(ozDrawAction *action) {
  cleanFields();
  return ozVisitFrame(this, action, [=] { return drawScope(action); });
}

ozTravDirective ozEnvironment::drawScope(ozDrawAction *action) {
  ozContext *const context = action->getContext();
  ozFog *const fog = _fog; // what is pushed is popped, whatever happens to the field on the way
  context->pushLights();
  if (fog) context->pushFog(fog);
  ozForEachIndex(_lights, [&](unsigned int i) {
    static_cast<ozLight *>(_lights[i])->draw(action);
    return true;
  });
  if (fog) fog->draw(action);
  ozTravDirective const verdict = ozVisitChildren<&ozNode::drawVisit>(_children, action);
  if (fog) context->popFog();
  context->popLights();
  return verdict;
}
