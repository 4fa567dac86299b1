#ifndef OZVIEW_NAVIGATION_H
#define OZVIEW_NAVIGATION_H

#include <oz/ozBound.h>
#include <oz/ozCamera.h>
#include <vector>

/// Examines a scene: the eye goes around a centre, at an azimuth and an elevation, and looks at it, upright.
///
/// At azimuth 0 and elevation 0 it looks along -Z. A positive azimuth takes the eye to the right, towards +X; a
/// positive elevation takes it up.
class Navigation {
public:
  /// Degrees: the view that reset() goes back to.
  Navigation(float azimuth, float elevation);

  /// Looks at the middle of the box from where all points of the outline are in view. `aspect` is width over height of
  /// the picture.
  void frame(ozBoxBound const &box, std::vector<ozVec3f> const &outline, float aspect);
  /// Back to the first angles; frame() is to follow.
  void reset();

  /// Turns the scene along with the mouse. Shares of the picture's height, to the right and up.
  void turn(float right, float up);
  /// Moves the scene along with the mouse, in the plane of the centre.
  void pan(float right, float up);
  /// Scales the distance: below 1 is nearer.
  void zoom(float factor);
  /// Looks at the point, from the same side and distance.
  void centreOn(ozVec3f const &point) { _centre = point; }

  /// Sets the camera up, near and far planes close around the box.
  void place(ozPerspCamera *camera, ozBoxBound const &box, float aspect) const;

  ozVec3f const &centre() const { return _centre; }
  float distance() const { return _distance; }
  float azimuth() const { return _azimuth; }
  float elevation() const { return _elevation; }
  /// Unit vectors of the eye's frame in the scene; it looks along minus back.
  ozVec3f right() const;
  ozVec3f up() const;
  ozVec3f back() const;
  ozVec3f eye() const;

private:
  float const _firstAzimuth, _firstElevation;
  float _azimuth, _elevation; // degrees
  ozVec3f _centre;
  float _distance;
};

#endif
