// The single-valued fields: types, text forms, and their one instantiation.

#include "oz/ozSFByte.h"

#include "oz/ozOutput.h"

static void writeValue(ozOutput *out, signed char value) { fprintf(out->getFile(), "%d", value); }
static void writeValue(ozOutput *out, unsigned char value) { fprintf(out->getFile(), "0x%x", value); }
static void writeValue(ozOutput *out, short value) { fprintf(out->getFile(), "%d", value); }
static void writeValue(ozOutput *out, int value) { fprintf(out->getFile(), "%d", value); }
static void writeValue(ozOutput *out, unsigned int value) { fprintf(out->getFile(), "0x%x", value); }
static void writeValue(ozOutput *out, float value) { fprintf(out->getFile(), "%f", static_cast<double>(value)); }
static void writeValue(ozOutput *out, double value) { fprintf(out->getFile(), "%lf", value); }
static void writeValue(ozOutput *out, ozTime const &value) { fprintf(out->getFile(), "%lf", value.get()); }
template <class T> static void writeValue(ozOutput *out, T const &value) { const_cast<T &>(value).write(out); }

template <class Field, class T> void ozSFValueInfo<Field, T>::write(ozOutput *out, ozContainer *container) {
  if (preWrite(out, container)) return;
  writeValue(out, static_cast<T const &>(member(container)));
  fputs("\n", out->getFile());
}

void ozSFEnumInfo::write(ozOutput *out, ozContainer *container) {
  if (preWrite(out, container)) return;
  ozPtrArray const &enums = getEnums();
  for (unsigned int i = 0; i < enums.getCount(); ++i) {
    EnumEntry const *const entry = static_cast<EnumEntry *>(enums[i]);
    if (entry->value == member(container)) {
      fprintf(out->getFile(), "%s\n", entry->name);
      return;
    }
  }
  // No name: the line stays open behind the field's name, which is meant.
}

#define OZ_DEFINE_SINGLE_FIELD(Field, T, Name)                                                                         \
  template class ozSFValueInfo<Field, T>;                                                                              \
  template class ozSFValue<Field, Field##Info, T>;                                                                     \
  OZ_DEFINE_TYPE_POINTER(Field, Name, ozField)

OZ_DEFINE_SINGLE_FIELD(ozSFByte, signed char, "ozByte")
OZ_DEFINE_SINGLE_FIELD(ozSFUByte, unsigned char, "ozUByte")
OZ_DEFINE_SINGLE_FIELD(ozSFShort, short, "ozShort")
OZ_DEFINE_SINGLE_FIELD(ozSFInt, int, "ozInt")
OZ_DEFINE_SINGLE_FIELD(ozSFUInt, unsigned int, "ozUInt")
OZ_DEFINE_SINGLE_FIELD(ozSFFloat, float, "ozFloat")
OZ_DEFINE_SINGLE_FIELD(ozSFDouble, double, "ozDouble")
OZ_DEFINE_SINGLE_FIELD(ozSFEnum, int, "ozEnum")
OZ_DEFINE_SINGLE_FIELD(ozSFTime, ozTime, "ozTime")
OZ_DEFINE_SINGLE_FIELD(ozSFBitMask, ozBitMask, "ozBitMask")
OZ_DEFINE_SINGLE_FIELD(ozSFName, ozName, "ozName")
OZ_DEFINE_SINGLE_FIELD(ozSFString, ozString, "ozString")
OZ_DEFINE_SINGLE_FIELD(ozSFVec2f, ozVec2f, "ozVec2f")
OZ_DEFINE_SINGLE_FIELD(ozSFVec3f, ozVec3f, "ozVec3f")
OZ_DEFINE_SINGLE_FIELD(ozSFVec4f, ozVec4f, "ozVec4f")
OZ_DEFINE_SINGLE_FIELD(ozSFVec2s, ozVec2s, "ozVec2s")
OZ_DEFINE_SINGLE_FIELD(ozSFVec3s, ozVec3s, "ozVec3s")
OZ_DEFINE_SINGLE_FIELD(ozSFVec2i, ozVec2i, "ozVec2i")
OZ_DEFINE_SINGLE_FIELD(ozSFVec3i, ozVec3i, "ozVec3i")
OZ_DEFINE_SINGLE_FIELD(ozSFVec3b, ozVec3b, "ozVec3b")
OZ_DEFINE_SINGLE_FIELD(ozSFVec4ub, ozVec4ub, "ozVec4ub")
OZ_DEFINE_SINGLE_FIELD(ozSFRotation, ozRotation, "ozRotation")
OZ_DEFINE_SINGLE_FIELD(ozSFMatrix4f, ozMatrix4f, "ozMatrix4f")
OZ_DEFINE_SINGLE_FIELD(ozSFSphereBound, ozSphereBound, "ozSphereBound")
OZ_DEFINE_SINGLE_FIELD(ozSFBoxBound, ozBoxBound, "ozBoxBound")
