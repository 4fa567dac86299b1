#ifndef OZ_MATSTACK4F_H
#define OZ_MATSTACK4F_H

#include "oz/ozMatrix4f.h"

/// A stack of matrices of a fixed capacity, for one traversal. It is never empty. A copy shares the matrices and has a
/// depth of its own; the last one frees them.
class OZ_API ozMatStack4f {
public:
  /// A stack that holds the given number of matrices, so capacity - 1 pushes succeed; below 1 counts as 1.
  explicit ozMatStack4f(int capacity = 64) : _matrices(nullptr), _sharers(nullptr) { init(capacity); }
  ~ozMatStack4f() { release(); }
  ozMatStack4f(ozMatStack4f const &other);
  ozMatStack4f &operator=(ozMatStack4f const &other);

  /// Starts anew with the given capacity: one level, the identity.
  void init(int capacity);

  /// Copies the top one level up; returns 1. A full stack stays as it is, is reported, and gives 0.
  int push() {
    if (_depth == _capacity) return complain("ozMatStack4f::push() - Matrix stack full");
    ++_depth;
    ++_top;
    _top[0] = _top[-1];
    return 1;
  }
  /// push() and then preMult(m).
  int pushPreMult(ozMatrix4f const &m) {
    if (_depth == _capacity) {
      push(); // says so
      preMult(m);
      return 0;
    }
    ++_depth;
    ++_top;
    _top->mult(m, _top[-1]);
    return 1;
  }
  /// As push, but the new top is the identity.
  int pushIdent();
  /// Goes one level down; returns 1. On the last level the stack is reset and reported, and the result is 0.
  int pop() {
    if (_depth == 1) return popLast();
    --_depth;
    --_top;
    return 1;
  }
  /// Back to one level, the identity.
  void reset();

  // What follows works on the top.
  void load(ozMatrix4f const &m) { *_top = m; }
  void loadIdent() { _top->makeIdent(); }
  void get(ozMatrix4f &out) const { out = *_top; }
  ozMatrix4f *getTop() const { return _top; }
  /// The number of levels, 1 at the least.
  int getDepth() const { return _depth; }

  void preMult(ozMatrix4f const &m) { _top->preMult(m); }
  void postMult(ozMatrix4f const &m) { _top->postMult(m); }
  void preTrans(float x, float y, float z) { _top->preTrans(x, y, z, *_top); }
  void postTrans(float x, float y, float z) { _top->postTrans(*_top, x, y, z); }
  void preRot(float x, float y, float z, float radians) { _top->preRot(x, y, z, radians, *_top); }
  void postRot(float x, float y, float z, float radians) { _top->postRot(*_top, x, y, z, radians); }
  void preScale(float x, float y, float z) { _top->preScale(x, y, z, *_top); }
  void postScale(float x, float y, float z) { _top->postScale(*_top, x, y, z); }

private:
  static int complain(char const *complaint);
  int popLast();
  void share(ozMatStack4f const &other);
  void release();

  ozMatrix4f *_matrices;
  ozMatrix4f *_top;
  int _depth;
  int _capacity;
  int *_sharers; // how many stacks use the matrices
};

#endif
