// The colours of a material, and how they reach OpenGL.

#include "oz/OzScene3D.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

ozVec3f ambientOf(ozMaterial &m) {
  ozVec3f color;
  m.getAmbientColor(color);
  return color;
}

#define EXPECT_FIELD(name, id, Field)                                                                                  \
  {                                                                                                                    \
    ozField *const field = material.getField(name);                                                                    \
    ASSERT_TRUE(field);                                                                                                \
    EXPECT_EQ(field->getId(), id);                                                                                     \
    EXPECT_EQ(field->getType(), Field::getClassType());                                                                \
  }

TEST(Material, HasTenFields) {
  ozMaterial material;
  EXPECT_STREQ(material.getType()->getName(), "Material");
  EXPECT_EQ(material.getType()->getFieldInfoCount(), 10);
  EXPECT_FIELD("ambientIntensity", 0, ozSFFloat);
  EXPECT_FIELD("ambientColor", 1, ozSFVec3f);
  EXPECT_FIELD("diffuseColor", 2, ozSFVec3f);
  EXPECT_FIELD("specularColor", 3, ozSFVec3f);
  EXPECT_FIELD("emissiveColor", 4, ozSFVec3f);
  EXPECT_FIELD("ambientIndex", 5, ozSFShort);
  EXPECT_FIELD("diffuseIndex", 6, ozSFShort);
  EXPECT_FIELD("specularIndex", 7, ozSFShort);
  EXPECT_FIELD("shininess", 8, ozSFFloat);
  EXPECT_FIELD("transparency", 9, ozSFFloat);
}

TEST(Material, IsDullGreyByDefault) {
  ozMaterial m;
  ozVec3f color;
  EXPECT_EQ(m.getAmbientIntensity(), 0.2f);
  EXPECT_EQ(ambientOf(m), ozVec3f(0.16f, 0.16f, 0.16f));
  m.getDiffuseColor(color);
  EXPECT_EQ(color, ozVec3f(0.8f, 0.8f, 0.8f));
  m.getSpecularColor(color);
  EXPECT_EQ(color, ozVec3f(0, 0, 0));
  m.getEmissiveColor(color);
  EXPECT_EQ(color, ozVec3f(0, 0, 0));
  EXPECT_EQ(m.getAmbientIndex(), 0);
  EXPECT_EQ(m.getDiffuseIndex(), 0);
  EXPECT_EQ(m.getSpecularIndex(), 0);
  EXPECT_EQ(m.getShininess(), 0.2f);
  EXPECT_EQ(m.getTransparency(), 0.0f);
}

#define EXPECT_COLOR_ACCESS(Name)                                                                                      \
  {                                                                                                                    \
    ozMaterial m;                                                                                                      \
    ozVec3f color;                                                                                                     \
    float r, g, b;                                                                                                     \
    m.set##Name(ozVec3f(0.1f, 0.2f, 0.3f));                                                                            \
    m.get##Name(color);                                                                                                \
    EXPECT_EQ(color, ozVec3f(0.1f, 0.2f, 0.3f));                                                                       \
    m.set##Name(4, 5, 6);                                                                                              \
    m.get##Name(&r, &g, &b);                                                                                           \
    EXPECT_EQ(ozVec3f(r, g, b), ozVec3f(4, 5, 6));                                                                     \
  }

TEST(Material, ReadsAsItWasSet) {
  EXPECT_COLOR_ACCESS(AmbientColor);
  EXPECT_COLOR_ACCESS(DiffuseColor);
  EXPECT_COLOR_ACCESS(SpecularColor);
  EXPECT_COLOR_ACCESS(EmissiveColor);
  ozMaterial m;
  m.setAmbientIndex(1);
  m.setDiffuseIndex(2);
  m.setSpecularIndex(3);
  m.setTransparency(0.25f);
  m.setShininess(0.5f);
  m.setAmbientIntensity(0.75f);
  EXPECT_EQ(m.getAmbientIndex(), 1);
  EXPECT_EQ(m.getDiffuseIndex(), 2);
  EXPECT_EQ(m.getSpecularIndex(), 3);
  EXPECT_EQ(m.getTransparency(), 0.25f);
  EXPECT_EQ(m.getShininess(), 0.5f);
  EXPECT_EQ(m.getAmbientIntensity(), 0.75f);
}

TEST(Material, KeepsShininessInItsRange) {
  ozMaterial m;
  m.setShininess(0.0f);
  EXPECT_EQ(m.getShininess(), 0.0078125f);
  m.setShininess(2.0f);
  EXPECT_EQ(m.getShininess(), 1.0f);
}

TEST(Material, AFieldSetsShininessWithoutALimit) {
  ozMaterial m;
  static_cast<ozSFFloat *>(m.getField("shininess"))->set(5.0f);
  EXPECT_EQ(m.getShininess(), 5.0f);
}

TEST(Material, KeepsATransparencyOutsideItsRange) {
  ozMaterial m;
  m.setTransparency(7.0f);
  EXPECT_EQ(m.getTransparency(), 7.0f);
}

TEST(Material, AmbientIntensityScalesTheDiffuseColour) {
  ozMaterial m;
  m.setAmbientIntensity(0.5f);
  EXPECT_EQ(ambientOf(m), ozVec3f(0.4f, 0.4f, 0.4f));
}

TEST(Material, AmbientColourSetsTheRatioOfLuminances) {
  ozMaterial m;
  m.setDiffuseColor(1, 0, 0);    // 0.3
  m.setAmbientColor(0, 0.3f, 0); // 0.177
  EXPECT_FLOAT_EQ(m.getAmbientIntensity(), 0.59f);
}

TEST(Material, AmbientIntensityOfABlackMaterialIsZero) {
  ozMaterial m;
  m.setDiffuseColor(0, 0, 0);
  m.setAmbientColor(1, 1, 1);
  EXPECT_EQ(m.getAmbientIntensity(), 0.0f);
}

TEST(Material, DiffuseColourLeavesTheAmbientOneAlone) {
  ozMaterial m;
  m.setDiffuseColor(1, 1, 1);
  EXPECT_EQ(ambientOf(m), ozVec3f(0.16f, 0.16f, 0.16f));
  EXPECT_EQ(m.getAmbientIntensity(), 0.2f);
}

TEST(Material, AnnouncesBothAmbientFieldsWhenEitherChanges) {
  ozMaterial m, follower;
  m.connect(0, &follower, 8);
  m.connect(1, &follower, 4);
  m.setAmbientIntensity(0.5f);
  ozVec3f color;
  follower.getEmissiveColor(color);
  EXPECT_EQ(color, ozVec3f(0.4f, 0.4f, 0.4f));
  EXPECT_EQ(follower.getShininess(), 0.5f);
  m.setAmbientColor(0.8f, 0.8f, 0.8f);
  EXPECT_EQ(follower.getShininess(), 1.0f);
}

TEST(Material, AnnouncesAnyOtherField) {
  ozMaterial m, follower;
  m.connect(9, &follower, 9);
  m.setTransparency(0.25f);
  EXPECT_EQ(follower.getTransparency(), 0.25f);
}

TEST(Material, ACopyIsAnotherObjectForContexts) {
  ozObjectId first, second(first);
  EXPECT_NE(first.getId(), second.getId());
  EXPECT_EQ(second.getVersion(), 1);
}

TEST(Material, GivesItsIdBack) {
  int id;
  {
    ozObjectId first;
    id = first.getId();
  }
  std::vector<int> next;
  std::vector<ozObjectId> ids(100);
  for (ozObjectId const &other : ids) next.push_back(other.getId());
  EXPECT_THAT(next, ::testing::Contains(id));
}

// ---- drawing

class MaterialDraw : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    material = new ozMaterial;
    material->ref();
    material->setAmbientColor(0.25f, 0.5f, 0.75f);
    material->setDiffuseColor(1, 0.5f, 0);
    material->setSpecularColor(0, 1, 0);
    material->setEmissiveColor(0, 0, 1);
    material->setShininess(0.5f);
    material->setTransparency(0.25f);
  }
  void TearDown() override { material->unref(); }

  std::vector<std::string> callsOf(ozMaterial::FaceEnum face = ozMaterial::FRONT) {
    GLRecorder rec;
    material->draw(face, context);
    return rec.texts();
  }

  ozMaterial *material;
};

TEST_F(MaterialDraw, SendsColoursWithTransparencyAsAlphaButForTheSpecularOne) {
  EXPECT_THAT(callsOf(), ElementsAre("glMaterialfv(GL_FRONT, GL_AMBIENT, 0.25, 0.5, 0.75, 0.75)",
                                     "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1, 0.5, 0, 0.75)",
                                     "glMaterialfv(GL_FRONT, GL_SPECULAR, 0, 1, 0, 1)",
                                     "glMaterialfv(GL_FRONT, GL_EMISSION, 0, 0, 1, 0.75)",
                                     "glMaterialf(GL_FRONT, GL_SHININESS, 64)"));
}

TEST_F(MaterialDraw, AnyFaceButZeroIsTheBack) {
  GLRecorder rec;
  material->draw(static_cast<ozMaterial::FaceEnum>(7), context);
  EXPECT_EQ(rec.find("glMaterialf(GL_BACK, GL_SHININESS, 64)"), 4);
}

TEST_F(MaterialDraw, OneThatTheContextHasSeenIsPassedOver) {
  material->draw(ozMaterial::FRONT, context);
  EXPECT_THAT(callsOf(), IsEmpty());
}

TEST_F(MaterialDraw, AChangeMakesItGoOnAgain) {
  material->draw(ozMaterial::FRONT, context);
  material->setTransparency(0.5f);
  EXPECT_EQ(callsOf().size(), 5u);
}

TEST_F(MaterialDraw, EachFieldIsAChange) {
  material->draw(ozMaterial::FRONT, context);
  for (short id = 0; id < 10; ++id) {
    material->getField(id)->fieldChanged();
    EXPECT_EQ(callsOf().size(), 5u) << id;
  }
}

TEST_F(MaterialDraw, AnotherContextHasItsOwnView) {
  material->draw(ozMaterial::FRONT, context);
  OffscreenContext other;
  GLRecorder rec;
  material->draw(ozMaterial::FRONT, other.context);
  EXPECT_EQ(rec.calls().size(), 5u);
}

TEST_F(MaterialDraw, TheContextsOwnAlwaysGoesOn) {
  context->setMaterial(material);
  EXPECT_EQ(callsOf().size(), 5u);
  context->setMaterial(nullptr);
  EXPECT_THAT(callsOf(), IsEmpty());
  context->setBackMaterial(material);
  EXPECT_EQ(callsOf(ozMaterial::BACK).size(), 5u);
}

TEST_F(MaterialDraw, DrawingTheContextsOwnCountsAsSeen) {
  context->setMaterial(material);
  material->setTransparency(0.5f);
  material->draw(ozMaterial::FRONT, context);
  context->setMaterial(nullptr);
  EXPECT_THAT(callsOf(), IsEmpty());
}

TEST_F(MaterialDraw, TheContextDrawsAMaterialThatIsSet) {
  GLRecorder rec;
  context->setMaterial(material);
  EXPECT_EQ(rec.count("glMaterialfv"), 4);
}

TEST_F(MaterialDraw, AConnectedValueIsTakenFirst) {
  ozMaterial source;
  source.connect(9, material, 9);
  material->draw(ozMaterial::FRONT, context);
  source.setTransparency(0.5f);
  EXPECT_EQ(callsOf()[1], "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1, 0.5, 0, 0.5)");
}

class ScreenDoor : public MaterialDraw, public ::testing::WithParamInterface<ozContext::TranspModeEnum> {
protected:
  void SetUp() override {
    MaterialDraw::SetUp();
    context->setTranspMode(GetParam());
    context->setTranspEnable(1);
  }

  GLubyte const *patternOf(float transparency) {
    material->setTransparency(transparency);
    GLRecorder rec;
    material->draw(ozMaterial::FRONT, context);
    glGetPolygonStipple(pattern);
    stippled = rec.count("glPolygonStipple") == 1;
    return pattern;
  }

  GLubyte pattern[128];
  bool stippled = false;
};

TEST_P(ScreenDoor, SendsOpaqueColoursAndAPattern) {
  std::vector<std::string> calls = callsOf();
  ASSERT_EQ(calls.size(), 6u);
  EXPECT_EQ(calls[0], "glMaterialfv(GL_FRONT, GL_AMBIENT, 0.25, 0.5, 0.75, 1)");
  EXPECT_EQ(calls[1], "glMaterialfv(GL_FRONT, GL_DIFFUSE, 1, 0.5, 0, 1)");
  EXPECT_EQ(calls[2], "glMaterialfv(GL_FRONT, GL_SPECULAR, 0, 1, 0, 1)");
  EXPECT_EQ(calls[3], "glMaterialfv(GL_FRONT, GL_EMISSION, 0, 0, 1, 1)");
  EXPECT_EQ(calls[4].substr(0, 17), "glPolygonStipple(");
  EXPECT_EQ(calls[5], "glMaterialf(GL_FRONT, GL_SHININESS, 64)");
}

TEST_P(ScreenDoor, SelectsAPatternByTransparency) {
  struct {
    float transparency;
    unsigned int firstRow, secondRow, lastRow;
  } const cases[] = {{0.0f, 0xffffffff, 0xffffffff, 0},
                     {0.16f, 0xffffffff, 0xffffffff, 0},
                     {0.17f, 0x77777777, 0xdddddddd, 0xeeeeeeee},
                     {0.667f, 0xaaaaaaaa, 0x55555555, 0x55555555},
                     {1.0f, 0x88888888, 0x22222222, 0x11111111}};
  for (auto const &expected : cases) {
    unsigned int const *const rows = reinterpret_cast<unsigned int const *>(patternOf(expected.transparency));
    EXPECT_EQ(rows[0], expected.firstRow) << expected.transparency;
    EXPECT_EQ(rows[1], expected.secondRow) << expected.transparency;
    EXPECT_EQ(rows[31], expected.lastRow) << expected.transparency;
  }
}

TEST_P(ScreenDoor, ATransparencyBeyondThePatternsLeavesThePatternAlone) {
  patternOf(1.0f);
  EXPECT_TRUE(stippled);
  for (float transparency : {9.0f, -9.0f, 1e30f}) {
    patternOf(transparency);
    EXPECT_FALSE(stippled) << transparency;
  }
}

INSTANTIATE_TEST_SUITE_P(Modes, ScreenDoor, ::testing::Values(ozContext::FAST_TRANSP, ozContext::SCREEN_DOOR_TRANSP));

TEST_F(MaterialDraw, BlendingModesAreNoScreenDoor) {
  context->setTranspEnable(1);
  for (ozContext::TranspModeEnum mode : {ozContext::NICE_TRANSP, ozContext::BLEND_TRANSP}) {
    context->setTranspMode(mode);
    material->setTransparency(0.25f);
    EXPECT_EQ(callsOf().size(), 5u);
  }
}

TEST_F(MaterialDraw, AScreenDoorThatIsNotEnabledIsNone) {
  context->setTranspMode(ozContext::SCREEN_DOOR_TRANSP);
  EXPECT_EQ(callsOf().size(), 5u);
}

TEST_F(MaterialDraw, SeesTheTransparencyOfItsOwnAppearance) {
  ozAppearance appearance;
  appearance.setMaterial(material);
  appearance.setTranspEnable(1);
  appearance.setTranspMode(ozContext::SCREEN_DOOR_TRANSP);
  GLRecorder rec;
  context->drawApp(&appearance, 1);
  EXPECT_EQ(rec.count("glPolygonStipple"), 1);
}

TEST_F(MaterialDraw, AChangeInsideAMaterialWaitsForTheNextFrame) {
  ozDrawAction action;
  action.setContext(context);
  ozAppearance appearance;
  appearance.setMaterial(material);
  context->pushState();
  appearance.draw(&action);
  material->setTransparency(0.5f);
  {
    GLRecorder rec;
    appearance.draw(&action);
    EXPECT_EQ(rec.count("glMaterialfv"), 0);
  }
  context->popState();
  context->pushState();
  GLRecorder rec;
  appearance.draw(&action);
  EXPECT_EQ(rec.count("glMaterialfv(GL_FRONT, GL_DIFFUSE, 1, 0.5, 0, 0.5)"), 1);
  context->popState();
}

TEST_F(MaterialDraw, ADestroyedMaterialIsForgottenByEveryContext) {
  OffscreenContext other;
  ozMaterial *const gone = new ozMaterial;
  gone->ref();
  other->setMaterial(gone);
  other->setBackMaterial(gone);
  context->makeCurrent(gl.device);
  context->setMaterial(gone);
  gone->unref();
  EXPECT_EQ(context->getMaterial(), nullptr);
  EXPECT_EQ(context->getDefaultState().material, nullptr);
  EXPECT_EQ(other->getMaterial(), nullptr);
  EXPECT_EQ(other->getBackMaterial(), nullptr);
}

TEST_F(MaterialDraw, AMaterialDiesWithoutACurrentContext) {
  context->setMaterial(material);
  ozContext::releaseCurrent();
  material->ref();
  material->unref();
  ozMaterial *const other = new ozMaterial;
  other->unref();
  EXPECT_EQ(ozContext::getCurrent(), nullptr);
}

} // namespace
