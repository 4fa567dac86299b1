#ifndef OZ_MORPH_ENG_H
#define OZ_MORPH_ENG_H

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// Base of the engines that add up weighted sets of vectors, as for the shapes between which a mesh is blended.
///
/// "input" holds all sets, one after the other. A positive entry of "count" is the length of a set that gives every
/// element of the result in order; a negative one that of a set which gives only the elements that "index" names.
/// Without counts the input is parted evenly among the weights. The result goes straight into the fields connected to
/// "output", which itself stays as it is; without a connection nothing is computed. Indices outside the result are
/// passed over.
class OZ_API ozMorphEng : public ozEngine {
  OZ_ABSTRACT_CLASS(ozMorphEng);

public:
  ozMFInt *count() { return static_cast<ozMFInt *>(getField(3)); }
  ozMFInt *index() { return static_cast<ozMFInt *>(getField(4)); }
  ozMFFloat *weight() { return static_cast<ozMFFloat *>(getField(5)); }

protected:
  void cleanFieldInputs(ozField *f) override;
  /// Computes the result for one class of vectors.
  template <class Field, class Array> void morph(Array const &input);

  ozIntArray _count;
  ozIntArray _index;
  ozFloatArray _weight;
};

#define OZ_MORPH_ENGINE(Class, Field, Array)                                                                           \
  class OZ_API Class : public ozMorphEng {                                                                             \
    OZ_CLASS(Class);                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    Class();                                                                                                           \
    Field *input() { return static_cast<Field *>(getField(6)); }                                                       \
    Field *output() { return static_cast<Field *>(getField(7)); }                                                      \
    void eval() override;                                                                                              \
                                                                                                                       \
  private:                                                                                                             \
    Array _input;                                                                                                      \
    Array _output;                                                                                                     \
  }

/// Adds up vectors of three floats.
OZ_MORPH_ENGINE(ozMorphEng3f, ozMFVec3f, ozVec3fArray);
/// Adds up vectors of four floats.
OZ_MORPH_ENGINE(ozMorphEng4f, ozMFVec4f, ozVec4fArray);

#undef OZ_MORPH_ENGINE

#endif
