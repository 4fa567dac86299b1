#ifndef OZ_FIELD_INFO_ARRAY_H
#define OZ_FIELD_INFO_ARRAY_H

#include "oz/ozPtrArray.h"

class ozContainer;
class ozField;
class ozFieldInfo;

/// An array of field descriptions.
class OZ_API ozFieldInfoArray : public ozPtrArrayOf<ozFieldInfoArray, ozFieldInfo> {
public:
  using ozPtrArrayOf::ozPtrArrayOf;
};

/// An array of field objects. Null entries are left out when it is written.
class OZ_API ozFieldArray : public ozPtrArrayOf<ozFieldArray, ozField> {
public:
  using ozPtrArrayOf::ozPtrArrayOf;
  void write(ozOutput *out) const;
};

/// An array of containers. It holds the pointers alone: counting is the business of the field around it. Null entries
/// are left out when it is written.
class OZ_API ozRefArray : public ozPtrArrayOf<ozRefArray, ozContainer> {
public:
  using ozPtrArrayOf::ozPtrArrayOf;
  void write(ozOutput *out) const;
};

/// An array of containers that keeps a few of them in itself: what most nodes refer to.
template <unsigned int ROOM> class ozShortRefArray : public ozRefArray {
public:
  ozShortRefArray() : ozRefArray(_room, ROOM), _room() {}

private:
  void *_room[ROOM];
};

#endif
