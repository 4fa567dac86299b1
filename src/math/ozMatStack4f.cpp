#include "oz/ozMatStack4f.h"

#include "oz/ozGlobal.h"

ozMatStack4f::ozMatStack4f(ozMatStack4f const &other) { share(other); }

ozMatStack4f &ozMatStack4f::operator=(ozMatStack4f const &other) {
  ++*other._sharers; // first: both may use the same matrices
  release();
  --*other._sharers;
  share(other);
  return *this;
}

void ozMatStack4f::share(ozMatStack4f const &other) {
  _matrices = other._matrices;
  _top = other._top;
  _depth = other._depth;
  _capacity = other._capacity;
  _sharers = other._sharers;
  ++*_sharers;
}

void ozMatStack4f::release() {
  if (!_sharers || --*_sharers) return;
  delete[] _matrices;
  delete _sharers;
}

void ozMatStack4f::init(int capacity) {
  release();
  _capacity = capacity < 1 ? 1 : capacity;
  _matrices = new ozMatrix4f[_capacity];
  _sharers = new int(1);
  reset();
}

int ozMatStack4f::complain(char const *complaint) {
  ozGlobal::notify(ozGlobal::WARN, ozGlobal::USAGE, complaint);
  return 0;
}

int ozMatStack4f::pushIdent() {
  if (_depth == _capacity) return complain("ozMatStack4f::pushIdent() - Matrix stack full");
  _depth++;
  _top++;
  _top->makeIdent();
  return 1;
}

int ozMatStack4f::popLast() {
  reset();
  return complain("ozMatStack4f::pop() - Matrix stack empty");
}

void ozMatStack4f::reset() {
  _top = _matrices;
  _depth = 1;
  _top->makeIdent();
}
