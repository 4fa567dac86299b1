#ifndef OZ_TESTS_CORE_CONTAINERS_H
#define OZ_TESTS_CORE_CONTAINERS_H

// Small container classes that the tests of fields, containers, copying and output share.

#include <string>
#include <vector>

#include "oz/OzScene3D.h"

/// A container with a field of each sort, which notes what happens to it.
class Thing : public ozContainer {
  OZ_CLASS(Thing);

public:
  enum ColorEnum : int { RED = 0, GREEN = 1, BLUE = 2 };
  enum : short { NUMBER, VALUE, COLOR, POINTS, OTHER, OTHERS, TEXT, ORPHAN, ORPHANS, DERIVED };

  Thing();

  int getNumber() { return read(NUMBER, _number); }
  void setNumber(int n) { store(NUMBER, _number, n); }
  float getValue() { return read(VALUE, _value); }
  void setValue(float v) { store(VALUE, _value, v); }
  int getDerived() { return read(DERIVED, _derived); }
  ozContainer *getOther() { return read(OTHER, _other); }
  void setOther(Thing *other) { storeRef(OTHER, _other, other); }

  ozSFInt *number() { return static_cast<ozSFInt *>(getField(NUMBER)); }
  ozSFFloat *value() { return static_cast<ozSFFloat *>(getField(VALUE)); }
  ozSFEnum *color() { return static_cast<ozSFEnum *>(getField(COLOR)); }
  ozMFVec3f *points() { return static_cast<ozMFVec3f *>(getField(POINTS)); }
  ozSFRef *other() { return static_cast<ozSFRef *>(getField(OTHER)); }
  ozMFRef *others() { return static_cast<ozMFRef *>(getField(OTHERS)); }

  using ozContainer::addParent;
  using ozContainer::dirtyFieldOutputs;
  using ozContainer::internalCleanFields;
  using ozContainer::notifyParents;
  using ozContainer::propagateSideEffect;
  using ozContainer::refer;
  using ozContainer::removeParent;
  using ozContainer::touchField;
  using ozContainer::unrefer;

  static int Alive;
  std::vector<short> changes;                                // ids that fieldChanged was called with
  std::vector<std::pair<ozContainer *, short>> childChanges; // what childChanged was called with
  int cleanings = 0;                                         // calls of cleanSideEffect
  bool stubborn = false;                                     // does not let its inputs be cleaned

  int _number;
  float _value;
  ColorEnum _color;
  ozVec3fArray _points;
  ozContainer *_other;
  ozRefArray _others;
  ozString _text;
  int _derived;

protected:
  void fieldChanged(short id) override {
    changes.push_back(id);
    ozContainer::fieldChanged(id);
  }
  void childChanged(ozContainer *child, short id) override { childChanges.push_back({child, id}); }
  void cleanSideEffect(short id) override {
    ++cleanings;
    if (id == DERIVED) _derived = _number * 2;
  }
  void cleanFieldInputs(ozField *f) override {
    if (!stubborn) ozContainer::cleanFieldInputs(f);
  }
};

/// A class below Thing with one field more.
class SpecialThing : public Thing {
  OZ_CLASS(SpecialThing);

public:
  SpecialThing();
  int _extra;
};

/// A class of its own, which no reference field of Thing accepts.
class Stranger : public ozContainer {
  OZ_CLASS(Stranger);

public:
  Stranger();
  int _size;
};

/// What an object and the graph below it write.
std::string textOf(ozObject *object);

#endif
