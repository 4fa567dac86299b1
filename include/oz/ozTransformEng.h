#ifndef OZ_TRANSFORM_ENG_H
#define OZ_TRANSFORM_ENG_H

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// Base of the engines that run sets of vectors through a matrix each, with counts and indices as ozMorphEng has them.
/// An indexed set reads the input at its indices too. The result goes straight into the fields connected to "output".
class OZ_API ozTransformEng : public ozEngine {
  OZ_ABSTRACT_CLASS(ozTransformEng);

public:
  enum TransformTypeEnum : int {
    POINT = 0, ///< with the matrix's translation
    VECTOR = 1 ///< without
  };

  /// POINT by default. No input of the engine: a change alone computes nothing anew.
  TransformTypeEnum getTransformType() { return static_cast<TransformTypeEnum>(read(3, _transformType)); }
  void setTransformType(TransformTypeEnum type) { store(3, _transformType, type); }
  int getTransformTypeHack() { return getTransformType(); }
  void setTransformTypeHack(int type) { setTransformType(static_cast<TransformTypeEnum>(type)); }
  ozMFInt *count() { return static_cast<ozMFInt *>(getField(4)); }
  ozMFInt *index() { return static_cast<ozMFInt *>(getField(5)); }
  /// One matrix a set.
  ozMFMatrix4f *matrix() { return static_cast<ozMFMatrix4f *>(getField(6)); }

protected:
  void cleanFieldInputs(ozField *f) override;

  TransformTypeEnum _transformType;
  ozIntArray _count;
  ozIntArray _index;
  ozMatrix4fArray _matrix;
};

/// Transforms vectors of three floats.
class OZ_API ozTransformEng3f : public ozTransformEng {
  OZ_CLASS(ozTransformEng3f);

public:
  ozTransformEng3f();
  ozMFVec3f *input() { return static_cast<ozMFVec3f *>(getField(7)); }
  ozMFVec3f *output() { return static_cast<ozMFVec3f *>(getField(8)); }
  void eval() override;

private:
  ozVec3fArray _input;
  ozVec3fArray _output;
};

#endif
