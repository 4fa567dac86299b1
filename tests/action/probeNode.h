#ifndef TESTS_ACTION_PROBE_NODE_H
#define TESTS_ACTION_PROBE_NODE_H

#include <functional>
#include <string>
#include <vector>

#include "oz/ozClass.h"
#include "oz/ozDrawAction.h"
#include "oz/ozIsectAction.h"
#include "oz/ozNode.h"

/// A leaf that tells which visit reached it, runs what the test gives it and answers with a set verdict.
class ProbeNode : public ozNode {
  OZ_CLASS(ProbeNode);

public:
  ProbeNode();

  ozTravDirective visit(ozAction *action) override { return note("visit", action); }
  ozTravDirective transformVisit(ozTransformAction *action) override { return note("transformVisit", action); }
  ozTravDirective vfCullVisit(ozVFCullAction *action) override { return note("vfCullVisit", action); }
  ozTravDirective drawVisit(ozDrawAction *action) override { return note("drawVisit", action); }
  void isect(ozIsectAction *action) override { note("isect", action); }

  std::vector<std::string> visits;
  ozTravDirective verdict = TRAV_CONT;
  std::function<void(ozAction *)> work;

private:
  ozTravDirective note(char const *what, ozAction *action) {
    visits.push_back(what);
    if (work) work(action);
    return verdict;
  }
};

/// An object on the stack that containers and actions may hold: it is never at its last reference while in scope.
template <class T> class Held {
public:
  Held() : _object(new T) { _object->ref(); }
  explicit Held(T *object) : _object(object) { _object->ref(); }
  ~Held() { _object->unref(); }
  Held(Held const &) = delete;
  Held &operator=(Held const &) = delete;
  T *operator->() const { return _object; }
  T &operator*() const { return *_object; }
  operator T *() const { return _object; }

private:
  T *_object;
};

/// Matches an action class with a log of its hooks.
template <class Base> class Hooked : public Base {
public:
  void begin(ozNode *root) override { note("begin", root); }
  void end(ozNode *root) override { note("end", root); }
  ozTravDirective preVisit(ozNode *node) override {
    note("pre", node);
    return preVerdict;
  }
  ozTravDirective postVisit(ozNode *node) override {
    note("post", node);
    return postVerdict;
  }

  std::vector<std::string> log;
  ozTravDirective preVerdict = TRAV_CONT, postVerdict = TRAV_CONT;

private:
  void note(std::string const &what, ozNode *node) {
    log.push_back(what + " " + (!node ? "null" : node->getName() ? node->getName() : "node"));
  }
};

inline ozBoxBound makeBox(float x0, float y0, float z0, float x1, float y1, float z1) {
  ozBoxBound box;
  box.min.set(x0, y0, z0);
  box.max.set(x1, y1, z1);
  return box;
}

#endif
