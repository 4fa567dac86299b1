#ifndef OZ_CLASS_H
#define OZ_CLASS_H

#include "oz/ozContainer.h"
#include "oz/ozType.h"

/// @file
/// The protocol that every class of the library follows, written once.
///
/// In the header, ahead of everything else in the class:
///
///     class OZ_API ozThing : public ozNode {
///       OZ_CLASS(ozThing);
///     public:
///       ozThing();
///       ...
///
/// and in the source its name, its parent and its fields:
///
///     OZ_DEFINE_CLASS(ozThing, "Thing", ozNode) {
///       ozSFFloat::addTypeField(type, "size", 2, 1.0f, &ozThing::_size);
///     }
///
/// A class with work of its own in the constructor or destructor uses OZ_DEFINE_TYPE and OZ_DEFINE_INSTANCES and writes
/// these two itself: the constructor calls initFieldDefaults(_ClassType), the destructor
/// destroyFieldContents(_ClassType).

/// Declares the run-time type alone: for classes that are no containers.
#define OZ_OBJECT_CLASS(Class)                                                                                         \
  OZ_TYPE_POINTER;                                                                                                     \
  static void addFields(ozType *type)

/// Declares a container class that has no instances of its own.
#define OZ_ABSTRACT_CLASS(Class)                                                                                       \
protected:                                                                                                             \
  explicit Class(ozType *type);                                                                                        \
                                                                                                                       \
public:                                                                                                                \
  ~Class() override;                                                                                                   \
  OZ_OBJECT_CLASS(Class)

/// Declares a container class with instances.
#define OZ_CLASS(Class)                                                                                                \
public:                                                                                                                \
  ozContainer *instantiate() override;                                                                                 \
  OZ_ABSTRACT_CLASS(Class)

/// Defines the run-time type; the block that follows adds the fields to `type`. First makes sure that Earlier is
/// registered, which a class needs whose instances own graphics state (Earlier is then ozContext).
#define OZ_DEFINE_TYPE_AFTER(Class, Name, Parent, Earlier)                                                             \
  ozType *Class::_ClassType = nullptr;                                                                                 \
  void Class::initClass() {                                                                                            \
    Earlier::getClassType();                                                                                           \
    ozType *parent = Parent::getClassType();                                                                           \
    if (_ClassType) return;                                                                                            \
    _ClassType = new ozType(parent, Name);                                                                             \
    if (_ClassType) addFields(_ClassType);                                                                             \
  }                                                                                                                    \
  void Class::addFields([[maybe_unused]] ozType *type)

/// Defines the run-time type; the block that follows adds the fields to `type`.
#define OZ_DEFINE_TYPE(Class, Name, Parent) OZ_DEFINE_TYPE_AFTER(Class, Name, Parent, Parent)

/// Defines the default constructor and instantiate().
#define OZ_DEFINE_INSTANCES(Class)                                                                                     \
  Class::Class() : Class(getClassType()) {}                                                                            \
  ozContainer *Class::instantiate() { return new Class; }

/// Defines a constructor and a destructor that do no more than what every class level does with its own fields.
#define OZ_DEFINE_LEVEL(Class, Parent)                                                                                 \
  Class::Class(ozType *type) : Parent(type) { initFieldDefaults(_ClassType); }                                         \
  Class::~Class() { destroyFieldContents(_ClassType); }

/// Defines a class without instances, whole; the block that follows adds the fields to `type`.
#define OZ_DEFINE_ABSTRACT_CLASS(Class, Name, Parent)                                                                  \
  OZ_DEFINE_LEVEL(Class, Parent)                                                                                       \
  OZ_DEFINE_TYPE(Class, Name, Parent)

/// Defines a class, whole; the block that follows adds the fields to `type`.
#define OZ_DEFINE_CLASS(Class, Name, Parent)                                                                           \
  OZ_DEFINE_INSTANCES(Class)                                                                                           \
  OZ_DEFINE_ABSTRACT_CLASS(Class, Name, Parent)

#endif
