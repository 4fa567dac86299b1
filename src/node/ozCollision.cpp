#include "oz/ozGroup.h"

OZ_DEFINE_CLASS(ozCollision, "Collision", ozGroup) {
  ozSFUByte::addTypeField(type, "collide", 3, 1, &ozCollision::_collide);
}

unsigned char ozCollision::getCollide() { return read(3, _collide); }
void ozCollision::setCollide(unsigned char collide) { store(3, _collide, collide); }
