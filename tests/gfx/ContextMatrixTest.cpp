#include "contextProbe.h"
#include "support/glRecorder.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

TEST_F(ContextTest, MakesOneCallForEachMatrixOperation) {
  ozMatrix4f m;
  m.makeTrans(1, 2, 3);
  GLRecorder rec;
  context->pushMatrix();
  context->pushIdentMatrix();
  context->popMatrix();
  context->popMatrix();
  context->loadIdentMatrix();
  context->loadMatrix(m);
  context->multMatrix(m);
  context->translate(1, 2, 3);
  context->scale(2, 3, 4);
  context->rotate(0, 1, 0, 90);
  context->rotate(0, 1, 0, 90);
  EXPECT_THAT(rec.texts(),
              ElementsAre("glPushMatrix()", "glPushMatrix()", "glLoadIdentity()", "glPopMatrix()", "glPopMatrix()",
                          "glLoadIdentity()", "glLoadMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1)",
                          "glMultMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 1, 2, 3, 1)", "glTranslatef(1, 2, 3)",
                          "glScalef(2, 3, 4)", "glRotatef(90, 0, 1, 0)", "glRotatef(90, 0, 1, 0)"));
}

TEST_F(ContextTest, CountsTheMatricesThatItPushes) {
  EXPECT_EQ(context->getMatrixDepth(), 1);
  context->pushMatrix();
  EXPECT_EQ(context->getMatrixDepth(), 2);
  context->pushIdentMatrix();
  EXPECT_EQ(context->getMatrixDepth(), 3);
  context->popMatrix();
  context->popMatrix();
  EXPECT_EQ(context->getMatrixDepth(), 1);
}

TEST_F(ContextTest, ReadsTheModelviewMatrixWhateverTheMode) {
  ozMatrix4f put, got;
  put.makeTrans(4, 5, 6);
  context->loadMatrix(put);
  glMatrixMode(GL_PROJECTION);
  context->getMatrix(got);
  EXPECT_EQ(got, put);
}

TEST_F(ContextTest, ClearsColourToOpaqueBlackAndDepthToOne) {
  GLRecorder rec;
  context->clear(ozContext::CLEAR_COLOR | ozContext::CLEAR_DEPTH);
  EXPECT_THAT(rec.texts(), ElementsAre("glClearColor(0, 0, 0, 1)", "glClearDepth(1)",
                                       "glClear(GL_DEPTH_BUFFER_BIT | GL_COLOR_BUFFER_BIT)"));
}

TEST_F(ContextTest, ClearsWithTheColourGivenEachTime) {
  GLRecorder rec;
  context->clear(1, 1, 0.5f, 0.25f, 0);
  context->clear(1, 1, 0.5f, 0.25f, 0);
  EXPECT_THAT(rec.texts(), ElementsAre("glClearColor(1, 0.5, 0.25, 0)", "glClear(GL_COLOR_BUFFER_BIT)",
                                       "glClearColor(1, 0.5, 0.25, 0)", "glClear(GL_COLOR_BUFFER_BIT)"));
}

TEST_F(ContextTest, ClearsDepthAlone) {
  GLRecorder rec;
  context->clear(2, 1, 1, 1, 1);
  EXPECT_THAT(rec.texts(), ElementsAre("glClearDepth(1)", "glClear(GL_DEPTH_BUFFER_BIT)"));
}

TEST_F(ContextTest, CallsClearAlsoForNothing) {
  GLRecorder rec;
  context->clear(0);
  EXPECT_THAT(rec.texts(), ElementsAre("glClear(0)"));
}

TEST_F(ContextTest, SetsTheViewportWhenAnyNumberDiffers) {
  int x, y, width, height;
  context->getViewport(x, y, width, height);
  EXPECT_THAT((std::vector<int>{x, y, width, height}), ElementsAre(0, 0, 200, 200));
  GLRecorder rec;
  context->setViewport(0, 0, 200, 200);
  EXPECT_THAT(rec.texts(), IsEmpty());
  context->setViewport(0, 0, 200, 100);
  context->setViewport(0, 0, 200, 100);
  context->setViewport(1, 0, 200, 100);
  EXPECT_THAT(rec.texts(), ElementsAre("glViewport(0, 0, 200, 100)", "glViewport(1, 0, 200, 100)"));
  context->getViewport(x, y, width, height);
  EXPECT_THAT((std::vector<int>{x, y, width, height}), ElementsAre(1, 0, 200, 100));
}

TEST_F(ContextTest, ComparesNormalizingAndTheViewerWithItsOwnBytes) {
  EXPECT_EQ(context->getNormalizeEnable(), 0);
  EXPECT_EQ(context->getLocalViewer(), 0);
  GLRecorder rec;
  context->setNormalizeEnable(0);
  context->setLocalViewer(0);
  EXPECT_THAT(rec.texts(), IsEmpty());
  context->setNormalizeEnable(1);
  context->setNormalizeEnable(1);
  context->setLocalViewer(1);
  context->setLocalViewer(1);
  EXPECT_EQ(context->getNormalizeEnable(), 1);
  EXPECT_EQ(context->getLocalViewer(), 1);
  context->setNormalizeEnable(0);
  context->setLocalViewer(0);
  EXPECT_THAT(rec.texts(), ElementsAre("glEnable(GL_NORMALIZE)", "glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 1)",
                                       "glDisable(GL_NORMALIZE)", "glLightModeli(GL_LIGHT_MODEL_LOCAL_VIEWER, 0)"));
}

TEST_F(ContextTest, KeepsNormalizingAndTheViewerOutsideTheLevels) {
  context->pushState();
  context->popState();
  context->pushState();
  context->setNormalizeEnable(1);
  context->setLocalViewer(1);
  GLRecorder rec;
  context->popState();
  EXPECT_THAT(rec.texts(), IsEmpty());
  EXPECT_EQ(context->getNormalizeEnable(), 1);
  EXPECT_EQ(context->getLocalViewer(), 1);
}
