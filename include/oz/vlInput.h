#ifndef VL_INPUT_H
#define VL_INPUT_H

#include <stdio.h>

#include "oz/ozDict.h"
#include "oz/ozName.h"
#include "oz/ozString.h"

class ozContainer;

/// The lexer of the VRML reader, one a file. It checks the header line, skips white space and comments, counts lines,
/// reads numbers, names and strings, takes characters or a token back, and owns the table of named objects.
///
/// All `read` operations return non-zero on success. Characters consumed ahead of a failure are not restored. The
/// stream stays the caller's, and stands behind the last character taken, unless readAhead() was called.
class OZ_API vlInput {
public:
  /// Reads standard input until setFilePointer() gives another stream.
  vlInput();
  ~vlInput();
  vlInput(vlInput const &) = delete;
  vlInput &operator=(vlInput const &) = delete;

  /// Starts afresh on a stream. The table of names is left alone.
  void setFilePointer(FILE *file);
  FILE *getCurFile() const { return _fp; }
  /// Takes the stream in blocks from now on, which is faster, and waits for whole ones: for a stream that nobody else
  /// reads. Good until setFilePointer().
  void readAhead();

  /// The next raw character; 255 and 0 at the end.
  unsigned char get(char &c) {
    if (_at == _end || _backBufIndex >= 0) return getSlowly(c);
    c = *_at++;
    return 1;
  }
  /// Takes a character back. The end mark, 255, is ignored.
  void putBack(char c) {
    bool const lies = _at > _block && _at[-1] == c && c != EndMark && _backBufIndex < 0 && !_ended;
    if (!lies) return putBackSlowly(c);
    --_at;
  }
  /// Takes a token back; it replaces what is still pending of an earlier one.
  void putBack(char const *token);
  /// Reads the next word, which white space ends, without taking it; of a long or quoted one only that it is that: 0.
  unsigned char peekWord(char *word, int size);
  /// How many characters have been taken so far: a reader that takes nothing must not go round.
  long getTaken() const { return _taken - (_end - _at); }
  /// Whether the end of the stream was met (a stream in error has ended).
  unsigned char eof() const { return _block ? _ended : feof(_fp) || ferror(_fp); }
  /// Skips white space and comments. 0 where the header is bad, once.
  unsigned char skipWhiteSpace() {
    // What stands behind '#' in the code is no space and starts no comment.
    return _at != _end && *_at > '#' && _backBufIndex < 0 ? 1 : skipWhiteSpaceSlowly();
  }

  /// The next character that is no white space.
  unsigned char read(char &c);
  // Integers: an optional sign, then decimal, octal (leading 0) or hexadecimal (0x) digits.
  unsigned char read(short &value);
  unsigned char read(int &value);
  unsigned char read(long &value);
  unsigned char read(unsigned short &value);
  unsigned char read(unsigned int &value);
  unsigned char read(unsigned long &value);
  unsigned char read(float &value);
  unsigned char read(double &value);
  /// With validIdent, an identifier, of which 255 characters count; empty where the next character starts none.
  /// Without, anything up to white space, or a quoted string.
  unsigned char read(ozName &name, unsigned char validIdent);
  /// A string in double quotes, or anything up to white space.
  unsigned char read(ozString &text);
  /// 0, 1, TRUE or FALSE.
  unsigned char readBool(unsigned char &value);

  /// Names a container, and enters it under that name. A name used again finds the later container.
  void addReference(ozName const &name, ozContainer *container);
  /// The container of a name; null if there is none.
  ozContainer *findReference(ozName const &name) const;

  /// The version of the file, 2.0, or 0 where the header is bad. Looks at the header if nobody has.
  float getVersion();
  /// Whether no bad header has been met.
  unsigned char isHeaderOk() const { return _headerOk; }
  int getLineNumber() const { return _lineNumber; }
  /// "\tOccurred at line %3d".
  void getLocationString(ozString &text) const;
  /// 2.0 where the line contains "#VRML V2.0 utf8", otherwise 0.
  static float isASCIIHeader(char const *line);

  static unsigned char isIdentChar(char c);
  static unsigned char isIdentStartChar(char c);
  static unsigned char isNodeNameChar(char c);
  static unsigned char isNodeNameStartChar(char c);

private:
  static char const EndMark = static_cast<char>(255);

  struct Word;

  unsigned char checkHeader();
  ozName nameOf(char const *text, size_t length);
  unsigned char getSlowly(char &c);
  void putBackSlowly(char c);
  /// Whether there are characters in memory to look at, as many as an ordinary word has unless the file ends.
  bool look() { return _backBufIndex < 0 && (_end - _at >= 64 || fill()); }
  bool fill();
  void makeFront();
  unsigned char skipWhiteSpaceSlowly();
  bool skipSpaceInBlock();
  /// Takes what stands ahead of a place in the block; not where there is none, nor ahead of the end mark, which
  /// whoever meets it takes.
  bool takeTo(char const *behind) {
    if (!behind || *behind == EndMark) return false;
    _at = behind;
    return true;
  }
  unsigned char readInteger(long &value);
  unsigned char readUnsignedInteger(unsigned long &value);
  unsigned char readReal(double &value);
  unsigned char readUnsignedIntegerString(char &c);
  unsigned char readDigits(char &c);
  /// Collects c and gets the next character if c is the wanted one.
  unsigned char readIf(char &c, char wanted);
  void collect(char c);
  char *collected();

  char const *_at; // of the block, what has not been taken
  char const *_end;
  char *_block; // null where the stream is taken by the character
  size_t _blockSize;
  unsigned char _ended; // somebody asked for a character behind the last one of the last block
  Word *_words;         // the last short names, each at the place that its hash gives
  FILE *_fp;
  int _lineNumber;
  float _version;
  unsigned char _readHeader;
  unsigned char _headerOk;
  ozDict _refDict;
  ozString _backBuf;
  int _backBufIndex;
  long _taken; // with the whole block
  char *_text; // the characters of the number or string being read, of any length
  size_t _textSize;
  size_t _textLength;
};

#endif
