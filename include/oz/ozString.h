#ifndef OZ_STRING_H
#define OZ_STRING_H

#include "oz/ozPlatform.h"

#include <string.h>

class ozOutput;

/// A text with an owner. A string that was never set, was set from a null pointer or was made empty is null; one set
/// from "" is not, though the two compare as equal. A text that there is no memory for is reported and not taken.
class OZ_API ozString {
public:
  ozString() : _text(nullptr) {}
  ozString(char const *text) : _text(duplicate(text)) {}
  ozString(ozString const &other) : _text(duplicate(other._text)) {}
  ~ozString() { makeEmpty(); }

  /// The argument may be this string's own text, or a part of it.
  ozString &operator=(char const *);
  ozString &operator=(ozString const &other) { return *this = other._text; }
  /// Adds text at the end; null adds nothing. The argument may be this string's own text.
  ozString &operator+=(char const *);

  /// Whether the string is null or of length 0.
  int operator!() const { return !_text || !*_text; }
  /// Characters without the end mark; 0 for a null string.
  int getLength() const { return _text ? static_cast<int>(strlen(_text)) : 0; }
  /// The text; null for a null string. Good until the string changes.
  char const *getString() const { return _text; }
  /// Frees the text and makes the string null.
  void makeEmpty();

  unsigned int hash() const { return hash(_text); }
  /// A 32-bit hash of a text; 0 for null or empty.
  static unsigned int hash(char const *);

  /// Prints the text in double quotes, nothing in it escaped; (null) for a null string.
  void write(ozOutput *) const;

  /// Whether both have the same characters; null counts as "".
  unsigned char isEqual(char const *text) const { return strcmp(_text ? _text : "", text ? text : "") == 0; }

private:
  static char *duplicate(char const *);

  char *_text;
};

inline bool operator==(ozString const &a, ozString const &b) { return a.isEqual(b.getString()); }
inline bool operator==(ozString const &a, char const *b) { return a.isEqual(b); }
inline bool operator==(char const *a, ozString const &b) { return b.isEqual(a); }
inline bool operator!=(ozString const &a, ozString const &b) { return !(a == b); }
inline bool operator!=(ozString const &a, char const *b) { return !(a == b); }
inline bool operator!=(char const *a, ozString const &b) { return !(a == b); }

#endif
