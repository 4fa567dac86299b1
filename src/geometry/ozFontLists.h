#ifndef GEOMETRY_OZ_FONT_LISTS_H
#define GEOMETRY_OZ_FONT_LISTS_H

#include "oz/ozByteArray.h"

// The fonts in use, by face and size, each with the first of its display lists, the number of texts that use it, and a
// version by which a context knows whether it has the lists. The lists are lent by the text that used the font first,
// and belong to the font once that text has gone on without it. Lives for ever: texts may die at exit.
struct ozFontLists {
  enum { COUNT = 127 }; ///< the characters of a font, one list each

  static ozFontLists &table();

  /// The entry of a font; -1 if it is not in use.
  long int find(int key) const { return keys.find(key); }
  /// Enters a font, with one user.
  void add(int key, int base);
  void remove(unsigned int entry);

  ozIntArray keys;
  ozIntArray bases;
  ozIntArray users;
  ozIntArray versions;
  int lastVersion = 0;
};

#endif
