#ifndef OZ_INDEXED_SETS_H
#define OZ_INDEXED_SETS_H

#include "oz/ozGeoSet.h"
#include "oz/ozIndexedSet.h"

/// What both indexed sets do with their index sets.
struct ozIndexedSets {
  template <class Set>
  static ozIndexSet *&member(Set &set, short id) {
    ozIndexSet **const members[] = {&set._coordIndexSet, &set._normalIndexSet, &set._colorIndexSet,
                                    &set._texCoordIndexSet};
    return *members[id - 10];
  }

  template <class Set>
  static void assign(Set &set, short id, ozIndexSet *indexSet) {
    ozIndexSet *&held = member(set, id);
    set.refer(held, indexSet);
    held = indexSet;
  }

  /// A fresh index set for the coordinates, followed by all attributes.
  template <class Set>
  static void begin(Set &set) {
    ozIndexSet *const coords = new ozIndexSet;
    for (short id = 10; id <= 13; ++id) assign(set, id, coords);
  }

  /// Lets go of all index sets, ahead of a copy that overwrites them.
  template <class Set>
  static void release(Set &set) {
    for (short id = 10; id <= 13; ++id) assign(set, id, nullptr);
  }

  /// Behind a copy: index sets of the set's own in place of those that the source derives. What the application gave the
  /// source is shared, or was cloned.
  template <class Set>
  static void reclaim(Set &set, Set const &src) {
    ozIndexSet *const coords = new ozIndexSet;
    assign(set, 10, coords);
    for (short id = 11; id <= 13; ++id) {
      ozIndexSet const *const theirs = member(const_cast<Set &>(src), id);
      if (src._own.isDerived(id, theirs, src._coordIndexSet)) assign(set, id, coords);
    }
    set.calcBindings();
  }

  /// Sets the index set of an attribute from its index list. Without a list it follows the coordinates; what is bound
  /// per primitive then goes by the primitives' order.
  template <class Set>
  static void derive(Set &set, short id, ozMFInt *indices, bool perPrim) {
    ozIndexSet *chosen = perPrim ? nullptr : set._coordIndexSet;
    if (indices->getCount()) {
      chosen = set._own.get(id);
      set.flattenVRMLIndices(indices, chosen, nullptr);
    }
    set.storeRef(id, member(set, id), chosen);
  }
};

#endif
