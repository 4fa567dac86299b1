#ifndef TESTS_NODE_PROBES_H
#define TESTS_NODE_PROBES_H

// Nodes, geometries and actions that note what happens to them, for the tests of this room.

#include "oz/OzScene3D.h"

#include <functional>
#include <map>
#include <string>
#include <vector>

/// What the probes below have noted, in order: "visit a", "pre g", "draw s".
typedef std::vector<std::string> Notes;
extern Notes notes;

/// Forgets the notes ahead of each test that lives in it.
struct CleanNotes {
  CleanNotes() { notes.clear(); }
};

/// Keeps an object alive for the time of a test.
template <class T> class Held {
public:
  template <class... Args> explicit Held(Args &&...args) : Held(new T(args...)) {}
  explicit Held(T *object) : _object(object) { _object->ref(); }
  Held(Held const &) = delete;
  Held &operator=(Held const &) = delete;
  ~Held() { _object->unref(); }
  operator T *() const { return _object; }
  T *operator->() const { return _object; }
  T *get() const { return _object; }

private:
  T *_object;
};

/// A leaf that notes each visit and answers as told.
class ProbeNode : public ozNode {
  OZ_CLASS(ProbeNode);

public:
  ProbeNode();
  /// With a name, and a box of that half size around the origin.
  explicit ProbeNode(char const *name, float halfSize = 1);

  ozTravDirective verdict = TRAV_CONT;
  std::function<void()> during;                             ///< run in each visit
  std::function<void(ozTransformAction *)> duringTransform; ///< run in each visit by an action with matrices

  void sound(ozSoundAction *action) override;
  void isect(ozIsectAction *action) override;
  ozTravDirective visit(ozAction *action) override;
  ozTravDirective transformVisit(ozTransformAction *action) override;
  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

  using ozContainer::propagateSideEffect;

private:
  ozTravDirective visited(char const *visit, ozTransformAction *action);
  int _unused = 0;
};

/// A group (or a class below it) that notes its changes.
template <class Group> class Watched : public Group {
public:
  Watched() : Group() {}
  std::vector<short> changes; ///< the ids that fieldChanged was called with
  std::vector<std::pair<ozContainer *, short>> childChanges;
  int cleanings = 0; ///< computations of the box

  void fieldChanged(short id) override {
    changes.push_back(id);
    Group::fieldChanged(id);
  }
  void childChanged(ozContainer *child, short id) override {
    childChanges.push_back({child, id});
    Group::childChanged(child, id);
  }
  void cleanSideEffect(short id) override {
    if (id == 0) ++cleanings;
    Group::cleanSideEffect(id);
  }
};

/// An action that notes preVisit and postVisit with the names of the nodes, and answers as told by name.
template <class Action> class Noting : public Action {
public:
  std::map<std::string, ozTravDirective> pre, post;
  ozTravDirective preVisit(ozNode *node) override { return note("pre ", pre, node); }
  ozTravDirective postVisit(ozNode *node) override { return note("post ", post, node); }

private:
  static ozTravDirective note(char const *what, std::map<std::string, ozTravDirective> const &verdicts, ozNode *node) {
    std::string const name = node->getName() ? node->getName() : "?";
    notes.push_back(what + name);
    auto const found = verdicts.find(name);
    return found == verdicts.end() ? TRAV_CONT : found->second;
  }
};

/// A geometry that notes draw and isect and hits as told.
class ProbeGeometry : public ozGeometry {
  OZ_CLASS(ProbeGeometry);

public:
  ProbeGeometry();
  explicit ProbeGeometry(char const *name, float halfSize = 1);

  float hitAt = -1; ///< the distance along the active segment at which isect finds a hit; none below 0
  void draw(ozDrawAction *action) override;
  int isect(ozIsectAction *action) override;

private:
  int _unused = 0;
};

/// A container outside the graph that refers to one node.
class Holder : public ozContainer {
  OZ_CLASS(Holder);

public:
  Holder();
  void setNode(ozNode *node) { storeRef(0, _node, node); }
  ozNode *getNode() { return _node; }

private:
  ozNode *_node = nullptr;
};

template <class T> T *named(T *node, char const *name) {
  node->setName(name);
  return node;
}

ozBoxBound boxOf(float x0, float y0, float z0, float x1, float y1, float z1);
/// A cube of that half size around a point.
ozBoxBound cubeAt(float x, float y, float z, float halfSize);
ozSeg segment(float x, float y, float z, float dx, float dy, float dz, float length = 1000);

/// A camera at the origin that sees everything before it, along -z.
ozOrthoCamera *wideCamera();

#define EXPECT_BOX(box, x0, y0, z0, x1, y1, z1)                                                                        \
  do {                                                                                                                 \
    ozBoxBound const found = (box);                                                                                    \
    EXPECT_NEAR(found.min[0], x0, 1e-4);                                                                               \
    EXPECT_NEAR(found.min[1], y0, 1e-4);                                                                               \
    EXPECT_NEAR(found.min[2], z0, 1e-4);                                                                               \
    EXPECT_NEAR(found.max[0], x1, 1e-4);                                                                               \
    EXPECT_NEAR(found.max[1], y1, 1e-4);                                                                               \
    EXPECT_NEAR(found.max[2], z1, 1e-4);                                                                               \
  } while (0)

#define EXPECT_VEC(v, x, y, z)                                                                                         \
  do {                                                                                                                 \
    ozVec3f const found = (v);                                                                                         \
    EXPECT_NEAR(found[0], x, 1e-4);                                                                                    \
    EXPECT_NEAR(found[1], y, 1e-4);                                                                                    \
    EXPECT_NEAR(found[2], z, 1e-4);                                                                                    \
  } while (0)

#endif
