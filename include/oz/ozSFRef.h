#ifndef OZ_SF_REF_H
#define OZ_SF_REF_H

#include "oz/ozMFByte.h"

/// @file
/// The reference fields, which are the edges of the graph. They count what they hold, enter the container as its parent
/// and check its type.

/// What the descriptions of both reference fields add: the class that everything stored must derive from.
class OZ_API ozRefInfo : public ozFieldInfo {
public:
  ozRefInfo(char const *name, short id, char ozContainer::*member, ozType *refType)
      : ozFieldInfo(name, id, member), _refType(refType) {}
  ozType *getRefType() const { return _refType; }
  /// Whether c may not be stored in the container's field; if so, says why on the standard error stream.
  int isBadType(ozContainer *c, char const *where, ozContainer *parent) const;

private:
  ozType *_refType;
};

class OZ_API ozSFRefInfo : public ozRefInfo {
public:
  ozSFRefInfo(char const *name, short id, char ozContainer::*member, ozType *refType);
  ozField *instantiate(ozContainer *container) override;
  void reset(ozContainer *container) override;
  using ozFieldInfo::write;
  void write(ozOutput *out, ozContainer *container) override;
  unsigned char isDefault(ozContainer *container) override;
  /// For a fresh destination: what it holds is not released.
  void copy(ozContainer *dst, ozContainer *src) override;
  /// What the field object's set() does, where a member holds the value and nothing else is known of the field: it
  /// makes no such object.
  void set(ozContainer *container, ozContainer *c);
  ozContainer *&member(ozContainer *container) const { return *static_cast<ozContainer **>(getStorage(container)); }
};

/// A field that refers to one container, or to none.
class OZ_API ozSFRef : public ozField {
  OZ_TYPE_POINTER;

public:
  typedef ozSFRefInfo Description;

  ozSFRef(ozContainer *parent, short id);
  ~ozSFRef() override;

  ozType *getType() const override { return getClassType(); }
  void copy(ozField *source) override;

  ozContainer *get() {
    validate();
    return *_value;
  }
  /// Refers to c (null is always accepted) and releases what was there. A c of a wrong class is refused with a message.
  void set(ozContainer *c);
  int isBadType(ozContainer *c, char const *where);

  /// Adds a field to a class; the member is a pointer to a container class, refType what is accepted.
  template <class Container, class Target>
  static void addTypeField(ozType *type, char const *name, short id, ozType *refType, Target *Container::*member) {
    addInfo(type, name, id, refType, ozMember(member));
  }
  static void addTypeField(ozType *type, char const *name, short id, ozType *refType,
                           ozContainer *ozContainer::*member) {
    addInfo(type, name, id, refType, ozMember(member));
  }

private:
  static void addInfo(ozType *type, char const *name, short id, ozType *refType, char ozContainer::*member);

  ozContainer **_value;
};

class OZ_API ozMFRefInfo : public ozRefInfo {
public:
  ozMFRefInfo(char const *name, short id, char ozContainer::*member, ozType *refType);
  ozField *instantiate(ozContainer *container) override;
  void reset(ozContainer *container) override;
  using ozFieldInfo::write;
  void write(ozOutput *out, ozContainer *container) override;
  unsigned char isDefault(ozContainer *container) override;
  /// For a fresh destination: what it holds is not released.
  void copy(ozContainer *dst, ozContainer *src) override;
  ozRefArray &member(ozContainer *container) const { return *static_cast<ozRefArray *>(getStorage(container)); }
  /// What the field object's append() does; makes no such object.
  void append(ozContainer *container, ozContainer *c);
};

/// A field that refers to any number of containers.
class OZ_API ozMFRef : public ozMField {
  OZ_TYPE_POINTER;

public:
  ozMFRef(ozContainer *parent, short id);
  ~ozMFRef() override;

  ozType *getType() const override { return getClassType(); }
  void copy(ozField *source) override;

  ozRefArray const &get() {
    validate();
    return array();
  }
  ozContainer *get(unsigned int i) { return get()[i]; }
  ozContainer *operator[](unsigned int i) { return get()[i]; }
  void getRange(unsigned int start, unsigned int n, ozContainer **out) { get().getRange(start, n, out); }
  long int find(ozContainer *c) { return get().find(c); }
  /// The raw array. An edit made there bypasses counts and type checks.
  ozContainer **edit() {
    validate();
    return array().getArray();
  }

  // Each checks the types first and changes nothing where one is wrong, with a message.
  void set(ozRefArray const &values);
  void set(unsigned int i, ozContainer *c);
  void setRange(unsigned int start, unsigned int n, ozContainer *const *values);
  /// Counts c once, however large n is, and begins behind the existing elements of the range: meant so.
  void fillRange(unsigned int start, unsigned int n, ozContainer *c);
  void append(ozContainer *c);
  void insert(unsigned int i, ozContainer *c);

  unsigned char remove(ozContainer *c);
  unsigned char fastRemove(ozContainer *c);
  void removeIndex(unsigned int i);
  void fastRemoveIndex(unsigned int i);
  /// Puts `now` in the place of the first `old`, without a check of its type; returns the index, -1 if there was none.
  long int replace(ozContainer *old, ozContainer *now);
  int isBadType(ozContainer *c, char const *where);

  /// Adds a field to a class; refType is what is accepted.
  template <class Container, class Member>
  static void addTypeField(ozType *type, char const *name, short id, ozType *refType, Member Container::*member) {
    static_assert(std::is_base_of<ozRefArray, Member>::value, "the member must be an ozRefArray");
    addInfo(type, name, id, refType, ozMember(member));
  }
  static void addTypeField(ozType *type, char const *name, short id, ozType *refType, ozRefArray ozContainer::*member) {
    addInfo(type, name, id, refType, ozMember(member));
  }

private:
  static void addInfo(ozType *type, char const *name, short id, ozType *refType, char ozContainer::*member);
  ozRefArray &array() const { return *static_cast<ozRefArray *>(_array); }
  unsigned int releaseRange(unsigned int start, unsigned int end);
  void releaseFrom(unsigned int n) override;
  void clearUpTo(unsigned int was);
};

#endif
