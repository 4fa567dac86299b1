#ifndef WRITE_LIST_H
#define WRITE_LIST_H

#include "oz/ozOutput.h"

/// @file
/// The text form of all arrays: "[", a line an element, and "]".

/// write(i) writes element i. Elements for which isThere(i) is false are left out.
template <class Write, class IsThere> void writeList(ozOutput *out, unsigned int count, Write write, IsThere isThere) {
  fputs("[\n", out->getFile());
  for (unsigned int i = 0; i < count; ++i) {
    if (!isThere(i)) continue;
    out->indent();
    write(i);
    fputs(",\n", out->getFile());
  }
  out->indent();
  fputs("]", out->getFile());
}

template <class Write> void writeList(ozOutput *out, unsigned int count, Write write) {
  writeList(out, count, write, [](unsigned int) { return true; });
}

/// An array of pointers without its null elements; write(pointer) writes one.
template <class Array, class Write> void writePointerList(ozOutput *out, Array const &array, Write write) {
  writeList(
      out, array.getCount(), [&](unsigned int i) { write(array.get(i)); },
      [&](unsigned int i) { return array.get(i) != nullptr; });
}

#endif
