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
/// stream stays the caller's.
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

  /// The next raw character; 255 and 0 at the end.
  unsigned char get(char &c);
  /// Takes a character back. The end mark, 255, is ignored.
  void putBack(char c);
  /// Takes a token back; it replaces what is still pending of an earlier one.
  void putBack(char const *token);
  /// Reads the next word, which white space ends, without taking it; of a long or quoted one only that it is that: 0.
  unsigned char peekWord(char *word, int size);
  /// How many characters have been taken so far: a reader that takes nothing must not go round.
  long getTaken() const { return _taken; }
  /// Whether the stream has ended (a stream in error has).
  unsigned char eof() const { return feof(_fp) || ferror(_fp); }
  /// Skips white space and comments. 0 where the header is bad, once.
  unsigned char skipWhiteSpace();

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
  unsigned char checkHeader();
  unsigned char readInteger(long &value);
  unsigned char readUnsignedInteger(unsigned long &value);
  unsigned char readReal(double &value);
  unsigned char readUnsignedIntegerString(char &c);
  unsigned char readDigits(char &c);
  /// Collects c and gets the next character if c is the wanted one.
  unsigned char readIf(char &c, char wanted);
  void collect(char c);
  char *collected();

  FILE *_fp;
  int _lineNumber;
  float _version;
  unsigned char _readHeader;
  unsigned char _headerOk;
  ozDict _refDict;
  ozString _backBuf;
  int _backBufIndex;
  long _taken;
  char *_text; // the characters of the number or string being read, of any length
  size_t _textSize;
  size_t _textLength;
};

#endif
