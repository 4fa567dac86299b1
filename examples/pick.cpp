// Picking: a ray through a pixel, and everything that the hit tells. It draws nothing and needs no display.

#include <oz/OzScene3D.h>

#include <stdio.h>

int main() {
  ozShape *shape = new ozShape;
  shape->setName("globe");
  shape->addGeometry(new ozSphere);
  ozTransform *aside = new ozTransform;
  aside->setName("aside");
  aside->setTranslation(1, 0, 0);
  aside->addChild(shape);
  ozGroup *root = new ozGroup;
  root->ref();
  root->addChild(aside);

  ozPerspCamera *camera = new ozPerspCamera;
  camera->ref();
  camera->setPosition(1, 0, 5);

  // The middle pixel of a picture of 200 x 200, counted from the lower left.
  ozHit hit;
  if (camera->pick(root, 100, 100, hit, 0, 0, 200, 200)) {
    printf("hit a %s at (%.2f, %.2f, %.2f)\n", hit.geometry->getType()->getName(), hit.worldPoint._v[0],
           hit.worldPoint._v[1], hit.worldPoint._v[2]);
    printf("in its own space at (%.2f, %.2f, %.2f)\n", hit.localPoint._v[0], hit.localPoint._v[1],
           hit.localPoint._v[2]);
    printf("by way of");
    for (unsigned int i = 0; i < hit.path.getCount(); i++) {
      ozContainer *const step = static_cast<ozContainer *>(hit.path[i]);
      printf(" %s", step->getName() ? step->getName() : step->getType()->getName());
    }
    printf("\n");
  }
  if (!camera->pick(root, 3, 3, hit, 0, 0, 200, 200)) printf("nothing in the corner\n");

  camera->unref();
  root->unref();
  return 0;
}
