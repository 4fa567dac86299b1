#ifndef GEOMETRY_OZ_OWN_INDICES_H
#define GEOMETRY_OZ_OWN_INDICES_H

#include "oz/ozGeoSet.h"

// The index sets that an indexed set fills from its VRML fields. They belong to it, counted, beside the reference
// fields that show them (field 10 + attribute); a clone has its own. Attributes: 0 coordinates, 1 normals, 2 colours, 3
// texture coordinates.
struct ozOwnIndices {
  template <class Set> static void init(Set *set) {
    for (ozIndexSet *&own : set->_ownIndexSets) own = nullptr;
    set->_copying = 0;
    set->refer(set->_coordIndexSet, get(set, 0));
    set->_coordIndexSet = get(set, 0);
  }

  template <class Set> static void release(Set *set) {
    for (ozIndexSet *own : set->_ownIndexSets)
      if (own) own->unref();
  }

  template <class Set> static ozIndexSet *get(Set *set, int attribute) {
    ozIndexSet *&own = set->_ownIndexSets[attribute];
    if (!own) {
      own = new ozIndexSet;
      own->ref();
    }
    return own;
  }

  template <class Set> static ozIndexSet *&field(Set *set, int attribute) {
    ozIndexSet **const fields[] = {&set->_coordIndexSet, &set->_normalIndexSet, &set->_colorIndexSet,
                                   &set->_texCoordIndexSet};
    return *fields[attribute];
  }

  template <class Set> static void show(Set *set, int attribute, ozIndexSet *indexSet) {
    set->storeRef(static_cast<short>(10 + attribute), field(set, attribute), indexSet);
  }

  // Fills the index of the coordinates, the lengths and the count. The count is that of all lengths, so that a list
  // that became shorter keeps its old end: meant so.
  template <class Set> static void flattenCoords(Set *set, ozMFInt *coordIndex, ozMFInt *lengths) {
    if (!set->_coordIndexSet) show(set, 0, get(set, 0));
    set->flattenVRMLIndices(coordIndex, set->_coordIndexSet, lengths);
    set->setPrimCount(static_cast<int>(lengths->getCount()));
  }

  // Whether what a field shows was put there by this set, and not by the application.
  template <class Set> static bool isOwn(Set *set, int attribute) {
    ozIndexSet *const shown = field(set, attribute);
    return !shown || shown == set->_coordIndexSet || shown == set->_ownIndexSets[0] ||
           shown == set->_ownIndexSets[attribute];
  }

  // Chooses the index set of an attribute: with indices of its own its own set; otherwise that of the coordinates for
  // vertices, which keeps the vertex arrays, and none for what comes in the order of the primitives.
  template <class Set> static void choose(Set *set, int attribute, ozMFInt *index, bool perVertex) {
    bool const given = index->getCount() > 0;
    ozIndexSet *const chosen = given ? get(set, attribute) : perVertex ? set->_coordIndexSet : nullptr;
    if (!given && !isOwn(set, attribute)) return; // the application's stays
    show(set, attribute, chosen);
    if (given) set->flattenVRMLIndices(index, chosen, nullptr);
  }

  // Copies src with `copyBase`; what the source shows of its own becomes this set's own.
  template <class Set, class Copy> static void copy(Set *set, ozContainer *src, Copy copyBase) {
    if (src == set) return;
    // What the copy will store over is given back first.
    for (int i = 0; i < 4; ++i) {
      set->unrefer(field(set, i));
      field(set, i) = nullptr;
    }
    set->_copying = 1;
    copyBase();
    set->_copying = 0;
    if (src->isOfType(Set::getClassType()))
      adopt(set, static_cast<Set *>(src));
    else if (!set->_coordIndexSet)
      show(set, 0, get(set, 0));
  }

  // Which of its own an index set is; 4 for none.
  template <class Set> static int find(Set *set, ozIndexSet *indexSet) {
    int k = 0;
    while (k < 4 && (!indexSet || indexSet != set->_ownIndexSets[k])) ++k;
    return k;
  }

  // Ends a copy. Where the other shows an index set of its own, this one shows its own: the clone that a deep copy has
  // made of it, or one with the same indices. What stands for a VRML field as well is taken over as it is.
  template <class Set> static void adopt(Set *set, Set *from) {
    for (int i = 0; i < 4; ++i) {
      ozIndexSet *const theirs = field(from, i), *const mine = field(set, i);
      int const k = find(from, theirs);
      if (k < 4 && mine && mine != theirs && find(set, mine) == 4) {
        mine->ref();
        if (set->_ownIndexSets[k]) set->_ownIndexSets[k]->unref();
        set->_ownIndexSets[k] = mine;
      } else if (k < 4) {
        get(set, k)->index()->set(theirs->index()->get());
        show(set, i, get(set, k));
      } else if (!mine || mine == set->_ownIndexSets[0]) {
        show(set, i, theirs); // the application's
      }
    }
    if (set->_normalBind != from->_normalBind) set->setNormalBind(from->_normalBind);
    if (set->_colorBind != from->_colorBind) set->setColorBind(from->_colorBind);
    if (set->_cullFace != from->_cullFace) set->setCullFace(from->_cullFace);
  }
};

#endif
