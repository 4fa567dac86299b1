#ifndef OZ_PTR_ARRAY_H
#define OZ_PTR_ARRAY_H

#include "oz/ozArray.h"

/// An array of untyped pointers, compared by address. It owns none of what it points at.
class OZ_API ozPtrArray : public ozValueArray<ozPtrArray, void *> {
public:
  using ozValueArray::ozValueArray;
};

/// The operations of ozPtrArray with a pointer type put on them; they share its code.
template <class Array, class T> class ozPtrArrayOf : public ozPtrArray {
public:
  using ozPtrArray::ozPtrArray;

  T *get(unsigned int i) const { return static_cast<T *>(list(i)); }
  T *operator[](unsigned int i) const { return static_cast<T *>(list(i)); }
  void get(unsigned int i, T *&out) const { out = get(i); }
  T **getArray() const { return reinterpret_cast<T **>(_array); }
  void append(T *value) { ozPtrArray::append(value); }
  void set(unsigned int i, T *value) { ozPtrArray::set(i, value); }
  void set(Array const &other) { ozPtrArray::set(other); }
  void setRange(unsigned int start, unsigned int n, T *const *values) {
    ozPtrArray::setRange(start, n, reinterpret_cast<void *const *>(values));
  }
  void fillRange(unsigned int start, unsigned int n, T *value) { ozPtrArray::fillRange(start, n, value); }
  void getRange(unsigned int start, unsigned int n, T **out) const {
    ozPtrArray::getRange(start, n, reinterpret_cast<void **>(out));
  }
  void insert(unsigned int i, T *value) { ozPtrArray::insert(i, value); }
  long int find(T *value) const { return ozPtrArray::find(value); }
  long int replace(T *old, T *now) { return ozPtrArray::replace(old, now); }
  unsigned char remove(T *value) { return ozPtrArray::remove(value); }
  unsigned char fastRemove(T *value) { return ozPtrArray::fastRemove(value); }
};

#endif
