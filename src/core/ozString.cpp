#include "oz/ozString.h"

#include "core/textMemory.h"
#include "oz/ozOutput.h"

// Both texts, one behind the other, in new memory; null if there is none.
static char *join(char const *head, char const *tail) {
  size_t length = strlen(head), bytes = strlen(tail) + 1;
  char *text = allocateText(length + bytes);
  if (!text) return nullptr;
  memcpy(text, head, length);
  memcpy(text + length, tail, bytes);
  return text;
}

char *ozString::duplicate(char const *text) { return text ? join("", text) : nullptr; }

ozString &ozString::operator=(char const *text) {
  char *copy = duplicate(text);    // before the free: text may be our own
  if (text && !copy) return *this; // no memory: nothing changes
  free(_text);
  _text = copy;
  return *this;
}

ozString &ozString::operator+=(char const *text) {
  if (!text) return *this;
  char *joined = join(_text ? _text : "", text);
  if (!joined) return *this;
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
