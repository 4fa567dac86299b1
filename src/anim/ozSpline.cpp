#include "oz/ozSpline.h"

#include <math.h>

#include "oz/ozConstants.h"

OZ_DEFINE_INSTANCES(ozSpline)

OZ_DEFINE_TYPE(ozSpline, "Spline", ozEngine) {
  ozMFFloat::addTypeField(type, "key", 3, &ozSpline::_key);
  ozSFFloat::addTypeField(type, "fraction", 4, 0.0f, &ozSpline::_fraction);
  ozSFMatrix4f::addTypeField(type, "basis", 5, ozMatrix4f(0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0),
                             &ozSpline::_basis);
  ozMFFloat::addTypeField(type, "weight", 6, &ozSpline::_weight);
  static short const inputs[] = {3, 4, 5}, outputs[] = {6};
  type->setEngineIO(3, inputs, 1, outputs);
}

ozSpline::ozSpline(ozType *type)
    : ozEngine(type), _keyField(static_cast<ozMFFloat *>(getField(3))),
      _weightField(static_cast<ozMFFloat *>(getField(6))) {
  initFieldDefaults(_ClassType);
}

ozSpline::~ozSpline() { destroyFieldContents(_ClassType); }

void ozSpline::eval() {
  unsigned int const count = _key.getCount();
  if (_weightField->getOutputEnds().isEmpty() || !count) return;
  unsigned int i = 0;
  for (; i < count && _key[i] <= _fraction; ++i) _weightField->set(i, 0.0f);
  if (i == count) return;
  if (i == 0) {
    _weightField->set(0, 0.0f);
  } else {
    float const distance = _key[i] - _key[i - 1];
    if (fabsf(distance) < OZ_TINY_EPSILON) {
      _weightField->set(i, 1.0f);
    } else {
      float const t = (_fraction - _key[i - 1]) / distance;
      _weightField->set(i - 1, 1.0f - t);
      _weightField->set(i, t);
    }
  }
  for (unsigned int next = i + 1; next < count; ++next) _weightField->set(next, 0.0f);
}
