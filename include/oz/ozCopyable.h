#ifndef OZ_COPYABLE_H
#define OZ_COPYABLE_H

#include "oz/ozClass.h"

/// @file
/// Copy construction and assignment of containers that own arrays or count references. Both copy the values of the
/// fields, share what reference fields refer to, and leave name, user data, parents and connections alone: the copy is an
/// object of its own, with count 0. To copy those as well see ozContainer::copy() and clone().

/// Declares the copy constructor and the assignment.
#define OZ_COPYABLE(Class)                                                                                             \
public:                                                                                                                \
  Class(Class const &other);                                                                                           \
  Class &operator=(Class const &other);                                                                                \
                                                                                                                       \
private:

/// Copies the members of the fields of one class level into a fresh object, without telling anybody.
OZ_API void ozCopyFields(ozType *level, ozContainer *fresh, ozContainer const *from);
/// Sets the fields of one class level from those of another object.
OZ_API void ozAssignFields(ozType *level, ozContainer *to, ozContainer const *from);

/// Defines both for a class that has nothing to copy but its fields.
#define OZ_DEFINE_COPIES(Class, Parent)                                                                                \
  Class::Class(Class const &other) : Parent(other) {                                                                   \
    initFieldDefaults(_ClassType);                                                                                     \
    ozCopyFields(_ClassType, this, &other);                                                                            \
  }                                                                                                                    \
  Class &Class::operator=(Class const &other) {                                                                        \
    if (this == &other) return *this;                                                                                  \
    Parent::operator=(other);                                                                                          \
    ozAssignFields(_ClassType, this, &other);                                                                          \
    return *this;                                                                                                      \
  }

#endif
