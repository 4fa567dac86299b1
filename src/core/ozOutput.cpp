// The writer of graphs: DEF at an object's first appearance, USE from then on.

#include "oz/ozOutput.h"

#include "oz/ozContainer.h"
#include "oz/ozDict.h"
#include "oz/ozType.h"

static unsigned int const Buckets = 1021;

ozOutput::ozOutput(FILE *file)
    : _indent(0), _nextNumber(0), _file(file), _named(new ozDict(Buckets)), _numbered(new ozDict(Buckets)),
      _ownsFile(0), _open(new ozDict(Buckets)) {}

ozOutput::ozOutput(char const *path) : ozOutput(fopen(path, "w")) { _ownsFile = 1; }

ozOutput::~ozOutput() {
  if (_file) {
    fflush(_file);
    if (_ownsFile) fclose(_file);
  }
  delete _named;
  delete _numbered;
  delete _open;
}

void ozOutput::indent() {
  for (int i = 0; i < _indent; ++i) fputs("  ", _file);
}

void ozOutput::newLine() { fputs("\n", _file); }

static unsigned long keyOf(ozContainer *object) { return reinterpret_cast<unsigned long>(object); }

int ozOutput::addInstance(ozContainer *object) {
  if (object->getName()) {
    _named->enter(keyOf(object), const_cast<char *>(object->getName()));
    return -1;
  }
  _numbered->enter(keyOf(object), reinterpret_cast<void *>(static_cast<long>(_nextNumber)));
  return _nextNumber++;
}

int ozOutput::alreadyWritten(ozContainer *object, int &number) {
  void *value = nullptr;
  if (_named->find(keyOf(object), value)) {
    number = -1;
    return 1;
  }
  if (!_numbered->find(keyOf(object), value)) return 0;
  number = static_cast<int>(reinterpret_cast<long>(value));
  return 1;
}

bool ozOutput::begin(ozContainer *object) {
  if (_open->enter(keyOf(object), object)) return true;
  fprintf(stderr, "ozOutput: the graph to be written holds a cycle through a %s\n", object->getType()->getName());
  return false;
}

void ozOutput::end(ozContainer *object) { _open->remove(keyOf(object)); }

void ozContainer::write(ozOutput *out) { writeFields(out, nullptr, getFieldInfoCount()); }

void ozContainer::writeFields(ozOutput *out, short const *ids, int count) {
  cleanFields();
  bool const first = out->begin(this);
  if (!writeHeader(out)) {
    for (int i = 0; first && i < count; ++i) {
      ozFieldInfo *const info = getFieldInfo(ids ? ids[i] : static_cast<short>(i));
      if (info->getOffset()) info->write(out, this);
    }
    out->popIndent();
    out->indent();
    fputs("}", out->getFile());
    fflush(out->getFile());
  }
  if (first) out->end(this);
}

int ozContainer::writeHeader(ozOutput *out) {
  int number = -1;
  if (getParentCount() > 1) {
    if (out->alreadyWritten(this, number)) {
      if (_name)
        fprintf(out->getFile(), "USE %s", _name);
      else
        fprintf(out->getFile(), "USE Obj%d", number);
      return 1;
    }
    number = out->addInstance(this);
  }
  out->newLine();
  out->indent();
  if (_name)
    fprintf(out->getFile(), "DEF %s ", _name);
  else if (number >= 0)
    fprintf(out->getFile(), "DEF Obj%d ", number);
  fprintf(out->getFile(), "%s {\n", getType()->getName());
  out->pushIndent();
  return 0;
}
