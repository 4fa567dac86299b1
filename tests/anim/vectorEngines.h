#ifndef TESTS_ANIM_VECTOR_ENGINES_H
#define TESTS_ANIM_VECTOR_ENGINES_H

#include <vector>

#include "oz/ozCoordSet.h"

/// Coordinates that count how often they are told of a change.
class Points : public ozCoordSet3f {
public:
  Points() : ozCoordSet3f(ozCoordSet3f::getClassType()) {}
  int changes = 0;

  std::vector<float> xs() {
    std::vector<float> result;
    for (unsigned int i = 0; i < point()->getCount(); ++i) result.push_back(point()->get(i)[0]);
    return result;
  }

protected:
  void fieldChanged(short id) override {
    ++changes;
    ozCoordSet3f::fieldChanged(id);
  }
};

typedef std::vector<float> Floats;

template <class Field, class T> void fill(Field *field, std::vector<T> const &values) {
  for (unsigned int i = 0; i < values.size(); ++i) field->set(i, values[i]);
}

/// Vectors whose three components are alike.
inline std::vector<ozVec3f> vecs(Floats const &xs) {
  std::vector<ozVec3f> result;
  for (float x : xs) result.push_back(ozVec3f(x, x, x));
  return result;
}

#endif
