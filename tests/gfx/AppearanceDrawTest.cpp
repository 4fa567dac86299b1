// How appearances come into force: what is called, what is not, and who wins.

#include <new>

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

using ::testing::Contains;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// Writes a value past all announcements, so that only a real application can bring it to OpenGL.
void sneak(ozAppearance &appearance, float alphaRef) { appearance.getGfx()->alphaRef = alphaRef; }

class AppearanceDraw : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    action.setContext(context);
  }

  /// The calls of an application, queries left out.
  std::vector<std::string> callsOf(ozAppearance *appearance, unsigned char force) {
    GLRecorder rec;
    context->drawApp(appearance, force);
    return textsOf(rec.without({"glGetIntegerv"}));
  }
  std::vector<std::string> callsOfDraw(ozAppearance &appearance) {
    GLRecorder rec;
    appearance.draw(&action);
    return textsOf(rec.without({"glGetIntegerv"}));
  }

  ozDrawAction action;
};

TEST_F(AppearanceDraw, BringsWhatIsSetToOpenGL) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glEnable(GL_DEPTH_TEST)"));
  EXPECT_EQ(context->getDepthEnable(), 1);
}

TEST_F(AppearanceDraw, LeavesTheDefaultStateAlone) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  appearance.draw(&action);
  EXPECT_EQ(context->getDefaultState().depthEnable, 0);
  EXPECT_FALSE(context->getDefaultState().mask.getBit(26));
}

TEST_F(AppearanceDraw, AValueThatHoldsAlreadyCostsNoCall) {
  ozAppearance first, second;
  first.setDepthEnable(1);
  second.setDepthEnable(1);
  first.draw(&action);
  EXPECT_THAT(callsOfDraw(second), IsEmpty());
}

TEST_F(AppearanceDraw, SettersCalledAfterwardsByTheApplicationWriteTheDefaultState) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  appearance.draw(&action);
  context->setAlphaRef(0.5f);
  EXPECT_EQ(context->getDefaultState().alphaRef, 0.5f);
}

TEST_F(AppearanceDraw, WhatTheLastOneSetAndThisOneDoesNotGoesBackToTheDefaultState) {
  context->setShadeModel(ozContext::FLAT_SHADE);
  ozAppearance first, second;
  first.setDepthEnable(1);
  first.setShadeModel(ozContext::SMOOTH_SHADE);
  second.setFogEnable(1);
  first.draw(&action);
  EXPECT_THAT(callsOfDraw(second),
              ElementsAre("glShadeModel(GL_FLAT)", "glDisable(GL_DEPTH_TEST)", "glEnable(GL_FOG)"));
}

TEST_F(AppearanceDraw, AnUntouchedOneRestoresTheDefaultStateAndAppliesNothing) {
  ozAppearance first, untouched;
  first.setDepthEnable(1);
  first.draw(&action);
  EXPECT_THAT(callsOfDraw(untouched), ElementsAre("glDisable(GL_DEPTH_TEST)"));
  EXPECT_THAT(callsOfDraw(untouched), IsEmpty());
}

TEST_F(AppearanceDraw, ASetZeroWinsOverTheDefaultState) {
  context->setTexEnable(1);
  ozAppearance appearance;
  appearance.setTexEnable(0);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glDisable(GL_TEXTURE_2D)"));
}

TEST_F(AppearanceDraw, AppliesItemsInTheOrderOfTheirNumbers) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  appearance.setDepthFunc(ozContext::GEQUAL_DFUNC);
  appearance.setLightEnable(1);
  EXPECT_THAT(callsOfDraw(appearance),
              ElementsAre("glEnable(GL_LIGHTING)", "glDepthFunc(GL_GEQUAL)", "glEnable(GL_DEPTH_TEST)"));
}

TEST_F(AppearanceDraw, TheSameOneAgainIsPassedOver) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOfDraw(appearance), IsEmpty());
  EXPECT_EQ(context->getAlphaRef(), 0.5f);
}

TEST_F(AppearanceDraw, ForceAppliesTheSameOneAgain) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOf(&appearance, 1), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.75)"));
}

TEST_F(AppearanceDraw, AFieldChangeInBetweenForcesTheApplication) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  appearance.setDepthEnable(0);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOfDraw(appearance), Contains("glAlphaFunc(GL_ALWAYS, 0.75)"));
}

TEST_F(AppearanceDraw, DrawClearsTheChangeMark) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  appearance.setAlphaRef(0.25f);
  appearance.draw(&action);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOfDraw(appearance), IsEmpty());
}

TEST_F(AppearanceDraw, ADirectSetterInBetweenForcesTheApplication) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  context->setDepthMask(1);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.75)"));
}

TEST_F(AppearanceDraw, ThePopOfALevelForcesTheApplication) {
  ozAppearance appearance;
  context->pushState();
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  context->popState();
  EXPECT_EQ(context->getAlphaRef(), 0.0f);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.5)"));
}

TEST_F(AppearanceDraw, ADirtyDefaultStateIsCleanAfterOneApplication) {
  ozAppearance appearance;
  context->setDepthMask(1);
  appearance.draw(&action);
  sneak(appearance, 0.75f);
  appearance.getGfx()->alphaFunc = ozContext::LESS_AFUNC;
  EXPECT_THAT(callsOfDraw(appearance), IsEmpty());
}

TEST_F(AppearanceDraw, AValueThatArrivesOverAConnectionIsApplied) {
  ozAppearance source, appearance;
  appearance.setAlphaRef(0.5f);
  source.connect(12, &appearance, 12);
  appearance.draw(&action);
  source.setAlphaRef(0.25f);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.25)"));
}

TEST_F(AppearanceDraw, InheritAllZeroesAppliesCullFaceLineWidthAndPointSizeToo) {
  context->setCullFace(ozContext::BACK_CULL);
  context->setLineWidth(3);
  context->setPointSize(4);
  ozAppearance appearance;
  appearance.setInherit(ozBitMask(0));
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glDisable(GL_CULL_FACE)", "glLineWidth(1)", "glPointSize(1)"));
}

TEST_F(AppearanceDraw, WithoutAnAppearanceTheDefaultStateApplies) {
  context->setAlphaRef(0.5f);
  ozAppearance appearance;
  appearance.setAlphaRef(0.25f);
  appearance.setDepthEnable(1);
  appearance.draw(&action);
  EXPECT_THAT(callsOf(nullptr, 1), ElementsAre("glDisable(GL_DEPTH_TEST)", "glAlphaFunc(GL_ALWAYS, 0.5)"));
}

TEST_F(AppearanceDraw, TheDefaultStateIsAppliedAlsoWithoutForce) {
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  context->drawApp(nullptr, 0);
  appearance.draw(&action);
  EXPECT_THAT(callsOf(nullptr, 0), ElementsAre("glDisable(GL_DEPTH_TEST)"));
}

TEST_F(AppearanceDraw, AnAppearanceAfterTheDefaultStateIsApplied) {
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  context->drawApp(nullptr, 1);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.5)"));
}

TEST_F(AppearanceDraw, ANewOneAtTheAddressOfADestroyedOneIsNotTakenForIt) {
  alignas(ozAppearance) unsigned char room[sizeof(ozAppearance)];
  ozAppearance *appearance = new (room) ozAppearance;
  appearance->setAlphaRef(0.5f);
  appearance->draw(&action);
  appearance->~ozAppearance();
  appearance = new (room) ozAppearance;
  appearance->setAlphaRef(0.75f);
  EXPECT_THAT(callsOf(appearance, 0), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.75)"));
  appearance->~ozAppearance();
}

// ---- overrides

class OverrideAppearance : public AppearanceDraw {
protected:
  void SetUp() override {
    AppearanceDraw::SetUp();
    over = new ozAppearance;
    over->ref();
    context->pushOverrideAppearance(over);
  }
  void TearDown() override {
    over->unref();
    AppearanceDraw::TearDown();
  }

  ozAppearance *over;
};

TEST_F(OverrideAppearance, WinsOverTheShapesOwn) {
  over->setPolyMode(ozContext::LINE_PMODE);
  ozAppearance appearance;
  appearance.setPolyMode(ozContext::POINT_PMODE);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)"));
}

TEST_F(OverrideAppearance, LetsThroughWhatItInherits) {
  over->setPolyMode(ozContext::LINE_PMODE);
  ozAppearance appearance;
  appearance.setDepthEnable(1);
  EXPECT_THAT(callsOfDraw(appearance),
              ElementsAre("glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)", "glEnable(GL_DEPTH_TEST)"));
}

TEST_F(OverrideAppearance, WhatNeitherSetsStaysWithTheDefaultState) {
  context->setAlphaRef(0.5f);
  over->setPolyMode(ozContext::LINE_PMODE);
  ozAppearance appearance;
  appearance.draw(&action);
  EXPECT_EQ(context->getAlphaRef(), 0.5f);
}

TEST_F(OverrideAppearance, IsAppliedAloneWhereAShapeHasNone) {
  over->setDepthEnable(1);
  EXPECT_THAT(callsOf(nullptr, 1), ElementsAre("glEnable(GL_DEPTH_TEST)"));
}

TEST_F(OverrideAppearance, AloneIsPassedOverTheSecondTime) {
  over->setAlphaRef(0.5f);
  context->drawApp(nullptr, 0);
  sneak(*over, 0.75f);
  EXPECT_THAT(callsOf(nullptr, 0), IsEmpty());
}

TEST_F(OverrideAppearance, MergedIsNeverPassedOver) {
  over->setPolyMode(ozContext::LINE_PMODE);
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  sneak(appearance, 0.75f);
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glAlphaFunc(GL_ALWAYS, 0.75)"));
}

TEST_F(OverrideAppearance, TheNextApplicationWithoutItPutsItsItemsBack) {
  over->setDepthEnable(1);
  ozAppearance appearance;
  appearance.setAlphaRef(0.5f);
  appearance.draw(&action);
  context->popOverrideAppearance();
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glDisable(GL_DEPTH_TEST)"));
}

TEST_F(OverrideAppearance, OnlyTheTopOneCounts) {
  over->setDepthEnable(1);
  ozAppearance *const top = new ozAppearance;
  top->setFogEnable(1);
  context->pushOverrideAppearance(top);
  ozAppearance appearance;
  EXPECT_THAT(callsOfDraw(appearance), ElementsAre("glEnable(GL_FOG)"));
  context->popOverrideAppearance();
}

/// Notes how often it is counted while it is drawn.
class WatchedMaterial : public ozMaterial {
public:
  void draw(FaceEnum, ozContext *) override {
    countWhileDrawn = getRefCount();
    parentsWhileDrawn = getParentCount();
  }
  unsigned int countWhileDrawn = 0;
  int parentsWhileDrawn = 0;
};

TEST_F(OverrideAppearance, TheMergedOneCountsNoReferences) {
  WatchedMaterial *const material = new WatchedMaterial;
  over->setPolyMode(ozContext::LINE_PMODE);
  ozAppearance appearance;
  appearance.setMaterial(material);
  appearance.draw(&action);
  EXPECT_EQ(material->countWhileDrawn, 1u);
  EXPECT_EQ(material->parentsWhileDrawn, 1);
  EXPECT_EQ(material->getRefCount(), 1u);
  EXPECT_EQ(material->getParentCount(), 1);
  EXPECT_EQ(context->getMaterial(), material);
}

TEST_F(OverrideAppearance, ItsMaterialReplacesThatOfEveryShape) {
  ozMaterial *const material = new ozMaterial;
  over->setMaterial(material);
  ozAppearance with, without;
  with.setMaterial(new ozMaterial);
  with.draw(&action);
  EXPECT_EQ(context->getMaterial(), material);
  without.draw(&action);
  EXPECT_EQ(context->getMaterial(), material);
}

TEST_F(OverrideAppearance, ASetNullReplacesTheMaterialToo) {
  over->setMaterial(nullptr);
  ozAppearance appearance;
  appearance.setMaterial(new ozMaterial);
  appearance.draw(&action);
  EXPECT_EQ(context->getMaterial(), nullptr);
}

TEST_F(OverrideAppearance, MergesEveryItem) {
  over->setInherit(ozBitMask(0));
  ozMaterial *const front = new ozMaterial, *const back = new ozMaterial;
  over->setMaterial(front);
  over->setBackMaterial(back);
  over->setTexMode(ozContext::PERSP_TEX);
  over->setTexBlendColor(1, 2, 3, 4);
  over->setTexEnv(ozContext::DECAL_TENV);
  over->setTexEnable(1);
  over->setTexGenEnable(1);
  over->setLightEnable(1);
  over->setShadeModel(ozContext::FLAT_SHADE);
  over->setTranspMode(ozContext::NICE_TRANSP);
  over->setTranspEnable(1);
  over->setAlphaFunc(ozContext::LESS_AFUNC);
  over->setAlphaRef(0.5f);
  over->setBlendColor(5, 6, 7, 8);
  over->setSrcBlendFunc(ozContext::DST_COLOR_SBLEND);
  over->setDstBlendFunc(ozContext::ONE_DBLEND);
  over->setColorMask(1, 0, 1, 0);
  over->setDepthFunc(ozContext::ALWAYS_DFUNC);
  over->setDepthMask(0);
  over->setFogEnable(1);
  over->setPolyMode(ozContext::POINT_PMODE);
  over->setLineStipplePattern(0xff);
  over->setLineStippleFactor(2);
  ozMatrix4f matrix;
  matrix.makeScale(2, 2, 2);
  over->setTexTransform(matrix);
  over->setDepthEnable(1);
  over->setMaterialModeEnable(ozContext::COLOR_MATERIAL);
  ozAppearance appearance;
  appearance.draw(&action);
  _ozGfx const &now = context->getCurState();
  EXPECT_EQ(now.material, front);
  EXPECT_EQ(now.backMaterial, back);
  EXPECT_EQ(now.texMode, ozContext::PERSP_TEX);
  EXPECT_EQ(now.texBlendColor, ozVec4f(1, 2, 3, 4));
  EXPECT_EQ(now.texEnv, ozContext::DECAL_TENV);
  EXPECT_EQ(now.texEnable, 1);
  EXPECT_EQ(now.texGenEnable, 1);
  EXPECT_EQ(now.lightEnable, 1);
  EXPECT_EQ(now.shadeModel, ozContext::FLAT_SHADE);
  EXPECT_EQ(now.transpMode, ozContext::NICE_TRANSP);
  EXPECT_EQ(now.transpEnable, 1);
  EXPECT_EQ(now.alphaFunc, ozContext::LESS_AFUNC);
  EXPECT_EQ(now.alphaRef, 0.5f);
  EXPECT_EQ(now.blendColor, ozVec4f(5, 6, 7, 8));
  EXPECT_EQ(now.srcBlendFunc, ozContext::DST_COLOR_SBLEND);
  EXPECT_EQ(now.dstBlendFunc, ozContext::ONE_DBLEND);
  EXPECT_EQ(now.colorMask, ozVec4ub(1, 0, 1, 0));
  EXPECT_EQ(now.depthFunc, ozContext::ALWAYS_DFUNC);
  EXPECT_EQ(now.depthMask, 0);
  EXPECT_EQ(now.fogEnable, 1);
  EXPECT_EQ(now.polyMode, ozContext::POINT_PMODE);
  EXPECT_EQ(now.lineStipplePattern, 0xffu);
  EXPECT_EQ(now.lineStippleFactor, 2u);
  EXPECT_EQ(now.texTransform, matrix);
  EXPECT_EQ(now.depthEnable, 1);
  EXPECT_EQ(now.materialModeEnable, ozContext::COLOR_MATERIAL);
}

TEST_F(OverrideAppearance, CullFaceLineWidthAndPointSizeOfAMergedOneNeverApply) {
  over->setInherit(ozBitMask(0));
  context->setLineWidth(3);
  ozAppearance appearance;
  appearance.draw(&action);
  EXPECT_EQ(context->getLineWidth(), 3.0f);
}

} // namespace
