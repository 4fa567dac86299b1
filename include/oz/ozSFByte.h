#ifndef OZ_SF_BYTE_H
#define OZ_SF_BYTE_H

#include "oz/ozBitMask.h"
#include "oz/ozBound.h"
#include "oz/ozContainer.h"
#include "oz/ozField.h"
#include "oz/ozMatrix4f.h"
#include "oz/ozName.h"
#include "oz/ozRotation.h"
#include "oz/ozString.h"
#include "oz/ozTime.h"
#include "oz/ozType.h"
#include "oz/ozVec2f.h"

/// @file
/// The single-valued fields of value types: one mechanism, and a table of the classes at the end.

template <> struct ozPass<ozTime> { typedef ozTime Type; };

/// The description of a single-valued field: adds the default to ozFieldInfo.
template <class Field, class T> class OZ_API ozSFValueInfo : public ozFieldInfo {
public:
  typedef typename ozPass<T>::Type Pass;

  ozSFValueInfo(char const *name, short id, char ozContainer::*member, Pass value)
      : ozFieldInfo(name, id, member), _default(value) {
    setFieldType(Field::getClassType());
  }
  ozField *instantiate(ozContainer *container) override { return new Field(container, getId()); }
  void reset(ozContainer *container) override { member(container) = _default; }
  using ozFieldInfo::write;
  void write(ozOutput *out, ozContainer *container) override;
  unsigned char isDefault(ozContainer *container) override { return member(container) == _default; }
  void copy(ozContainer *dst, ozContainer *src) override {
    if (isDefault(src))
      reset(dst);
    else
      member(dst) = member(src);
  }
  /// What the field object's set() does, where a member holds the value and nothing else is known of the field: it
  /// makes no such object.
  void set(ozContainer *container, Pass value) {
    member(container) = value;
    fieldChanged(container);
  }
  /// The default.
  virtual T getDefault() { return _default; }
  void getDefault(T &value) { value = _default; }

protected:
  T &member(ozContainer *container) const { return *static_cast<T *>(getStorage(container)); }

private:
  T _default;
};

/// A single-valued field: adds the address of the value to ozField.
template <class Field, class Info, class T> class OZ_API ozSFValue : public ozField {
public:
  typedef T Value;
  typedef typename ozPass<T>::Type Pass;
  typedef Info Description;

  /// The value is the container's member, or where there is none the field's own, which starts at the default.
  ozSFValue(ozContainer *parent, short id) : ozField(parent, id), _value(static_cast<T *>(getStorage())) {
    if (!_value) _value = new T(static_cast<Info *>(getFieldInfo())->getDefault());
  }
  ~ozSFValue() override {
    if (!getStorage()) freeValue();
  }

  ozType *getType() const override { return Field::getClassType(); }
  void copy(ozField *source) override {
    if (source && source->getType()->isDerivedFrom(Field::getClassType())) set(static_cast<Field *>(source)->get());
  }

  /// Brings the value up to date and gives it.
  Pass get() {
    validate();
    return *_value;
  }
  void get(T &value) {
    validate();
    value = *_value;
  }
  /// Stores the value and tells the container.
  void set(Pass value) {
    *_value = value;
    fieldChanged();
  }

  /// Adds a field to a class: its name, id, default and the member that holds it (which may be an enumeration).
  template <class Container, class Member>
  static void addTypeField(ozType *type, char const *name, short id, Pass value, Member Container::*member) {
    static_assert(sizeof(Member) == sizeof(T), "the member must have the field's size");
    addInfo(type, name, id, value, ozMember(member));
  }
  static void addTypeField(ozType *type, char const *name, short id, Pass value, T ozContainer::*member) {
    addInfo(type, name, id, value, ozMember(member));
  }

private:
  // Made here as exactly a T, so that the bounds' lack of a virtual destructor is no matter.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdelete-non-virtual-dtor"
  void freeValue() { delete _value; }
#pragma GCC diagnostic pop

  static void addInfo(ozType *type, char const *name, short id, Pass value, char ozContainer::*member) {
    if (ozFieldInfo *info = new Info(name, id, member, value)) type->setFieldInfo(id, info);
  }

  T *_value;
};

#define OZ_SINGLE_FIELD(Field, T)                                                                                      \
  class Field;                                                                                                         \
  class OZ_API Field##Info : public ozSFValueInfo<Field, T> {                                                          \
  public:                                                                                                              \
    using ozSFValueInfo::ozSFValueInfo;                                                                                \
  };                                                                                                                   \
  class OZ_API Field : public ozSFValue<Field, Field##Info, T> {                                                       \
    OZ_TYPE_POINTER;                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    using ozSFValue::ozSFValue;                                                                                        \
  }

OZ_SINGLE_FIELD(ozSFByte, signed char);
OZ_SINGLE_FIELD(ozSFUByte, unsigned char);
OZ_SINGLE_FIELD(ozSFShort, short);
OZ_SINGLE_FIELD(ozSFInt, int);
OZ_SINGLE_FIELD(ozSFUInt, unsigned int);
OZ_SINGLE_FIELD(ozSFFloat, float);
OZ_SINGLE_FIELD(ozSFDouble, double);
OZ_SINGLE_FIELD(ozSFTime, ozTime);
OZ_SINGLE_FIELD(ozSFBitMask, ozBitMask);
OZ_SINGLE_FIELD(ozSFName, ozName);
OZ_SINGLE_FIELD(ozSFString, ozString);
OZ_SINGLE_FIELD(ozSFVec2f, ozVec2f);
OZ_SINGLE_FIELD(ozSFVec3f, ozVec3f);
OZ_SINGLE_FIELD(ozSFVec4f, ozVec4f);
OZ_SINGLE_FIELD(ozSFVec2s, ozVec2s);
OZ_SINGLE_FIELD(ozSFVec3s, ozVec3s);
OZ_SINGLE_FIELD(ozSFVec2i, ozVec2i);
OZ_SINGLE_FIELD(ozSFVec3i, ozVec3i);
OZ_SINGLE_FIELD(ozSFVec3b, ozVec3b);
OZ_SINGLE_FIELD(ozSFVec4ub, ozVec4ub);
OZ_SINGLE_FIELD(ozSFRotation, ozRotation);
OZ_SINGLE_FIELD(ozSFMatrix4f, ozMatrix4f);
OZ_SINGLE_FIELD(ozSFSphereBound, ozSphereBound);
OZ_SINGLE_FIELD(ozSFBoxBound, ozBoxBound);

#undef OZ_SINGLE_FIELD

class ozSFEnum;

/// The description of an enumeration field, which is written by name.
class OZ_API ozSFEnumInfo : public ozSFValueInfo<ozSFEnum, int> {
public:
  using ozFieldInfo::write;
  using ozSFValueInfo::ozSFValueInfo;
  /// A value without a name leaves the line open behind the field's name.
  void write(ozOutput *out, ozContainer *container) override;
};

/// A field of an enumeration, held as an int.
class OZ_API ozSFEnum : public ozSFValue<ozSFEnum, ozSFEnumInfo, int> {
  OZ_TYPE_POINTER;

public:
  using ozSFValue::ozSFValue;
};

#endif
