#include "Walk.h"
#include <algorithm>
#include <unordered_set>

std::vector<ozContainer *> everythingBelow(ozContainer *root) {
  std::vector<ozContainer *> found, pending(1, root);
  std::unordered_set<ozContainer *> seen{root};
  while (!pending.empty()) {
    ozContainer *const here = pending.back();
    pending.pop_back();
    found.push_back(here);
    size_t const firstChild = pending.size();
    forEachReference(here, [&](ozContainer *held) {
      if (seen.insert(held).second) pending.push_back(held);
    });
    std::reverse(pending.begin() + firstChild, pending.end());
  }
  return found;
}
