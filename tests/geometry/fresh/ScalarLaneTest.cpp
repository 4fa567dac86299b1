// A program of its own, because lanes without registers are another type of the same name.
#define OZ_SCALAR
#include "geometry/laneChecks.h"

namespace {

TEST(Lane4, WithoutRegistersComputesAsSingleFloatsDo) { checkLanes(); }

} // namespace
