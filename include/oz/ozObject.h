#ifndef OZ_OBJECT_H
#define OZ_OBJECT_H

#include <stddef.h>

#include "oz/ozPlatform.h"

class ozOutput;
class ozType;

/// Declares a class's pointer to its run-time type, and what gives and makes it. Leaves the class private.
#define OZ_TYPE_POINTER                                                                                                \
public:                                                                                                                \
  static ozType *getClassType() {                                                                                      \
    if (!_ClassType) initClass();                                                                                      \
    return _ClassType;                                                                                                 \
  }                                                                                                                    \
  static void initClass();                                                                                             \
                                                                                                                       \
private:                                                                                                               \
  static ozType *_ClassType

/// Base of everything that is reference counted.
///
/// A new object has count 0 and belongs to nobody. Whoever keeps it calls ref(), and unref() when done; the unref()
/// that finds or leaves the count at 0 deletes the object. Counts may be changed from any thread, all else belongs to
/// one thread at a time.
class OZ_API ozObject {
  OZ_TYPE_POINTER;

public:
  explicit ozObject(ozType *type);
  /// A copy is a duplicate of the header, reference count included: it is no new object with a life of its own.
  ozObject(ozObject const &other);
  ozObject &operator=(ozObject const &other);
  virtual ~ozObject();

  /// Writes the object as text. Does nothing at this level.
  virtual void write(ozOutput *out);

  /// Registers every class of the library, in a fixed order that decides object ids. A second call returns at once.
  static void initClasses();

  /// The class of this object.
  ozType *getType() const { return _type; }
  /// Whether this object's class is t or derives from it.
  unsigned char isOfType(ozType *t) const;

  void ref();
  /// Drops one reference. Returns 1 if the object was deleted: also an object that nobody ever referenced is.
  unsigned char unref();
  /// Drops one reference and never deletes. Returns 1 if the count reached 0.
  unsigned char unrefNoDelete();
  unsigned int getRefCount() const { return _refCount; }

  /// Yields null when memory is out: the library throws nothing.
  static void *operator new(size_t size) noexcept;
  static void *operator new(size_t, void *place) noexcept { return place; }
  static void operator delete(void *object) noexcept;
  static void operator delete(void *, void *) noexcept {}

protected:
  /// The flag word is shared between the class levels; each bit is cleared by the constructor of the level that owns
  /// it.
  enum FlagEnum : unsigned int {
    PARENT_ARRAY_FLAG = 1u << 0, ///< ozContainer: the parent slot holds an array
    CONTAINER_FLAG = 1u << 1,    ///< ozContainer: cleared, carried by copies, free
    PROPAGATING_FLAG = 1u << 3,  ///< ozEngine: output propagation is running
    OBJECT_FLAGS = 0x3f0u,       ///< ozObject: bits 4 to 9, cleared here, without a meaning
    COPIED_FLAGS = 0x3ffu        ///< what a copy carries over
  };
  bool hasFlag(FlagEnum flag) const { return (_flags & flag) != 0; }
  void setFlag(FlagEnum flag, bool on) { _flags = on ? _flags | flag : _flags & ~static_cast<unsigned int>(flag); }

private:
  unsigned int _refCount;
  unsigned int _flags = 0;
  ozType *_type;
};

#endif
