#include "oz/ozString.h"

#include "oz/ozOutput.h"

#include <stdlib.h>

char *ozString::duplicate(char const *text) { return text ? strdup(text) : nullptr; }

ozString &ozString::operator=(char const *text) {
  char *copy = duplicate(text); // before the free: text may be our own
  free(_text);
  _text = copy;
  return *this;
}

ozString &ozString::operator+=(char const *text) {
  if (!text) return *this;
  size_t length = _text ? strlen(_text) : 0, added = strlen(text);
  char *joined = static_cast<char *>(malloc(length + added + 1));
  if (!joined) return *this;
  if (length) memcpy(joined, _text, length);
  memcpy(joined + length, text, added);
  joined[length + added] = 0;
  free(_text); // after the copy: text may be our own
  _text = joined;
  return *this;
}

void ozString::makeEmpty() {
  free(_text);
  _text = nullptr;
}

unsigned int ozString::hash(char const *text) {
  unsigned int h = 0, shift = 0;
  for (; text && *text; ++text) {
    h ^= static_cast<unsigned int>(static_cast<signed char>(*text)) << shift;
    shift += 5;
    if (shift > 24) shift -= 24;
  }
  return h;
}

void ozString::write(ozOutput *out) const {
  if (_text)
    fprintf(out->getFile(), "\"%s\"", _text);
  else
    fputs("(null)", out->getFile());
}
