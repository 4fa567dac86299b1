// The multi-valued fields: types, text forms, and their one instantiation.

#include "oz/ozMFByte.h"

#include "oz/ozOutput.h"

OZ_DEFINE_TYPE_POINTER(ozMField, "ozMField", ozField)

void ozMField::setCount(unsigned int n) {
  releaseFrom(n);
  _array->setCount(n);
  finish<ozMField>([n](ozMField *output) { output->setCount(n); });
}

void ozMField::releaseFrom(unsigned int) {}

void ozMField::setSize(unsigned int n) {
  _array->setSize(n);
  finish<ozMField>([n](ozMField *output) { output->setSize(n); });
}

template <class Field, class Array> void ozMFValueInfo<Field, Array>::write(ozOutput *out, ozContainer *container) {
  if (preWrite(out, container)) return;
  member(container).write(out);
  fputs("\n", out->getFile());
}

#define OZ_DEFINE_MULTI_FIELD(Field, Array, Name)                                                                      \
  template class ozMFValueInfo<Field, Array>;                                                                          \
  template class ozMFValue<Field, Field##Info, Array>;                                                                 \
  OZ_DEFINE_TYPE_POINTER(Field, Name, ozMField)

OZ_DEFINE_MULTI_FIELD(ozMFByte, ozByteArray, "ozByte")
OZ_DEFINE_MULTI_FIELD(ozMFUByte, ozUByteArray, "ozUByte")
OZ_DEFINE_MULTI_FIELD(ozMFShort, ozShortArray, "ozShort")
OZ_DEFINE_MULTI_FIELD(ozMFInt, ozIntArray, "ozInt")
OZ_DEFINE_MULTI_FIELD(ozMFUInt, ozUIntArray, "ozUInt")
OZ_DEFINE_MULTI_FIELD(ozMFFloat, ozFloatArray, "ozFloat")
OZ_DEFINE_MULTI_FIELD(ozMFVec2f, ozVec2fArray, "ozVec2f")
OZ_DEFINE_MULTI_FIELD(ozMFVec3f, ozVec3fArray, "ozVec3f")
OZ_DEFINE_MULTI_FIELD(ozMFVec4f, ozVec4fArray, "ozVec4f")
OZ_DEFINE_MULTI_FIELD(ozMFVec2s, ozVec2sArray, "ozVec2s")
OZ_DEFINE_MULTI_FIELD(ozMFVec3s, ozVec3sArray, "ozVec3s")
OZ_DEFINE_MULTI_FIELD(ozMFVec2i, ozVec2iArray, "ozVec2i")
OZ_DEFINE_MULTI_FIELD(ozMFVec3i, ozVec3iArray, "ozVec3i")
OZ_DEFINE_MULTI_FIELD(ozMFVec3b, ozVec3bArray, "ozVec3b")
OZ_DEFINE_MULTI_FIELD(ozMFVec4ub, ozVec4ubArray, "ozVec4ub")
OZ_DEFINE_MULTI_FIELD(ozMFMatrix4f, ozMatrix4fArray, "ozMatrix4f")
OZ_DEFINE_MULTI_FIELD(ozMFRotation, ozRotationArray, "ozRotation")
OZ_DEFINE_MULTI_FIELD(ozMFString, ozStringArray, "ozString")
