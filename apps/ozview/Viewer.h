#ifndef OZVIEW_VIEWER_H
#define OZVIEW_VIEWER_H

class Scene;
class Speaker;
struct Options;

/// Shows the scene in a window until the user closes it, and lets it be heard if the speaker is open. There must be a
/// display.
void runViewer(Scene &scene, Speaker &speaker, Options const &options);

/// The text of the key "?".
char const *viewerKeys();

#endif
