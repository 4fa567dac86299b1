#include "oz/ozSeg.h"

#include <cmath>

void ozSeg::makePts(ozVec3f const &a, ozVec3f const &b) {
  ozVec3f const origin = a, end = b; // they may be our own members
  _origin = origin;
  _direction.sub(end, origin);
  _length = _direction.normalize();
}

void ozSeg::makePolar(ozVec3f const &origin, float heading, float pitch, float length) {
  double const h = heading, p = pitch;
  _origin = origin;
  _direction.set(static_cast<float>(-std::sin(h) * std::cos(p)), static_cast<float>(std::cos(h) * std::cos(p)),
                 static_cast<float>(std::sin(p)));
  _length = length;
}

void ozSeg::clip(ozSeg const *s, float t0, float t1) {
  _origin.addScaled(s->_origin, t0, s->_direction);
  _direction = s->_direction;
  _length = t1 - t0;
}
