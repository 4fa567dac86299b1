// Fields and their values: the inner half of the parser. A value is read as the field's own class has it.

#include <string.h>

#include "oz/ozMFByte.h"
#include "oz/ozSFRef.h"
#include "oz/vlDB.h"
#include "oz/vlError.h"
#include "oz/vlInput.h"
#include "vrml/readState.h"

unsigned char vlDB::readFields(vlInput *in, ozContainer *container) {
  static ozName const route("ROUTE");
  for (;;) {
    ozName name;
    if (!in->read(name, 1) || !name) return 1;
    if (name == route) {
      readRoute(in);
    } else if (!readvlField(in, container, name)) {
      vlReadError::post(in, "Unknown field %s\n", name.getString());
      return 0;
    }
  }
}

unsigned char vlDB::readvlField(vlInput *in, ozContainer *container, ozName const &name) {
  ozFieldInfo *const info = _state->findField(container, name);
  if (info) return readOrbisField(in, container, info, name);
  vlReadError::post(in, "Could not get orbis field %s\n", name.getString());
  return 0;
}

static unsigned char readFloats(vlInput *in, float *values, int count) {
  for (int i = 0; i < count; ++i)
    if (!in->read(values[i])) return 0;
  return 1;
}

static unsigned char readRotation(vlInput *in, ozRotation &rotation) {
  float v[4];
  if (!readFloats(in, v, 4)) return 0;
  rotation = ozRotation(v[0], v[1], v[2], v[3]);
  return 1;
}

// Stores a value as the field object's set() does. Where there is none yet and it would find nothing to do beside, none
// is made: most fields of a file are only set.
template <class Field, class Value> static void store(ozContainer *container, ozFieldInfo *info, Value const &value) {
  short const id = info->getId();
  if (info->getOffset() && !container->findFieldObject(id) && !container->isFieldPending(id))
    static_cast<typename Field::Description *>(info)->set(container, value);
  else
    static_cast<Field *>(container->getField(id))->set(value);
}

namespace {

// A single-valued field of a container that is being read.
struct Target {
  vlInput *in;
  ozContainer *container;
  ozFieldInfo *info;

  // Reads a value with read(value) and stores it.
  template <class Field, class Read> unsigned char readInto(Read read) const {
    typename Field::Value value;
    if (!read(value)) return 0;
    store<Field>(container, info, value);
    return 1;
  }
  template <class Field> unsigned char readPlain() const {
    return readInto<Field>([this](auto &value) { return in->read(value); });
  }
  // The vectors are stored also after a failed read: meant so.
  template <class Field, int Count> unsigned char readVector() const {
    float v[Count] = {};
    unsigned char const ok = readFloats(in, v, Count);
    store<Field>(container, info, typename Field::Value(v));
    return ok;
  }
};

} // namespace

unsigned char vlDB::readOrbisField(vlInput *in, ozContainer *container, ozFieldInfo *info, ozName const &name) {
  ozType *const type = info->getFieldType();
  auto const is = [type](ozType *t) { return type->isDerivedFrom(t); };
  Target const target{in, container, info};
  if (is(ozMField::getClassType())) {
    if (readMFField(in, type, container->getField(info->getId()))) return 1;
    vlReadError::post(in, "Couldn't read value for field \"%s\"", name.getString());
    return 0;
  }
  if (is(ozSFString::getClassType())) return target.readPlain<ozSFString>();
  if (is(ozSFUByte::getClassType()))
    return target.readInto<ozSFUByte>([in](unsigned char &value) { return in->readBool(value); });
  if (is(ozSFInt::getClassType())) return target.readPlain<ozSFInt>();
  if (is(ozSFEnum::getClassType())) return target.readPlain<ozSFEnum>(); // a number, never the name: meant so
  if (is(ozSFFloat::getClassType())) return target.readPlain<ozSFFloat>();
  if (is(ozSFTime::getClassType())) {
    double seconds;
    if (!in->read(seconds)) return 0;
    store<ozSFTime>(container, info, ozTime(seconds));
    return 1;
  }
  if (is(ozSFVec4f::getClassType())) return target.readVector<ozSFVec4f, 4>();
  if (is(ozSFVec3f::getClassType())) return target.readVector<ozSFVec3f, 3>();
  if (is(ozSFVec2f::getClassType())) return target.readVector<ozSFVec2f, 2>();
  if (is(ozSFRotation::getClassType()))
    return target.readInto<ozSFRotation>([in](ozRotation &value) { return readRotation(in, value); });
  if (is(ozSFRef::getClassType())) {
    ozContainer *obj = nullptr;
    unsigned char const ok = readSFNode(in, obj);
    store<ozSFRef>(container, info, obj);
    return ok;
  }
  float unused[6]; // bounds are accepted and ignored: the library computes them
  if (is(ozSFSphereBound::getClassType())) return readFloats(in, unused, 4);
  if (is(ozSFBoxBound::getClassType())) return readFloats(in, unused, 6);
  vlDebugError::post("vlDB::readOrbisField()", "Unknown field %s", name.getString());
  return 0;
}

// Takes a word, or a character that is in none, which no element wanted.
static void skipJunk(vlInput *in) {
  ozName word;
  char text[2] = {};
  if (in->read(word, 1) && !word) in->get(text[0]);
  vlReadError::post(in, "Skipping \"%.100s\"", !word ? text : word.getString());
}

// Reads one element, or a list of them in brackets: element() reads one and returns whether there was one. An element
// that fails is no error of a list, which goes on behind it.
template <class Element> static unsigned char readElements(vlInput *in, Element element) {
  char c;
  if (!in->read(c)) return 0;
  if (c != '[') {
    in->putBack(c);
    return element();
  }
  if (!in->read(c) || c == ']') return 1;
  in->putBack(c);
  for (;;) {
    in->skipWhiteSpace();
    long const before = in->getTaken();
    element();
    if (in->getTaken() <= before) skipJunk(in);
    if (!in->read(c)) return 1;
    if (c == ',' && !in->read(c)) return 1;
    if (c == ']') return 1;
    in->putBack(c);
  }
}

// Reads a field of values with read(value) for each, and stores them at once: a class that works at every change of
// the field works once.
template <class Field, class Array, class Read>
static unsigned char readValues(vlInput *in, ozField *field, Read read) {
  Array values;
  unsigned char const ok = readElements(in, [&]() -> unsigned char {
    typename Array::Value value;
    if (!read(value)) return 0;
    unsigned int const count = values.getCount();
    if (count == values.getSize()) values.setExtension(count / 2 + 32);
    values.append(value);
    return 1;
  });
  if (values.getCount()) static_cast<Field *>(field)->setRange(0, values.getCount(), values.getArray());
  return ok;
}

template <class Field, class Array, int Count> static unsigned char readVectors(vlInput *in, ozField *field) {
  return readValues<Field, Array>(in, field, [in](typename Array::Value &value) {
    float v[Count];
    if (!readFloats(in, v, Count)) return false;
    value = typename Array::Value(v);
    return true;
  });
}

unsigned char vlDB::readMFField(vlInput *in, ozType *type, ozField *field) {
  auto const is = [type](ozType *t) { return type->isDerivedFrom(t); };
  auto const plain = [in](auto &value) { return in->read(value); };
  if (is(ozMFString::getClassType())) {
    bool first = true;
    ozStringArray values;
    unsigned char const ok = readElements(in, [&]() -> unsigned char {
      ozString value;
      if (!in->read(value)) return 0;
      if (first) _lastFirstString = value;
      first = false;
      values.append(value);
      return 1;
    });
    if (values.getCount()) static_cast<ozMFString *>(field)->setRange(0, values.getCount(), values.getArray());
    values.freeTexts();
    return ok;
  }
  if (is(ozMFInt::getClassType())) return readValues<ozMFInt, ozIntArray>(in, field, plain);
  if (is(ozMFFloat::getClassType())) return readValues<ozMFFloat, ozFloatArray>(in, field, plain);
  if (is(ozMFVec3f::getClassType())) return readVectors<ozMFVec3f, ozVec3fArray, 3>(in, field);
  if (is(ozMFVec2f::getClassType())) return readVectors<ozMFVec2f, ozVec2fArray, 2>(in, field);
  if (is(ozMFRotation::getClassType()))
    return readValues<ozMFRotation, ozRotationArray>(in, field, [in](ozRotation &v) { return readRotation(in, v); });
  bool const refers = is(ozMFRef::getClassType());
  int index = 0;
  return readElements(in, [&]() -> unsigned char { return refers && readMFElt(in, field, index); });
}

// Reads an element of a reference field. NULL counts and is not stored.
unsigned char vlDB::readMFElt(vlInput *in, ozField *field, int &index) {
  ozContainer *obj = nullptr;
  if (!readSFNode(in, obj)) return 0;
  unsigned int const at = static_cast<unsigned int>(index++);
  ozMFRef *const refs = static_cast<ozMFRef *>(field);
  if (at >= 64 && at >= refs->getSize()) refs->setExtension(at / 2); // a long list grows in ever larger steps
  if (obj) refs->set(at, obj);
  return 1;
}

unsigned char vlDB::readSFNode(vlInput *in, ozContainer *&obj) {
  char word[16];
  if (in->peekWord(word, sizeof word) && !strcmp(word, "NULL")) {
    ozString token;
    in->read(token);
    obj = nullptr;
    return 1;
  }
  if (readObject(in, obj)) return 1;
  obj = nullptr;
  return 0;
}
