#ifndef OZVIEW_OVERLAY_H
#define OZVIEW_OVERLAY_H

#include <oz/OzScene3D.h>
#include <string>

class Stage;

/// Lines of text over the picture: the name of the file, the time of a frame, the shapes drawn and culled.
class Overlay {
public:
  explicit Overlay(std::string const &name);
  ~Overlay();
  Overlay(Overlay const &) = delete;
  Overlay &operator=(Overlay const &) = delete;

  /// Draws it over the frame that the stage has just drawn, of width x height pixels. Seconds a frame; 0 if not known.
  void draw(Stage &stage, int width, int height, double frameSeconds);

private:
  enum { LINES = 3, COPIES = 2 };

  void setText(int line, char const *text);

  ozShape *_shape;
  ozScreenAlignedText *_texts[LINES][COPIES]; // each line with a shadow, to be read on any ground
  ozOrthoCamera *_camera;                     // one unit a pixel, from the lower left corner
  ozDrawAction _action;
};

#endif
