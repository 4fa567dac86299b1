#include "oz/ozMorphEng.h"

#include "anim/directOutput.h"

OZ_DEFINE_ABSTRACT_CLASS(ozMorphEng, "MorphEng", ozEngine) {
  ozMFInt::addTypeField(type, "count", 3, &ozMorphEng::_count);
  ozMFInt::addTypeField(type, "index", 4, &ozMorphEng::_index);
  ozMFFloat::addTypeField(type, "weight", 5, &ozMorphEng::_weight);
  static short const inputs[] = {3, 4, 5};
  type->setEngineIO(3, inputs, 0, nullptr);
}

#define OZ_DEFINE_MORPH_ENGINE(Class, Name, Field)                                                                     \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  Class::Class(ozType *type) : ozMorphEng(type) {                                                                      \
    initFieldDefaults(_ClassType);                                                                                     \
    output()->setDelivers(1);                                                                                          \
  }                                                                                                                    \
  Class::~Class() { destroyFieldContents(_ClassType); }                                                                \
  OZ_DEFINE_TYPE(Class, Name, ozMorphEng) {                                                                            \
    Field::addTypeField(type, "input", 6, &Class::_input);                                                             \
    Field::addTypeField(type, "output", 7, &Class::_output);                                                           \
    static short const inputs[] = {6}, outputs[] = {7};                                                                \
    type->setEngineIO(1, inputs, 1, outputs);                                                                          \
  }                                                                                                                    \
  void Class::eval() { morph<Field>(_input); }

OZ_DEFINE_MORPH_ENGINE(ozMorphEng3f, "MorphEng3f", ozMFVec3f)
OZ_DEFINE_MORPH_ENGINE(ozMorphEng4f, "MorphEng4f", ozMFVec4f)

void ozMorphEng::cleanFieldInputs(ozField *f) {
  ozField *const output = getField(7);
  if (f->getParent() == this || isStale())
    ozEngine::cleanFieldInputs(f);
  else if (!isEvaluating() && !ozServeLate<ozMFVec3f>(output, f) && !ozServeLate<ozMFVec4f>(output, f))
    evalWrapper();
}

namespace {

// What one set does to one element. A weight of 1 costs no multiplication, and the first set no addition.
template <class Value> void blendElement(Value &result, Value const &input, float weight, bool first) {
  Value scaled = input;
  if (weight != 1.0f) scaled *= weight;
  if (first)
    result = scaled;
  else
    result += scaled;
}

} // namespace

template <class Field, class Array> void ozMorphEng::morph(Array const &input) {
  ozInputSets const sets(_count, _weight.getCount(), input.getCount());
  if (!sets.any()) return;
  ozDeliver<Field>(getField(7), sets.length(), [&](ozTargetView<Field> const &result) {
    ozArrayCursor in(input.getCount()), at(_index.getCount());
    bool first = true;
    for (unsigned int s = 0; s < sets.count(); ++s) {
      float const weight = _weight[s];
      int const n = sets[s];
      unsigned int const length = static_cast<unsigned int>(n < 0 ? -n : n);
      if (weight != 0.0f && n < 0) {
        if (first && length < sets.length()) result.clear(0);
        for (unsigned int k = 0; k < in.left(length) && k < at.left(length); ++k) {
          unsigned int const index = static_cast<unsigned int>(_index[at.at + k]);
          if (index < result.count) blendElement(result[index], input[in.at + k], weight, first);
        }
        first = false;
      } else if (weight != 0.0f && n > 0) {
        unsigned int j = 0;
        for (; j < in.left(length) && j < result.count; ++j) blendElement(result[j], input[in.at + j], weight, first);
        if (first) result.clear(j);
        first = false;
      }
      in.skip(length);
      if (n < 0) at.skip(length);
    }
  });
}
