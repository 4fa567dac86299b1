#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class TexGen : public ContextTest {
protected:
  std::vector<std::string> drawn() {
    GLRecorder rec;
    texGen.draw(context);
    return rec.texts();
  }
  ozTexGen texGen;
};

} // namespace

TEST_F(TexGen, IsOffWithThePlanesOfTheAxes) {
  EXPECT_EQ(texGen.getModeS(), ozTexGen::OFF);
  EXPECT_EQ(texGen.getModeT(), ozTexGen::OFF);
  EXPECT_EQ(texGen.getModeR(), ozTexGen::OFF);
  EXPECT_EQ(texGen.getModeQ(), ozTexGen::OFF);
  ozVec4f plane;
  texGen.getPlaneS(plane);
  EXPECT_EQ(plane, ozVec4f(1, 0, 0, 0));
  texGen.getPlaneT(plane);
  EXPECT_EQ(plane, ozVec4f(0, 1, 0, 0));
  texGen.getPlaneR(plane);
  EXPECT_EQ(plane, ozVec4f(0, 0, 1, 0));
  float x, y, z, w;
  texGen.getPlaneQ(&x, &y, &z, &w);
  EXPECT_EQ(ozVec4f(x, y, z, w), ozVec4f(0, 0, 0, 1));
}

TEST_F(TexGen, HasAFieldForEachModeAndPlane) {
  static char const *const names[] = {"modeS", "modeT", "modeR", "modeQ", "planeS", "planeT", "planeR", "planeQ"};
  for (int id = 0; id < 8; ++id) EXPECT_EQ(texGen.getField(names[id]), texGen.getField(id)) << names[id];
  static char const *const modes[] = {"OFF", "EYE_LINEAR", "EYE_LINEAR_IDENT", "OBJECT_LINEAR", "SPHERE_MAP"};
  for (short id = 0; id < 4; ++id)
    for (int mode = 0; mode < 5; ++mode) EXPECT_STREQ(ozTexGen::getClassType()->mapEnum(id, mode), modes[mode]);
}

TEST_F(TexGen, TakesModesAsPlainNumbersToo) {
  texGen.setModeSHack(1);
  texGen.setModeTHack(2);
  texGen.setModeRHack(3);
  texGen.setModeQHack(4);
  EXPECT_EQ(texGen.getModeS(), ozTexGen::EYE_LINEAR);
  EXPECT_EQ(texGen.getModeT(), ozTexGen::EYE_LINEAR_IDENT);
  EXPECT_EQ(texGen.getModeR(), ozTexGen::OBJECT_LINEAR);
  EXPECT_EQ(texGen.getModeQHack(), ozTexGen::SPHERE_MAP);
}

TEST_F(TexGen, SendsNothingWhenItIsOff) { EXPECT_THAT(drawn(), IsEmpty()); }

TEST_F(TexGen, SendsEachModeInItsOwnWay) {
  texGen.setModeS(ozTexGen::EYE_LINEAR);
  texGen.setPlaneS(1, 2, 3, 4);
  texGen.setModeT(ozTexGen::OBJECT_LINEAR);
  texGen.setPlaneT(ozVec4f(5, 6, 7, 8));
  texGen.setModeR(ozTexGen::SPHERE_MAP);
  EXPECT_THAT(drawn(), ElementsAre("glTexGeni(GL_S, GL_TEXTURE_GEN_MODE, GL_EYE_LINEAR)",
                                   "glTexGenfv(GL_S, GL_OBJECT_PLANE, 1, 2, 3, 4)",
                                   "glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR)",
                                   "glTexGenfv(GL_T, GL_OBJECT_PLANE, 5, 6, 7, 8)",
                                   "glTexGeni(GL_R, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP)"));
}

TEST_F(TexGen, PushesTheIdentityOnceForAllItsCoordinates) {
  texGen.setModeT(ozTexGen::EYE_LINEAR_IDENT);
  texGen.setModeQ(ozTexGen::EYE_LINEAR_IDENT);
  EXPECT_THAT(drawn(), ElementsAre("glMatrixMode(GL_MODELVIEW)", "glPushMatrix()", "glLoadIdentity()",
                                   "glTexGenfv(GL_T, GL_OBJECT_PLANE, 0, 1, 0, 0)",
                                   "glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR)",
                                   "glTexGenfv(GL_Q, GL_OBJECT_PLANE, 0, 0, 0, 1)",
                                   "glTexGeni(GL_Q, GL_TEXTURE_GEN_MODE, GL_OBJECT_LINEAR)", "glPopMatrix()"));
}

TEST_F(TexGen, SendsNothingForAModeThatIsNone) {
  texGen.setModeSHack(5);
  texGen.setModeTHack(-1);
  EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(TexGen, SendsEverythingEachTime) {
  texGen.setModeR(ozTexGen::OBJECT_LINEAR);
  EXPECT_EQ(drawn().size(), 2u);
  EXPECT_EQ(drawn().size(), 2u);
}

TEST_F(TexGen, SwitchesEveryCoordinateWhileGenerationIsOn) {
  context->setTexGenEnable(1);
  EXPECT_THAT(drawn(), ElementsAre("glDisable(GL_TEXTURE_GEN_S)", "glDisable(GL_TEXTURE_GEN_T)",
                                   "glDisable(GL_TEXTURE_GEN_R)", "glDisable(GL_TEXTURE_GEN_Q)"));
  texGen.setModeT(ozTexGen::SPHERE_MAP);
  texGen.setModeQHack(77);
  EXPECT_THAT(drawn(),
              ElementsAre("glTexGeni(GL_T, GL_TEXTURE_GEN_MODE, GL_SPHERE_MAP)", "glDisable(GL_TEXTURE_GEN_S)",
                          "glEnable(GL_TEXTURE_GEN_T)", "glDisable(GL_TEXTURE_GEN_R)", "glEnable(GL_TEXTURE_GEN_Q)"));
}

TEST_F(TexGen, ReachesOpenGLOnlyWhenItIsSetAnew) {
  texGen.setModeS(ozTexGen::OBJECT_LINEAR);
  context->setTexGen(&texGen);
  GLRecorder rec;
  texGen.setPlaneS(9, 9, 9, 9);
  context->setTexGen(&texGen);
  EXPECT_THAT(rec.texts(), IsEmpty());
  context->setTexGen(nullptr);
  context->setTexGen(&texGen);
  EXPECT_EQ(rec.count("glTexGenfv(GL_S, GL_OBJECT_PLANE, 9, 9, 9, 9)"), 1);
}

TEST_F(TexGen, DoesNotTellConnectedFields) {
  ozTexGen other;
  texGen.getField(4)->connect(other.getField(4));
  other.cleanFields();
  texGen.setPlaneS(9, 9, 9, 9);
  ozVec4f plane;
  other.getPlaneS(plane);
  EXPECT_EQ(plane, ozVec4f(1, 0, 0, 0));
}

TEST_F(TexGen, DrawsWhatAConnectionBrings) {
  ozTexGen source;
  source.setPlaneS(4, 3, 2, 1);
  texGen.setModeS(ozTexGen::OBJECT_LINEAR);
  source.getField(4)->connect(texGen.getField(4));
  EXPECT_EQ(drawn().back(), "glTexGenfv(GL_S, GL_OBJECT_PLANE, 4, 3, 2, 1)");
}
