#include "geometry/laneChecks.h"

namespace {

TEST(Lane4, InRegistersComputesAsSingleFloatsDo) { checkLanes(); }

} // namespace
