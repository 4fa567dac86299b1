#include "probes.h"

#include "support/capture.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

float const Pi = 3.14159265f;

/// A transform "t" with a probe "a", drawn by an orthographic camera at the origin whose matrices OpenGL has.
class TransformDrawTest : public ContextTest {
protected:
  TransformDrawTest() : a(new ProbeNode("a", 1)), camera(wideCamera()) {
    t->setName("t");
    t->addChild(a);
    action.setCamera(camera);
    a->duringTransform = [this](ozTransformAction *visiting) {
      visiting->getMatrix(matrix);
      type = visiting->getMatType();
      depth = visiting->getMatrixDepth();
      view = static_cast<ozDrawAction *>(visiting)->getViewVector();
      glGetFloatv(GL_MODELVIEW_MATRIX, modelview[0]);
      normalize = glIsEnabled(GL_NORMALIZE);
    };
    notes.clear();
  }
  ~TransformDrawTest() override { ozTransform::setMaxOglStackDepth(-1); }

  /// The calls of OpenGL that drawing a node makes on its matrices and GL_NORMALIZE.
  std::vector<std::string> draw(ozNode *node) {
    camera->draw(&action);
    context->setNormalizeEnable(0);
    GLRecorder rec;
    action.setContext(context);
    action.reset();
    verdict = node->drawVisit(&action);
    std::vector<std::string> texts;
    for (GLCall const &call : rec.calls())
      if (call.name.find("Matrix") != std::string::npos || call.name == "glTranslatef" || call.name == "glRotatef" ||
          call.name == "glEnable" || call.name == "glDisable")
        texts.push_back(call.text);
    return texts;
  }

  /// The same by name alone.
  std::vector<std::string> drawNames(ozNode *node) {
    std::vector<std::string> names = draw(node);
    for (std::string &name : names) name = name.substr(0, name.find('('));
    return names;
  }

  Held<ozTransform> t;
  ProbeNode *a;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> action;
  ozTravDirective verdict = TRAV_CONT;
  ozMatrix4f matrix, modelview;
  ozVec3f view;
  int type = -1, depth = -1, normalize = -1;
};

} // namespace

TEST_F(TransformDrawTest, AnUntouchedTransformMakesNoCallAndPushesNothing) {
  EXPECT_THAT(draw(t), IsEmpty());
  EXPECT_EQ(depth, 1);
  EXPECT_THAT(notes, ElementsAre("pre t", "draw a", "post t"));
}

TEST_F(TransformDrawTest, ATranslationIsGivenToOpenGLAsOne) {
  t->setTranslation(1, 2, 3);
  EXPECT_THAT(draw(t), ElementsAre("glPushMatrix()", "glTranslatef(1, 2, 3)", "glPopMatrix()"));
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
  EXPECT_EQ(depth, 2);
}

TEST_F(TransformDrawTest, ATranslationOfZeroIsPushedAllTheSame) {
  t->setTranslation(0, 0, 0);
  EXPECT_THAT(draw(t), ElementsAre("glPushMatrix()", "glTranslatef(0, 0, 0)", "glPopMatrix()"));
}

TEST_F(TransformDrawTest, ARotationIsGivenToOpenGLInDegrees) {
  t->setRotation(0, 0, 1, Pi / 2);
  EXPECT_THAT(draw(t), ElementsAre("glPushMatrix()", "glRotatef(90, 0, 0, 1)", "glPopMatrix()"));
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
}

TEST_F(TransformDrawTest, EverythingElseIsGivenAsAMatrix) {
  t->setTranslation(1, 2, 3);
  t->setRotation(0, 0, 1, Pi / 2);
  EXPECT_THAT(drawNames(t), ElementsAre("glPushMatrix", "glMultMatrixf", "glPopMatrix"));
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
}

TEST_F(TransformDrawTest, TheMatrixGoesToOpenGLAsItStands) {
  t->setMatrix(ozMatrix4f(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1));
  EXPECT_THAT(draw(t), ElementsAre("glPushMatrix()", "glMultMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 4, 5, 6, 1)",
                                   "glPopMatrix()"));
}

TEST_F(TransformDrawTest, OpenGLAndTheActionStayInStepThroughNestedTransforms) {
  camera->setPosition(0, 0, 7);
  Held<ozTransform> outer;
  outer->setScale(2, 3, 2);
  outer->setTranslation(1, 0, 0);
  outer->addChild(t);
  t->setRotation(1, 0, 0, 1);
  t->setCenter(3, 2, 1);
  draw(outer);
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-4f));
  EXPECT_EQ(depth, 3);
  EXPECT_EQ(action.getMatrixDepth(), 1);
}

TEST_F(TransformDrawTest, OpenGLHasItsMatrixBackAfterwards) {
  camera->setPosition(1, 2, 3);
  t->setScale(2, 3, 2);
  t->setTranslation(1, 0, 0);
  draw(t);
  ozMatrix4f view, after;
  camera->getViewMat(view);
  glGetFloatv(GL_MODELVIEW_MATRIX, after[0]);
  EXPECT_TRUE(view.almostEqual(after, 1e-5f));
}

// ---- lengths

TEST_F(TransformDrawTest, AUniformScaleTurnsNormalizeOnInsideAndBackOff) {
  t->setScale(2, 2, 2);
  EXPECT_THAT(drawNames(t), ElementsAre("glPushMatrix", "glEnable", "glMultMatrixf", "glDisable", "glPopMatrix"));
  EXPECT_EQ(normalize, 1);
  EXPECT_EQ(type, 0);
}

TEST_F(TransformDrawTest, AnUnevenScaleDoesTooAndMarksTheType) {
  t->setScale(2, 3, 2);
  EXPECT_THAT(drawNames(t), ElementsAre("glPushMatrix", "glEnable", "glMultMatrixf", "glDisable", "glPopMatrix"));
  EXPECT_EQ(normalize, 1);
  EXPECT_EQ(type, 8);
  EXPECT_EQ(action.getMatType(), 0);
}

TEST_F(TransformDrawTest, AScaleInsideAScaleLeavesNormalizeOnForTheOuterOne) {
  Held<ozTransform> outer;
  outer->setScale(2, 2, 2);
  outer->addChild(t);
  t->setScale(3, 3, 3);
  EXPECT_THAT(drawNames(outer), ElementsAre("glPushMatrix", "glEnable", "glMultMatrixf", "glPushMatrix",
                                            "glMultMatrixf", "glPopMatrix", "glDisable", "glPopMatrix"));
}

TEST_F(TransformDrawTest, TheSavedNormalizeIsRestoredFromThenOnAlsoWithoutAScale) {
  t->setScale(2, 2, 2);
  draw(t);
  t->setScale(1, 1, 1);
  a->during = [&] { context->setNormalizeEnable(1); };
  EXPECT_THAT(draw(t), ElementsAre("glEnable(GL_NORMALIZE)", "glDisable(GL_NORMALIZE)"));
}

// ---- verdicts

TEST_F(TransformDrawTest, TermOfAChildUnwindsAll) {
  a->verdict = TRAV_TERM;
  t->addChild(new ProbeNode("b", 1));
  t->setTranslation(1, 2, 3);
  EXPECT_THAT(draw(t), ElementsAre("glPushMatrix()", "glTranslatef(1, 2, 3)", "glPopMatrix()"));
  EXPECT_EQ(verdict, TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre t", "draw a", "post t"));
  EXPECT_EQ(action.getMatrixDepth(), 1);
}

TEST_F(TransformDrawTest, PruneOfAChildHasNoEffect) {
  a->verdict = TRAV_PRUNE;
  t->addChild(new ProbeNode("b", 1));
  draw(t);
  EXPECT_EQ(verdict, TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre t", "draw a", "draw b", "post t"));
}

TEST_F(TransformDrawTest, ACulledTransformIsPrunedWithoutACall) {
  t->setTranslation(0, 0, 5000);
  EXPECT_THAT(draw(t), IsEmpty());
  EXPECT_EQ(verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(TransformDrawTest, APreVisitThatPrunesPopsWhatWasNotPushed) {
  t->setTranslation(1, 2, 3);
  action.pre["t"] = TRAV_PRUNE;
  std::vector<std::string> calls;
  std::string const message = stderrOf([&] { calls = draw(t); });
  EXPECT_THAT(calls, ElementsAre("glPopMatrix()"));
  EXPECT_NE(message.find("ozMatStack4f::pop() - Matrix stack empty"), std::string::npos);
  EXPECT_EQ(verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre t", "post t"));
  glGetError(); // OpenGL's stack was empty too
}

TEST_F(TransformDrawTest, APreVisitThatPrunesAnUntouchedTransformPopsNothing) {
  action.pre["t"] = TRAV_PRUNE;
  EXPECT_THAT(draw(t), IsEmpty());
}

TEST_F(TransformDrawTest, AVisitMayRemoveSiblings) {
  t->addChild(new ProbeNode("b", 1));
  a->during = [&] { t->setChildCount(1); };
  draw(t);
  EXPECT_THAT(notes, ElementsAre("pre t", "draw a", "post t"));
}

// ---- the depth of OpenGL's stack

TEST_F(TransformDrawTest, OpenGLsStackIsUnlimitedByDefault) {
  EXPECT_EQ(ozTransform::getMaxOglStackDepth(), -1);
  ozTransform::setMaxOglStackDepth(4);
  EXPECT_EQ(ozTransform::getMaxOglStackDepth(), 4);
}

TEST_F(TransformDrawTest, BeyondTheDepthSetTheMatrixIsLoadedWhole) {
  ozTransform::setMaxOglStackDepth(4);
  // Six nested transforms, on the general path: the action's depth is 2 to 7 inside them.
  Held<ozTransform> root;
  ozTransform *last = root;
  for (int i = 0;; ++i) {
    last->setTranslation(1, 0, 0);
    last->setRotation(0, 0, 1, 0.5f);
    if (i == 5) break;
    ozTransform *const inner = new ozTransform;
    last->addChild(inner);
    last = inner;
  }
  last->addChild(a);
  EXPECT_THAT(drawNames(root),
              ElementsAre("glPushMatrix", "glMultMatrixf", "glPushMatrix", "glMultMatrixf",   // depths 2 and 3
                          "glLoadMatrixf", "glLoadMatrixf", "glLoadMatrixf", "glLoadMatrixf", // 4 to 7
                          "glLoadMatrixf", "glLoadMatrixf", "glLoadMatrixf", "glLoadMatrixf", // out of 7 to 4
                          "glPopMatrix", "glPopMatrix"));
  EXPECT_EQ(depth, 7);
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-4f));
  EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
}

TEST_F(TransformDrawTest, BeyondTheDepthSetTheShortPathsTellOpenGLNothing) {
  ozTransform::setMaxOglStackDepth(2);
  t->setTranslation(1, 2, 3);
  EXPECT_THAT(drawNames(t), ElementsAre("glLoadMatrixf"));
  EXPECT_FALSE(matrix.almostEqual(modelview, 1e-4f));
  Held<ozTransform> turned;
  turned->setRotation(0, 0, 1, 1);
  turned->addChild(a);
  EXPECT_THAT(drawNames(turned), ElementsAre("glLoadMatrixf"));
}

TEST_F(TransformDrawTest, ADepthBelowOneStandsForAnyNumber) {
  ozTransform::setMaxOglStackDepth(0);
  t->setTranslation(1, 2, 3);
  EXPECT_THAT(drawNames(t), ElementsAre("glPushMatrix", "glTranslatef", "glPopMatrix"));
}

TEST_F(TransformDrawTest, WithADepthSetWhatIsLoadedHoldsTheCamerasView) {
  ozTransform::setMaxOglStackDepth(1);
  camera->setPosition(1, 2, 3);
  t->setScale(2, 2, 2);
  draw(t);
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
  EXPECT_VEC(ozVec3f(modelview[3]), -1, -2, -3);
}

TEST_F(TransformDrawTest, SeveralHundredLevelsPassTheLimitsWithMessagesAndLeaveTheActionUsable) {
  for (int limit : {-1, 4}) {
    ozTransform::setMaxOglStackDepth(limit);
    Held<ozTransform> root;
    ozTransform *last = root;
    for (int i = 0; i < 400; ++i) {
      ozTransform *const inner = new ozTransform;
      inner->setMatrix(ozMatrix4f());
      last->addChild(inner);
      last = inner;
    }
    last->addChild(new ProbeNode("deep", 1));
    std::string const message = stderrOf([&] { draw(root); });
    EXPECT_NE(message.find("ozVFCullAction::pushCull() Scene graph is too deep (256)\n"), std::string::npos);
    EXPECT_NE(message.find("ozMatStack4f::push() - Matrix stack full"), std::string::npos);
    EXPECT_NE(std::find(notes.begin(), notes.end(), "draw deep"), notes.end());
    while (glGetError() != GL_NO_ERROR) {
    }
    ozTransform::setMaxOglStackDepth(-1);
    t->setTranslation(1, 2, 3);
    EXPECT_EQ(stderrOf([&] { draw(t); }), "");
    EXPECT_EQ(depth, 2);
    EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
  }
}

// ---- the view vector

TEST_F(TransformDrawTest, WithoutBackPrimitiveCullingTheViewVectorIsLeftAlone) {
  t->setRotation(0, 1, 0, Pi / 2);
  action.setViewVector(ozVec3f(7, 8, 9));
  draw(t);
  EXPECT_VEC(view, 7, 8, 9);
}

TEST_F(TransformDrawTest, WithBackPrimitiveCullingTheViewVectorIsInTheTransformsSpace) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  action.setOrthoCamera(1);
  action.setViewVector(ozVec3f(7, 8, 9));
  t->setRotation(0, 1, 0, Pi / 2); // its x axis is the camera's -z
  draw(t);
  EXPECT_VEC(view, -1, 0, 0);
  EXPECT_VEC(action.getViewVector(), 7, 8, 9);
}

TEST_F(TransformDrawTest, AnUntouchedTransformBringsTheViewVectorUpToDateTooAndTakesItBack) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  action.setOrthoCamera(1);
  action.setViewVector(ozVec3f(7, 8, 9));
  draw(t);
  EXPECT_VEC(view, 0, 0, 1);
  EXPECT_VEC(action.getViewVector(), 7, 8, 9);
}

TEST_F(TransformDrawTest, AViewVectorThatWasNotSavedIsNotRestored) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  action.setViewVector(ozVec3f(7, 8, 9));
  t->setTranslation(0, 0, 0);
  action.pre["t"] = TRAV_PRUNE;
  stderrOf([&] { draw(t); });
  EXPECT_VEC(action.getViewVector(), 7, 8, 9);
  glGetError();
}

TEST_F(TransformDrawTest, AModeSwitchedOnInsideRestoresNothing) {
  action.setViewVector(ozVec3f(7, 8, 9));
  t->setTranslation(0, 0, 0);
  a->during = [&] {
    action.setBPCullMode(ozDrawAction::FRONT_BPC);
    action.setViewVector(ozVec3f(1, 1, 1));
  };
  draw(t);
  EXPECT_VEC(action.getViewVector(), 1, 1, 1);
}
