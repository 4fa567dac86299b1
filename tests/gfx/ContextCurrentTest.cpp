#include "contextProbe.h"
#include "oz/ozAppearance.h"
#include "oz/ozThread.h"
#include "support/glRecorder.h"
#include <thread>

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST(Context, BelongsToTheObjects) {
  EXPECT_EQ(ozContext::getClassType()->getAncestor(), ozObject::getClassType());
  EXPECT_STREQ(ozContext::getClassType()->getName(), "Context");
}

TEST(Context, MakesNothingCurrentWhenItIsMade) {
  HDC const device = ozDevice::createOffscreen(8, 8);
  GLRecorder rec;
  ozContext *const context = new ozContext(device);
  EXPECT_THAT(rec.texts(), ElementsAre("glColor4f(1, 1, 1, 1)"));
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
  EXPECT_EQ(context->getHDC(), nullptr);
  EXPECT_EQ(context->getColorMode(), ozContext::RGBA_COLOR);
  EXPECT_EQ(context->getRefCount(), 0u);
  ozContextProbe probe(context);
  EXPECT_TRUE(probe.stateDirty());
  EXPECT_TRUE(probe.writesDefault());
  EXPECT_FALSE(probe.isCurrent());
  EXPECT_EQ(probe.lastSetMask(), ozBitMask(1));
  EXPECT_NE(probe.lastAppearance(), nullptr);
  EXPECT_EQ(probe.fog()->getOn(), 0);
  EXPECT_EQ(probe.fog()->getRefCount(), 1u);
  delete context;
  ozDevice::destroy(device);
}

TEST(Context, ReadsTheViewportTheFirstTimeItIsMadeCurrent) {
  HDC const device = ozDevice::createOffscreen(30, 20);
  ozContext *const context = new ozContext(device);
  GLRecorder rec;
  context->makeCurrent(device);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glGetIntegerv(GL_VIEWPORT, ptr)", "glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 0, 0, 0, 1)"));
  EXPECT_EQ(ozContext::getCurrent(), context);
  EXPECT_EQ(context->getHDC(), device);
  int x, y, width, height;
  context->getViewport(x, y, width, height);
  EXPECT_EQ(width, 30);
  EXPECT_EQ(height, 20);
  ozContext::releaseCurrent();
  rec.clear();
  context->makeCurrent(device);
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 0, 0, 0, 1)"));
  delete context;
  ozDevice::destroy(device);
}

TEST_F(ContextTest, ReturnsAtOnceWhenItIsCurrentAlready) {
  GLRecorder rec;
  context->makeCurrent(gl.device);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, BindsItselfAgainWhenSomebodyElseHasBoundAnother) {
  RawGL raw;
  ASSERT_TRUE(raw.context->isCurrent());
  context->makeCurrent(gl.device);
  EXPECT_FALSE(raw.context->isCurrent());
  glLineWidth(3);
  GLfloat width;
  glGetFloatv(GL_LINE_WIDTH, &width);
  EXPECT_EQ(width, 3);
}

TEST_F(ContextTest, SwitchesBetweenContextsWithStatesOfTheirOwn) {
  context->setLineWidth(2);
  OffscreenContext other;
  EXPECT_EQ(ozContext::getCurrent(), other.context);
  EXPECT_FALSE(ozContextProbe(context).isCurrent());
  GLRecorder rec;
  other->setLineWidth(2);
  EXPECT_THAT(rec.texts(), ElementsAre("glLineWidth(2)"));
  rec.clear();
  context->makeCurrent(gl.device);
  context->setLineWidth(2);
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModelfv(GL_LIGHT_MODEL_AMBIENT, 0, 0, 0, 1)"));
  EXPECT_TRUE(ozContextProbe(context).isCurrent());
  EXPECT_FALSE(ozContextProbe(other.context).isCurrent());
}

TEST_F(ContextTest, DrawsToAnotherDeviceWhenAsked) {
  HDC const second = ozDevice::createOffscreen(10, 10);
  context->makeCurrent(second);
  EXPECT_EQ(context->getHDC(), second);
  context->clear(1, 1, 0, 0, 1);
  EXPECT_EQ(readPixels(10, 10).count({255, 0, 0, 255}), 100);
  context->makeCurrent(gl.device);
  context->clear(1, 0, 1, 0, 1);
  context->makeCurrent(second);
  EXPECT_EQ(readPixels(10, 10).count({255, 0, 0, 255}), 100);
  ozDevice::destroy(second);
}

TEST_F(ContextTest, IsASecondContextOfOneDevice) {
  ozContext *const second = new ozContext(gl.device);
  second->makeCurrent(gl.device);
  second->setLineWidth(4);
  delete second;
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
  context->makeCurrent(gl.device);
  GLfloat width;
  glGetFloatv(GL_LINE_WIDTH, &width);
  EXPECT_EQ(width, 1);
}

TEST_F(ContextTest, OutlivesItsDevice) {
  HDC const device = ozDevice::createOffscreen(10, 10);
  ozContext *const orphan = new ozContext(device);
  orphan->makeCurrent(device);
  ozDevice::destroy(device);
  context->makeCurrent(gl.device);
  orphan->makeCurrent(device);
  orphan->setLineWidth(3);
  delete orphan;
}

TEST_F(ContextTest, IsReleasedFromTheThread) {
  ozContext::releaseCurrent();
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
  EXPECT_FALSE(ozContextProbe(context).isCurrent());
  EXPECT_EQ(glGetString(GL_VERSION), nullptr);
  ozContext::releaseCurrent();
}

TEST(Context, LeavesTheThreadWithoutAContextWhenItGoes) {
  { OffscreenContext gone; }
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
  EXPECT_EQ(glGetString(GL_VERSION), nullptr);
}

TEST_F(ContextTest, LeavesAnotherCurrentContextAloneWhenItGoes) {
  ozContext *const other = new ozContext(gl.device);
  delete other;
  EXPECT_EQ(ozContext::getCurrent(), context);
  EXPECT_NE(glGetString(GL_VERSION), nullptr);
}

TEST_F(ContextTest, IsPerThread) {
  ozContext *seen = context, *made = nullptr;
  std::thread([&] {
    ozPrivate::init();
    seen = ozContext::getCurrent();
    OffscreenContext mine;
    made = ozContext::getCurrent();
    EXPECT_EQ(made, mine.context);
  }).join();
  EXPECT_EQ(seen, nullptr);
  EXPECT_NE(made, nullptr);
  EXPECT_EQ(ozContext::getCurrent(), context);
}

TEST(Context, LeavesNoOtherThreadPointingAtIt) {
  HDC const device = ozDevice::createOffscreen(8, 8);
  ozContext *const context = new ozContext(device);
  std::thread([&] {
    ozPrivate::init();
    context->makeCurrent(device);
    std::thread([&] {
      ozPrivate::init();
      delete context;
      ozPrivate::fini();
    }).join();
    EXPECT_EQ(ozContext::getCurrent(), nullptr);
    ozDeviceRecord::release();
    ozPrivate::fini();
  }).join();
  ozDevice::destroy(device);
}

TEST(Context, StandsWithoutADevice) {
  ozContext *const context = new ozContext(nullptr);
  context->makeCurrent(static_cast<HDC>(nullptr));
  context->setLineWidth(2);
  EXPECT_EQ(context->getLineWidth(), 2);
  delete context;
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
}

TEST(Context, ReleasesItsFogAndTheLightsOfItsLevels) {
  ozPointLight *const light = new ozPointLight;
  light->ref();
  ozFog *const fog = new ozFog;
  fog->ref();
  {
    OffscreenContext gone;
    int match;
    gone->getLightTarget(light, ozMatrix4f(), match);
    gone->pushState();
    gone->pushFog(fog);
    EXPECT_GT(light->getRefCount(), 2u);
    EXPECT_EQ(fog->getRefCount(), 2u);
  }
  EXPECT_EQ(light->getRefCount(), 1u);
  EXPECT_EQ(fog->getRefCount(), 1u);
  light->unref();
  fog->unref();
}

TEST(Context, DropsItsOverridesWhenItGoes) {
  ozAppearance *const appearance = new ozAppearance;
  appearance->ref();
  {
    OffscreenContext gone;
    gone->pushOverrideAppearance(appearance);
    gone->pushOverrideAppearance(appearance);
  }
  EXPECT_EQ(appearance->getRefCount(), 1u);
  appearance->unref();
}

TEST_F(ContextTest, ForgetsADestroyedTextureOnEveryLevelOfEveryContext) {
  OffscreenContext other;
  NotedTexture *const texture = new NotedTexture;
  other->setTexture(texture);
  context->makeCurrent(gl.device);
  context->setTexture(texture);
  context->pushState();
  delete texture;
  EXPECT_EQ(context->getTexture(), nullptr);
  EXPECT_EQ(context->getDefaultState().texture, nullptr);
  EXPECT_EQ(other->getTexture(), nullptr);
  context->popState();
  EXPECT_EQ(context->getTexture(), nullptr);
}

TEST_F(ContextTest, ForgetsADestroyedTextureGenerator) {
  NotedTexGen *const texGen = new NotedTexGen;
  context->setTexGen(texGen);
  delete texGen;
  EXPECT_EQ(context->getTexGen(), nullptr);
  EXPECT_EQ(context->getDefaultState().texGen, nullptr);
}

TEST_F(ContextTest, ForgetsADestroyedMaterialOnBothSides) {
  NotedMaterial *const material = new NotedMaterial;
  context->setMaterial(material);
  context->setBackMaterial(material);
  delete material;
  EXPECT_EQ(context->getMaterial(), nullptr);
  EXPECT_EQ(context->getBackMaterial(), nullptr);
  EXPECT_EQ(context->getDefaultState().material, nullptr);
  EXPECT_EQ(context->getDefaultState().backMaterial, nullptr);
}

TEST_F(ContextTest, EndsTwoSidedLightingAlsoAfterTheBackMaterialIsGone) {
  NotedMaterial *const material = new NotedMaterial;
  context->setBackMaterial(material);
  delete material;
  GLRecorder rec;
  context->setBackMaterial(nullptr);
  context->setBackMaterial(nullptr);
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0)"));
}

TEST_F(ContextTest, DrawsANewTextureAtTheAddressOfAnOldOne) {
  alignas(NotedTexture) char place[sizeof(NotedTexture)];
  NotedTexture *texture = new (place) NotedTexture;
  context->setTexture(texture);
  texture->~NotedTexture();
  texture = new (place) NotedTexture;
  context->setTexture(texture);
  EXPECT_EQ(texture->draws, 1);
  texture->~NotedTexture();
}

TEST_F(ContextTest, ForgetsADestroyedAppearance) {
  ozAppearance *const appearance = new ozAppearance;
  context->drawApp(appearance, 1);
  EXPECT_EQ(ozContextProbe(context).lastAppearance(), appearance);
  delete appearance;
  EXPECT_NE(ozContextProbe(context).lastAppearance(), appearance);
}
