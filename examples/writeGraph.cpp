// Writes a graph as text. Shared objects get a DEF at their first place and a USE at the others.

#include <oz/OzScene3D.h>

#include <stdio.h>

int main() {
  ozShape *shape = new ozShape;
  shape->setName("wheel");
  shape->addGeometry(new ozCylinder);
  ozGroup *root = new ozGroup;
  root->ref();
  for (int i = 0; i < 2; i++) {
    ozTransform *place = new ozTransform;
    place->setTranslation(4.0f * static_cast<float>(i), 0, 0);
    place->addChild(shape);
    root->addChild(place);
  }

  printf("#VRML V2.0 utf8\n"); // the header is the caller's
  {
    ozOutput out(stdout);
    static_cast<ozObject *>(root)->write(&out);
  }
  printf("\n");

  // A copy of the whole graph: what was shared is shared in the copy too.
  ozGroup *copy = static_cast<ozGroup *>(root->clone(ozContainer::CLONE_DEEP));
  copy->ref();
  printf("# the wheel of the copy has %d parents\n",
         static_cast<ozGroup *>(copy->getChild(0))->getChild(0)->getParentCount());

  copy->unref();
  root->unref();
  return 0;
}
