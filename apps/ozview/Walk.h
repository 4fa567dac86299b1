#ifndef OZVIEW_WALK_H
#define OZVIEW_WALK_H

#include <oz/OzScene3D.h>
#include <vector>

/// Calls visit(ozContainer *) for everything that a container's reference fields hold.
template <class Visit> void forEachReference(ozContainer *container, Visit visit) {
  container->cleanFields();
  ozType *const type = container->getType();
  for (int id = 0; id < type->getFieldInfoCount(); id++) {
    ozFieldInfo *const info = type->getFieldInfo(id);
    if (auto *const single = dynamic_cast<ozSFRefInfo *>(info)) {
      if (ozContainer *const held = single->member(container)) visit(held);
    } else if (auto *const multi = dynamic_cast<ozMFRefInfo *>(info)) {
      ozRefArray &held = multi->member(container);
      for (unsigned int i = 0; i < held.getCount(); i++)
        if (held[i]) visit(static_cast<ozContainer *>(held[i]));
    }
  }
}

/// Everything in a graph, each object once, in order: what reference fields hold, from the root down.
std::vector<ozContainer *> everythingBelow(ozContainer *root);

#endif
