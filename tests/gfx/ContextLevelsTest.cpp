#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

typedef ozContext C;

namespace {

// A record in which every item differs from what a new context holds.
_ozGfx otherValues() {
  _ozGfx gfx;
  gfx.texMode = C::PERSP_TEX;
  gfx.texBlendColor.set(1, 1, 1, 1);
  gfx.texEnv = C::DECAL_TENV;
  gfx.shadeModel = C::FLAT_SHADE;
  gfx.transpMode = C::SCREEN_DOOR_TRANSP;
  gfx.alphaFunc = C::NEVER_AFUNC;
  gfx.alphaRef = 0.5f;
  gfx.blendColor.set(1, 1, 1, 1);
  gfx.srcBlendFunc = C::DST_COLOR_SBLEND;
  gfx.dstBlendFunc = C::ONE_DBLEND;
  gfx.colorMask.set(0, 0, 0, 0);
  gfx.depthFunc = C::ALWAYS_DFUNC;
  gfx.depthMask = 0;
  gfx.polyMode = C::LINE_PMODE;
  gfx.cullFace = C::BACK_CULL;
  gfx.materialModeEnable = C::COLOR_MATERIAL;
  gfx.lineStipplePattern = 1;
  gfx.lineStippleFactor = 2;
  gfx.texTransform.makeTrans(1, 2, 3);
  gfx.lineWidth = 2;
  gfx.pointSize = 2;
  gfx.texEnable = gfx.texGenEnable = gfx.lightEnable = gfx.transpEnable = gfx.fogEnable = gfx.depthEnable = 1;
  return gfx;
}

// A context sends its own fog once, when the first level ends.
void settle(ozContext *context) {
  context->pushState();
  context->popState();
}

ozBitMask bit(int i) {
  ozBitMask mask;
  mask.onBit(i);
  return mask;
}

} // namespace

TEST_F(ContextTest, AppliesARecordInTheOrderOfTheItems) {
  _ozGfx const values = otherValues();
  GLRecorder rec;
  context->setStateElts(ozBitMask(1), values);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glEnable(GL_TEXTURE_2D)", "glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, 1, 1, 1, 1)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL)", "glEnable(GL_LIGHTING)",
                          "glShadeModel(GL_FLAT)",
                          // transpEnable under the mode in force, then the mode
                          "glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)",
                          "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)", "glEnable(GL_POLYGON_STIPPLE)",
                          "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)", "glDisable(GL_BLEND)",
                          "glBlendFunc(GL_ONE, GL_ZERO)", "glEnable(GL_ALPHA_TEST)", "glAlphaFunc(GL_NEVER, 0)",
                          "glAlphaFunc(GL_NEVER, 0.5)", "glEnable(GL_BLEND)", "glBlendFunc(GL_DST_COLOR, GL_ZERO)",
                          "glBlendFunc(GL_DST_COLOR, GL_ONE)", "glColorMask(GL_FALSE, GL_FALSE, GL_FALSE, GL_FALSE)",
                          "glDepthFunc(GL_ALWAYS)", "glDepthMask(GL_FALSE)", "glEnable(GL_FOG)",
                          "glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)", "glEnable(GL_LINE_STIPPLE)",
                          "glLineStipple(1, 1)", "glLineStipple(2, 1)", "glGetIntegerv(GL_MATRIX_MODE, ptr)",
                          "glMatrixMode(GL_TEXTURE)", "glLoadMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1)",
                          "glMatrixMode(GL_MODELVIEW)", "glEnable(GL_DEPTH_TEST)", "glEnable(GL_COLOR_MATERIAL)",
                          "glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE)", "glEnable(GL_CULL_FACE)",
                          "glCullFace(GL_BACK)", "glLineWidth(2)", "glPointSize(2)"));
}

TEST_F(ContextTest, AppliesObjectsAtTheirPlaceInTheOrder) {
  NotedMaterial front, back;
  NotedTexture texture;
  NotedTexGen texGen;
  _ozGfx values = context->getCurState();
  values.texture = &texture;
  values.texGen = &texGen;
  values.material = &front;
  values.backMaterial = &back;
  GLRecorder rec;
  context->setStateElts(ozBitMask(1), values);
  EXPECT_EQ(texture.draws, 1);
  EXPECT_EQ(texGen.draws, 1);
  EXPECT_THAT(front.faces, ElementsAre(ozMaterial::FRONT));
  EXPECT_THAT(back.faces, ElementsAre(ozMaterial::BACK));
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)"));
}

TEST_F(ContextTest, AppliesNothingForAnEmptyMaskOrForBitsWithoutAnItem) {
  _ozGfx const values = otherValues();
  ozBitMask noItems;
  noItems.onBit(28);
  for (int i = 32; i < 64; ++i) noItems.onBit(i);
  GLRecorder rec;
  context->setStateElts(ozBitMask(), values);
  context->setStateElts(noItems, values);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(context->getDefaultState().mask.getMask(), 0);
}

TEST_F(ContextTest, AppliesOnlyTheItemsOfTheMask) {
  GLRecorder rec;
  context->setStateElts(bit(17), otherValues());
  EXPECT_THAT(rec.texts(), ElementsAre("glDepthFunc(GL_ALWAYS)"));
}

TEST_F(ContextTest, ReturnsToTheLowerLevelWhatAnUpperOneChanged) {
  settle(context);
  ozContextProbe probe(context);
  context->setLineWidth(2);
  context->pushState();
  EXPECT_EQ(context->getLineWidth(), 2);
  probe.writeCurrent();
  context->setDepthEnable(1);
  context->setShadeModel(C::FLAT_SHADE);
  probe.writeDefault();
  probe.cleanState();
  GLRecorder rec;
  context->popState();
  EXPECT_THAT(rec.texts(), ElementsAre("glShadeModel(GL_SMOOTH)", "glDisable(GL_DEPTH_TEST)"));
  EXPECT_EQ(context->getDepthEnable(), 0);
  EXPECT_EQ(context->getShadeModel(), C::SMOOTH_SHADE);
  EXPECT_TRUE(probe.stateDirty());
  EXPECT_TRUE(probe.writesDefault());
}

TEST_F(ContextTest, LaysTheDefaultStateOverTheLowerLevel) {
  settle(context);
  context->setLineWidth(2);
  context->pushState();
  context->setLineWidth(5); // a statement of the application, for good
  GLRecorder rec;
  context->popState();
  // Back to the lower level's value, and the default state's over it.
  EXPECT_THAT(rec.texts(), ElementsAre("glLineWidth(2)", "glLineWidth(5)"));
  EXPECT_EQ(context->getDefaultState().lineWidth, 5);
}

TEST_F(ContextTest, DoesNotEnterInTheLowerLevelWhatTheDefaultStateLaidOverIt) {
  context->pushState();
  context->setLineWidth(5);
  context->popState();
  EXPECT_EQ(context->getLineWidth(), 1);
  GLfloat width;
  glGetFloatv(GL_LINE_WIDTH, &width);
  EXPECT_EQ(width, 5);
}

TEST_F(ContextTest, PopsALevelThatChangedNothingWithoutACall) {
  settle(context);
  context->setLineWidth(2);
  context->setDepthEnable(1);
  context->setTexEnable(1);
  context->pushState();
  GLRecorder rec;
  context->popState();
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, SendsItsOwnFogWhenTheFirstLevelEnds) {
  GLRecorder rec;
  settle(context);
  EXPECT_EQ(rec.texts().front(), "glFogi(GL_FOG_MODE, GL_EXP)");
  rec.clear();
  settle(context);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, CopiesTheMaskOfALevelIntoTheNext) {
  context->setLineWidth(2);
  context->pushState();
  EXPECT_EQ(context->getCurState().mask, bit(30));
  context->setPointSize(2);
  context->pushState();
  EXPECT_EQ(context->getCurState().mask.getBit(30), 1);
  EXPECT_EQ(context->getCurState().mask.getBit(31), 1);
  context->popState();
  context->popState();
}

TEST_F(ContextTest, StaysInBalancePastSixteenLevels) {
  ozContextProbe probe(context);
  ozDirectionalLight *light = new ozDirectionalLight;
  light->ref();
  int match;
  for (int level = 1; level <= 40; ++level) {
    context->pushState();
    probe.writeCurrent();
    context->setLineWidth(static_cast<float>(level + 1));
    probe.writeDefault();
    if (level == 20) context->getLightTarget(light, ozMatrix4f(), match);
  }
  EXPECT_EQ(context->getLineWidth(), 41);
  for (int level = 40; level > 0; --level) context->popState();
  EXPECT_EQ(context->getLineWidth(), 1);
  EXPECT_EQ(context->getLight(7), nullptr);
  EXPECT_EQ(light->getRefCount(), 1u);
  EXPECT_EQ(probe.fog()->getOn(), 0);
  GLRecorder rec;
  context->setLineWidth(1);
  EXPECT_THAT(rec.texts(), IsEmpty());
  light->unref();
}
