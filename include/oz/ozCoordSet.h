#ifndef OZ_COORD_SET_H
#define OZ_COORD_SET_H

#include "oz/ozCopyable.h"
#include "oz/ozGLAttr.h"
#include "oz/ozMFByte.h"

/// @file
/// The attribute sets: small containers of one multi-valued field each, which geometry sets share by reference. The
/// abstract classes say what a set is for, the concrete ones how its elements are stored.

/// What all sets of values have in common. No class of its own at run time.
class OZ_API ozValueSet : public ozContainer {
protected:
  explicit ozValueSet(ozType *type) : ozContainer(type), _edits(0), _place(0) {}
  void fieldChanged(short id) override;
  void dirtyFieldOutputs(ozField *f) override;

  /// Where the library's classes keep their values; null in an application's own.
  ozArray *elements() {
    return _place ? reinterpret_cast<ozArray *>(reinterpret_cast<char *>(this) + _place) : nullptr;
  }
  void setElements(ozArray *elements) {
    _place = static_cast<int>(reinterpret_cast<char *>(elements) - reinterpret_cast<char *>(this));
  }

  unsigned int _edits; ///< counts changes, so that geometry sets test what they are given once a change

private:
  friend class ozGeoSet;
  void tellGeoSets();
  int _place; // of the elements, from the start of the object
};

/// Declares an abstract attribute set.
#define OZ_ATTRIBUTE_BASE(Class)                                                                                       \
  OZ_ABSTRACT_CLASS(Class);                                                                                            \
  OZ_COPYABLE(Class)                                                                                                   \
                                                                                                                       \
public:                                                                                                                \
  /** Describes the elements to the drawing code: data, stride, size, type and call, but not the index. */             \
  virtual void getGLAttr(ozGLAttr &attr) = 0

/// Declares what every set with a field has: its constructors and the accessor of the field.
#define OZ_VALUE_SET(Class, Field, Array, accessor)                                                                    \
  OZ_CLASS(Class);                                                                                                     \
  OZ_COPYABLE(Class)                                                                                                   \
                                                                                                                       \
public:                                                                                                                \
  Class();                                                                                                             \
  /** Makes room for so many elements; there are none yet. */                                                          \
  explicit Class(int room);                                                                                            \
  /** A view on shared data: element 0 at byte `offset`, then one every `stride` bytes. Holds a reference on the data. \
   */                                                                                                                  \
  Class(ozData *data, short stride, short offset);                                                                     \
  /** The field that holds the elements. */                                                                            \
  Field *accessor() const {                                                                                            \
    ozContainer *const self = const_cast<Class *>(this);                                                               \
    return static_cast<Field *>(self->getField(0));                                                                    \
  }                                                                                                                    \
                                                                                                                       \
protected:                                                                                                             \
  Class(ozType *type, int room);                                                                                       \
  Class(ozType *type, ozData *data, short stride, short offset);                                                       \
  void init();                                                                                                         \
                                                                                                                       \
private:                                                                                                               \
  Array _values

/// Declares a concrete attribute set.
#define OZ_ATTRIBUTE_SET(Class, Field, Array, accessor)                                                                \
  OZ_VALUE_SET(Class, Field, Array, accessor);                                                                         \
                                                                                                                       \
public:                                                                                                                \
  void getGLAttr(ozGLAttr &attr) override

/// The vertices of a geometry set. A change is told to the geometry sets that use it.
class OZ_API ozCoordSet : public ozValueSet {
  OZ_ATTRIBUTE_BASE(ozCoordSet);

protected:
  void fieldChanged(short id) override;
};

/// Vertices of three floats.
class OZ_API ozCoordSet3f : public ozCoordSet {
  OZ_ATTRIBUTE_SET(ozCoordSet3f, ozMFVec3f, ozVec3fArray, point);
};

/// Normals of a geometry set.
class OZ_API ozNormalSet : public ozValueSet {
  OZ_ATTRIBUTE_BASE(ozNormalSet);
};

/// Normals of three floats.
class OZ_API ozNormalSet3f : public ozNormalSet {
  OZ_ATTRIBUTE_SET(ozNormalSet3f, ozMFVec3f, ozVec3fArray, vector);
};

/// Normals of three shorts, 32767 standing for 1. For drawing only: the culling of back primitives takes no notice of
/// them.
class OZ_API ozNormalSet3s : public ozNormalSet {
  OZ_ATTRIBUTE_SET(ozNormalSet3s, ozMFVec3s, ozVec3sArray, vector);
};

/// Colours of a geometry set.
class OZ_API ozColorSet : public ozValueSet {
  OZ_ATTRIBUTE_BASE(ozColorSet);
};

/// Colours of red, green and blue.
class OZ_API ozColorSet3f : public ozColorSet {
  OZ_ATTRIBUTE_SET(ozColorSet3f, ozMFVec3f, ozVec3fArray, color);
};

/// Colours of red, green, blue and alpha.
class OZ_API ozColorSet4f : public ozColorSet {
  OZ_ATTRIBUTE_SET(ozColorSet4f, ozMFVec4f, ozVec4fArray, color);
};

/// Texture coordinates of a geometry set.
class OZ_API ozTexCoordSet : public ozValueSet {
  OZ_ATTRIBUTE_BASE(ozTexCoordSet);
};

/// Texture coordinates of two floats.
class OZ_API ozTexCoordSet2f : public ozTexCoordSet {
  OZ_ATTRIBUTE_SET(ozTexCoordSet2f, ozMFVec2f, ozVec2fArray, point);
};

/// Indices into an attribute set. Geometry sets compare index sets by address: attributes that share one are drawn
/// through vertex arrays.
class OZ_API ozIndexSet : public ozValueSet {
  OZ_VALUE_SET(ozIndexSet, ozMFInt, ozIntArray, index);
};

#endif
