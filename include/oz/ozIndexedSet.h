#ifndef OZ_INDEXED_SET_H
#define OZ_INDEXED_SET_H

#include "oz/ozCoordSet.h"

/// The index sets that an indexed set keeps for itself, made on demand: one for each attribute that has index lists of its
/// own, by the field that refers to it (11 normals, 12 colours, 13 texture coordinates).
struct OZ_API ozOwnIndexSets {
  ozOwnIndexSets() : sets() {}
  ozOwnIndexSets(ozOwnIndexSets const &) = delete;
  ozOwnIndexSets &operator=(ozOwnIndexSets const &) = delete;
  ~ozOwnIndexSets();

  /// The set for a field, made at the first call.
  ozIndexSet *get(short id);
  /// Whether a set was derived: it is none, the coordinates' or one of these. Otherwise the application gave it.
  bool isDerived(short id, ozIndexSet const *set, ozIndexSet const *coords) const {
    return !set || set == coords || set == sets[id - 11];
  }

  ozIndexSet *sets[3];
};

#endif
