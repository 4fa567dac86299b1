#ifndef TESTS_GEOMETRY_GEOMETRY_FIXTURE_H
#define TESTS_GEOMETRY_GEOMETRY_FIXTURE_H

#include "oz/OzScene3D.h"
#include "oz/ozCompileAction.h"
#include "oz/ozDrawAction.h"
#include "oz/ozIsectAction.h"
#include "support/capture.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

#include <string>
#include <vector>

typedef std::vector<std::string> Calls;

/// Holds a reference for the length of a test.
template <class T> class Held {
public:
  explicit Held(T *object) : _object(object) { _object->ref(); }
  ~Held() { _object->unref(); }
  Held(Held const &) = delete;
  Held &operator=(Held const &) = delete;
  T *operator->() const { return _object; }
  T &operator*() const { return *_object; }
  T *get() const { return _object; }

private:
  T *_object;
};

inline ozCoordSet3f *coordSet(std::vector<ozVec3f> const &points) {
  ozCoordSet3f *const set = new ozCoordSet3f;
  for (unsigned int i = 0; i < points.size(); ++i) set->point()->set(i, points[i]);
  return set;
}

inline ozNormalSet3f *normalSet(std::vector<ozVec3f> const &vectors) {
  ozNormalSet3f *const set = new ozNormalSet3f;
  for (unsigned int i = 0; i < vectors.size(); ++i) set->vector()->set(i, vectors[i]);
  return set;
}

inline ozColorSet3f *colorSet(std::vector<ozVec3f> const &colors) {
  ozColorSet3f *const set = new ozColorSet3f;
  for (unsigned int i = 0; i < colors.size(); ++i) set->color()->set(i, colors[i]);
  return set;
}

inline ozIndexSet *indexSet(std::vector<int> const &indices) {
  ozIndexSet *const set = new ozIndexSet;
  for (unsigned int i = 0; i < indices.size(); ++i) set->index()->set(i, indices[i]);
  return set;
}

inline void setLengths(ozMFInt *field, std::vector<int> const &lengths) {
  for (unsigned int i = 0; i < lengths.size(); ++i) field->set(i, lengths[i]);
}

/// The points (i, 2i, -i) for i from 0.
inline std::vector<ozVec3f> somePoints(int count) {
  std::vector<ozVec3f> points;
  for (int i = 0; i < count; ++i)
    points.push_back(ozVec3f(static_cast<float>(i), static_cast<float>(2 * i), static_cast<float>(-i)));
  return points;
}

/// A triangle set of n triangles over the given points, in their order.
inline ozTriSet *triSet(std::vector<ozVec3f> const &points, int count) {
  ozTriSet *const set = new ozTriSet;
  set->setCoordSet(coordSet(points));
  set->setPrimCount(count);
  return set;
}

/// A test that draws in a fresh context.
class DrawTest : public ContextTest {
protected:
  DrawTest() { action.setContext(context); }

  Calls draw(ozGeometry *geometry) {
    GLRecorder rec;
    geometry->draw(&action);
    return rec.texts();
  }

  ozDrawAction action;
};

/// Points a ray of an action; its current segment is the one cast.
inline void aim(ozIsectAction &action, ozVec3f const &origin, ozVec3f const &direction, float length) {
  action.seg.setOrigin(origin);
  action.seg.setDirection(direction);
  action.seg.setLength(length);
  action.apply(nullptr); // makes it the current segment and clears the hit
}

inline ozHit const &cast(ozIsectAction &action, ozGeometry *geometry, ozVec3f const &origin, ozVec3f const &direction,
                         float length, int *result = nullptr) {
  aim(action, origin, direction, length);
  int const got = geometry->isect(&action);
  if (result) *result = got;
  return action.hit;
}

#endif
