#ifndef OZ_COPYABLE_H
#define OZ_COPYABLE_H

#include "oz/ozClass.h"

/// @file
/// Copy construction and assignment of containers that own arrays or count references. Both copy the values of the
/// fields, share what reference fields refer to, and leave name, user data, parents and connections alone: the copy is
/// an object of its own, with count 0. To copy those as well see ozContainer::copy() and clone().

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

#endif
