#ifndef OZ_OBJECT_ID_H
#define OZ_OBJECT_ID_H

#include "oz/ozPlatform.h"

class ozContext;

/// What contexts know an object by whose OpenGL image can go stale: an id, unique among all living objects, and a
/// version, which starts at 1 and grows with each change. A context keeps the last version that it has seen, so an
/// object stays right in any number of contexts without telling them anything.
class OZ_API ozObjectId {
public:
  /// Takes an id from ozContext::newId. The class of the owner must have registered ozContext ahead of itself.
  ozObjectId();
  /// A copy is another object: it has an id of its own.
  ozObjectId(ozObjectId const &) : ozObjectId() {}
  ozObjectId &operator=(ozObjectId const &) { return changed(), *this; }
  /// Gives the id back.
  ~ozObjectId();

  void changed() { ++_version; }
  /// Whether the context has not seen this version yet. It has from now on.
  bool isDirty(ozContext *context) const;

  int getId() const { return _id; }
  int getVersion() const { return static_cast<int>(_version); }

private:
  int _id;
  unsigned int _version;
};

#endif
