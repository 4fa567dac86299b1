#include "oz/ozInterpolator.h"

OZ_DEFINE_TYPE(ozInterpolator, "Interpolator", ozEngine) {
  ozSFFloat::addTypeField(type, "fraction", 3, 0.0f, &ozInterpolator::_fraction);
  ozMFFloat::addTypeField(type, "key", 4, &ozInterpolator::_key);
  static short const inputs[] = {3, 4};
  type->setEngineIO(2, inputs, 0, nullptr);
}

ozInterpolator::ozInterpolator(ozType *type) : ozEngine(type), _keyField(static_cast<ozMFFloat *>(getField(4))) {
  initFieldDefaults(_ClassType);
}

ozInterpolator::~ozInterpolator() { destroyFieldContents(_ClassType); }

int ozInterpolator::getParam(float &t) {
  int const count = static_cast<int>(_key.getCount());
  float const *const key = _key.getArray();
  float const f = _fraction;
  t = 1.0f;
  if (key[0] >= f) return 0;
  if (f >= key[count - 1]) return count - 1;
  int i = 1;
  for (; i < count; ++i) {
    if (key[i] == f) return i;
    if (key[i] > f) break;
  }
  if (i == count) return count - 1; // NaN lies before no key
  t = (f - key[i - 1]) / (key[i] - key[i - 1]);
  return i;
}

// Each class's blend of two key values.
static float blend(float t, float a, float b) { return (1.0f - t) * a + t * b; }
static ozVec3f blend(float t, ozVec3f const &a, ozVec3f const &b) {
  ozVec3f v;
  v.combine(1.0f - t, a, t, b);
  return v;
}
static ozRotation blend(float t, ozRotation const &a, ozRotation const &b) {
  ozRotation r;
  r.slerp(t, a, b);
  return r;
}

// Sets a single value from the keys at which getParam() found the fraction.
template <class Array, class Field> static void evalSingle(int i, float t, Array const &keyValue, Field *value) {
  unsigned int const at = static_cast<unsigned int>(i);
  if (at >= keyValue.getCount()) return;
  if (t == 1.0f)
    value->set(keyValue[at]);
  else
    value->set(blend(t, keyValue[at - 1], keyValue[at]));
}

// Sets a list; `finish` ends each blended element.
template <class Finish>
static void evalList(int i, float t, unsigned int keys, ozVec3fArray const &keyValue, ozMFVec3f *value, Finish finish) {
  unsigned int const length = keyValue.getCount() / keys, at = static_cast<unsigned int>(i) * length;
  if (t == 1.0f) {
    value->setRange(0, length, keyValue.getArray() + at);
    return;
  }
  for (unsigned int j = 0; j < length; ++j) {
    ozVec3f v = blend(t, keyValue[at - length + j], keyValue[at + j]);
    finish(v);
    value->set(j, v);
  }
}

#define OZ_DEFINE_INTERPOLATOR(Class, Name)                                                                            \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  Class::Class(ozType *type) : ozKeyedInterpolator(type) { initFieldDefaults(_ClassType); }                            \
  Class::~Class() { destroyFieldContents(_ClassType); }                                                                \
  OZ_DEFINE_TYPE(Class, Name, ozInterpolator)

static void setIO(ozType *type) {
  static short const inputs[] = {5}, outputs[] = {6};
  type->setEngineIO(1, inputs, 1, outputs);
}

OZ_DEFINE_INTERPOLATOR(ozScalarInterpolator, "ScalarInterpolator") {
  ozMFFloat::addTypeField(type, "keyValue", 5, &ozScalarInterpolator::_keyValue);
  ozSFFloat::addTypeField(type, "value", 6, 0.0f, &ozScalarInterpolator::_value);
  setIO(type);
}

OZ_DEFINE_INTERPOLATOR(ozPositionInterpolator, "PositionInterpolator") {
  ozMFVec3f::addTypeField(type, "keyValue", 5, &ozPositionInterpolator::_keyValue);
  ozSFVec3f::addTypeField(type, "value", 6, ozVec3f(0, 0, 0), &ozPositionInterpolator::_value);
  setIO(type);
}

OZ_DEFINE_INTERPOLATOR(ozColorInterpolator, "ColorInterpolator") {
  ozMFVec3f::addTypeField(type, "keyValue", 5, &ozColorInterpolator::_keyValue);
  ozSFVec3f::addTypeField(type, "value", 6, ozVec3f(0, 0, 0), &ozColorInterpolator::_value);
  setIO(type);
}

OZ_DEFINE_INTERPOLATOR(ozOrientationInterpolator, "OrientationInterpolator") {
  ozMFRotation::addTypeField(type, "keyValue", 5, &ozOrientationInterpolator::_keyValue);
  ozSFRotation::addTypeField(type, "value", 6, ozRotation(0, 0, 1, 0), &ozOrientationInterpolator::_value);
  setIO(type);
}

OZ_DEFINE_INTERPOLATOR(ozCoordinateInterpolator, "CoordinateInterpolator") {
  ozMFVec3f::addTypeField(type, "keyValue", 5, &ozCoordinateInterpolator::_keyValue);
  ozMFVec3f::addTypeField(type, "value", 6, &ozCoordinateInterpolator::_value);
  setIO(type);
}

OZ_DEFINE_INTERPOLATOR(ozNormalInterpolator, "NormalInterpolator") {
  ozMFVec3f::addTypeField(type, "keyValue", 5, &ozNormalInterpolator::_keyValue);
  ozMFVec3f::addTypeField(type, "value", 6, &ozNormalInterpolator::_value);
  setIO(type);
}

#define OZ_DEFINE_SINGLE_EVAL(Class)                                                                                   \
  void Class::eval() {                                                                                                 \
    if (!_key.getCount()) return;                                                                                      \
    float t;                                                                                                           \
    int const i = getParam(t);                                                                                         \
    evalSingle(i, t, _keyValue, _valueField);                                                                          \
  }

OZ_DEFINE_SINGLE_EVAL(ozScalarInterpolator)
OZ_DEFINE_SINGLE_EVAL(ozPositionInterpolator)
OZ_DEFINE_SINGLE_EVAL(ozColorInterpolator)
OZ_DEFINE_SINGLE_EVAL(ozOrientationInterpolator)

void ozCoordinateInterpolator::eval() {
  if (!_key.getCount()) return;
  float t;
  int const i = getParam(t);
  evalList(i, t, _key.getCount(), _keyValue, _valueField, [](ozVec3f &) {});
}

void ozNormalInterpolator::eval() {
  if (!_key.getCount()) return;
  float t;
  int const i = getParam(t);
  evalList(i, t, _key.getCount(), _keyValue, _valueField, [](ozVec3f &v) { v.normalize(); });
}
