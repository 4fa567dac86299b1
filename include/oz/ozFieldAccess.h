#ifndef OZ_FIELD_ACCESS_H
#define OZ_FIELD_ACCESS_H

#include "oz/ozSFByte.h"

/// @file
/// The accessors of fields, written once. Each line declares and defines getX and setX of one field inside a container
/// class: a getter brings the field up to date and reads the member, a setter stores and tells of the change. No setter
/// clamps or tests its argument. Reference fields count, see ozContainer::storeRef.

/// A field of a plain type: `T getX()`, `setX(T)`.
#define OZ_VALUE_ACCESS(T, Name, id, member)                                                                           \
  T get##Name() { return read(id, member); }                                                                           \
  void set##Name(T value) { store(id, member, value); }

/// A field of an enumeration: `E getX()`, `setX(E)`, and the same with a plain int behind the names with Hack.
#define OZ_ENUM_ACCESS(E, Name, id, member)                                                                            \
  E get##Name() { return static_cast<E>(read(id, member)); }                                                           \
  void set##Name(E value) { store(id, member, value); }                                                                \
  int get##Name##Hack() { return get##Name(); }                                                                        \
  void set##Name##Hack(int value) { set##Name(static_cast<E>(value)); }

/// A field of a class type: `getX(T &)`, `setX(T const &)`.
#define OZ_CLASS_ACCESS(T, Name, id, member)                                                                           \
  void get##Name(T &value) { value = read(id, member); }                                                               \
  void set##Name(T const &value) { store(id, member, value); }

/// A reference field: `T *getX()`, `setX(T *)`.
#define OZ_REF_ACCESS(T, Name, id, member)                                                                             \
  T *get##Name() { return read(id, member); }                                                                          \
  void set##Name(T *value) { storeRef(id, member, value); }

/// A field of a vector of three floats: by reference, and component by component.
#define OZ_VEC3F_ACCESS(Name, id, member)                                                                              \
  OZ_CLASS_ACCESS(ozVec3f, Name, id, member)                                                                           \
  void get##Name(float *x, float *y, float *z) { read(id, member).get(x, y, z); }                                      \
  void set##Name(float x, float y, float z) { store(id, member, ozVec3f(x, y, z)); }

/// A field of a vector V of four components of type T: by reference, and component by component.
#define OZ_VEC4_ACCESS(V, T, Name, id, member)                                                                         \
  OZ_CLASS_ACCESS(V, Name, id, member)                                                                                 \
  void get##Name(T *x, T *y, T *z, T *w) { read(id, member).get(x, y, z, w); }                                         \
  void set##Name(T x, T y, T z, T w) { store(id, member, V(x, y, z, w)); }

#endif
