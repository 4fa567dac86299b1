// What drawing a solid sends to OpenGL.

#include "geometry/geometryFixture.h"

#include <cmath>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

class SolidDraw : public DrawTest {
protected:
  // The calls that place, scale and draw.
  Calls frame(ozGeometry *geometry) {
    GLRecorder rec;
    geometry->draw(&action);
    return textsOf(rec.named({"glPushMatrix", "glPopMatrix", "glTranslatef", "glScalef", "glMultMatrixf",
                              "glLoadMatrixf", "glLoadIdentity", "glEnable", "glDisable", "glDrawArrays"}));
  }
};

Calls sphereStrips() {
  Calls calls;
  for (int i = 0, start = 0; i < 40; ++i) {
    int const len = 3 + 2 * (i % 5);
    calls.push_back("glDrawArrays(GL_TRIANGLE_STRIP, " + std::to_string(start) + ", " + std::to_string(len) + ")");
    start += len;
  }
  return calls;
}

char const Side[] = "glDrawArrays(GL_TRIANGLE_STRIP, 0, 66)", Disk[] = "glDrawArrays(GL_TRIANGLE_STRIP, 0, 32)";

// ---- boxes

TEST_F(SolidDraw, ABoxGoesOutInOneRunOfQuads) {
  Held<ozBox> box(new ozBox);
  box->setSize(2, 4, 6);
  box->setCenter(10, 20, 30);
  struct Face {
    double normal[3];
    double corners[4][3];
  } const faces[6] = {{{0, 0, 1}, {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}}},
                      {{0, 0, -1}, {{1, -1, -1}, {-1, -1, -1}, {-1, 1, -1}, {1, 1, -1}}},
                      {{1, 0, 0}, {{1, -1, 1}, {1, -1, -1}, {1, 1, -1}, {1, 1, 1}}},
                      {{-1, 0, 0}, {{-1, -1, -1}, {-1, -1, 1}, {-1, 1, 1}, {-1, 1, -1}}},
                      {{0, 1, 0}, {{-1, 1, 1}, {1, 1, 1}, {1, 1, -1}, {-1, 1, -1}}},
                      {{0, -1, 0}, {{-1, -1, -1}, {1, -1, -1}, {1, -1, 1}, {-1, -1, 1}}}};
  double const texCoords[25][2] = {{0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0},
                                   {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}, {1, 0},
                                   {1, 1}, {0, 1}, {0, 0}, {1, 0}, {1, 1}, {0, 1}, {0, 0}};
  std::vector<::testing::Matcher<GLCall const &>> expected = {IsCall("glBegin", {7})};
  int next = 1; // a corner's coordinate is sent behind the vertex ahead of it
  for (Face const &face : faces) {
    expected.push_back(IsCall("glNormal3fv", {face.normal[0], face.normal[1], face.normal[2]}));
    for (auto const &sign : face.corners) {
      expected.push_back(IsCall("glVertex3fv", {sign[0] + 10, sign[1] * 2 + 20, sign[2] * 3 + 30}));
      expected.push_back(IsCall("glTexCoord2fv", {texCoords[next][0], texCoords[next][1]}));
      ++next;
    }
  }
  expected.push_back(IsCall("glEnd", {}));
  GLRecorder rec;
  box->draw(&action);
  EXPECT_THAT(rec.calls(), ::testing::ElementsAreArray(expected));
}

TEST_F(SolidDraw, ABoxTakesAConnectedSizeFirst) {
  Held<ozBox> box(new ozBox), source(new ozBox);
  source->connect(2, box.get(), 2);
  source->setSize(8, 8, 8);
  GLRecorder rec;
  box->draw(&action);
  EXPECT_THAT(rec.named("glVertex3fv")[0], IsCall("glVertex3fv", {-4, -4, 4}));
}

// ---- meshes

TEST_F(SolidDraw, UnitSolidsAtTheOriginCostNoMatrix) {
  EXPECT_EQ(frame(Held<ozSphere>(new ozSphere).get()), sphereStrips());
  EXPECT_THAT(frame(Held<ozCone>(new ozCone).get()), ElementsAre(Side, Disk));
  EXPECT_THAT(frame(Held<ozCylinder>(new ozCylinder).get()), ElementsAre(Side, Disk, Disk));
}

// The heights of the vertices that the vertex arrays hold at each draw.
std::vector<float> heights(GLRecorder const &rec) {
  std::vector<float> result;
  for (GLCall const &call : rec.named("glVertexPointer"))
    result.push_back(reinterpret_cast<ozVec3f const *>(static_cast<std::uintptr_t>(call.args.back()))[0][1]);
  return result;
}

TEST_F(SolidDraw, ACylinderDrawsItsSideThenItsTopThenItsBottom) {
  Held<ozCylinder> cylinder(new ozCylinder);
  GLRecorder rec;
  cylinder->draw(&action);
  EXPECT_THAT(heights(rec), ElementsAre(-1.0f, 1.0f, -1.0f));
  EXPECT_THAT(textsOf(rec.named("glDrawArrays")), ElementsAre(Side, Disk, Disk));
}

TEST_F(SolidDraw, OnlyThePartsThatAreThereAreDrawn) {
  Held<ozCone> cone(new ozCone);
  cone->setSide(0);
  EXPECT_THAT(frame(cone.get()), ElementsAre(Disk));
  cone->setSide(1);
  cone->setBottom(0);
  EXPECT_THAT(frame(cone.get()), ElementsAre(Side));
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setTop(0);
  cylinder->setBottom(0);
  EXPECT_THAT(frame(cylinder.get()), ElementsAre(Side));
  cylinder->setSide(0);
  EXPECT_THAT(frame(cylinder.get()), IsEmpty());
  GLRecorder rec;
  cylinder->setTop(1);
  cylinder->draw(&action);
  EXPECT_THAT(heights(rec), ElementsAre(1.0f));
}

TEST_F(SolidDraw, ACylinderOfNothingButATopDrawsDespiteItsEmptyBound) {
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setSide(0);
  cylinder->setBottom(0);
  ozBoxBound bound;
  cylinder->getBoxBound(bound);
  EXPECT_TRUE(bound.isEmpty());
  EXPECT_THAT(frame(cylinder.get()), ElementsAre(Disk));
}

TEST_F(SolidDraw, ACylinderOfNothingButATopIsCulledInAGraph) {
  Held<ozOrthoCamera> camera(new ozOrthoCamera);
  camera->setPosition(0, 0, 10);
  camera->setWidth(10);
  camera->setHeight(10);
  action.setCamera(camera.get());
  Held<ozGroup> root(new ozGroup);
  ozShape *const shape = new ozShape;
  ozCylinder *const cylinder = new ozCylinder;
  shape->setGeometry(0, cylinder);
  root->addChild(shape);
  cylinder->setSide(0);
  auto const drawn = [&] {
    GLRecorder rec;
    camera->draw(&action);
    action.apply(root.get());
    return textsOf(rec.named("glDrawArrays"));
  };
  EXPECT_THAT(drawn(), ElementsAre(Disk, Disk)); // its bottom gives it a bound
  cylinder->setBottom(0);
  EXPECT_THAT(drawn(), IsEmpty());
}

TEST_F(SolidDraw, TheMeshesTakeAConnectedSizeFirst) {
  Held<ozSphere> sphere(new ozSphere), sphereSource(new ozSphere);
  sphereSource->connect(3, sphere.get(), 3);
  sphereSource->setRadius(5);
  EXPECT_EQ(frame(sphere.get())[1], "glScalef(5, 5, 5)");
  Held<ozCone> cone(new ozCone), coneSource(new ozCone);
  coneSource->connect(2, cone.get(), 2);
  coneSource->setBottomRadius(6);
  EXPECT_EQ(frame(cone.get())[1], "glScalef(6, 1, 6)");
  Held<ozCylinder> cylinder(new ozCylinder), cylinderSource(new ozCylinder);
  cylinderSource->connect(3, cylinder.get(), 3);
  cylinderSource->setHeight(14);
  EXPECT_EQ(frame(cylinder.get())[1], "glScalef(1, 7, 1)");
}

TEST_F(SolidDraw, AMovedSolidIsTranslatedOnly) {
  Held<ozCone> cone(new ozCone);
  cone->setCenter(1, 2, 3);
  EXPECT_THAT(frame(cone.get()), ElementsAre("glPushMatrix()", "glTranslatef(1, 2, 3)", Side, Disk, "glPopMatrix()"));
  Held<ozSphere> sphere(new ozSphere);
  sphere->setCenter(0, 0, 3);
  Calls const calls = frame(sphere.get());
  ASSERT_EQ(calls.size(), 43u);
  EXPECT_EQ(calls[1], "glTranslatef(0, 0, 3)");
}

TEST_F(SolidDraw, AScaledSolidIsDrawnWithUnitNormals) {
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setRadius(3);
  EXPECT_THAT(frame(cylinder.get()), ElementsAre("glPushMatrix()", "glScalef(3, 1, 3)", "glEnable(GL_NORMALIZE)", Side,
                                                 Disk, Disk, "glDisable(GL_NORMALIZE)", "glPopMatrix()"));
  cylinder->setRadius(1);
  cylinder->setHeight(8);
  EXPECT_EQ(frame(cylinder.get())[1], "glScalef(1, 4, 1)");
  Held<ozCone> cone(new ozCone);
  cone->setBottomRadius(3);
  cone->setHeight(8);
  EXPECT_THAT(frame(cone.get()), ElementsAre("glPushMatrix()", "glScalef(3, 4, 3)", "glEnable(GL_NORMALIZE)", Side,
                                             Disk, "glDisable(GL_NORMALIZE)", "glPopMatrix()"));
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(5);
  EXPECT_EQ(frame(sphere.get())[1], "glScalef(5, 5, 5)");
}

TEST_F(SolidDraw, ASolidMovedAndScaledIsMovedFirst) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(5);
  sphere->setCenter(1, 2, 3);
  Calls const calls = frame(sphere.get());
  ASSERT_EQ(calls.size(), 46u);
  EXPECT_EQ(calls[0], "glPushMatrix()");
  EXPECT_EQ(calls[1], "glTranslatef(1, 2, 3)");
  EXPECT_EQ(calls[2], "glScalef(5, 5, 5)");
  EXPECT_EQ(calls[3], "glEnable(GL_NORMALIZE)");
  EXPECT_EQ(calls[44], "glDisable(GL_NORMALIZE)");
  EXPECT_EQ(calls[45], "glPopMatrix()");
}

TEST_F(SolidDraw, LeavesNormalisingOnWhereItWasOn) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(5);
  context->setNormalizeEnable(1);
  GLRecorder rec;
  sphere->draw(&action);
  EXPECT_THAT(rec.named({"glEnable", "glDisable"}), IsEmpty());
  EXPECT_EQ(context->getNormalizeEnable(), 1);
}

TEST_F(SolidDraw, AHeightOfZeroIsAFlatScaleAndStillNormalises) {
  Held<ozCylinder> cylinder(new ozCylinder);
  cylinder->setHeight(0);
  EXPECT_THAT(frame(cylinder.get()), ElementsAre("glPushMatrix()", "glScalef(1, 0, 1)", "glEnable(GL_NORMALIZE)", Side,
                                                 Disk, Disk, "glDisable(GL_NORMALIZE)", "glPopMatrix()"));
}

TEST_F(SolidDraw, ANegativeRadiusGoesToOpenGLAsItIs) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(-2);
  Calls const calls = frame(sphere.get());
  EXPECT_EQ(calls[1], "glScalef(-2, -2, -2)");
  EXPECT_EQ(calls[2], "glEnable(GL_NORMALIZE)");
}

TEST_F(SolidDraw, TheSmallestDifferenceCounts) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setRadius(std::nextafter(1.0f, 2.0f));
  EXPECT_EQ(frame(sphere.get())[0], "glPushMatrix()");
  sphere->setRadius(1);
  sphere->setCenter(0, 1e-30f, 0);
  EXPECT_EQ(frame(sphere.get())[0], "glPushMatrix()");
}

TEST_F(SolidDraw, IsCountedInTheContextsMatrices) {
  Held<ozSphere> sphere(new ozSphere);
  sphere->setCenter(1, 2, 3);
  GLint before = 0, after = 0;
  glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &before);
  sphere->draw(&action);
  glGetIntegerv(GL_MODELVIEW_STACK_DEPTH, &after);
  EXPECT_EQ(after, before);
  EXPECT_EQ(context->getMatrixDepth(), 1);
}

TEST_F(SolidDraw, AllOfAClassShareTheirMeshes) {
  Held<ozCone> first(new ozCone), second(new ozCone);
  second->setHeight(9);
  GLRecorder rec;
  first->draw(&action);
  second->draw(&action);
  std::vector<GLCall> const pointers = rec.named("glVertexPointer");
  ASSERT_EQ(pointers.size(), 4u);
  EXPECT_EQ(pointers[0].args.back(), pointers[2].args.back());
  EXPECT_EQ(pointers[1].args.back(), pointers[3].args.back());
}

TEST_F(SolidDraw, MaterialsGiveTheColoursOfAllSolids) {
  Held<ozBox> box(new ozBox);
  Held<ozSphere> sphere(new ozSphere);
  Held<ozCone> cone(new ozCone);
  Held<ozCylinder> cylinder(new ozCylinder);
  for (ozGeometry *solid : {static_cast<ozGeometry *>(box.get()), static_cast<ozGeometry *>(sphere.get()),
                            static_cast<ozGeometry *>(cone.get()), static_cast<ozGeometry *>(cylinder.get())}) {
    context->setMaterialModeEnable(ozContext::COLOR_MATERIAL);
    GLRecorder rec;
    solid->draw(&action);
    EXPECT_EQ(rec.count("glDisable(GL_COLOR_MATERIAL)"), 1);
    EXPECT_EQ(context->getMaterialModeEnable(), 0);
    EXPECT_EQ(context->getDefaultState().materialModeEnable, ozContext::COLOR_MATERIAL);
  }
}

TEST_F(SolidDraw, GoesThroughTheCullingOfTheAction) {
  // The meshes carry no culling data, so that front mode draws them whole and back mode not at all.
  Held<ozCylinder> cylinder(new ozCylinder);
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  EXPECT_THAT(frame(cylinder.get()), ElementsAre(Side, Disk, Disk));
  action.setBPCullMode(ozDrawAction::BACK_BPC);
  EXPECT_THAT(frame(cylinder.get()), IsEmpty());
}

} // namespace
