#include "oz/ozIndexedSet.h"

ozOwnIndexSets::~ozOwnIndexSets() {
  for (ozIndexSet *set : sets)
    if (set) set->unref();
}

ozIndexSet *ozOwnIndexSets::get(short id) {
  ozIndexSet *&set = sets[id - 11];
  if (!set) {
    set = new ozIndexSet;
    set->ref();
  }
  return set;
}
