// Builds a graph by hand: a pyramid of triangles with a colour at each corner, shared by three transforms, and asks it
// for its bounds.

#include <oz/OzScene3D.h>

#include <stdio.h>

namespace {

void print(char const *what, ozNode *node) {
  ozBoxBound const &box = *node->getBoxBound();
  printf("%s: (%g, %g, %g) to (%g, %g, %g)\n", what, box.min._v[0], box.min._v[1], box.min._v[2], box.max._v[0],
         box.max._v[1], box.max._v[2]);
}

} // namespace

int main() {
  // Attributes stand in sets of their own, which geometries may share.
  ozCoordSet3f *corners = new ozCoordSet3f;
  corners->point()->set(0, ozVec3f(-1, 0, 1));
  corners->point()->set(1, ozVec3f(1, 0, 1));
  corners->point()->set(2, ozVec3f(1, 0, -1));
  corners->point()->set(3, ozVec3f(-1, 0, -1));
  corners->point()->set(4, ozVec3f(0, 2, 0));
  ozColorSet3f *colors = new ozColorSet3f;
  colors->color()->set(0, ozVec3f(0.9f, 0.2f, 0.2f));
  colors->color()->set(1, ozVec3f(0.9f, 0.8f, 0.2f));
  colors->color()->set(2, ozVec3f(0.2f, 0.8f, 0.3f));
  colors->color()->set(3, ozVec3f(0.2f, 0.4f, 0.9f));
  colors->color()->set(4, ozVec3f(1, 1, 1));

  // One list of indices for both keeps the set on the fast road of OpenGL's vertex arrays.
  ozIndexSet *indices = new ozIndexSet;
  int const sides[] = {0, 1, 4, 1, 2, 4, 2, 3, 4, 3, 0, 4};
  indices->index()->setRange(0, 12, sides);
  ozTriSet *pyramid = new ozTriSet;
  pyramid->setCoordSet(corners);
  pyramid->setCoordIndexSet(indices);
  pyramid->setColorSet(colors);
  pyramid->setColorIndexSet(indices);
  pyramid->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  pyramid->setPrimCount(4);

  ozShape *shape = new ozShape;
  shape->addGeometry(pyramid);

  ozGroup *root = new ozGroup;
  root->ref();
  ozTransform *last = nullptr;
  for (int i = 0; i < 3; i++) {
    last = new ozTransform;
    last->setTranslation(3.0f * static_cast<float>(i), 0, 0);
    last->addChild(shape); // a node may stand in several places
    root->addChild(last);
  }
  print("three pyramids", root);

  // A change goes up the graph as a mark; the box is computed when somebody asks again.
  last->setScale(2, 2, 2);
  print("the last one doubled", root);
  printf("the shape has %d parents\n", shape->getParentCount());

  root->unref(); // and with it all that stands below
  return 0;
}
