// Every state item: what a change issues, that the same value issues nothing, and what is kept where.

#include "contextProbe.h"
#include "support/glRecorder.h"
#include <functional>

using ::testing::ElementsAre;
using ::testing::ElementsAreArray;
using ::testing::IsEmpty;

namespace {

typedef std::function<void(ozContext *)> Set;

struct Item {
  char const *name;
  int number;
  Set start;  // the value that a new context has
  Set change; // another
  std::vector<char const *> calls;
  bool dirties = true;
};

typedef ozContext C;

ozMatrix4f const turned(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1);

Item const items[] = {
    {"TexEnable", 1, [](C *c) { c->setTexEnable(0); }, [](C *c) { c->setTexEnable(1); }, {"glEnable(GL_TEXTURE_2D)"}},
    {"TexMode", 2, [](C *c) { c->setTexMode(C::FAST_TEX); }, [](C *c) { c->setTexMode(C::PERSP_TEX); }, {}},
    {"TexBlendColor",
     3,
     [](C *c) { c->setTexBlendColor(0, 0, 0, 0); },
     [](C *c) { c->setTexBlendColor(0.25f, 0.5f, 0.75f, 1); },
     {"glTexEnvfv(GL_TEXTURE_ENV, GL_TEXTURE_ENV_COLOR, 0.25, 0.5, 0.75, 1)"},
     false},
    {"TexEnv",
     4,
     [](C *c) { c->setTexEnv(C::MODULATE_TENV); },
     [](C *c) { c->setTexEnv(C::DECAL_TENV); },
     {"glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL)"}},
    {"TexGenEnable", 6, [](C *c) { c->setTexGenEnable(0); }, [](C *c) { c->setTexGenEnable(1); }, {}},
    {"LightEnable",
     7,
     [](C *c) { c->setLightEnable(0); },
     [](C *c) { c->setLightEnable(1); },
     {"glEnable(GL_LIGHTING)"}},
    {"ShadeModel",
     8,
     [](C *c) { c->setShadeModel(C::SMOOTH_SHADE); },
     [](C *c) { c->setShadeModel(C::FLAT_SHADE); },
     {"glShadeModel(GL_FLAT)"}},
    {"TranspEnable",
     9,
     [](C *c) { c->setTranspEnable(0); },
     [](C *c) { c->setTranspEnable(1); },
     {"glEnable(GL_BLEND)", "glBlendFunc(GL_SRC_ALPHA, GL_ZERO)", "glBlendFunc(GL_SRC_ALPHA, GL_ONE_MINUS_SRC_ALPHA)"}},
    {"TranspMode",
     10,
     [](C *c) { c->setTranspMode(C::BLEND_TRANSP); },
     [](C *c) { c->setTranspMode(C::FAST_TRANSP); },
     {}},
    {"AlphaFunc",
     11,
     [](C *c) { c->setAlphaFunc(C::ALWAYS_AFUNC); },
     [](C *c) { c->setAlphaFunc(C::GREATER_AFUNC); },
     {"glEnable(GL_ALPHA_TEST)", "glAlphaFunc(GL_GREATER, 0)"}},
    {"AlphaRef",
     12,
     [](C *c) { c->setAlphaRef(0); },
     [](C *c) { c->setAlphaRef(0.5f); },
     {"glAlphaFunc(GL_ALWAYS, 0.5)"}},
    {"BlendColor", 13, [](C *c) { c->setBlendColor(0, 0, 0, 0); }, [](C *c) { c->setBlendColor(1, 0, 0, 1); }, {}},
    {"SrcBlendFunc",
     14,
     [](C *c) { c->setSrcBlendFunc(C::ONE_SBLEND); },
     [](C *c) { c->setSrcBlendFunc(C::DST_COLOR_SBLEND); },
     {"glEnable(GL_BLEND)", "glBlendFunc(GL_DST_COLOR, GL_ZERO)"}},
    {"DstBlendFunc",
     15,
     [](C *c) { c->setDstBlendFunc(C::ZERO_DBLEND); },
     [](C *c) { c->setDstBlendFunc(C::SRC_COLOR_DBLEND); },
     {"glEnable(GL_BLEND)", "glBlendFunc(GL_ONE, GL_SRC_COLOR)"}},
    {"ColorMask",
     16,
     [](C *c) { c->setColorMask(255, 255, 255, 255); },
     [](C *c) { c->setColorMask(0, 1, 255, 0); },
     {"glColorMask(GL_FALSE, GL_TRUE, GL_TRUE, GL_FALSE)"}},
    {"DepthFunc",
     17,
     [](C *c) { c->setDepthFunc(C::LESS_DFUNC); },
     [](C *c) { c->setDepthFunc(C::LEQUAL_DFUNC); },
     {"glDepthFunc(GL_LEQUAL)"}},
    {"DepthMask", 18, [](C *c) { c->setDepthMask(1); }, [](C *c) { c->setDepthMask(0); }, {"glDepthMask(GL_FALSE)"}},
    {"FogEnable", 19, [](C *c) { c->setFogEnable(0); }, [](C *c) { c->setFogEnable(1); }, {"glEnable(GL_FOG)"}},
    {"PolyMode",
     20,
     [](C *c) { c->setPolyMode(C::FILL_PMODE); },
     [](C *c) { c->setPolyMode(C::LINE_PMODE); },
     {"glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)"}},
    {"LineStipplePattern",
     21,
     [](C *c) { c->setLineStipplePattern(65535); },
     [](C *c) { c->setLineStipplePattern(255); },
     {"glEnable(GL_LINE_STIPPLE)", "glLineStipple(1, 255)"}},
    {"LineStippleFactor", 22, [](C *c) { c->setLineStippleFactor(1); }, [](C *c) { c->setLineStippleFactor(3); }, {}},
    {"TexTransform",
     23,
     [](C *c) { c->setTexTransform(ozMatrix4f()); },
     [](C *c) { c->setTexTransform(turned); },
     {"glGetIntegerv(GL_MATRIX_MODE, ptr)", "glMatrixMode(GL_TEXTURE)",
      "glLoadMatrixf(0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)", "glMatrixMode(GL_MODELVIEW)"}},
    {"DepthEnable",
     26,
     [](C *c) { c->setDepthEnable(0); },
     [](C *c) { c->setDepthEnable(1); },
     {"glEnable(GL_DEPTH_TEST)"}},
    {"MaterialModeEnable",
     27,
     [](C *c) { c->setMaterialModeEnable(C::NO_COLOR_MATERIAL); },
     [](C *c) { c->setMaterialModeEnable(C::COLOR_MATERIAL); },
     {"glEnable(GL_COLOR_MATERIAL)", "glColorMaterial(GL_FRONT_AND_BACK, GL_AMBIENT_AND_DIFFUSE)"}},
    {"CullFace",
     29,
     [](C *c) { c->setCullFace(C::NO_CULL); },
     [](C *c) { c->setCullFace(C::FRONT_CULL); },
     {"glEnable(GL_CULL_FACE)", "glCullFace(GL_FRONT)"}},
    {"LineWidth", 30, [](C *c) { c->setLineWidth(1); }, [](C *c) { c->setLineWidth(2.5f); }, {"glLineWidth(2.5)"}},
    {"PointSize", 31, [](C *c) { c->setPointSize(1); }, [](C *c) { c->setPointSize(4); }, {"glPointSize(4)"}},
};

class ContextItem : public ContextTest, public ::testing::WithParamInterface<Item> {
protected:
  void TearDown() override { GetParam().start(context); }
  ozContextProbe probe{context};
};

std::vector<std::string> callsOf(Set const &set, ozContext *context) {
  GLRecorder rec;
  set(context);
  return rec.texts();
}

} // namespace

TEST_P(ContextItem, IssuesTheCallsOfAChange) {
  EXPECT_THAT(callsOf(GetParam().change, context), ElementsAreArray(GetParam().calls));
  EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
}

TEST_P(ContextItem, StartsAtWhatOpenGLHolds) { EXPECT_THAT(callsOf(GetParam().start, context), IsEmpty()); }

TEST_P(ContextItem, IssuesNothingForTheSameValue) {
  GetParam().change(context);
  EXPECT_THAT(callsOf(GetParam().change, context), IsEmpty());
}

TEST_P(ContextItem, KeepsTheSameValueInTheDefaultStateAllTheSame) {
  probe.cleanState();
  EXPECT_EQ(context->getDefaultState().mask.getBit(GetParam().number), 0);
  GetParam().start(context);
  EXPECT_EQ(context->getDefaultState().mask.getBit(GetParam().number), 1);
  EXPECT_EQ(context->getCurState().mask.getBit(GetParam().number), 0);
  EXPECT_EQ(probe.stateDirty(), GetParam().dirties);
}

TEST_P(ContextItem, EntersAChangeInBothMasks) {
  GetParam().change(context);
  EXPECT_EQ(context->getDefaultState().mask.getBit(GetParam().number), 1);
  EXPECT_EQ(context->getCurState().mask.getBit(GetParam().number), 1);
}

TEST_P(ContextItem, LeavesTheDefaultStateAloneWhileSomethingIsApplied) {
  probe.cleanState();
  probe.writeCurrent();
  EXPECT_THAT(callsOf(GetParam().change, context), ElementsAreArray(GetParam().calls));
  EXPECT_EQ(context->getDefaultState().mask.getMask(), 0);
  EXPECT_EQ(context->getCurState().mask.getBit(GetParam().number), 1);
  EXPECT_FALSE(probe.stateDirty());
  probe.writeDefault();
}

TEST_P(ContextItem, IsAppliedByItsNumber) {
  GetParam().change(context);
  _ozGfx const changed = context->getCurState();
  GetParam().start(context);
  ozBitMask mask;
  mask.onBit(GetParam().number);
  std::vector<std::string> const direct = callsOf(GetParam().change, context);
  GetParam().start(context);
  EXPECT_EQ(callsOf([&](C *c) { c->setStateElts(mask, changed); }, context), direct);
}

INSTANTIATE_TEST_SUITE_P(All, ContextItem, ::testing::ValuesIn(items),
                         [](auto const &info) { return std::string(info.param.name); });

TEST_F(ContextTest, HasGettersThatReadTheCacheWithoutACall) {
  context->setTexEnable(1);
  context->setTexMode(C::NICE_TEX);
  context->setTexBlendColor(1, 2, 3, 4);
  context->setTexEnv(C::BLEND_TENV);
  context->setTexGenEnable(1);
  context->setLightEnable(1);
  context->setShadeModel(C::FLAT_SHADE);
  context->setTranspMode(C::NICE_TRANSP);
  context->setTranspEnable(1);
  context->setAlphaFunc(C::LESS_AFUNC);
  context->setAlphaRef(0.25f);
  context->setBlendColor(4, 3, 2, 1);
  context->setSrcBlendFunc(C::DST_ALPHA_SBLEND);
  context->setDstBlendFunc(C::ONE_DBLEND);
  context->setColorMask(1, 0, 2, 0);
  context->setDepthFunc(C::ALWAYS_DFUNC);
  context->setDepthMask(0);
  context->setDepthEnable(1);
  context->setFogEnable(1);
  context->setPolyMode(C::POINT_PMODE);
  context->setLineStipplePattern(7);
  context->setLineStippleFactor(9);
  context->setTexTransform(turned);
  context->setMaterialModeEnable(C::COLOR_MATERIAL);
  context->setCullFace(C::BOTH_CULL);
  context->setLineWidth(3);
  context->setPointSize(5);

  GLRecorder rec;
  EXPECT_EQ(context->getTexEnable(), 1);
  EXPECT_EQ(context->getTexMode(), C::NICE_TEX);
  ozVec4f color;
  context->getTexBlendColor(color);
  EXPECT_EQ(color, ozVec4f(1, 2, 3, 4));
  EXPECT_EQ(context->getTexEnv(), C::BLEND_TENV);
  EXPECT_EQ(context->getTexGenEnable(), 1);
  EXPECT_EQ(context->getLightEnable(), 1);
  EXPECT_EQ(context->getShadeModel(), C::FLAT_SHADE);
  EXPECT_EQ(context->getTranspMode(), C::NICE_TRANSP);
  EXPECT_EQ(context->getTranspEnable(), 1);
  EXPECT_EQ(context->getAlphaFunc(), C::LESS_AFUNC);
  EXPECT_EQ(context->getAlphaRef(), 0.25f);
  float r, g, b, a;
  context->getBlendColor(&r, &g, &b, &a);
  EXPECT_EQ(ozVec4f(r, g, b, a), ozVec4f(4, 3, 2, 1));
  EXPECT_EQ(context->getSrcBlendFunc(), C::DST_ALPHA_SBLEND);
  EXPECT_EQ(context->getDstBlendFunc(), C::ONE_DBLEND);
  ozVec4ub mask;
  context->getColorMask(mask);
  EXPECT_EQ(mask, ozVec4ub(1, 0, 2, 0));
  EXPECT_EQ(context->getDepthFunc(), C::ALWAYS_DFUNC);
  EXPECT_EQ(context->getDepthMask(), 0);
  EXPECT_EQ(context->getDepthEnable(), 1);
  EXPECT_EQ(context->getFogEnable(), 1);
  EXPECT_EQ(context->getPolyMode(), C::POINT_PMODE);
  EXPECT_EQ(context->getLineStipplePattern(), 7u);
  EXPECT_EQ(context->getLineStippleFactor(), 9u);
  ozMatrix4f matrix;
  context->getTexTransform(matrix);
  EXPECT_EQ(matrix, turned);
  EXPECT_EQ(context->getMaterialModeEnable(), C::COLOR_MATERIAL);
  EXPECT_EQ(context->getCullFace(), C::BOTH_CULL);
  EXPECT_EQ(context->getLineWidth(), 3);
  EXPECT_EQ(context->getPointSize(), 5);
  EXPECT_EQ(context->getTexture(), nullptr);
  EXPECT_EQ(context->getTexGen(), nullptr);
  EXPECT_EQ(context->getMaterial(), nullptr);
  EXPECT_EQ(context->getBackMaterial(), nullptr);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, SwitchesOffWhatItSwitchedOn) {
  context->setTexEnable(1);
  context->setLightEnable(1);
  context->setDepthEnable(1);
  context->setFogEnable(1);
  context->setAlphaFunc(C::LESS_AFUNC);
  context->setLineStipplePattern(1);
  context->setCullFace(C::BACK_CULL);
  context->setMaterialModeEnable(1);
  GLRecorder rec;
  context->setTexEnable(0);
  context->setLightEnable(0);
  context->setDepthEnable(0);
  context->setFogEnable(0);
  context->setAlphaFunc(C::ALWAYS_AFUNC);
  context->setLineStipplePattern(65535);
  context->setCullFace(C::NO_CULL);
  context->setMaterialModeEnable(0);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_TEXTURE_2D)", "glDisable(GL_LIGHTING)", "glDisable(GL_DEPTH_TEST)",
                                       "glDisable(GL_FOG)", "glDisable(GL_ALPHA_TEST)", "glDisable(GL_LINE_STIPPLE)",
                                       "glDisable(GL_CULL_FACE)", "glDisable(GL_COLOR_MATERIAL)"));
}

namespace {

// Sends each value of an enumeration, having set another one, and gives the last call of each.
template <class Enum>
std::vector<std::string> lastCalls(ozContext *context, void (ozContext::*set)(Enum), std::vector<int> const &values) {
  std::vector<std::string> calls;
  for (int value : values) {
    (context->*set)(static_cast<Enum>(value == 0 ? 1 : 0));
    GLRecorder rec;
    (context->*set)(static_cast<Enum>(value));
    calls.push_back(rec.texts().back());
  }
  return calls;
}

} // namespace

TEST_F(ContextTest, MapsEveryTextureEnvironment) {
  EXPECT_THAT(lastCalls(context, &C::setTexEnv, {0, 1, 2, 3, 4}),
              ElementsAre("glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_BLEND)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_REPLACE)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_ADD)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_DECAL)"));
}

TEST_F(ContextTest, MapsEveryShadeModel) {
  EXPECT_THAT(lastCalls(context, &C::setShadeModel, {0, 1}),
              ElementsAre("glShadeModel(GL_FLAT)", "glShadeModel(GL_SMOOTH)"));
}

TEST_F(ContextTest, MapsEveryDepthFunction) {
  EXPECT_THAT(lastCalls(context, &C::setDepthFunc, {0, 1, 2, 3, 4, 5, 6, 7}),
              ElementsAre("glDepthFunc(GL_NEVER)", "glDepthFunc(GL_LESS)", "glDepthFunc(GL_EQUAL)",
                          "glDepthFunc(GL_LEQUAL)", "glDepthFunc(GL_GREATER)", "glDepthFunc(GL_NOTEQUAL)",
                          "glDepthFunc(GL_GEQUAL)", "glDepthFunc(GL_ALWAYS)"));
}

TEST_F(ContextTest, MapsEveryAlphaFunction) {
  context->setAlphaRef(0.5f);
  EXPECT_THAT(lastCalls(context, &C::setAlphaFunc, {0, 1, 2, 3, 4, 5, 6, 7}),
              ElementsAre("glAlphaFunc(GL_NEVER, 0.5)", "glAlphaFunc(GL_LESS, 0.5)", "glAlphaFunc(GL_EQUAL, 0.5)",
                          "glAlphaFunc(GL_LEQUAL, 0.5)", "glAlphaFunc(GL_GREATER, 0.5)",
                          "glAlphaFunc(GL_NOTEQUAL, 0.5)", "glAlphaFunc(GL_GEQUAL, 0.5)", "glDisable(GL_ALPHA_TEST)"));
}

TEST_F(ContextTest, MapsEveryPolygonMode) {
  EXPECT_THAT(lastCalls(context, &C::setPolyMode, {0, 1, 2}),
              ElementsAre("glPolygonMode(GL_FRONT_AND_BACK, GL_POINT)", "glPolygonMode(GL_FRONT_AND_BACK, GL_LINE)",
                          "glPolygonMode(GL_FRONT_AND_BACK, GL_FILL)"));
}

TEST_F(ContextTest, MapsEveryCullFace) {
  EXPECT_THAT(lastCalls(context, &C::setCullFace, {0, 1, 2, 3}),
              ElementsAre("glDisable(GL_CULL_FACE)", "glCullFace(GL_FRONT)", "glCullFace(GL_BACK)",
                          "glCullFace(GL_FRONT_AND_BACK)"));
}

TEST_F(ContextTest, IssuesNothingForValuesThatNoTableHas) {
  for (int const bad : {-2, 9, 40, 0x7fffffff, static_cast<int>(0x80000001u)}) {
    GLRecorder rec;
    context->setTexMode(static_cast<C::TexModeEnum>(bad));
    context->setTexEnv(static_cast<C::TexEnvEnum>(bad));
    context->setShadeModel(static_cast<C::ShadeModelEnum>(bad));
    context->setTranspMode(static_cast<C::TranspModeEnum>(bad));
    context->setTranspEnable(!context->getTranspEnable());
    context->setAlphaFunc(static_cast<C::AlphaFuncEnum>(bad));
    context->setAlphaRef(static_cast<float>(bad));
    context->setSrcBlendFunc(static_cast<C::SrcBlendFuncEnum>(bad));
    context->setDstBlendFunc(static_cast<C::DstBlendFuncEnum>(bad));
    context->setBlendFuncs(static_cast<C::SrcBlendFuncEnum>(bad - 1), static_cast<C::DstBlendFuncEnum>(bad - 1));
    context->setDepthFunc(static_cast<C::DepthFuncEnum>(bad));
    context->setPolyMode(static_cast<C::PolyModeEnum>(bad));
    context->setCullFace(static_cast<C::CullFaceEnum>(bad));
    EXPECT_THAT(rec.texts(), IsEmpty()) << bad;
  }
  GLRecorder rec;
  context->setDepthFunc(C::LESS_DFUNC);
  EXPECT_THAT(rec.texts(), ElementsAre("glDepthFunc(GL_LESS)"));
}

TEST_F(ContextTest, StoresTheStippleFactorWithoutACallWhileLinesAreWhole) {
  context->setLineStippleFactor(4);
  GLRecorder rec;
  context->setLineStipplePattern(0x0f0f);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_LINE_STIPPLE)", "glLineStipple(4, 3855)"));
  rec.clear();
  context->setLineStippleFactor(5);
  EXPECT_THAT(rec.texts(), ElementsAre("glLineStipple(5, 3855)"));
}

TEST_F(ContextTest, PutsBackTheMatrixModeThatItFound) {
  glMatrixMode(GL_PROJECTION);
  GLRecorder rec;
  context->setTexTransform(turned);
  EXPECT_EQ(rec.texts().back(), "glMatrixMode(GL_PROJECTION)");
}

TEST_F(ContextTest, DrawsANewTextureThatSeesItselfInTheCache) {
  NotedTexture texture, other;
  context->setTexture(&texture);
  context->setTexture(&texture);
  EXPECT_EQ(texture.draws, 1);
  EXPECT_TRUE(texture.sawItself);
  context->setTexture(&other);
  context->setTexture(&texture);
  EXPECT_EQ(texture.draws, 2);
}

TEST_F(ContextTest, UnbindsNothingForANullTexture) {
  ozTexture texture(true);
  context->setTexture(&texture);
  GLRecorder rec;
  context->setTexture(nullptr);
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(context->getTexture(), nullptr);
}

TEST_F(ContextTest, DrawsANewTextureGenerator) {
  NotedTexGen texGen;
  context->setTexGen(&texGen);
  context->setTexGen(&texGen);
  EXPECT_EQ(texGen.draws, 1);
  EXPECT_TRUE(texGen.sawItself);
  context->setTexGen(nullptr);
  EXPECT_EQ(context->getTexGen(), nullptr);
}

TEST_F(ContextTest, EnablesTheCoordinatesThatTheGeneratorMakes) {
  NotedTexGen texGen;
  texGen.setModeS(ozTexGen::OBJECT_LINEAR);
  texGen.setModeQ(ozTexGen::EYE_LINEAR);
  context->setTexGen(&texGen);
  GLRecorder rec;
  context->setTexGenEnable(1);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_TEXTURE_GEN_S)", "glEnable(GL_TEXTURE_GEN_Q)"));
  rec.clear();
  context->setTexGenEnable(0);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_TEXTURE_GEN_S)", "glDisable(GL_TEXTURE_GEN_T)",
                                       "glDisable(GL_TEXTURE_GEN_R)", "glDisable(GL_TEXTURE_GEN_Q)"));
}

TEST_F(ContextTest, DrawsANewMaterialForTheFront) {
  NotedMaterial material;
  GLRecorder rec;
  context->setMaterial(&material);
  context->setMaterial(&material);
  EXPECT_THAT(material.faces, ElementsAre(ozMaterial::FRONT));
  EXPECT_TRUE(material.sawItself);
  context->setMaterial(nullptr);
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TEST_F(ContextTest, LightsBothSidesWithABackMaterial) {
  NotedMaterial material;
  GLRecorder rec;
  context->setBackMaterial(&material);
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 1)"));
  EXPECT_THAT(material.faces, ElementsAre(ozMaterial::BACK));
  EXPECT_TRUE(material.sawItself);
  rec.clear();
  context->setBackMaterial(nullptr);
  context->setBackMaterial(nullptr);
  EXPECT_THAT(rec.texts(), ElementsAre("glLightModeli(GL_LIGHT_MODEL_TWO_SIDE, 0)"));
}

TEST_F(ContextTest, DrawsTheMaterialsAgainWhenColourMaterialEnds) {
  NotedMaterial front, back;
  context->setMaterialModeEnable(C::COLOR_MATERIAL);
  context->setMaterial(&front);
  context->setBackMaterial(&back);
  GLRecorder rec;
  context->setMaterialModeEnable(C::NO_COLOR_MATERIAL);
  EXPECT_THAT(rec.texts(), ElementsAre("glDisable(GL_COLOR_MATERIAL)"));
  EXPECT_THAT(front.faces, ElementsAre(ozMaterial::FRONT, ozMaterial::FRONT));
  EXPECT_THAT(back.faces, ElementsAre(ozMaterial::BACK, ozMaterial::BACK));
}

TEST_F(ContextTest, TakesANaNForADifferenceEachTime) {
  context->setLineWidth(__builtin_nanf(""));
  GLRecorder rec;
  context->setLineWidth(__builtin_nanf(""));
  EXPECT_EQ(rec.count("glLineWidth"), 1);
}

TEST(Gfx, IsAllZeroWithAnIdentityMatrixWhenNew) {
  _ozGfx const gfx;
  EXPECT_EQ(gfx.mask.getMask(), 0);
  EXPECT_EQ(gfx.alphaRef, 0);
  EXPECT_EQ(gfx.texMode, 0);
  EXPECT_EQ(gfx.texture, nullptr);
  EXPECT_EQ(gfx.texBlendColor, ozVec4f());
  EXPECT_EQ(gfx.texEnv, 0);
  EXPECT_EQ(gfx.texGen, nullptr);
  EXPECT_EQ(gfx.material, nullptr);
  EXPECT_EQ(gfx.shadeModel, 0);
  EXPECT_EQ(gfx.transpMode, 0);
  EXPECT_EQ(gfx.alphaFunc, 0);
  EXPECT_EQ(gfx.blendColor, ozVec4f());
  EXPECT_EQ(gfx.srcBlendFunc, 0);
  EXPECT_EQ(gfx.dstBlendFunc, 0);
  EXPECT_EQ(gfx.colorMask, ozVec4ub());
  EXPECT_EQ(gfx.depthFunc, 0);
  EXPECT_EQ(gfx.depthMask, 0);
  EXPECT_EQ(gfx.polyMode, 0);
  EXPECT_EQ(gfx.cullFace, 0);
  EXPECT_EQ(gfx.materialModeEnable, 0);
  EXPECT_EQ(gfx.lineStipplePattern, 0u);
  EXPECT_EQ(gfx.lineStippleFactor, 0u);
  EXPECT_EQ(gfx.texTransform, ozMatrix4f());
  EXPECT_EQ(gfx.backMaterial, nullptr);
  EXPECT_EQ(gfx.lineWidth, 0);
  EXPECT_EQ(gfx.pointSize, 0);
  EXPECT_EQ(gfx.texEnable + gfx.texGenEnable + gfx.lightEnable + gfx.transpEnable + gfx.fogEnable + gfx.depthEnable, 0);
}

TEST(Gfx, CopiesTheMaskAndEveryMember) {
  _ozGfx from, to;
  from.mask.onBit(5);
  from.pointSize = 3;
  from.depthEnable = 1;
  from.texTransform = turned;
  to.copy(from);
  EXPECT_EQ(to.mask, from.mask);
  EXPECT_EQ(to.pointSize, 3);
  EXPECT_EQ(to.depthEnable, 1);
  EXPECT_EQ(to.texTransform, turned);
}
