#ifndef OZVIEW_SNAPSHOT_H
#define OZVIEW_SNAPSHOT_H

#include "Picture.h"

class Navigation;
class Scene;
class Stage;
struct Options;

/// A smooth picture of the stage, drawn into the current context.
Picture takePicture(Stage &stage, Navigation const &navigation, int width, int height);

/// Draws one frame of the scene, as the options have it, into a PNG. It needs no display. On failure `reason` tells
/// why.
bool drawSnapshot(Scene &scene, Options const &options, std::string const &file, std::string &reason);

#endif
