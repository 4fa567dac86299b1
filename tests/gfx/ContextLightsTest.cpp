#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ContextLights : public ContextTest {
protected:
  ContextLights() {
    for (auto &light : lights) {
      light = new ozDirectionalLight;
      light->ref();
    }
    moved.makeTrans(1, 2, 3);
  }
  ~ContextLights() override {
    for (auto &light : lights) light->unref();
  }

  int target(ozLight *light, ozMatrix4f const &matrix = ozMatrix4f()) {
    return context->getLightTarget(light, matrix, match);
  }

  ozDirectionalLight *lights[10];
  ozMatrix4f moved;
  int match = 99;
  ozContextProbe probe{context};
};

} // namespace

TEST_F(ContextLights, FillTheSlotsFromTheTopDown) {
  GLRecorder rec;
  EXPECT_EQ(target(lights[0]), 7);
  EXPECT_EQ(match, -1);
  EXPECT_EQ(target(lights[1]), 6);
  EXPECT_EQ(match, -1);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_LIGHT7)", "glEnable(GL_LIGHT6)"));
  EXPECT_EQ(context->getLight(7), lights[0]);
  EXPECT_EQ(context->getLight(6), lights[1]);
  EXPECT_EQ(context->getLight(5), nullptr);
  EXPECT_EQ(lights[0]->getRefCount(), 2u);
  EXPECT_EQ(probe.target(7).assigned, 1);
  EXPECT_EQ(probe.target(7).on, 1);
  EXPECT_EQ(probe.target(5).assigned, 0);
}

TEST_F(ContextLights, MatchWhenNothingHasChanged) {
  target(lights[0], moved);
  GLRecorder rec;
  EXPECT_EQ(target(lights[0], moved), 7);
  EXPECT_EQ(match, 7);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(lights[0]->getRefCount(), 2u);
}

TEST_F(ContextLights, KeepTheirSlotUnderAnotherMatrix) {
  target(lights[0]);
  GLRecorder rec;
  EXPECT_EQ(target(lights[0], moved), 7);
  EXPECT_EQ(match, -1);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(probe.target(7).matrix, moved);
}

TEST_F(ContextLights, AreSwitchedOffInTheirSlot) {
  target(lights[0]);
  lights[0]->setOn(0);
  GLRecorder rec;
  EXPECT_EQ(target(lights[0], moved), 7);
  EXPECT_EQ(match, -1);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT7)"));
  EXPECT_EQ(probe.target(7).on, 0);
  EXPECT_EQ(probe.target(7).matrix, moved);
  EXPECT_EQ(context->getLight(7), lights[0]);
}

TEST_F(ContextLights, TakeASlotAlsoWhenTheyAreOff) {
  lights[0]->setOn(0);
  GLRecorder rec;
  EXPECT_EQ(target(lights[0]), 7);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT7)"));
}

TEST_F(ContextLights, TakeTheHighestSlotThatIsOffWhenNoneIsFree) {
  for (int i = 0; i < 8; ++i) target(lights[i]);
  lights[3]->setOn(0); // slot 4
  lights[5]->setOn(0); // slot 2
  target(lights[3]);
  target(lights[5]);
  GLRecorder rec;
  EXPECT_EQ(target(lights[8]), 4);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_LIGHT4)"));
  EXPECT_EQ(lights[3]->getRefCount(), 1u);
  EXPECT_EQ(lights[8]->getRefCount(), 2u);
}

TEST_F(ContextLights, AreRefusedAsTheNinthWithoutACallOrAReference) {
  for (int i = 0; i < 8; ++i) target(lights[i]);
  GLRecorder rec;
  EXPECT_EQ(target(lights[8]), -1);
  EXPECT_EQ(match, -1);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(lights[8]->getRefCount(), 1u);
}

TEST_F(ContextLights, GoOutWithTheScopeInWhichTheyCameIntoBeing) {
  target(lights[0]);
  context->pushLights();
  EXPECT_EQ(lights[0]->getRefCount(), 3u);
  target(lights[1]);
  GLRecorder rec;
  context->popLights();
  EXPECT_EQ(rec.without({"glLightfv", "glLightf", "glGetFloatv"}).front().text, "glDisable(GL_LIGHT6)");
  EXPECT_EQ(context->getLight(6), nullptr);
  EXPECT_EQ(lights[0]->getRefCount(), 2u);
  EXPECT_EQ(lights[1]->getRefCount(), 1u);
}

TEST_F(ContextLights, AreLeftAloneByTheScopeThatDidNotTouchThem) {
  target(lights[0]);
  context->isDirty(0, 0);
  context->pushLights();
  context->popLights();
  context->pushLights();
  GLRecorder rec;
  context->popLights();
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextLights, ArePutBackUnderTheMatrixOfTheLowerLevel) {
  target(lights[0]);
  context->pushLights();
  context->popLights(); // the context has seen the light's version now
  context->pushLights();
  target(lights[0], moved);
  GLRecorder rec;
  context->popLights();
  std::vector<std::string> const calls = rec.texts();
  ASSERT_GT(calls.size(), 3u);
  EXPECT_EQ(calls[0], "glPushMatrix()");
  EXPECT_EQ(calls[1], "glLoadMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)");
  EXPECT_EQ(calls[2].substr(0, 33), "glLightfv(GL_LIGHT7, GL_POSITION,");
  EXPECT_EQ(calls.back(), "glPopMatrix()");
  EXPECT_EQ(probe.target(7).matrix, ozMatrix4f());
}

TEST_F(ContextLights, AreSwitchedOffBelowWhereTheyWereOff) {
  lights[0]->setOn(0);
  target(lights[0]);
  context->pushLights();
  lights[0]->setOn(1);
  target(lights[0]);
  GLRecorder rec;
  context->popLights();
  EXPECT_EQ(rec.texts().front(), "glDisable(GL_LIGHT7)");
}

TEST_F(ContextLights, AreNotPutBackWhenTheyAreOffInTheScope) {
  target(lights[0]);
  context->pushLights();
  lights[0]->setOn(0);
  target(lights[0]);
  GLRecorder rec;
  context->popLights();
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(lights[0]->getRefCount(), 2u);
}

TEST_F(ContextLights, AreDisabledInEveryContextThatHasThemOn) {
  OffscreenContext other;
  int slot = other->getLightTarget(lights[1], ozMatrix4f(), match);
  EXPECT_EQ(slot, 7);
  EXPECT_EQ(other->getLightTarget(lights[0], ozMatrix4f(), match), 6);
  context->makeCurrent(gl.device);
  target(lights[0]);
  GLRecorder rec;
  ozContext::disableLight(lights[0]);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT7)", "glDisable(GL_LIGHT6)"));
  EXPECT_EQ(probe.target(7).on, 0);
  EXPECT_EQ(ozContextProbe(other.context).target(6).on, 0);
  EXPECT_EQ(ozContextProbe(other.context).target(7).on, 1);
  rec.clear();
  ozContext::disableLight(lights[0]);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextLights, AreAllDisabledAtOnce) {
  target(lights[0]);
  target(lights[1]);
  target(lights[2]);
  lights[1]->setOn(0);
  target(lights[1]);
  GLRecorder rec;
  context->disableLightTargets();
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_LIGHT5)", "glDisable(GL_LIGHT7)"));
  rec.clear();
  context->disableLightTargets();
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextLights, HaveEightSlots) {
  EXPECT_EQ(context->getLight(8), nullptr);
  EXPECT_EQ(context->getLight(-1), nullptr);
}

TEST_F(ContextLights, StayInBalancePastSixteenLevels) {
  for (int level = 0; level < 30; ++level) context->pushLights();
  EXPECT_EQ(target(lights[0]), 7);
  EXPECT_EQ(lights[0]->getRefCount(), 2u);
  for (int level = 0; level < 15; ++level) context->popLights();
  EXPECT_EQ(context->getLight(7), lights[0]);
  for (int level = 0; level < 15; ++level) context->popLights();
  EXPECT_EQ(context->getLight(7), nullptr);
  EXPECT_EQ(lights[0]->getRefCount(), 1u);
}
