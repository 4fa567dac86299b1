#include "oz/ozBound.h"

#include <cstdio>

// The operations that a kind of bound lacks. The lines have no line end, and both kinds leave some of them in place.
// Meant.
static int warn(char const *operation) {
  std::fprintf(stderr, "WARNING: Shouldn't be in pure virtual %s", operation);
  return 0;
}

void ozBound::around(ozBoxBound const *) { warn("around(const ozBoxBound* box)"); }
void ozBound::around(ozSphereBound const *) { warn("around(const ozSphereBound* sph)"); }
void ozBound::around(ozBoxBound const **, int) { warn("around(const ozBoxBound* boxes[], int nbox)"); }
void ozBound::around(ozSphereBound const **, int) { warn("around(const ozSphereBound* sphs[], int nsph)"); }
void ozBound::around(ozVec3f const *, int) { warn("around(const ozVec3f pts[], int npt)"); }
void ozBound::extendBy(ozBoxBound const *) { warn("extendBy(const ozBoxBound* box)"); }
void ozBound::extendBy(ozSphereBound const *) { warn("extendBy(const ozSphereBound* sph)"); }
int ozBound::contains(ozBoxBound const *) const { return warn("contains(const ozBoxBound* box)"); }
int ozBound::contains(ozSphereBound const *) const { return warn("contains(const ozSphereBound* sph)"); }
