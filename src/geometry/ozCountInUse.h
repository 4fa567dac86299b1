#ifndef GEOMETRY_OZ_COUNT_IN_USE_H
#define GEOMETRY_OZ_COUNT_IN_USE_H

/// How many elements of an array are there: shrinking one can leave its count above its size.
template <class Array> unsigned int ozCountInUse(Array &array) {
  unsigned int const count = array.getCount(), size = array.getSize();
  return count < size ? count : size;
}

#endif
