#ifndef OZ_OUTPUT_H
#define OZ_OUTPUT_H

#include <stdio.h>

class ozContainer;
class ozDict;

#include "oz/ozPlatform.h"

/// The context of one writing of a graph as text: the stream, the indentation and the record of which shared objects
/// have been written.
///
///     ozOutput out("scene.txt");
///     if (out.getFile()) static_cast<ozObject *>(root)->write(&out);
///
/// Shared objects appear once with DEF and from then on with USE. No header line is written, and quotes inside strings
/// are not escaped.
class OZ_API ozOutput {
public:
  /// Writes on the caller's stream, which stays open.
  explicit ozOutput(FILE *file);
  /// Opens a file for writing; getFile() is null if that fails.
  explicit ozOutput(char const *path);
  ozOutput(ozOutput const &) = delete;
  ozOutput &operator=(ozOutput const &) = delete;
  /// Flushes the stream, and closes it if this object opened it.
  ~ozOutput();

  FILE *getFile() const { return _file; }
  int getIndent() const { return _indent; }
  /// Writes the present indentation.
  void indent();
  void newLine();
  void pushIndent() { ++_indent; }
  void popIndent() { --_indent; }

  /// Records a shared object. Returns the number that it gets, or -1 for one with a name.
  int addInstance(ozContainer *object);
  /// Whether the object was recorded before; number is its number, or -1 for one with a name.
  int alreadyWritten(ozContainer *object, int &number);

  /// Records that the object's text has begun and not yet ended; false if it had begun before: the graph has a cycle.
  bool begin(ozContainer *object);
  void end(ozContainer *object);

private:
  int _indent;
  int _nextNumber;
  FILE *_file;
  ozDict *_named;
  ozDict *_numbered;
  int _ownsFile;
  ozDict *_open;
};

#endif
