// A node class of one's own: a transform that stands on a slope. It has a field, which can be read, written, connected
// and copied by name like any other, and it follows a change of that field.

#include <oz/OzScene3D.h>

#include <stdio.h>

class Ramp : public ozTransform {
  OZ_CLASS(Ramp);

public:
  Ramp();

  /// How much it rises over its length; 0 by default.
  OZ_VALUE_ACCESS(float, Rise, 8, _rise)

protected:
  void fieldChanged(short id) override;

private:
  float _rise;
};

// The name of the class, its parent, and its fields: ids go on where the parent's end.
OZ_DEFINE_CLASS(Ramp, "Ramp", ozTransform) { ozSFFloat::addTypeField(type, "rise", 8, 0.0f, &Ramp::_rise); }

void Ramp::fieldChanged(short id) {
  if (id == 8) {
    setRotation(0, 0, 1, atanf(_rise));
    touchField(id); // tells whatever is connected to the field
  } else {
    ozTransform::fieldChanged(id);
  }
}

int main() {
  ozShape *shape = new ozShape;
  shape->addGeometry(new ozBox);
  Ramp *ramp = new Ramp;
  ramp->ref();
  ramp->addChild(shape);
  ramp->setRise(1);
  printf("%s at 45 degrees: its box is %.4f high\n", ramp->getType()->getName(),
         ramp->getBoxBound()->max._v[1] - ramp->getBoxBound()->min._v[1]);

  // By name, and by connection. The value moves when the second one is read.
  static_cast<ozSFFloat *>(ramp->getField("rise"))->set(0.5f);
  Ramp *follower = new Ramp;
  follower->ref();
  ramp->getField("rise_changed")->connect(follower->getField("set_rise"));
  printf("the follower rises by %g\n", follower->getRise());
  ramp->setRise(0.25f);
  printf("and now by %g\n", follower->getRise());

  follower->unref();
  ramp->unref();
  return 0;
}
