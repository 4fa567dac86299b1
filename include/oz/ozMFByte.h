#ifndef OZ_MF_BYTE_H
#define OZ_MF_BYTE_H

#include "oz/ozByteArray.h"
#include "oz/ozSFByte.h"

/// @file
/// The multi-valued fields of value types: one mechanism, and a table of the classes at the end.

/// Base of the fields that hold an array. The array is an ordinary member of the container.
///
/// Every edit ends alike: it is announced to the container, unless the event class is EVENT_FORWARD; then the same edit
/// is made on each output field of the same class, and nobody is told here.
class OZ_API ozMField : public ozField {
  OZ_TYPE_POINTER;

public:
  ozMField(ozContainer *parent, short id) : ozField(parent, id), _array(nullptr) {}

  unsigned int getCount() {
    validate();
    return _array->getCount();
  }
  unsigned int getSize() {
    validate();
    return _array->getSize();
  }
  short getOffset() const { return static_cast<short>(_array->getOffset()); }
  short getStride() const { return static_cast<short>(_array->getStride()); }
  /// A reference field releases what a count below the present one cuts off.
  void setCount(unsigned int n);
  void setSize(unsigned int n);
  void setExtension(unsigned int n) { _array->setExtension(n); }
  /// Ends an edit made through the raw array.
  void editDone() { fieldChanged(); }

protected:
  /// Ends an edit: announces it, or repeats it on the outputs.
  template <class Field, class Edit> void finish(Edit repeat) {
    if (getEventClass() != EVENT_FORWARD) {
      fieldChanged();
    } else {
      ozFieldEnds const &outputs = getOutputEnds();
      for (unsigned int i = 0; i < outputs.getCount(); ++i)
        if (outputs.get(i)->getType()->isDerivedFrom(Field::getClassType()))
          repeat(static_cast<Field *>(outputs.get(i)));
    }
  }

  /// Lets go of the elements that a count of n cuts off. Does nothing here.
  virtual void releaseFrom(unsigned int n);

  ozArray *_array;
};

/// The description of a multi-valued field; its default is the empty array.
template <class Field, class Array> class OZ_API ozMFValueInfo : public ozFieldInfo {
public:
  ozMFValueInfo(char const *name, short id, char ozContainer::*member) : ozFieldInfo(name, id, member) {
    setFieldType(Field::getClassType());
  }
  ozField *instantiate(ozContainer *container) override { return new Field(container, getId()); }
  void reset(ozContainer *container) override { member(container).setCount(0); }
  using ozFieldInfo::write;
  void write(ozOutput *out, ozContainer *container) override;
  unsigned char isDefault(ozContainer *container) override { return member(container).getCount() == 0; }
  void copy(ozContainer *dst, ozContainer *src) override { member(dst).set(member(src)); }

protected:
  Array &member(ozContainer *container) const { return *static_cast<Array *>(getStorage(container)); }
};

/// A multi-valued field.
template <class Field, class Info, class Array> class OZ_API ozMFValue : public ozMField {
public:
  typedef typename Array::Value Value;
  typedef typename Array::Pass Pass;

  /// The array is the container's member, or where there is none the field's own.
  ozMFValue(ozContainer *parent, short id) : ozMField(parent, id) {
    _array = static_cast<Array *>(getStorage());
    if (!_array) _array = new Array;
  }
  ~ozMFValue() override {
    if (!getStorage()) delete &array();
  }

  ozType *getType() const override { return Field::getClassType(); }
  void copy(ozField *source) override {
    if (!source || !source->getType()->isDerivedFrom(Field::getClassType())) return;
    if (source->getDelivers())
      askFor(source);
    else
      set(static_cast<Field *>(source)->get());
  }

  /// Brings the array up to date and gives it.
  Array const &get() {
    validate();
    return array();
  }
  Pass operator[](unsigned int i) { return get()[i]; }
  Pass get(unsigned int i) { return get()[i]; }
  void get(unsigned int i, Value &out) { out = get()[i]; }
  void getRange(unsigned int start, unsigned int n, Value *out) { get().getRange(start, n, out); }
  /// Brings the array up to date and gives it raw, to be edited in place; editDone() ends the edit.
  Value *edit() {
    validate();
    return array().getArray();
  }

  void set(Array const &values) {
    array().set(values);
    finish<Field>([&](Field *output) { output->set(values); });
  }
  void set(unsigned int i, Pass value) {
    array().set(i, value);
    finish<Field>([&](Field *output) { output->set(i, value); });
  }
  void setRange(unsigned int start, unsigned int n, Value const *values) {
    array().setRange(start, n, values);
    finish<Field>([&](Field *output) { output->setRange(start, n, values); });
  }
  void fillRange(unsigned int start, unsigned int n, Pass value) {
    array().fillRange(start, n, value);
    finish<Field>([&](Field *output) { output->fillRange(start, n, value); });
  }

  /// Adds a field to a class: its name, id and the array that holds it.
  template <class Container, class Member>
  static void addTypeField(ozType *type, char const *name, short id, Member Container::*member) {
    static_assert(std::is_base_of<Array, Member>::value, "the member must be the field's array");
    addInfo(type, name, id, ozMember(member));
  }
  static void addTypeField(ozType *type, char const *name, short id, Array ozContainer::*member) {
    addInfo(type, name, id, ozMember(member));
  }

private:
  static void addInfo(ozType *type, char const *name, short id, char ozContainer::*member) {
    if (ozFieldInfo *info = new Info(name, id, member)) type->setFieldInfo(id, info);
  }
  Array &array() const { return *static_cast<Array *>(_array); }
};

#define OZ_MULTI_FIELD(Field, Array)                                                                                   \
  class Field;                                                                                                         \
  class OZ_API Field##Info : public ozMFValueInfo<Field, Array> {                                                      \
  public:                                                                                                              \
    using ozMFValueInfo::ozMFValueInfo;                                                                                \
  };                                                                                                                   \
  class OZ_API Field : public ozMFValue<Field, Field##Info, Array> {                                                   \
    OZ_TYPE_POINTER;                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    using ozMFValue::ozMFValue;                                                                                        \
  }

OZ_MULTI_FIELD(ozMFByte, ozByteArray);
OZ_MULTI_FIELD(ozMFUByte, ozUByteArray);
OZ_MULTI_FIELD(ozMFShort, ozShortArray);
OZ_MULTI_FIELD(ozMFInt, ozIntArray);
OZ_MULTI_FIELD(ozMFUInt, ozUIntArray);
OZ_MULTI_FIELD(ozMFFloat, ozFloatArray);
OZ_MULTI_FIELD(ozMFVec2f, ozVec2fArray);
OZ_MULTI_FIELD(ozMFVec3f, ozVec3fArray);
OZ_MULTI_FIELD(ozMFVec4f, ozVec4fArray);
OZ_MULTI_FIELD(ozMFVec2s, ozVec2sArray);
OZ_MULTI_FIELD(ozMFVec3s, ozVec3sArray);
OZ_MULTI_FIELD(ozMFVec2i, ozVec2iArray);
OZ_MULTI_FIELD(ozMFVec3i, ozVec3iArray);
OZ_MULTI_FIELD(ozMFVec3b, ozVec3bArray);
OZ_MULTI_FIELD(ozMFVec4ub, ozVec4ubArray);
OZ_MULTI_FIELD(ozMFMatrix4f, ozMatrix4fArray);
OZ_MULTI_FIELD(ozMFRotation, ozRotationArray);
OZ_MULTI_FIELD(ozMFString, ozStringArray);

#undef OZ_MULTI_FIELD

#endif
