#include "action/probeNode.h"

OZ_DEFINE_CLASS(ProbeNode, "ProbeNode", ozNode) {}
