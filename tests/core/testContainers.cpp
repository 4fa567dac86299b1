#include "testContainers.h"

#include <stdlib.h>

int Thing::Alive = 0;

Thing::Thing(ozType *type) : ozContainer(type) {
  initFieldDefaults(_ClassType);
  ++Alive;
}
Thing::~Thing() {
  destroyFieldContents(_ClassType);
  --Alive;
}
OZ_DEFINE_INSTANCES(Thing)
OZ_DEFINE_TYPE(Thing, "Thing", ozContainer) {
  static char const *const names[] = {"RED", "GREEN", "BLUE"};
  static int const values[] = {RED, GREEN, BLUE};
  ozSFInt::addTypeField(type, "number", NUMBER, 7, &Thing::_number);
  ozSFFloat::addTypeField(type, "value", VALUE, 1.5f, &Thing::_value);
  ozSFEnum::addTypeField(type, "color", COLOR, GREEN, &Thing::_color);
  type->defineEnums(COLOR, 3, names, values);
  ozMFVec3f::addTypeField(type, "points", POINTS, &Thing::_points);
  ozSFRef::addTypeField(type, "other", OTHER, type, &Thing::_other);
  ozMFRef::addTypeField(type, "others", OTHERS, type, &Thing::_others);
  ozSFString::addTypeField(type, "text", TEXT, ozString(), &Thing::_text);
  ozSFInt::addTypeField(type, "orphan", ORPHAN, 42, nullptr);
  ozMFVec3f::addTypeField(type, "orphans", ORPHANS, nullptr);
  ozSFInt::addTypeField(type, "derived", DERIVED, 0, &Thing::_derived);
}

OZ_DEFINE_CLASS(SpecialThing, "SpecialThing", Thing) {
  ozSFInt::addTypeField(type, "extra", DERIVED + 1, 3, &SpecialThing::_extra);
}

OZ_DEFINE_CLASS(Stranger, "Stranger", ozContainer) { ozSFInt::addTypeField(type, "size", 0, 0, &Stranger::_size); }

std::string textOf(ozObject *object) {
  char *text = nullptr;
  size_t size = 0;
  FILE *const file = open_memstream(&text, &size);
  {
    ozOutput out(file);
    object->write(&out);
  }
  fclose(file);
  std::string const result(text, size);
  free(text);
  return result;
}
