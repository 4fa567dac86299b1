#ifndef OZ_INTERPOLATOR_H
#define OZ_INTERPOLATOR_H

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// Base of the engines that map a fraction to a value along a table of keys, as VRML's interpolator nodes do.
///
/// Keys ascend; each stands for one key value (or for one n-th of them, where the value is a list). Between two keys
/// the value is blended, outside it is that of the nearest end. Without keys nothing is computed.
class OZ_API ozInterpolator : public ozEngine {
  OZ_ABSTRACT_CLASS(ozInterpolator);

public:
  float getFraction() { return read(3, _fraction); }
  void setFraction(float fraction) { store(3, _fraction, fraction); }
  ozMFFloat *key() { return _keyField; }

  /// Finds the fraction's place among the keys, of which there must be one. With t = 1 it is exactly the key returned;
  /// otherwise it lies between the key before and the key returned, at t from 0 to 1. A NaN gives the last key.
  int getParam(float &t);

protected:
  ozFloatArray _key;

private:
  ozMFFloat *_keyField;
  float _fraction;
};

/// What the interpolator classes share. KeyField holds the key values, ValueField the result.
template <class KeyField, class KeyArray, class ValueField, class Value>
class ozKeyedInterpolator : public ozInterpolator {
public:
  KeyField *keyValue() { return _keyValueField; }
  /// The output: reading it evaluates the interpolator.
  ValueField *value() { return _valueField; }

protected:
  explicit ozKeyedInterpolator(ozType *type)
      : ozInterpolator(type), _keyValueField(static_cast<KeyField *>(getField(5))),
        _valueField(static_cast<ValueField *>(getField(6))) {}

  KeyArray _keyValue;
  Value _value;
  KeyField *_keyValueField;
  ValueField *_valueField;
};

#define OZ_INTERPOLATOR(Class, KeyField, KeyArray, ValueField, Value)                                                  \
  class OZ_API Class : public ozKeyedInterpolator<KeyField, KeyArray, ValueField, Value> {                             \
    OZ_CLASS(Class);                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    Class();                                                                                                           \
    void eval() override;                                                                                              \
  }

/// Interpolates numbers.
OZ_INTERPOLATOR(ozScalarInterpolator, ozMFFloat, ozFloatArray, ozSFFloat, float);
/// Interpolates points, along straight lines.
OZ_INTERPOLATOR(ozPositionInterpolator, ozMFVec3f, ozVec3fArray, ozSFVec3f, ozVec3f);
/// Interpolates colours, linearly in red, green and blue.
OZ_INTERPOLATOR(ozColorInterpolator, ozMFVec3f, ozVec3fArray, ozSFVec3f, ozVec3f);
/// Interpolates rotations with ozRotation::slerp.
OZ_INTERPOLATOR(ozOrientationInterpolator, ozMFRotation, ozRotationArray, ozSFRotation, ozRotation);
/// Interpolates lists of points: the key values hold one list after the other, all of the same length.
OZ_INTERPOLATOR(ozCoordinateInterpolator, ozMFVec3f, ozVec3fArray, ozMFVec3f, ozVec3fArray);
/// Interpolates lists of vectors and makes each blended one a unit vector.
OZ_INTERPOLATOR(ozNormalInterpolator, ozMFVec3f, ozVec3fArray, ozMFVec3f, ozVec3fArray);

#undef OZ_INTERPOLATOR

#endif
