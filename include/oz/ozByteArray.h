#ifndef OZ_BYTE_ARRAY_H
#define OZ_BYTE_ARRAY_H

#include "oz/ozArray.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozRotation.h"
#include "oz/ozString.h"
#include "oz/ozVec2f.h"

/// @file
/// The value arrays: one class an element type, all with the operations of ozValueArray.

#define OZ_VALUE_ARRAY(Array, T)                                                                                       \
  class OZ_API Array : public ozValueArray<Array, T> {                                                                 \
  public:                                                                                                              \
    using ozValueArray::ozValueArray;                                                                                  \
  }

OZ_VALUE_ARRAY(ozByteArray, char);
OZ_VALUE_ARRAY(ozUByteArray, unsigned char);
OZ_VALUE_ARRAY(ozShortArray, short);
OZ_VALUE_ARRAY(ozIntArray, int);
OZ_VALUE_ARRAY(ozUIntArray, unsigned int);
OZ_VALUE_ARRAY(ozFloatArray, float);
OZ_VALUE_ARRAY(ozVec2fArray, ozVec2f);
OZ_VALUE_ARRAY(ozVec3fArray, ozVec3f);
OZ_VALUE_ARRAY(ozVec4fArray, ozVec4f);
OZ_VALUE_ARRAY(ozVec2sArray, ozVec2s);
OZ_VALUE_ARRAY(ozVec3sArray, ozVec3s);
OZ_VALUE_ARRAY(ozVec2iArray, ozVec2i);
OZ_VALUE_ARRAY(ozVec3iArray, ozVec3i);
OZ_VALUE_ARRAY(ozVec3bArray, ozVec3b);
OZ_VALUE_ARRAY(ozVec4ubArray, ozVec4ub);
OZ_VALUE_ARRAY(ozMatrix4fArray, ozMatrix4f);
OZ_VALUE_ARRAY(ozRotationArray, ozRotation);

#undef OZ_VALUE_ARRAY

/// Its destructor does not free the texts of its elements: whoever fills one ends in freeTexts().
class OZ_API ozStringArray : public ozValueArray<ozStringArray, ozString> {
public:
  using ozValueArray::ozValueArray;
  /// Makes every element a null string, those behind the count too: lowering the count frees nothing.
  void freeTexts() {
    if (getData()) return; // the data's own
    for (unsigned int i = 0; i < getSize(); ++i) getArray()[i].makeEmpty();
  }
};

#endif
