#ifndef OZ_NAME_H
#define OZ_NAME_H

#include "oz/ozString.h"

/// One interned text. There is one entry for each text of the process, and it lives as long as the process.
class OZ_API ozNameEntry {
public:
  /// The entry of a text, made if it is new. Null counts as the empty text, and so, with a message, does one
  /// that there is no memory for. One thread at a time.
  static ozNameEntry const *insert(char const *);
  /// Makes the table of all entries. Called by the first insert.
  static void initClass();

  unsigned char isEmpty() const { return !*_text; }
  /// Whether the text is this one; null counts as the empty text.
  unsigned char isEqual(char const *text) const { return strcmp(_text, text ? text : "") == 0; }

  char const *getString() const { return _text; }
  unsigned long getHash() const { return _hash; }

private:
  friend class ozName;
  constexpr ozNameEntry(char const *text, unsigned long hash, ozNameEntry *next)
      : _text(text), _hash(hash), _next(next) {}

  static ozNameEntry _Empty;

  char const *_text;
  unsigned long _hash;
  ozNameEntry *_next;
};

/// An interned text: as small as a pointer, and compared as one. Names are made by one thread at a time.
class OZ_API ozName {
public:
  /// The empty name.
  ozName() : _entry(&ozNameEntry::_Empty) {}
  /// The name of a text; null gives the empty name.
  ozName(char const *text) : _entry(ozNameEntry::insert(text)) {}
  ozName(ozString const &text) : _entry(ozNameEntry::insert(text.getString())) {}

  /// The text, never null, good for ever. Equal names give the same pointer.
  char const *getString() const { return _entry->getString(); }
  unsigned int getLength() const { return static_cast<unsigned int>(strlen(getString())); }
  /// Whether the text is empty.
  int operator!() const { return _entry->isEmpty(); }

  /// Prints the text in double quotes, nothing in it escaped.
  void write(ozOutput *) const;

  friend bool operator==(ozName const &a, ozName const &b) { return a._entry == b._entry; }
  friend bool operator!=(ozName const &a, ozName const &b) { return a._entry != b._entry; }
  // These compare the characters, so that asking does not intern.
  friend bool operator==(ozName const &a, char const *b) { return a._entry->isEqual(b); }
  friend bool operator==(char const *a, ozName const &b) { return b._entry->isEqual(a); }
  friend bool operator!=(ozName const &a, char const *b) { return !(a == b); }
  friend bool operator!=(char const *a, ozName const &b) { return !(a == b); }

private:
  ozNameEntry const *_entry;
};

#endif
