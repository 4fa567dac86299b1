#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class ContextFog : public ContextTest {
protected:
  ContextFog() {
    on->ref();
    off->ref();
    off->setOn(0);
  }
  ~ContextFog() override {
    on->unref();
    off->unref();
  }

  ozFog *const on = new ozFog;
  ozFog *const off = new ozFog;
  ozContextProbe probe{context};
};

} // namespace

TEST_F(ContextFog, IsHeldByTheLevelsThatItIsIn) {
  ozFog *const own = probe.fog();
  context->pushFog(on);
  EXPECT_EQ(probe.fog(), on);
  EXPECT_EQ(on->getRefCount(), 2u);
  context->pushFog(nullptr);
  EXPECT_EQ(probe.fog(), on);
  EXPECT_EQ(on->getRefCount(), 3u);
  context->popFog();
  context->popFog();
  EXPECT_EQ(probe.fog(), own);
  EXPECT_EQ(on->getRefCount(), 1u);
}

TEST_F(ContextFog, FollowsTheFlagUpToTheFirstLevel) {
  context->pushFog(off);
  GLRecorder rec;
  context->setFogEnable(1);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_FOG)"));
}

TEST_F(ContextFog, IsForcedOffInsideAScopeWhoseFogIsOff) {
  context->pushFog(nullptr);
  context->pushFog(off);
  GLRecorder rec;
  context->setFogEnable(1);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(context->getFogEnable(), 0);
  EXPECT_EQ(context->getDefaultState().fogEnable, 1);
}

TEST_F(ContextFog, IsOnInsideAScopeWhoseFogIsOn) {
  context->pushFog(nullptr);
  context->pushFog(on);
  GLRecorder rec;
  context->setFogEnable(1);
  context->setFogEnable(0);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_FOG)", "glDisable(GL_FOG)"));
}

TEST_F(ContextFog, ChangesNothingWhileTheDefaultStateHasItOff) {
  context->pushFog(nullptr);
  context->pushFog(on);
  GLRecorder rec;
  EXPECT_EQ(context->syncFogState(on), 0);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextFog, IsSyncedToTheNodeWithoutTouchingTheDefaultState) {
  context->setFogEnable(1);
  context->pushFog(nullptr);
  context->pushFog(off);
  GLRecorder rec;
  EXPECT_EQ(context->syncFogState(off), 0);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_FOG)"));
  EXPECT_EQ(context->getDefaultState().fogEnable, 1);
  EXPECT_TRUE(probe.writesDefault());
  rec.clear();
  context->pushFog(on);
  EXPECT_EQ(context->syncFogState(on), 1);
  EXPECT_EQ(rec.texts().back(), "glEnable(GL_FOG)");
}

TEST_F(ContextFog, StaysInBalancePastSixteenLevels) {
  for (int level = 0; level < 15; ++level) context->pushFog(nullptr);
  for (int level = 0; level < 15; ++level) context->pushFog(on);
  EXPECT_NE(probe.fog(), on); // the deepest levels share the sixteenth
  for (int level = 0; level < 30; ++level) context->popFog();
  EXPECT_EQ(on->getRefCount(), 1u);
  EXPECT_EQ(probe.fog()->getRefCount(), 1u);
}
