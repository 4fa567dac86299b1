#ifndef OZVIEW_STAGE_H
#define OZVIEW_STAGE_H

#include "Navigation.h"
#include "Outline.h"
#include <oz/OzScene3D.h>

class Scene;

/// What stands around a scene when it is drawn: the headlight, the camera and the state that shapes start from.
class Stage {
public:
  Stage(Scene const &scene, float const background[3]);
  ~Stage();
  Stage(Stage const &) = delete;
  Stage &operator=(Stage const &) = delete;

  /// Gives the context, which must be current, the state that the scene is drawn from.
  void prepare(ozContext *context);
  /// Draws one frame of width x height pixels in the prepared context. The shift moves the picture by parts of a pixel.
  void draw(Navigation const &navigation, int width, int height, float shiftX = 0, float shiftY = 0);

  /// Frames the scene as it is now.
  void frame(Navigation &navigation, float aspect) { navigation.frame(bound(), outlineOf(_root), aspect); }

  /// How many shapes the last frame drew: each use of a shape that was not outside the view.
  int shapesDrawn() const { return _action->count; }
  /// How many it would have drawn if nothing were outside.
  int countShapes();

  void toggleHeadlight() { _headlight->setOn(!_headlight->getOn()); }
  void toggleWireframe(ozContext *context);

  /// The scene with its headlight.
  ozNode *root() const { return _root; }
  ozPerspCamera *camera() const { return _camera; }
  /// The box around the scene as it is now.
  ozBoxBound const &bound() { return *_root->getBoxBound(); }

private:
  // Counts the shapes that a walk comes to.
  template <class Action> struct Counting : Action {
    ozTravDirective preVisit(ozNode *node) override {
      count += node->isOfType(ozShape::getClassType());
      return TRAV_CONT;
    }
    int count = 0;
  };

  ozEnvironment *_root; // the scope of the headlight
  ozDirectionalLight *_headlight;
  ozPerspCamera *_camera;
  Counting<ozDrawAction> *_action;
  ozAppearance *_wireframe;
  bool _isWireframe;
  bool _isTransparent;
  float _background[3];
};

#endif
