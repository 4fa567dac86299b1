#ifndef OZVIEW_VIEWER_H
#define OZVIEW_VIEWER_H

class Scene;
struct Options;

/// Shows the scene in a window until the user closes it. There must be a display.
void runViewer(Scene &scene, Options const &options);

/// The text of the key "?".
char const *viewerKeys();

#endif
