#include "oz/ozCoordSet.h"

#include "oz/ozGeoSet.h"

#include <GL/gl.h>

// ---- the abstract classes

#define OZ_DEFINE_ATTRIBUTE_BASE(Class, Name)                                                                          \
  Class::Class(Class const &other) : Class(other.getType()) {}                                                         \
  Class &Class::operator=(Class const &) { return *this; }                                                             \
  OZ_DEFINE_ABSTRACT_CLASS(Class, Name, ozValueSet) {}

OZ_DEFINE_ATTRIBUTE_BASE(ozCoordSet, "CoordSet")
OZ_DEFINE_ATTRIBUTE_BASE(ozNormalSet, "NormalSet")
OZ_DEFINE_ATTRIBUTE_BASE(ozColorSet, "ColorSet")
OZ_DEFINE_ATTRIBUTE_BASE(ozTexCoordSet, "TexCoordSet")

// What a geometry set keeps of its sets from one draw to the next holds until one of them tells of a change to come.
void ozValueSet::tellGeoSets() {
  for (int i = 0; i < getParentCount(); ++i)
    if (getParent(i)->isOfType(ozGeoSet::getClassType())) static_cast<ozGeoSet *>(getParent(i))->forgetReach();
}

void ozValueSet::fieldChanged(short id) {
  ++_edits;
  tellGeoSets();
  ozContainer::fieldChanged(id);
}

void ozValueSet::dirtyFieldOutputs(ozField *f) {
  tellGeoSets();
  ozContainer::dirtyFieldOutputs(f);
}

void ozCoordSet::fieldChanged(short id) {
  notifyParents(id);
  ozValueSet::fieldChanged(id);
}

// ---- the concrete classes

// Copies are constructed and assigned as the parent level says (Copy, Assign), then comes the one field of this level.
#define OZ_DEFINE_VALUE_SET(Class, Name, Parent, Copy, Assign, Field, fieldName)                                       \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  Class::Class(ozType *type) : Parent(type) { init(); }                                                                \
  Class::Class(int room) : Class(getClassType(), room) {}                                                              \
  Class::Class(ozType *type, int room) : Parent(type), _values(room > 0 ? static_cast<unsigned int>(room) : 0u) {      \
    init();                                                                                                            \
  }                                                                                                                    \
  Class::Class(ozData *data, short stride, short offset) : Class(getClassType(), data, stride, offset) {}              \
  Class::Class(ozType *type, ozData *data, short stride, short offset) : Parent(type), _values(data, offset, stride) { \
    init();                                                                                                            \
  }                                                                                                                    \
  Class::Class(Class const &other) : Parent(Copy) {                                                                    \
    init();                                                                                                            \
    ozCopyFields(_ClassType, this, &other);                                                                            \
  }                                                                                                                    \
  Class &Class::operator=(Class const &other) {                                                                        \
    if (this == &other) return *this;                                                                                  \
    Assign;                                                                                                            \
    ozAssignFields(_ClassType, this, &other);                                                                          \
    return *this;                                                                                                      \
  }                                                                                                                    \
  Class::~Class() { destroyFieldContents(_ClassType); }                                                                \
  void Class::init() {                                                                                                 \
    setElements(&_values);                                                                                             \
    initFieldDefaults(_ClassType);                                                                                     \
  }                                                                                                                    \
  OZ_DEFINE_TYPE(Class, Name, Parent) { Field::addTypeField(type, fieldName, 0, &Class::_values); }

// What the attributes add: how OpenGL takes an element.
#define OZ_DEFINE_ATTRIBUTE_SET(Class, Name, Parent, Field, fieldName, function, glType, components, slack)            \
  OZ_DEFINE_VALUE_SET(Class, Name, Parent, other, Parent::operator=(other), Field, fieldName)                          \
  void Class::getGLAttr(ozGLAttr &attr) {                                                                              \
    validateField(0);                                                                                                  \
    keepSlack(_values, slack);                                                                                         \
    attr.data = reinterpret_cast<char *>(_values.getArray());                                                          \
    attr.stride = static_cast<short>(_values.getStride());                                                             \
    attr.glFunc = reinterpret_cast<void (*)(void const *)>(function);                                                  \
    attr.size = components;                                                                                            \
    attr.type = glType;                                                                                                \
  }

// Room for elements behind the last one, which a view on shared data cannot be given.
static void keepSlack(ozArray &values, unsigned int slack) {
  if (slack && values.getSize() < values.getCount() + slack && !values.getData())
    values.setSize(values.getCount() + slack);
}

OZ_DEFINE_ATTRIBUTE_SET(ozCoordSet3f, "CoordSet3f", ozCoordSet, ozMFVec3f, "point", glVertex3fv, GL_FLOAT, 3, 0)
OZ_DEFINE_ATTRIBUTE_SET(ozNormalSet3f, "NormalSet3f", ozNormalSet, ozMFVec3f, "vector", glNormal3fv, GL_FLOAT, 3, 0)
OZ_DEFINE_ATTRIBUTE_SET(ozNormalSet3s, "NormalSet3s", ozNormalSet, ozMFVec3s, "vector3s", glNormal3sv, GL_SHORT, 3, 0)
OZ_DEFINE_ATTRIBUTE_SET(ozColorSet4f, "ColorSet4f", ozColorSet, ozMFVec4f, "color", glColor4fv, GL_FLOAT, 4, 0)
OZ_DEFINE_ATTRIBUTE_SET(ozTexCoordSet2f, "TexCoordSet2f", ozTexCoordSet, ozMFVec2f, "point", glTexCoord2fv, GL_FLOAT, 2,
                        0)

// One more: the screen door reads a fourth float behind each colour, behind the last one too.
OZ_DEFINE_ATTRIBUTE_SET(ozColorSet3f, "ColorSet3f", ozColorSet, ozMFVec3f, "color", glColor3fv, GL_FLOAT, 3, 1)

OZ_DEFINE_VALUE_SET(ozIndexSet, "IndexSet", ozValueSet, other.getType(), (void)0, ozMFInt, "index")
