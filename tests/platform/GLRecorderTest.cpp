#include "support/glRecorder.h"
#include "support/offscreen.h"
#include <GL/glu.h>
#include <dlfcn.h>
#include <thread>

using ::testing::ElementsAre;
using ::testing::Not;

TEST(GLRecorder, TellsACallByNameAndArguments) {
  GLRecorder rec;
  glVertex3f(1, 2.5f, -3);
  ASSERT_EQ(rec.calls().size(), 1u);
  EXPECT_EQ(rec.calls()[0].name, "glVertex3f");
  EXPECT_THAT(rec.calls()[0].args, ElementsAre(1, 2.5, -3));
  EXPECT_EQ(rec.calls()[0].text, "glVertex3f(1, 2.5, -3)");
}

TEST(GLRecorder, TellsEnumeratorsByTheirNames) {
  GLRecorder rec;
  glEnable(GL_LIGHTING);
  glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA);
  glBlendFunc(GL_ZERO, GL_SRC_COLOR);
  glBegin(GL_POINTS);
  glEnd();
  glDrawArrays(GL_POLYGON, 0, 3);
  glDepthMask(GL_FALSE);
  glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE);
  glFogf(GL_FOG_DENSITY, 2048);
  glFogi(GL_FOG_MODE, GL_EXP2);
  glEnable(0xfff0);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glEnable(GL_LIGHTING)", "glBlendFunc(GL_ONE, GL_ONE_MINUS_SRC_ALPHA)",
                          "glBlendFunc(GL_ZERO, GL_SRC_COLOR)", "glBegin(GL_POINTS)", "glEnd()",
                          "glDrawArrays(GL_POLYGON, 0, 3)", "glDepthMask(GL_FALSE)",
                          "glTexEnvi(GL_TEXTURE_ENV, GL_TEXTURE_ENV_MODE, GL_MODULATE)", "glFogf(GL_FOG_DENSITY, 2048)",
                          "glFogi(GL_FOG_MODE, GL_EXP2)", "glEnable(65520)"));
}

TEST(GLRecorder, TellsBitsByTheirNames) {
  GLRecorder rec;
  rec.passOn(false);
  glClear(GL_COLOR_BUFFER_BIT | GL_DEPTH_BUFFER_BIT);
  glPushAttrib(GL_ALL_ATTRIB_BITS);
  glPushAttrib(GL_ENABLE_BIT | GL_CURRENT_BIT);
  glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT);
  glClear(0);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glClear(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT)", "glPushAttrib(GL_ALL_ATTRIB_BITS)",
                          "glPushAttrib(GL_CURRENT_BIT | GL_ENABLE_BIT)",
                          "glPushClientAttrib(GL_CLIENT_VERTEX_ARRAY_BIT)", "glClear(0)"));
}

TEST(GLRecorder, TellsVectorsByTheirValues) {
  float const vertex[3] = {1, 2, 3};
  double const plane[4] = {0, 1, 0, -5};
  unsigned char const color[4] = {255, 0, 128, 64};
  float const ambient[4] = {0.25f, 0.5f, 0.75f, 1}, direction[3] = {0, 0, -1}, shininess = 20;
  float matrix[16] = {};
  matrix[3] = 7;
  GLRecorder rec;
  glVertex3fv(vertex);
  glClipPlane(GL_CLIP_PLANE0, plane);
  glColor4ubv(color);
  glMaterialfv(GL_FRONT, GL_AMBIENT, ambient);
  glMaterialfv(GL_BACK, GL_SHININESS, &shininess);
  glLightfv(GL_LIGHT1, GL_SPOT_DIRECTION, direction);
  glLoadMatrixf(matrix);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glVertex3fv(1, 2, 3)", "glClipPlane(GL_CLIP_PLANE0, 0, 1, 0, -5)",
                          "glColor4ubv(255, 0, 128, 64)", "glMaterialfv(GL_FRONT, GL_AMBIENT, 0.25, 0.5, 0.75, 1)",
                          "glMaterialfv(GL_BACK, GL_SHININESS, 20)",
                          "glLightfv(GL_LIGHT1, GL_SPOT_DIRECTION, 0, 0, -1)",
                          "glLoadMatrixf(0, 0, 0, 7, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0)"));
}

TEST(GLRecorder, TellsVectorsWhoseLengthIsAnArgument) {
  GLuint const textures[3] = {10000, 10001, 4};
  float const priorities[2] = {0.5f, 1};
  GLubyte const lists[2] = {7, 8};
  GLRecorder rec;
  glDeleteTextures(3, textures);
  glPrioritizeTextures(2, textures, priorities);
  glCallLists(2, GL_UNSIGNED_BYTE, lists);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glDeleteTextures(3, 10000, 10001, 4)", "glPrioritizeTextures(2, 10000, 10001, 0.5, 1)",
                          "glCallLists(2, GL_UNSIGNED_BYTE, 7, 8)"));
}

TEST(GLRecorder, TellsAllBytesOfAStipple) {
  unsigned char rows[128];
  for (int i = 0; i < 128; i++) rows[i] = i;
  GLRecorder rec;
  glPolygonStipple(rows);
  ASSERT_EQ(rec.calls()[0].args.size(), 128u);
  EXPECT_EQ(rec.calls()[0].args[127], 127);
}

TEST(GLRecorder, TellsArraysByAddressAndIndicesByValue) {
  float const vertices[9] = {};
  unsigned int const indices[3] = {2, 70000, 1};
  unsigned short const shortIndices[2] = {3, 65535};
  GLRecorder rec;
  rec.passOn(false);
  glVertexPointer(3, GL_FLOAT, 12, vertices);
  glVertexPointer(3, GL_FLOAT, 0, nullptr);
  glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, indices);
  glDrawElements(GL_LINES, 2, GL_UNSIGNED_SHORT, shortIndices);
  EXPECT_THAT(rec.texts(), ElementsAre("glVertexPointer(3, GL_FLOAT, 12, ptr)", "glVertexPointer(3, GL_FLOAT, 0, NULL)",
                                       "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, 2, 70000, 1)",
                                       "glDrawElements(GL_LINES, 2, GL_UNSIGNED_SHORT, 3, 65535)"));
  EXPECT_EQ(rec.calls()[0].args[3], addressArg(vertices));
}

TEST(GLRecorder, CountsFindsAndFilters) {
  GLRecorder rec;
  rec.passOn(false);
  glBegin(GL_LINES);
  glVertex2i(1, 2);
  glVertex2i(3, 4);
  glEnd();
  EXPECT_EQ(rec.count("glVertex2i"), 2);
  EXPECT_EQ(rec.count("glVertex2i(3, 4)"), 1);
  EXPECT_EQ(rec.count("glVertex3i"), 0);
  EXPECT_EQ(rec.find("glVertex2i"), 1);
  EXPECT_EQ(rec.find("glVertex2i", 2), 2);
  EXPECT_EQ(rec.find("glVertex2i", 3), -1);
  EXPECT_THAT(textsOf(rec.named({"glBegin", "glEnd"})), ElementsAre("glBegin(GL_LINES)", "glEnd()"));
  EXPECT_THAT(textsOf(rec.named("glEnd")), ElementsAre("glEnd()"));
  EXPECT_THAT(textsOf(rec.without({"glVertex2i"})), ElementsAre("glBegin(GL_LINES)", "glEnd()"));
  EXPECT_EQ(rec.text(), "glBegin(GL_LINES)\nglVertex2i(1, 2)\nglVertex2i(3, 4)\nglEnd()\n");
  rec.clear();
  EXPECT_TRUE(rec.calls().empty());
}

TEST(GLRecorder, MatchesCallsWithATolerance) {
  GLRecorder rec;
  glColor3f(0.1f, 0.2f, 0.3f);
  EXPECT_THAT(rec.calls(), ElementsAre(IsCall("glColor3f", {0.1, 0.2, 0.3})));
  EXPECT_THAT(rec.calls(), ElementsAre(IsCall("glColor3f")));
  EXPECT_THAT(rec.calls()[0], Not(IsCall("glColor3f", {0.1, 0.2, 0.31})));
  EXPECT_THAT(rec.calls()[0], Not(IsCall("glColor3f", {0.1, 0.2})));
  EXPECT_THAT(rec.calls()[0], Not(IsCall("glColor3d", {0.1, 0.2, 0.3})));
  EXPECT_THAT(rec.calls()[0], IsCall("glColor3f", {0.1, 0.2, 0.31}, 0.02));
}

TEST(GLRecorder, SeesOnlyItsOwnTime) {
  glEnable(GL_FOG);
  GLRecorder outer;
  glEnable(GL_LIGHTING);
  {
    GLRecorder inner;
    glEnable(GL_BLEND);
    EXPECT_THAT(inner.texts(), ElementsAre("glEnable(GL_BLEND)"));
  }
  glEnable(GL_DITHER);
  EXPECT_THAT(outer.texts(), ElementsAre("glEnable(GL_LIGHTING)", "glEnable(GL_BLEND)", "glEnable(GL_DITHER)"));
}

TEST(GLRecorder, SeesOnlyItsOwnThread) {
  GLRecorder rec;
  std::thread([] { glEnable(GL_FOG); }).join();
  EXPECT_TRUE(rec.calls().empty());
}

TEST(GLRecorder, SeesTheCallsOfOtherLibraries) {
  GLRecorder rec;
  gluOrtho2D(0, 1, 0, 1);
  EXPECT_EQ(rec.count("glOrtho") + rec.count("glMultMatrixf") + rec.count("glMultMatrixd"), 1);
}

class GLRecorderPassing : public OffscreenTest {};

TEST_F(GLRecorderPassing, PassesCallsOnAndGivesTheirResults) {
  GLRecorder rec;
  glEnable(GL_LIGHTING);
  EXPECT_TRUE(glIsEnabled(GL_LIGHTING));
  float lineWidth = 0;
  glLineWidth(3);
  glGetFloatv(GL_LINE_WIDTH, &lineWidth);
  EXPECT_EQ(lineWidth, 3);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_LIGHTING)", "glIsEnabled(GL_LIGHTING)", "glLineWidth(3)",
                                       "glGetFloatv(GL_LINE_WIDTH, ptr)"));
}

TEST_F(GLRecorderPassing, KeepsCallsFromPassingWhenTold) {
  GLRecorder rec;
  rec.passOn(false);
  glEnable(GL_LIGHTING);
  EXPECT_EQ(glGenLists(1), 0u);
  rec.passOn(true);
  EXPECT_FALSE(glIsEnabled(GL_LIGHTING));
  EXPECT_EQ(rec.count("glEnable(GL_LIGHTING)"), 1);
}

TEST_F(GLRecorderPassing, AnswersStringsInThePlatformsPlace) {
  auto version = [] { return std::string(reinterpret_cast<char const *>(glGetString(GL_VERSION))); };
  std::string const own = version();
  {
    GLRecorder rec;
    rec.answerString(GL_VERSION, "1.1 test");
    EXPECT_EQ(version(), "1.1 test");
    EXPECT_NE(glGetString(GL_EXTENSIONS), nullptr);
  }
  EXPECT_EQ(version(), own);
}

TEST_F(GLRecorderPassing, SeesFunctionsLookedUpAtRunTime) {
  typedef void (*BlendEquation)(GLenum);
  for (char const *name : {"glBlendEquation", "glBlendEquationEXT"}) {
    GLRecorder rec;
    auto blendEquation = reinterpret_cast<BlendEquation>(ozGetProcAddress(name));
    ASSERT_NE(blendEquation, nullptr);
    blendEquation(GL_MIN);
    EXPECT_THAT(rec.texts(), ElementsAre(std::string(name) + "(GL_MIN)"));
    GLint equation = 0;
    glGetIntegerv(GL_BLEND_EQUATION, &equation);
    EXPECT_EQ(equation, GL_MIN);
    blendEquation(GL_FUNC_ADD);
  }
}

TEST_F(GLRecorderPassing, HidesFunctionsFromTheLookUpWhenTold) {
  GLRecorder rec;
  rec.hideEntryPoint("glBlendEquation");
  EXPECT_EQ(ozGetProcAddress("glBlendEquation"), nullptr);
  EXPECT_NE(ozGetProcAddress("glBlendEquationEXT"), nullptr);
}

TEST(GLRecorder, WrapsEveryFunctionOfOpenGLThatLibGLHasInItsFirstTwoVersions) {
  char const *const names[] = {
#define GL_CALL(result, name, parameters, arguments, shape) #name,
#include "support/glCalls.inc"
#undef GL_CALL
  };
  void *self = dlopen(nullptr, RTLD_NOW);
  Dl_info own, found;
  ASSERT_TRUE(dladdr(dlsym(self, "main"), &own));
  for (char const *name : names) {
    ASSERT_TRUE(dladdr(dlsym(self, name), &found)) << name;
    EXPECT_EQ(found.dli_fbase, own.dli_fbase) << name;
  }
  dlclose(self);
  EXPECT_EQ(std::size(names), 336u + 4) << "OpenGL 1.1 has 336 functions, and four are looked up behind them";
}
