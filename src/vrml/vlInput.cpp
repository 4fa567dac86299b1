// Characters come from one of three places: a token that was put back, the block in memory, or the stream. Everything
// can be read by the character from any of them; what is read most (space, numbers, words) has a short cut that works
// on the block alone, takes all or nothing, and leaves whatever is not plain to the long way.

#include "oz/vlInput.h"

#include <stdlib.h>
#include <string.h>

#include <new>

#include "oz/ozContainer.h"
#include "oz/vlError.h"
#include "vrml/scanNumber.h"

// The classes of the "C" locale, whatever the application's is.
static bool isDigit(char c) { return c >= '0' && c <= '9'; }
static bool isAlnum(char c) { return isDigit(c) || ((c | 32) >= 'a' && (c | 32) <= 'z'); }
static bool isHexDigit(char c) { return isDigit(c) || ((c | 32) >= 'a' && (c | 32) <= 'f'); }
static bool isSpace(char c) { return c == ' ' || (c >= '\t' && c <= '\r'); }
static bool isControl(char c) { return (c >= 0 && c < ' ') || c == 127; }

// The characters of identifiers, which are most of a text's words, in a table.
static struct Identifiers {
  bool has[256] = {};
  constexpr Identifiers() {
    for (int c = 0; c < 256; ++c)
      has[c] = (c >= '0' && c <= '9') || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '-' ||
               c == '%' || c == '*';
  }
} constexpr Identifier;
static bool isIdent(char c) { return Identifier.has[static_cast<unsigned char>(c)]; }

/// A word of up to 16 characters, and the name that it is. Files have few such words and use them often.
struct vlInput::Word {
  unsigned long head, tail;
  ozName name;
};

vlInput::vlInput() : _block(nullptr), _words(nullptr), _refDict(251), _text(nullptr), _textSize(0), _textLength(0) {
  setFilePointer(stdin);
}

vlInput::~vlInput() {
  free(_block);
  delete[] _words;
  free(_text);
}

void vlInput::setFilePointer(FILE *file) {
  free(_block);
  _block = nullptr;
  _blockSize = 0;
  _at = _end = nullptr;
  _ended = 0;
  _fp = file;
  _lineNumber = 1;
  _version = 2.0f;
  _readHeader = 0;
  _headerOk = 1;
  _backBufIndex = -1;
  _taken = 0;
}

// ---- characters

static size_t const BlockSize = 1 << 16;
static size_t const FrontSize = 16; // for characters put back ahead of the block

void vlInput::readAhead() {
  if (_block) return;
  _block = static_cast<char *>(malloc(FrontSize + BlockSize));
  if (!_block) return;
  _blockSize = FrontSize + BlockSize;
  _at = _end = _block + FrontSize;
}

// Moves what is left to the start of the block and fills up behind it.
bool vlInput::fill() {
  if (_block && _readHeader && !feof_unlocked(_fp) && !ferror_unlocked(_fp)) {
    size_t const left = static_cast<size_t>(_end - _at);
    char *const front = _block + FrontSize;
    memmove(front, _at, left);
    size_t const more = fread_unlocked(front + left, 1, _blockSize - FrontSize - left, _fp);
    _at = front;
    _end = front + left + more;
    _taken += static_cast<long>(more);
  }
  return _at < _end;
}

// Moves what is left to the end of a larger block.
void vlInput::makeFront() {
  size_t const left = static_cast<size_t>(_end - _at), size = 2 * _blockSize;
  char *const grown = static_cast<char *>(malloc(size));
  if (!grown) return;
  memcpy(grown + size - left, _at, left);
  free(_block);
  _block = grown;
  _blockSize = size;
  _at = grown + size - left;
  _end = grown + size;
}

unsigned char vlInput::getSlowly(char &c) {
  if (_backBufIndex >= 0) {
    c = _backBuf.getString() ? _backBuf.getString()[_backBufIndex++] : '\0';
    if (c) {
      ++_taken;
      return 1;
    }
    _backBuf.makeEmpty();
    _backBufIndex = -1;
  }
  if (_readHeader || checkHeader()) {
    if (_block) {
      if (_at < _end || fill()) {
        c = *_at++;
        return 1;
      }
      _ended = 1;
    } else if (!feof_unlocked(_fp) && !ferror_unlocked(_fp)) {
      int const next = getc_unlocked(_fp);
      if (next != EOF) {
        c = static_cast<char>(next);
        ++_taken;
        return 1;
      }
    }
  }
  c = EndMark;
  return 0;
}

void vlInput::putBackSlowly(char c) {
  if (c == EndMark) return;
  if (_backBufIndex >= 0) {
    // The index steps back and the character is not stored; ahead of the first one the token is dropped. Meant so.
    --_taken;
    --_backBufIndex;
  } else if (_block) {
    if (_at == _block) makeFront();
    if (_at == _block) return;
    *const_cast<char *>(--_at) = c;
    _ended = 0;
  } else {
    --_taken;
    ungetc(c, _fp);
  }
}

void vlInput::putBack(char const *token) {
  _backBuf = token;
  _backBufIndex = 0;
  _taken -= _backBuf.getLength();
}

unsigned char vlInput::peekWord(char *word, int size) {
  skipWhiteSpace();
  int length = 0;
  if (look() && *_at != '"' && *_at != EndMark) { // a plain word stays where it is
    char const *at = _at, *const end = _end - _at > size - 1 ? _at + size - 1 : _end;
    while (at < end && *at && !isSpace(*at)) ++at;
    if (at < _end && *at) {
      length = static_cast<int>(at - _at);
      memcpy(word, _at, static_cast<size_t>(length));
      word[length] = '\0';
      return length && length < size - 1;
    }
  }
  char c = EndMark;
  bool whole = false;
  if (get(c) && c == '"') { // a string is put back without its quotes: meant so
    putBack(c);
    ozString text;
    read(text);
    putBack(text.getString());
    whole = text.getLength() < size;
    strcpy(word, whole && text.getString() ? text.getString() : "");
    return whole;
  }
  putBack(c);
  int const first = _backBufIndex;
  while (length < size - 1) {
    if (!get(c) || isSpace(c)) {
      putBack(c);
      whole = true;
      break;
    }
    word[length++] = c;
  }
  word[length] = '\0';
  // What came from a token that was put back lies there still; anything else is put back as one.
  if (_backBufIndex >= 0 && first >= 0 && _backBufIndex == first + length) {
    _backBufIndex = first;
    _taken -= length;
  } else if (length) {
    putBack(word);
  }
  return whole && length;
}

float vlInput::isASCIIHeader(char const *line) { return strstr(line, "#VRML V2.0 utf8") ? 2.0f : 0.0f; }

float vlInput::getVersion() {
  if (!_readHeader) checkHeader();
  return _version;
}

unsigned char vlInput::checkHeader() {
  char line[256];
  size_t length = 0;
  _readHeader = 1;
  char c;
  if (!get(c)) return 0;
  if (c != '#') {
    putBack(c);
    return 0;
  }
  line[length++] = c;
  bool tooLong = false;
  while (get(c) && c != '\n') {
    if (length < sizeof line - 1)
      line[length++] = c == '\r' ? '\0' : c;
    else
      tooLong = true;
  }
  line[length] = '\0';
  if (c == '\n') ++_lineNumber;
  _version = tooLong ? 0.0f : isASCIIHeader(line);
  if (_version != 0.0f) return 1;
  vlReadError::post(this, "File does not have a valid header string");
  _headerOk = 0;
  return 0;
}

unsigned char vlInput::skipWhiteSpaceSlowly() {
  if (!_readHeader && !checkHeader()) return 0;
  char c;
  while (!skipSpaceInBlock() && get(c)) {
    if (c == '\n') {
      ++_lineNumber;
    } else if (c == '#') {
      while (get(c) && c != '\n') {
      }
      if (c == '\n')
        ++_lineNumber;
      else
        vlReadError::post(this, "EOF reached before end of comment");
    } else if (!isSpace(c)) {
      putBack(c);
      return 1;
    }
  }
  return 1;
}

// Returns whether something else stands behind the space, in the block and plain to see.
bool vlInput::skipSpaceInBlock() {
  if (_backBufIndex >= 0) return false;
  char const *at = _at;
  for (; at < _end && isSpace(*at); ++at)
    if (*at == '\n') ++_lineNumber;
  _at = at;
  return at < _end && *at != '#' && *at != EndMark;
}

unsigned char vlInput::isIdentChar(char c) { return isIdent(c); }
unsigned char vlInput::isIdentStartChar(char c) { return isIdent(c) && !isDigit(c); }
unsigned char vlInput::isNodeNameStartChar(char c) { return isIdent(c) && !isDigit(c); }
unsigned char vlInput::isNodeNameChar(char c) {
  return isAlnum(c) || (!(c && strchr("+'\"\\{}", c)) && !isSpace(c) && !isControl(c));
}

// ---- numbers: the characters of one are collected, of any length, and the first that is in none is put back

void vlInput::collect(char c) {
  if (_textLength == _textSize) {
    size_t const size = _textSize ? 2 * _textSize : 256;
    char *const grown = static_cast<char *>(realloc(_text, size));
    if (!grown) return;
    _text = grown;
    _textSize = size;
  }
  _text[_textLength++] = c;
}

char *vlInput::collected() {
  collect('\0');
  return _text;
}

// Collects c and what follows while it is digits; c is then the character behind. Returns whether there was one.
unsigned char vlInput::readDigits(char &c) {
  if (!isDigit(c)) return 0;
  do collect(c);
  while (get(c) && isDigit(c));
  return 1;
}

unsigned char vlInput::readIf(char &c, char wanted) {
  if (c != wanted) return 0;
  collect(c);
  get(c);
  return 1;
}

// At the end c is the end mark, which is in no number and is not put back.
unsigned char vlInput::readUnsignedIntegerString(char &c) {
  if (c != '0') return readDigits(c);
  collect(c);
  get(c);
  if (c != 'x') {
    readDigits(c);
    return 1;
  }
  collect(c);
  unsigned char found = 0;
  for (; get(c) && isHexDigit(c); found = 1) collect(c);
  return found;
}

unsigned char vlInput::readInteger(long &value) {
  if (look() && takeTo(vl::scanInteger(_at, _end, value))) return 1;
  char c;
  _textLength = 0;
  get(c);
  if (!readIf(c, '-')) readIf(c, '+');
  unsigned char const found = readUnsignedIntegerString(c);
  putBack(c);
  if (found) value = strtol(collected(), nullptr, 0);
  return found;
}

unsigned char vlInput::readUnsignedInteger(unsigned long &value) {
  long plain;
  if (look() && isDigit(*_at) && takeTo(vl::scanInteger(_at, _end, plain))) {
    value = static_cast<unsigned long>(plain);
    return 1;
  }
  char c;
  _textLength = 0;
  get(c);
  unsigned char const found = readUnsignedIntegerString(c);
  putBack(c);
  if (found) value = strtoul(collected(), nullptr, 0);
  return found;
}

unsigned char vlInput::readReal(double &value) {
  if (look() && takeTo(vl::scanReal(_at, _end, value))) return 1;
  char c;
  _textLength = 0;
  get(c);
  if (!readIf(c, '-')) readIf(c, '+');
  unsigned char found = readDigits(c);
  if (readIf(c, '.')) found |= readDigits(c);
  if (found && (readIf(c, 'e') || readIf(c, 'E'))) {
    if (!readIf(c, '-')) readIf(c, '+');
    found = readDigits(c);
  }
  putBack(c);
  if (found) {
    char const *const text = collected();
    value = vl::realFrom(text, text + _textLength - 1);
  }
  return found;
}

unsigned char vlInput::read(char &c) {
  skipWhiteSpace();
  return get(c);
}

#define VL_READ_NUMBER(T, Wide, readWide)                                                                              \
  unsigned char vlInput::read(T &value) {                                                                              \
    Wide wide;                                                                                                         \
    skipWhiteSpace();                                                                                                  \
    if (!readWide(wide)) return 0;                                                                                     \
    value = static_cast<T>(wide);                                                                                      \
    return 1;                                                                                                          \
  }

VL_READ_NUMBER(short, long, readInteger)
VL_READ_NUMBER(int, long, readInteger)
VL_READ_NUMBER(long, long, readInteger)
VL_READ_NUMBER(unsigned short, unsigned long, readUnsignedInteger)
VL_READ_NUMBER(unsigned int, unsigned long, readUnsignedInteger)
VL_READ_NUMBER(unsigned long, unsigned long, readUnsignedInteger)
VL_READ_NUMBER(float, double, readReal)
VL_READ_NUMBER(double, double, readReal)

#undef VL_READ_NUMBER

// ---- names and strings

// The name of a text of up to 255 characters.
ozName vlInput::nameOf(char const *text, size_t length) {
  Word word{0, 0, ozName()};
  static size_t const half = sizeof word.head;
  static int const bits = 8;
  if (!_words) _words = new (std::nothrow) Word[1 << bits]();
  bool const isShort = _words && length <= 2 * half;
  Word *known = nullptr;
  if (isShort) {
    memcpy(&word.head, text, length < half ? length : half);
    if (length > half) memcpy(&word.tail, text + half, length - half);
    known = &_words[(word.head + word.tail * 0x9e3779b97f4a7c15ul) * 0x9e3779b97f4a7c15ul >> (64 - bits)];
    if (known->head == word.head && known->tail == word.tail) return known->name;
  }
  char buffer[256];
  memcpy(buffer, text, length);
  buffer[length] = '\0';
  word.name = ozName(buffer);
  if (isShort) *known = word;
  return word.name;
}

unsigned char vlInput::read(ozName &name, unsigned char validIdent) {
  if (!validIdent) {
    ozString text;
    if (!read(text)) return 0;
    name = ozName(text);
    return 1;
  }
  char buffer[256];
  size_t length = 0;
  skipWhiteSpace();
  if (look() && isIdentStartChar(*_at)) {
    char const *const start = _at;
    char const *at = start;
    while (at < _end && isIdent(*at)) ++at;
    if (at - start < static_cast<long>(sizeof buffer) && takeTo(at < _end ? at : nullptr)) {
      name = nameOf(start, static_cast<size_t>(at - start));
      return 1;
    }
  }
  char c;
  if (!get(c)) {
    name = ozName();
    return 0;
  }
  if (isIdentStartChar(c)) {
    do {
      if (length < sizeof buffer - 1) buffer[length++] = c;
    } while (get(c) && isIdentChar(c));
  }
  putBack(c);
  buffer[length] = '\0';
  name = ozName(buffer);
  return 1;
}

unsigned char vlInput::read(ozString &text) {
  skipWhiteSpace();
  text.makeEmpty();
  char c;
  if (!get(c)) return 0;
  bool const quoted = c == '"';
  if (!quoted) putBack(c);
  _textLength = 0;
  while (get(c)) {
    if (quoted) {
      if (c == '"') break;
      if (c == '\n') ++_lineNumber;
      if (c == '\\') {
        char next;
        if (get(next)) {
          if (next == '"')
            c = next;
          else
            putBack(next);
        }
      }
    } else if (isSpace(c)) {
      putBack(c);
      break;
    }
    collect(c);
  }
  text = collected();
  return 1;
}

unsigned char vlInput::readBool(unsigned char &value) {
  int number;
  if (read(number)) {
    value = static_cast<unsigned char>(number); // the low byte counts, the others do not: meant so
    if (value == 0 || value == 1) return 1;
    vlReadError::post(this, "Illegal value for vlSFBool: %d (must be 0 or 1)", value);
    return 0;
  }
  ozName word;
  read(word, 1);
  value = !strcmp(word.getString(), "TRUE");
  if (value || !strcmp(word.getString(), "FALSE")) return 1;
  // The argument stands where the offending word would: meant so.
  vlReadError::post(this, "Unknown value (\"%s\") for vlSFBool ", "(must be TRUE or FALSE)");
  return 0;
}

// ---- references

static unsigned long keyOf(ozName const &name) { return reinterpret_cast<unsigned long>(name.getString()); }

void vlInput::addReference(ozName const &name, ozContainer *container) {
  char const *const present = container->getName();
  if (!present || strcmp(present, name.getString()) != 0) container->setName(name.getString());
  _refDict.enter(keyOf(name), container);
}

ozContainer *vlInput::findReference(ozName const &name) const {
  void *found = nullptr;
  _refDict.find(keyOf(name), found);
  return static_cast<ozContainer *>(found);
}

void vlInput::getLocationString(ozString &text) const {
  char buffer[48];
  snprintf(buffer, sizeof buffer, "\tOccurred at line %3d", _lineNumber);
  text = buffer;
}
