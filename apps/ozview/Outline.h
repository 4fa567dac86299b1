#ifndef OZVIEW_OUTLINE_H
#define OZVIEW_OUTLINE_H

#include <oz/OzScene3D.h>
#include <vector>

/// Points around all that a graph shows, in the root's space, closer than the corners of its bound: a box along the
/// axes around a turned shape, or around a round one, has corners where nothing is. No shape lies outside their hull.
std::vector<ozVec3f> outlineOf(ozNode *root);

#endif
