#include "geometry/ozPickIndex.h"

// Building takes about as long as half a loop over all triangles for each halving of them.
bool ozPickIndex::isDue(unsigned int tris) {
  if (_tree || _worthless) return false;
  _tested += tris;
  unsigned long long levels = 1;
  while (tris >> levels) ++levels;
  return 2 * _tested >= levels * tris;
}
