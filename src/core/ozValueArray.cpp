// The text form of the value arrays, and their one instantiation.

#include "core/writeList.h"
#include "oz/ozByteArray.h"
#include "oz/ozContainer.h"
#include "oz/ozField.h"
#include "oz/ozPtrArray.h"

// How one element is written; class types know their own form.
static void writeElement(ozOutput *out, char value) { fprintf(out->getFile(), "%d", value); }
static void writeElement(ozOutput *out, unsigned char value) { fprintf(out->getFile(), "0x%x", value); }
static void writeElement(ozOutput *out, short value) { fprintf(out->getFile(), "%d", value); }
static void writeElement(ozOutput *out, int value) { fprintf(out->getFile(), "%d", value); }
static void writeElement(ozOutput *out, unsigned int value) { fprintf(out->getFile(), "%u", value); }
static void writeElement(ozOutput *out, float value) { fprintf(out->getFile(), "%f", static_cast<double>(value)); }
static void writeElement(ozOutput *out, void *value) {
  fprintf(out->getFile(), "0x%x", static_cast<unsigned int>(reinterpret_cast<size_t>(value)));
}
template <class T> static void writeElement(ozOutput *out, T const &value) { const_cast<T &>(value).write(out); }

template <class Array, class T> void ozValueArray<Array, T>::write(ozOutput *out) const {
  writeList(out, getCount(), [&](unsigned int i) { writeElement(out, list(i)); });
}

void ozFieldArray::write(ozOutput *out) const {
  writePointerList(out, *this, [out](ozField *field) { field->write(out); });
}

void ozRefArray::write(ozOutput *out) const {
  writePointerList(out, *this, [out](ozContainer *object) { static_cast<ozObject *>(object)->write(out); });
}

template class ozValueArray<ozPtrArray, void *>;
template class ozValueArray<ozByteArray, char>;
template class ozValueArray<ozUByteArray, unsigned char>;
template class ozValueArray<ozShortArray, short>;
template class ozValueArray<ozIntArray, int>;
template class ozValueArray<ozUIntArray, unsigned int>;
template class ozValueArray<ozFloatArray, float>;
template class ozValueArray<ozVec2fArray, ozVec2f>;
template class ozValueArray<ozVec3fArray, ozVec3f>;
template class ozValueArray<ozVec4fArray, ozVec4f>;
template class ozValueArray<ozVec2sArray, ozVec2s>;
template class ozValueArray<ozVec3sArray, ozVec3s>;
template class ozValueArray<ozVec2iArray, ozVec2i>;
template class ozValueArray<ozVec3iArray, ozVec3i>;
template class ozValueArray<ozVec3bArray, ozVec3b>;
template class ozValueArray<ozVec4ubArray, ozVec4ub>;
template class ozValueArray<ozMatrix4fArray, ozMatrix4f>;
template class ozValueArray<ozRotationArray, ozRotation>;
template class ozValueArray<ozStringArray, ozString>;
