#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

// Takes what other tests have given back.
void takeFreedIds() {
  int single, block;
  do {
    single = ozContext::newId(1);
    block = ozContext::newId(2);
  } while (single + 1 != block);
}

} // namespace

TEST_F(ContextTest, GivesBlocksOfConsecutiveIds) {
  int const block = ozContext::newId(5);
  EXPECT_EQ(ozContext::newId(2), block + 5);
  EXPECT_EQ(ozContext::newId(3), block + 7);
}

TEST_F(ContextTest, ReusesFreedIdsFirstComeFirstServed) {
  takeFreedIds();
  int const first = ozContext::newId(3);
  ozContext::freeId(first, 3);
  EXPECT_NE(ozContext::newId(2), first); // blocks are never made of freed ids
  EXPECT_EQ(ozContext::newId(1), first);
  ozContext::freeId(first, 1);
  EXPECT_EQ(ozContext::newId(1), first + 1);
  EXPECT_EQ(ozContext::newId(1), first + 2);
  EXPECT_EQ(ozContext::newId(1), first);
}

TEST_F(ContextTest, KeepsTheOrderOfManyFreedIds) {
  takeFreedIds();
  int const first = ozContext::newId(200);
  ozContext::freeId(first, 100);
  for (int i = 0; i < 100; ++i) {
    EXPECT_EQ(ozContext::newId(1), first + i);
    ozContext::freeId(first + 100 + i, 1);
  }
  for (int i = 0; i < 100; ++i) EXPECT_EQ(ozContext::newId(1), first + 100 + i);
}

TEST_F(ContextTest, TakesAnyVersionOfANewIdForDirtyOnce) {
  int const id = ozContext::newId(1);
  EXPECT_EQ(context->isDirty(id, 1), 1);
  EXPECT_EQ(context->isDirty(id, 1), 0);
  EXPECT_EQ(context->isDirty(id, 2), 1);
  EXPECT_EQ(context->isDirty(id, 1), 0);
  EXPECT_EQ(context->isDirty(id, 2), 0);
}

TEST_F(ContextTest, TakesVersionZeroOfAnIdInItsRoomForSeen) { EXPECT_EQ(context->isDirty(31, 0), 0); }

TEST_F(ContextTest, DoublesItsRoomUntilItExceedsTheId) {
  ozContextProbe probe(context);
  EXPECT_EQ(probe.versionRoom(), 32u);
  EXPECT_EQ(context->isDirty(31, 1), 1);
  EXPECT_EQ(probe.versionRoom(), 32u);
  EXPECT_EQ(context->isDirty(32, 1), 1);
  EXPECT_EQ(probe.versionRoom(), 64u);
  EXPECT_EQ(context->isDirty(32, 1), 0);
  EXPECT_EQ(context->isDirty(300, 7), 1);
  EXPECT_EQ(probe.versionRoom(), 512u);
  EXPECT_EQ(context->isDirty(300, 7), 0);
  EXPECT_EQ(context->isDirty(32, 1), 0);
  EXPECT_EQ(context->isDirty(301, 1), 1);
}

TEST_F(ContextTest, TakesANegativeIdForDirtyEachTime) {
  EXPECT_EQ(context->isDirty(-1, 1), 1);
  EXPECT_EQ(context->isDirty(-1, 1), 1);
}

TEST_F(ContextTest, KeepsVersionsApartFromThoseOfAnotherContext) {
  OffscreenContext other;
  int const id = ozContext::newId(1);
  EXPECT_EQ(context->isDirty(id, 3), 1);
  EXPECT_EQ(other->isDirty(id, 3), 1);
  EXPECT_EQ(context->isDirty(id, 3), 0);
}

TEST_F(ContextTest, ForgetsAFreedIdInEveryContext) {
  OffscreenContext other;
  int const id = ozContext::newId(2);
  context->isDirty(id, 9);
  context->isDirty(id + 1, 9);
  other->isDirty(id, 9);
  ozContext::freeId(id, 2);
  EXPECT_EQ(context->isDirty(id, 1), 1);
  EXPECT_EQ(context->isDirty(id + 1, 1), 1);
  EXPECT_EQ(other->isDirty(id, 1), 1);
}

TEST_F(ContextTest, MakesRoomForAFreedIdThatItNeverSaw) {
  ozContextProbe probe(context);
  int const id = ozContext::newId(1000) + 999;
  ozContext::freeId(id, 1);
  EXPECT_GT(probe.versionRoom(), static_cast<unsigned int>(id));
  EXPECT_EQ(probe.versionRoom() & (probe.versionRoom() - 1), 0u);
}

TEST_F(ContextTest, GivesTheLowestFreeTextureName) {
  int const a = ozContext::newTextureName(), b = ozContext::newTextureName(), c = ozContext::newTextureName();
  EXPECT_LT(a, b);
  EXPECT_LT(b, c);
  EXPECT_EQ(ozContext::getGLTextureName(b), b + 10000);
  ozContext::deleteTextureName(c);
  ozContext::deleteTextureName(a);
  EXPECT_EQ(ozContext::getGLTextureName(a), 0);
  EXPECT_EQ(ozContext::newTextureName(), a);
  EXPECT_EQ(ozContext::newTextureName(), c);
  for (int name : {a, b, c}) ozContext::deleteTextureName(name);
}

TEST_F(ContextTest, HasFiveHundredAndTwelveTextureNames) {
  std::vector<int> names;
  for (int name; (name = ozContext::newTextureName()) >= 0;) names.push_back(name);
  EXPECT_EQ(names.back(), 511);
  EXPECT_LT(ozContext::newTextureName(), 0);
  for (int name : names) ozContext::deleteTextureName(name);
}

TEST_F(ContextTest, IgnoresATextureNameThatIsNone) {
  ozContext::deleteTextureName(-1);
  ozContext::deleteTextureName(512);
  EXPECT_EQ(ozContext::getGLTextureName(-1), 0);
  EXPECT_EQ(ozContext::getGLTextureName(512), 0);
}

TEST_F(ContextTest, RefusesAnotherNumberOfTextureNamesOnceInUse) {
  EXPECT_EQ(ozContext::setDefaultQtyTextureNames(600), 0);
}

TEST_F(ContextTest, ClaimsATextureObjectOnce) {
  ozContextProbe probe(context);
  GLRecorder rec;
  EXPECT_EQ(context->claimTextureObject(500), 10500u);
  EXPECT_EQ(context->claimTextureObject(500), 10500u);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(probe.texture(500), 10500);
  ozContext::dropTextureObjects(500);
}

TEST_F(ContextTest, DropsATextureObjectAtOnceWhereItIsCurrentAndElsewhereLater) {
  OffscreenContext other;
  context->makeCurrent(gl.device);
  ozContextProbe here(context), there(other.context);
  context->claimTextureObject(501);
  GLRecorder rec;
  ozContext::dropTextureObjects(501);
  EXPECT_THAT(rec.texts(), ElementsAre("glDeleteTextures(1, 10501)"));
  EXPECT_EQ(here.texture(501), 0);
  EXPECT_EQ(there.texture(501), -1);

  other->makeCurrent(other.device);
  rec.clear();
  EXPECT_EQ(other->claimTextureObject(501), 10501u);
  EXPECT_THAT(rec.texts(), ElementsAre("glDeleteTextures(1, 10501)"));
  EXPECT_EQ(there.texture(501), 10501);
}

TEST_F(ContextTest, CleansDroppedTextureObjectsOnlyWhileItIsCurrent) {
  OffscreenContext other;
  context->makeCurrent(gl.device);
  ozContext::dropTextureObjects(502);
  ozContextProbe there(other.context);
  GLRecorder rec;
  other->cleanTextureObjects();
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(there.texture(502), -1);
  other->makeCurrent(other.device);
  rec.clear();
  other->cleanTextureObjects();
  EXPECT_THAT(rec.texts(), ElementsAre("glDeleteTextures(1, 10502)"));
  EXPECT_EQ(there.texture(502), 0);
}

TEST_F(ContextTest, CleansTextureObjectsWhenItIsMadeCurrentIfAsked) {
  OffscreenContext other;
  context->makeCurrent(gl.device);
  ozContext::dropTextureObjects(503);
  other->setTextureObjectClean(1);
  GLRecorder rec;
  other->makeCurrent(other.device);
  EXPECT_EQ(rec.texts().back(), "glDeleteTextures(1, 10503)");
}
