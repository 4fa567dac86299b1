#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

typedef ozContext C;

TEST_F(ContextTest, MapsEverySourceBlendFunction) {
  std::vector<std::string> calls;
  for (int i = 0; i < 9; ++i) {
    context->setSrcBlendFunc(i ? C::ZERO_SBLEND : C::ONE_SBLEND);
    GLRecorder rec;
    context->setSrcBlendFunc(static_cast<C::SrcBlendFuncEnum>(i));
    calls.push_back(rec.texts().back());
  }
  EXPECT_THAT(calls, ElementsAre("glBlendFunc(GL_ZERO, GL_ZERO)", "glBlendFunc(GL_ONE, GL_ZERO)",
                                 "glBlendFunc(GL_DST_COLOR, GL_ZERO)", "glBlendFunc(GL_ONE_MINUS_DST_COLOR, GL_ZERO)",
                                 "glBlendFunc(GL_SRC_ALPHA_SATURATE, GL_ZERO)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                                 "glBlendFunc(GL_ONE_MINUS_SRC_ALPHA, GL_ZERO)", "glBlendFunc(GL_DST_ALPHA, GL_ZERO)",
                                 "glBlendFunc(GL_ONE_MINUS_DST_ALPHA, GL_ZERO)"));
}

TEST_F(ContextTest, MapsEveryDestinationBlendFunction) {
  std::vector<std::string> calls;
  for (int i = 0; i < 8; ++i) {
    context->setDstBlendFunc(i ? C::ZERO_DBLEND : C::ONE_DBLEND);
    GLRecorder rec;
    context->setDstBlendFunc(static_cast<C::DstBlendFuncEnum>(i));
    calls.push_back(rec.texts().back());
  }
  EXPECT_THAT(calls, ElementsAre("glBlendFunc(GL_ONE, GL_ZERO)", "glBlendFunc(GL_ONE, GL_ONE)",
                                 "glBlendFunc(GL_ONE, GL_SRC_COLOR)", "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_COLOR)",
                                 "glBlendFunc(GL_ONE, GL_SRC_ALPHA)", "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)",
                                 "glBlendFunc(GL_ONE, GL_DST_ALPHA)", "glBlendFunc(GL_ONE, GL_ONE_MINUS_DST_ALPHA)"));
}

TEST_F(ContextTest, SwitchesBlendingOffForTheNeutralPair) {
  context->setSrcBlendFunc(C::ZERO_SBLEND);
  GLRecorder rec;
  context->setSrcBlendFunc(C::ONE_SBLEND);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_BLEND)", "glBlendFunc(GL_ONE, GL_ZERO)"));
  context->setDstBlendFunc(C::ONE_DBLEND);
  rec.clear();
  context->setDstBlendFunc(C::ZERO_DBLEND);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_BLEND)", "glBlendFunc(GL_ONE, GL_ZERO)"));
}

TEST_F(ContextTest, LeavesBlendingAloneForASourceUnderANonZeroDestination) {
  context->setDstBlendFunc(C::ONE_DBLEND);
  context->setSrcBlendFunc(C::ZERO_SBLEND);
  GLRecorder rec;
  context->setSrcBlendFunc(C::ONE_SBLEND);
  EXPECT_THAT(rec.texts(), ElementsAre("glBlendFunc(GL_ONE, GL_ONE)"));
}

TEST_F(ContextTest, LeavesBlendingAloneForADestinationUnderASourceOtherThanOne) {
  context->setSrcBlendFunc(C::SRC_ALPHA_SBLEND);
  GLRecorder rec;
  context->setDstBlendFunc(C::ONE_MINUS_SRC_ALPHA_DBLEND);
  EXPECT_THAT(rec.texts(), ElementsAre("glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"));
}

TEST_F(ContextTest, ChangesBothBlendFunctionsInTwoCallsWithoutAMask) {
  ozContextProbe probe(context);
  probe.cleanState();
  GLRecorder rec;
  context->setBlendFuncs(C::SRC_ALPHA_SBLEND, C::ONE_DBLEND);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                                       "glBlendFunc(GL_SRC_ALPHA, GL_ONE)"));
  EXPECT_EQ(context->getCurState().mask.getMask(), 0);
  EXPECT_EQ(context->getDefaultState().mask.getMask(), 0);
  EXPECT_EQ(context->getDefaultState().srcBlendFunc, C::SRC_ALPHA_SBLEND);
  EXPECT_EQ(context->getDefaultState().dstBlendFunc, C::ONE_DBLEND);
  EXPECT_TRUE(probe.stateDirty());
  rec.clear();
  context->setBlendFuncs(C::SRC_ALPHA_SBLEND, C::ONE_DBLEND);
  EXPECT_THAT(rec.texts(), IsEmpty());
  context->setBlendFuncs(C::ONE_SBLEND, C::ZERO_DBLEND);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glBlendFunc(GL_ONE, GL_ONE)", "glDisable(GL_BLEND)", "glBlendFunc(GL_ONE, GL_ZERO)"));
}

TEST_F(ContextTest, KeepsBlendFunctionsOutOfTheDefaultStateWhileSomethingIsApplied) {
  ozContextProbe probe(context);
  probe.writeCurrent();
  context->setBlendFuncs(C::SRC_ALPHA_SBLEND, C::ONE_DBLEND);
  probe.writeDefault();
  EXPECT_EQ(context->getDefaultState().srcBlendFunc, C::ONE_SBLEND);
  EXPECT_EQ(context->getSrcBlendFunc(), C::SRC_ALPHA_SBLEND);
}

namespace {

char const *const stippleOn = "glEnable(GL_POLYGON_STIPPLE)";
char const *const stippleOff = "glDisable(GL_POLYGON_STIPPLE)";

} // namespace

TEST_F(ContextTest, ShowsTransparencyByBlending) {
  for (auto mode : {C::NICE_TRANSP, C::BLEND_TRANSP}) {
    context->setTranspMode(mode);
    GLRecorder rec;
    context->setTranspEnable(1);
    EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                                         "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"));
    rec.clear();
    context->setTranspEnable(0);
    EXPECT_THAT(rec.texts(), ElementsAre("glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)", "glDisable(GL_BLEND)",
                                         "glBlendFunc(GL_ONE, GL_ZERO)"));
  }
}

TEST_F(ContextTest, ShowsTransparencyByStipple) {
  for (auto mode : {C::FAST_TRANSP, C::SCREEN_DOOR_TRANSP}) {
    context->setTranspMode(mode);
    GLRecorder rec;
    context->setTranspEnable(1);
    context->setTranspEnable(0);
    EXPECT_THAT(rec.texts(), ElementsAre(stippleOn, stippleOff));
  }
}

TEST_F(ContextTest, TakesBlendingBackWhenStippleBegins) {
  context->setTranspMode(C::FAST_TRANSP);
  context->setBlendFuncs(C::SRC_ALPHA_SBLEND, C::ZERO_DBLEND);
  GLRecorder rec;
  context->setTranspEnable(1);
  EXPECT_THAT(rec.texts(), ElementsAre(stippleOn, "glDisable(GL_BLEND)", "glBlendFunc(GL_ONE, GL_ZERO)"));
}

TEST_F(ContextTest, DoesNothingForATransparencyModeAboveThree) {
  context->setTranspMode(static_cast<C::TranspModeEnum>(4));
  GLRecorder rec;
  context->setTranspEnable(1);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(context->getTranspEnable(), 1);
}

TEST_F(ContextTest, ChangesTheWayOfTransparencyOnlyWhileItIsOn) {
  GLRecorder rec;
  context->setTranspMode(C::SCREEN_DOOR_TRANSP);
  EXPECT_THAT(rec.texts(), IsEmpty());
  context->setTranspEnable(1);
  rec.clear();
  context->setTranspMode(C::NICE_TRANSP);
  EXPECT_THAT(rec.texts(), ElementsAre(stippleOff, "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                                       "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"));
  rec.clear();
  context->setTranspMode(C::FAST_TRANSP);
  EXPECT_THAT(rec.texts(), ElementsAre(stippleOn, "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)", "glDisable(GL_BLEND)",
                                       "glBlendFunc(GL_ONE, GL_ZERO)"));
  rec.clear();
  context->setTranspMode(static_cast<C::TranspModeEnum>(4));
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, LeavesDepthWritesToTheApplication) {
  GLRecorder rec;
  context->setTranspEnable(1);
  EXPECT_EQ(rec.count("glDepthMask"), 0);
}
