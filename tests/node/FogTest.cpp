// How fog reaches OpenGL, and when it is defined again.

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class FogDraw : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
    context->setFogEnable(1);
    fog = made();
  }
  void TearDown() override {
    for (ozFog *each : fogs) each->unref();
  }

  ozFog *made() {
    fogs.push_back(new ozFog);
    fogs.back()->ref();
    return fogs.back();
  }
  std::vector<std::string> callsOf(ozFog *each) {
    GLRecorder rec;
    each->draw(&action);
    return rec.texts();
  }
  /// Pops the top fog.
  std::vector<std::string> callsOfPop() {
    GLRecorder rec;
    context->popFog();
    return rec.texts();
  }

  ozDrawAction action;
  ozFog *fog;
  std::vector<ozFog *> fogs;
};

TEST_F(FogDraw, SendsEachParameterInOrder) {
  fog->setMode(ozFog::LINEAR_FOG);
  fog->setDensity(0.5f);
  fog->setStart(2);
  fog->setEnd(3);
  fog->setIndex(4);
  fog->setColor(0.25f, 0.5f, 0.75f, 1);
  EXPECT_THAT(callsOf(fog), ElementsAre("glFogi(GL_FOG_MODE, GL_LINEAR)", "glFogf(GL_FOG_DENSITY, 0.5)",
                                        "glFogf(GL_FOG_START, 2)", "glFogf(GL_FOG_END, 3)", "glFogf(GL_FOG_INDEX, 4)",
                                        "glFogfv(GL_FOG_COLOR, 0.25, 0.5, 0.75, 1)"));
}

TEST_F(FogDraw, SendsTheExponentialModes) {
  EXPECT_EQ(callsOf(fog)[0], "glFogi(GL_FOG_MODE, GL_EXP)");
  fog->setMode(ozFog::EXP2_FOG);
  EXPECT_EQ(callsOf(fog)[0], "glFogi(GL_FOG_MODE, GL_EXP2)");
}

TEST_F(FogDraw, AModeThatIsNoneChangesNoMode) {
  for (int mode : {3, -1, 1000000}) {
    fog->setModeHack(mode);
    EXPECT_EQ(callsOf(fog)[0], "glFogf(GL_FOG_DENSITY, 1)");
  }
}

TEST_F(FogDraw, IsDefinedOnce) {
  fog->draw(&action);
  EXPECT_THAT(callsOf(fog), IsEmpty());
}

TEST_F(FogDraw, EachFieldIsAChange) {
  fog->draw(&action);
  for (short id = 0; id < 9; ++id) {
    fog->getField(id)->fieldChanged();
    EXPECT_EQ(callsOf(fog).size(), 6u) << id;
  }
}

TEST_F(FogDraw, IsDefinedAnewOnceItWasPushed) {
  fog->draw(&action);
  context->pushFog(fog);
  EXPECT_EQ(callsOf(fog).size(), 6u);
  EXPECT_THAT(callsOf(fog), IsEmpty());
  context->popFog();
}

TEST_F(FogDraw, SwitchedOffItSwitchesFogOffAndDefinesNothing) {
  fog->setOn(0);
  EXPECT_THAT(callsOf(fog), ElementsAre("glDisable(GL_FOG)"));
  EXPECT_EQ(context->getDefaultState().fogEnable, 1);
}

TEST_F(FogDraw, SwitchedOnAgainItIsDefined) {
  fog->setOn(0);
  fog->draw(&action);
  fog->setOn(1);
  std::vector<std::string> calls = callsOf(fog);
  EXPECT_EQ(calls.size(), 7u);
  EXPECT_EQ(calls[0], "glEnable(GL_FOG)");
}

TEST_F(FogDraw, HasNoEffectWhereTheDefaultStateHasFogOff) {
  context->setFogEnable(0);
  EXPECT_THAT(callsOf(fog), IsEmpty());
}

TEST_F(FogDraw, AChangeMadeWhileFogWasOffIsNotLost) {
  fog->draw(&action);
  context->setFogEnable(0);
  fog->setDensity(0.5f);
  fog->draw(&action);
  context->setFogEnable(1);
  EXPECT_THAT(callsOf(fog), Contains("glFogf(GL_FOG_DENSITY, 0.5)"));
}

TEST_F(FogDraw, AConnectedValueIsTakenFirst) {
  ozFog source;
  source.connect(4, fog, 4);
  fog->draw(&action);
  source.setDensity(0.5f);
  EXPECT_THAT(callsOf(fog), Contains("glFogf(GL_FOG_DENSITY, 0.5)"));
}

class FogPop : public FogDraw {
protected:
  void SetUp() override {
    FogDraw::SetUp();
    inner = made();
    context->pushFog(fog);
    fog->draw(&action);
  }

  ozFog *inner;
};

TEST_F(FogPop, AnEqualFogCostsNothing) {
  context->pushFog(inner);
  inner->draw(&action);
  EXPECT_THAT(callsOfPop(), IsEmpty());
  context->popFog();
}

TEST_F(FogPop, AFogThatDiffersInAnyValueIsSentAgain) {
  void (*const changes[])(ozFog *) = {[](ozFog *f) { f->setOn(0); },
                                      [](ozFog *f) { f->setMode(ozFog::LINEAR_FOG); },
                                      [](ozFog *f) { f->setDensity(0.5f); },
                                      [](ozFog *f) { f->setStart(0.5f); },
                                      [](ozFog *f) { f->setEnd(0.5f); },
                                      [](ozFog *f) { f->setIndex(0.5f); },
                                      [](ozFog *f) { f->setColor(0, 0, 1, 0); }};
  for (auto change : changes) {
    ozFog *const other = made();
    change(other);
    context->pushFog(other);
    EXPECT_EQ(callsOfPop().size(), 6u);
  }
  context->popFog();
}

TEST_F(FogPop, ItIsSentAgainWhenItChangedUnderneath) {
  context->pushFog(inner);
  inner->setDensity(0.5f);
  fog->setDensity(0.5f);
  EXPECT_THAT(callsOfPop(), Contains("glFogf(GL_FOG_DENSITY, 0.5)"));
  context->popFog();
}

TEST_F(FogPop, AfterThatItCountsAsSeen) {
  context->pushFog(inner);
  fog->setDensity(0.5f);
  callsOfPop();
  EXPECT_THAT(callsOf(fog), IsEmpty());
  context->popFog();
}

} // namespace
