// The text forms of the value classes: no line end, save for the lines of a matrix.
#include "oz/ozBitMask.h"
#include "oz/ozBound.h"
#include "oz/ozOutput.h"
#include "oz/ozRotation.h"

template <class V, class T, int... I> void ozVecBase<V, T, I...>::write(ozOutput *output) const {
  char const *format = std::is_floating_point<T>::value ? "%f" : std::is_unsigned<T>::value ? "0x%x" : "%d";
  FILE *file = output->getFile();
  for (int i = 0; i < SIZE; i++) {
    if (i > 0) fputc(' ', file);
    fprintf(file, format, _v[i]);
  }
}

template void ozVecBase<ozVec2f, float, 0, 1>::write(ozOutput *) const;
template void ozVecBase<ozVec3f, float, 0, 1, 2>::write(ozOutput *) const;
template void ozVecBase<ozVec4f, float, 0, 1, 2, 3>::write(ozOutput *) const;
template void ozVecBase<ozVec2i, int, 0, 1>::write(ozOutput *) const;
template void ozVecBase<ozVec3i, int, 0, 1, 2>::write(ozOutput *) const;
template void ozVecBase<ozVec2s, short, 0, 1>::write(ozOutput *) const;
template void ozVecBase<ozVec3s, short, 0, 1, 2>::write(ozOutput *) const;
template void ozVecBase<ozVec3b, char, 0, 1, 2>::write(ozOutput *) const;
template void ozVecBase<ozVec4ub, unsigned char, 0, 1, 2, 3>::write(ozOutput *) const;

void ozBitMask::write(ozOutput *output) const {
  // The low word is not padded, so the text may stand for several values. Meant.
  fprintf(output->getFile(), "0x%x%x", static_cast<unsigned>(static_cast<unsigned long long>(_bits) >> 32),
          static_cast<unsigned>(_bits));
}

void ozMatrix4f::write(ozOutput *output) const {
  for (float const(&row)[4] : _m) {
    output->indent();
    ozVec4f(row).write(output);
    fputc('\n', output->getFile());
  }
}

void ozRotation::write(ozOutput *output) const { ozVec4f(_axis[0], _axis[1], _axis[2], _angle).write(output); }

void ozBoxBound::write(ozOutput *output) const {
  min.write(output);
  fputc(' ', output->getFile());
  max.write(output);
}

void ozSphereBound::write(ozOutput *output) const { ozVec4f(center[0], center[1], center[2], radius).write(output); }
