// Files and statements: the outer half of the parser. Every operation takes what it can use and leaves the rest;
// whoever loops makes sure that a round takes something.

#include "oz/vlDB.h"

#include <stdio.h>
#include <string.h>
#include <sys/stat.h>

#include "oz/ozAppearance.h"
#include "oz/ozDict.h"
#include "oz/ozGlobal.h"
#include "oz/ozGroup.h"
#include "oz/vlError.h"
#include "oz/vlInput.h"
#include "vrml/readState.h"

ozDict *vlDB::nameDict = nullptr;
ozAppearance *vlDB::defAppear = nullptr;
ozPtrArray *vlDB::textures = nullptr;
vlInput *vlDB::_in = nullptr;
char const *vlDB::versionString = "2.0";
ozString vlDB::_lastFirstString;
ozPtrArray *vlDB::_files = nullptr;
vlReadState *vlDB::_state = nullptr;

unsigned char vlDB::init() {
  ozObject::initClasses();
  if (nameDict) return 1;
  nameDict = new ozDict(251);
  defAppear = new ozAppearance;
  defAppear->ref();
  defAppear->setLightEnable(0);
  defAppear->setTexEnable(0);
  textures = new ozPtrArray(4);
  return 1;
}

// The words of the grammar. Equal names share one text, so that they compare as pointers.
struct Words {
  ozName const null{"NULL"}, use{"USE"}, def{"DEF"};
  static Words const &all() {
    static Words const words;
    return words;
  }
};

static FILE *openRegular(char const *path) {
  struct stat info;
  // Asked ahead of the opening, which would wait for the other end of a pipe.
  if (stat(path, &info) != 0 || !S_ISREG(info.st_mode)) return nullptr;
  return fopen(path, "r");
}

// Takes out null children, at once: each removal by itself moves all children behind.
static void removeGaps(ozGroup *group) {
  int const count = group->getChildCount();
  int i = 0;
  while (i < count && group->getChild(i)) ++i;
  if (i == count) return;
  ozRefArray present(static_cast<unsigned int>(count));
  for (i = 0; i < count; ++i)
    if (group->getChild(i)) present.append(group->getChild(i));
  group->children()->set(present);
}

// Takes back the field objects that reading made. A child that stands in several groups is cleaned once.
static void cleanTree(ozContainer *c, ozDict &cleaned) {
  if (c->getParentCount() > 1 && !cleaned.enter(reinterpret_cast<unsigned long>(c), c)) return;
  c->freeUnconnectedFields();
  if (!c->isOfType(ozGroup::getClassType())) return;
  ozGroup *const group = static_cast<ozGroup *>(c);
  removeGaps(group);
  for (int i = group->getChildCount() - 1; i >= 0; --i) cleanTree(group->getChild(i), cleaned);
}

unsigned char vlDB::readFile(char const *name, ozContainer *&root, ozPtrArray &files) {
  root = nullptr;
  init();
  ozString path;
  if (!ozGlobal::findFile(name, path, static_cast<ozGlobal::FileModeEnum>(0))) return 0;
  FILE *const file = openRegular(path.getString());
  if (!file) {
    // The text stands as the place and the name as the message: meant so.
    vlDebugError::post("Can't open file: %s\n", "%s", name);
    return 0;
  }
  vlInput input;
  input.setFilePointer(file);
  input.readAhead();
  vlReadState state(_state);
  vlInput *const outerInput = _in;
  ozPtrArray *const outerFiles = _files;
  ozString const outerFirstString(_lastFirstString);
  _in = &input;
  _files = &files;
  _state = &state;
  unsigned char const ok = read(&input, root);
  state.connectReferences(root);
  state.release();
  _in = outerInput;
  _files = outerFiles;
  _state = state.outer;
  if (_state) {
    _state->use(state);
    _lastFirstString = outerFirstString;
  }
  if (root && root->isOfType(ozNode::getClassType())) {
    ozDict cleaned(4093);
    cleanTree(root, cleaned);
  }
  fclose(file);
  return ok && root;
}

unsigned char vlDB::read(vlInput *in, ozContainer *&root) {
  root = new ozGroup;
  if (!root) return 0;
  in->skipWhiteSpace();
  unsigned char status = in->isHeaderOk();
  while (!in->eof()) {
    status = readStatement(in, root);
    in->skipWhiteSpace();
  }
  return status;
}

// Reads one statement at the top level, or at least takes a word.
unsigned char vlDB::readStatement(vlInput *in, ozContainer *root) {
  char word[16];
  unsigned char status;
  ozString token;
  if (!in->peekWord(word, sizeof word)) word[0] = '\0';
  bool const proto = !strcmp(word, "PROTO"), externProto = !strcmp(word, "EXTERNPROTO");
  if (proto || externProto) {
    in->read(token);
    if (proto)
      vlReadError::post(in, "This version of the parser does not parse PROTOs yet");
    else
      vlReadError::post(in, "This version of the parser does not parse EXTERNPROTOs yet");
    return 0;
  }
  if (!strcmp(word, "ROUTE")) {
    in->read(token);
    return readRoute(in);
  }
  long const start = in->getTaken();
  ozContainer *obj = nullptr;
  status = readObject(in, obj);
  if (status && obj && obj->isOfType(ozNode::getClassType()))
    static_cast<ozGroup *>(root)->addChild(static_cast<ozNode *>(obj));
  if (in->getTaken() <= start && in->read(token)) {
    vlReadError::post(in, "Skipping \"%.100s\"", token.getString() ? token.getString() : "");
    status = 0;
  }
  return status;
}

unsigned char vlDB::readObject(vlInput *in, ozContainer *&obj) {
  obj = nullptr;
  ozName name;
  if (!in->read(name, 1)) return in->isHeaderOk();
  Words const &words = Words::all();
  if (!name || name == words.null) return 1;
  if (name == words.use) {
    if (!in->read(name, 1)) {
      vlReadError::post(in, "Premature end of file after USE");
      return 0;
    }
    obj = in->findReference(name);
    if (!obj) {
      vlReadError::post(in, "Unknown reference \"%s\"", name.getString());
    } else if (_state->isOpen(obj)) {
      vlReadError::post(in, "Reference to \"%s\" inside of itself", name.getString());
      obj = nullptr;
    } else if (!_state->mayUse(obj)) {
      vlReadError::post(in, "Nodes are nested too deeply (%d)", vlReadState::MaxDepth);
      obj = nullptr;
    } else if (!_state->mayVisit(obj)) {
      vlReadError::post(in, "The graph is too large (%ld)", vlReadState::MaxVisits);
      obj = nullptr;
    } else {
      _state->use(obj);
    }
    return obj != nullptr;
  }
  if (name != words.def) return readNode(in, name, obj, nullptr);
  ozName className;
  if (!in->read(name, 1) || !in->read(className, 1)) {
    vlReadError::post(in, "Premature end of file after DEF");
    return 0;
  }
  if (!name) {
    vlReadError::post(in, "No name given after ");
    return 0;
  }
  if (!className) {
    vlReadError::post(in, "Invalid definition of %s", name.getString());
    return 0;
  }
  unsigned char const ok = readNode(in, className, obj, &name);
  if (obj) in->addReference(name, obj);
  return ok;
}

static unsigned char expect(vlInput *in, char wanted) {
  char c;
  if (!in->read(c)) {
    vlReadError::post(in, "Expected '%c'; got EOF", wanted);
    return 0;
  }
  if (c == wanted) return 1;
  vlReadError::post(in, "Expected '%c'; got '%c'", wanted, c);
  return 0;
}

unsigned char vlDB::readNode(vlInput *in, ozName &className, ozContainer *&obj, ozName *defName) {
  obj = nullptr;
  if (!expect(in, '{')) return 0;
  unsigned char ok = 0;
  if (_state->mayBegin())
    ok = readNodeInstance(in, className, defName, obj);
  else
    vlReadError::post(in, "Nodes are nested too deeply (%d)", vlReadState::MaxDepth);
  if (ok) return expect(in, '}');
  flushInput(in);
  return 0;
}

unsigned char vlDB::flushInput(vlInput *in) {
  char c;
  for (int depth = 1; depth > 0;) {
    in->skipWhiteSpace();
    if (!in->get(c)) break;
    if (c == '{')
      ++depth;
    else if (c == '}')
      --depth;
  }
  return 1;
}

unsigned char vlDB::readRoute(vlInput *in) {
  unsigned char ok = 1;
  ozField *ends[2] = {nullptr, nullptr};
  static char const *const names[2] = {"source", "destination"};
  static char const *const directions[2] = {"from", "to"};
  for (int end = 0; end < 2; ++end) {
    ozName name;
    ozContainer *node = nullptr;
    if (!in->read(name, 1)) {
      vlReadError::post(in, "Expected node name, got EOF");
      ok = 0;
    } else if (!(node = in->findReference(name))) {
      vlReadError::post(in, "No node named %s to route %s", name.getString(), directions[end]);
      ok = 0;
    }
    char c;
    if (!in->read(c) || c != '.') {
      vlReadError::post(in, "Expected %c, got %c", '.', c);
      ok = 0;
    }
    if (!in->read(name, 1)) {
      vlReadError::post(in, "Expected route %s, got EOF", names[end]);
      ok = 0;
    } else if (node && !(ends[end] = node->getField(name.getString()))) {
      vlReadError::post(in, "No field named %s to route %s", name.getString(), directions[end]);
      ok = 0;
    }
    if (end) break;
    ozString word;
    in->read(word);
    if (!word || strcmp(word.getString(), "TO")) {
      vlReadError::post(in, "Expected %s, got %s", "TO", word.getString() ? word.getString() : "");
      ok = 0;
    }
  }
  if (!ends[0] || !ends[1]) return ok;
  ozType *const type = ends[0]->getType();
  if (type != ends[1]->getType()) {
    vlReadError::post(in, "Cannot route from %s to %s: their values differ in class", ends[0]->getName(),
                      ends[1]->getName());
    return 0;
  }
  if (vlReadState::isReference(type)) {
    if (_state->postpone(ends[0], ends[1])) return ok;
    vlReadError::post(in, "Too many routes between nodes (%u)", vlReadState::MaxReferenceRoutes);
    return 0;
  }
  if (!_state->mayConnect(ends[0], ends[1])) {
    vlReadError::post(in, "A route from %s to %s would make too long a chain", ends[0]->getName(), ends[1]->getName());
    return 0;
  }
  ends[0]->connect(ends[1]);
  return ok;
}
