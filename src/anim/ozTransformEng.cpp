#include "oz/ozTransformEng.h"

#include "anim/directOutput.h"

OZ_DEFINE_ABSTRACT_CLASS(ozTransformEng, "TransformEng", ozEngine) {
  static char const *const names[] = {"POINT", "VECTOR"};
  static int const values[] = {POINT, VECTOR};
  ozSFEnum::addTypeField(type, "transformType", 3, POINT, &ozTransformEng::_transformType);
  type->defineEnums(3, 2, names, values);
  ozMFInt::addTypeField(type, "count", 4, &ozTransformEng::_count);
  ozMFInt::addTypeField(type, "index", 5, &ozTransformEng::_index);
  ozMFMatrix4f::addTypeField(type, "matrix", 6, &ozTransformEng::_matrix);
  static short const inputs[] = {4, 5, 6};
  type->setEngineIO(3, inputs, 0, nullptr);
}

OZ_DEFINE_INSTANCES(ozTransformEng3f)

OZ_DEFINE_TYPE(ozTransformEng3f, "TransformEng3f", ozTransformEng) {
  ozMFVec3f::addTypeField(type, "input", 7, &ozTransformEng3f::_input);
  ozMFVec3f::addTypeField(type, "output", 8, &ozTransformEng3f::_output);
  static short const inputs[] = {7}, outputs[] = {8};
  type->setEngineIO(1, inputs, 1, outputs);
}

ozTransformEng3f::ozTransformEng3f(ozType *type) : ozTransformEng(type) {
  initFieldDefaults(_ClassType);
  output()->setDelivers(1);
}

ozTransformEng3f::~ozTransformEng3f() { destroyFieldContents(_ClassType); }

void ozTransformEng::cleanFieldInputs(ozField *f) {
  if (f->getParent() == this || isStale())
    ozEngine::cleanFieldInputs(f);
  else if (!isEvaluating() && !ozServeLate<ozMFVec3f>(getField(8), f))
    evalWrapper();
}

void ozTransformEng3f::eval() {
  ozInputSets const sets(_count, _matrix.getCount(), _input.getCount());
  if (!sets.any()) return;
  ozMatrix4f const identity;
  ozDeliver<ozMFVec3f>(getField(8), sets.length(), [&](ozTargetView<ozMFVec3f> const &result) {
    ozArrayCursor in(_input.getCount()), out(result.count), at(_index.getCount());
    for (unsigned int s = 0; s < sets.count(); ++s) {
      ozMatrix4f const &matrix = _matrix[s];
      bool const same = matrix == identity;
      auto const transform = [&](ozVec3f &to, ozVec3f const &from) {
        if (same)
          to = from;
        else if (_transformType == VECTOR)
          to.xformVec(from, matrix);
        else
          to.xformPt(from, matrix);
      };
      int const n = sets[s];
      unsigned int const length = static_cast<unsigned int>(n < 0 ? -n : n);
      if (n < 0) {
        // Read at the index too, from the start of the input and not from the set's place: meant.
        for (unsigned int k = 0; k < at.left(length); ++k) {
          unsigned int const index = static_cast<unsigned int>(_index[at.at + k]);
          if (index < result.count && index < _input.getCount()) transform(result[index], _input[index]);
        }
        at.skip(length);
      } else {
        for (unsigned int k = 0; k < in.left(length) && k < out.left(length); ++k)
          transform(result[out.at + k], _input[in.at + k]);
      }
      in.skip(length);
      out.skip(length);
    }
  });
}
