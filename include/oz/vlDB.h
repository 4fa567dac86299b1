#ifndef VL_DB_H
#define VL_DB_H

#include "oz/ozString.h"

class ozAppearance;
class ozContainer;
class ozDict;
class ozField;
class ozFieldInfo;
class ozName;
class ozPtrArray;
class ozTexture;
class ozType;
class vlInput;
class vlReadState;

/// Reads VRML 2.0 files into graphs of library objects, in one pass.
///
/// The grammar is VRML's; the fields of a node are those of the library's class, found by name or alias and read by
/// their own class, so that what ozObject::write puts out can be read back for the classes that the reader knows.
/// Errors are told on the standard error stream with their line, and reading goes on wherever it can. PROTO and
/// EXTERNPROTO are refused. Whatever stands in a file, reading ends and so does a walk through what was read: nodes
/// nest at most 1,000 levels deep, shared ones and those of Inlines included; Inlines at most 16, and one read makes at
/// most 1,000 of them; a walk that visits shared nodes again each time makes at most ten million visits; a chain of
/// routes passes through at most 1,000 fields; and a file makes at most 100 routes between nodes. What goes beyond is
/// left out, with a message.
///
/// Objects that found no place in the graph are released at the end of the read. One that a route connects to something
/// is held by the reader, and let go behind a later read once nothing is connected to it any more.
///
/// Single threaded: the reader keeps its state in statics.
class OZ_API vlDB {
public:
  /// Reads a file, which is looked for as ozGlobal::findFile does, into a new ozGroup with count 0.
  /// Returns non-zero if the last top-level statement of the file was good; an earlier one may have failed, and the
  /// root is there all the same. `files` is remembered for nested reads and not filled.
  static unsigned char readFile(char const *name, ozContainer *&root, ozPtrArray &files);

  /// The version text of the reader.
  static char const *getVersionString() { return versionString; }

private:
  static unsigned char init();
  static unsigned char read(vlInput *in, ozContainer *&root);
  static unsigned char readStatement(vlInput *in, ozContainer *root);
  static unsigned char readObject(vlInput *in, ozContainer *&obj);
  static unsigned char readNode(vlInput *in, ozName &className, ozContainer *&obj, ozName *defName);
  static unsigned char readNodeInstance(vlInput *in, ozName const &className, ozName *defName, ozContainer *&obj);
  static unsigned char readFields(vlInput *in, ozContainer *container);
  static unsigned char readvlField(vlInput *in, ozContainer *container, ozName const &name);
  static unsigned char readOrbisField(vlInput *in, ozContainer *container, ozFieldInfo *info, ozName const &name);
  static unsigned char readMFField(vlInput *in, ozType *type, ozField *field);
  static unsigned char readMFElt(vlInput *in, ozField *field, int &index);
  static unsigned char readSFNode(vlInput *in, ozContainer *&obj);
  static unsigned char readRoute(vlInput *in);
  static unsigned char flushInput(vlInput *in);
  static ozContainer *createInstanceFromName(ozName const &className);

  static ozTexture *shareTexture(ozTexture *texture);
  static void adaptShape(ozContainer *obj);
  static void adaptAppearance(ozContainer *obj);
  static void adaptIndexedFaceSet(ozContainer *obj);
  static void adaptInline(ozContainer *obj);
  static void adaptAudioClip(ozContainer *obj);

  friend struct vlNodeClass;

  static ozDict *nameDict;
  static ozAppearance *defAppear;
  static ozPtrArray *textures;
  static vlInput *_in;
  static char const *versionString;
  static ozString _lastFirstString; // element 0 of the ozMFString read last: an Inline's file
  static ozPtrArray *_files;
  static vlReadState *_state;
};

#endif
