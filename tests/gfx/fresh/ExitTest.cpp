// Objects that die after main has returned, and on a thread that has no block. The program must end well.

#include "oz/ozAppearance.h"
#include "oz/ozContext.h"
#include "oz/ozLight.h"
#include "oz/ozMaterial.h"
#include "oz/ozTexGen.h"
#include "oz/ozTexture.h"
#include "support/contextFixture.h"
#include <gtest/gtest.h>
#include <thread>

namespace {

struct Objects {
  Objects() {
    for (ozObject *object : objects) object->ref();
    light->ref();
  }
  ~Objects() {
    for (ozObject *object : objects) object->unref();
    light->unref();
  }
  ozTexture *const texture = new ozTexture(true);
  ozMaterial *const material = new ozMaterial;
  ozObject *const objects[4] = {texture, material, new ozTexGen, new ozAppearance};
  ozLight *const light = new ozPointLight;
};

Objects *dyingWithTheLibrary() {
  static Objects objects;
  return &objects;
}

} // namespace

TEST(Exit, FindsTheTablesAliveForObjectsThatDieThere) {
  Objects *const objects = dyingWithTheLibrary();
  HDC const device = ozDevice::createOffscreen(8, 8);
  ozContext *const context = new ozContext(device); // lives on
  context->makeCurrent(device);
  context->setTexture(objects->texture);
  context->setMaterial(objects->material);
  int match;
  EXPECT_EQ(context->getLightTarget(objects->light, ozMatrix4f(), match), 7);
  ozContext::releaseCurrent();
}

TEST(Exit, LetsObjectsDieOnAThreadWithoutABlock) {
  ozTexture *const texture = new ozTexture(true);
  unsigned int const name = texture->getGLName();
  std::thread([=] { texture->unref(); }).join();
  ozTexture next(true);
  EXPECT_EQ(next.getGLName(), name);
}
