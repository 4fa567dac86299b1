#ifndef OZ_SPLINE_H
#define OZ_SPLINE_H

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// Turns a fraction and a table of keys into one weight a key: linear between the two keys around the fraction, 0 at
/// all others. Made for the weights of a morph engine. It computes only while "weight" is connected to something.
class OZ_API ozSpline : public ozEngine {
  OZ_CLASS(ozSpline);

public:
  ozSpline();

  ozMFFloat *key() { return _keyField; }
  float getFraction() { return read(4, _fraction); }
  void setFraction(float fraction) { store(4, _fraction, fraction); }
  /// Stored and read, not computed with.
  void getBasis(ozMatrix4f &basis) { basis = read(5, _basis); }
  void setBasis(ozMatrix4f const &basis) { store(5, _basis, basis); }
  /// The output: reading it evaluates the spline.
  ozMFFloat *weight() { return _weightField; }

  void eval() override;

private:
  ozFloatArray _key;
  float _fraction;
  ozMatrix4f _basis;
  ozFloatArray _weight;
  ozMFFloat *_keyField;
  ozMFFloat *_weightField;
};

#endif
