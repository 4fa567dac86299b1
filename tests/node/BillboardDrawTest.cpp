#include "probes.h"

#include "support/capture.h"
#include "support/contextFixture.h"
#include "support/glRecorder.h"

#include <algorithm>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A billboard "b" with two probes, drawn in a context.
class BillboardDrawTest : public ContextTest {
protected:
  BillboardDrawTest() : first(new ProbeNode("first", 1)), second(new ProbeNode("second", 1)), camera(wideCamera()) {
    b->setName("b");
    b->addChild(first);
    b->addChild(second);
    draw.setCamera(camera);
    auto note = [this](ozTransformAction *action) {
      action->getMatrix(matrix);
      type = action->getMatType();
      depth = action->getMatrixDepth();
      view = static_cast<ozDrawAction *>(action)->getViewVector();
      glGetFloatv(GL_MODELVIEW_MATRIX, modelview[0]);
    };
    first->duringTransform = second->duringTransform = note;
    notes.clear();
  }

  std::vector<std::string> drawIt() {
    camera->draw(&draw);
    notes.clear();
    GLRecorder rec;
    draw.reset();
    verdict = b->drawVisit(&draw);
    return textsOf(rec.without({"glGetFloatv"}));
  }

  Held<ozBillboard> b;
  ProbeNode *first, *second;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> draw;
  ozMatrix4f matrix, modelview;
  ozVec3f view;
  ozTravDirective verdict = TRAV_CONT;
  int type = -1, depth = -1;
};

std::string const Identity = "glMultMatrixf(1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1)";

} // namespace

TEST_F(BillboardDrawTest, EachChildIsDrawnAtItsPosition) {
  b->position()->set(0, ozVec3f(1, 2, 3));
  b->position()->set(1, ozVec3f(4, 5, 6));
  EXPECT_THAT(drawIt(), ElementsAre("glPushMatrix()", "glTranslatef(1, 2, 3)", Identity, "glPopMatrix()",
                                    "glPushMatrix()", "glTranslatef(4, 5, 6)", Identity, "glPopMatrix()"));
  EXPECT_THAT(notes, ElementsAre("pre b", "draw first", "draw second", "post b"));
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
}

TEST_F(BillboardDrawTest, AChildWithoutAPositionStandsAtTheOrigin) {
  b->position()->set(0, ozVec3f(1, 2, 3));
  EXPECT_THAT(drawIt(), ElementsAre("glPushMatrix()", "glTranslatef(1, 2, 3)", Identity, "glPopMatrix()",
                                    "glPushMatrix()", "glTranslatef(0, 0, 0)", Identity, "glPopMatrix()"));
}

TEST_F(BillboardDrawTest, TheChildIsTurnedAboutItsPosition) {
  b->position()->set(1, ozVec3f(4, 5, 6));
  camera->setOrientation(0, 1, 0, 0.5f);
  drawIt();
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-4f));
  ozMatrix4f view;
  camera->getViewMat(view);
  ozVec3f position(4, 5, 6), at(0, 0, 0), forward(0, 0, 1);
  position.xformPt(position, view);
  at.xformPt(at, matrix);
  forward.xformVec(forward, matrix);
  EXPECT_VEC(at, position[0], position[1], position[2]);
  EXPECT_VEC(forward, 0, 0, 1); // in eye space: towards the eye
}

TEST_F(BillboardDrawTest, AllChildrenAreTurnedAlike) {
  b->position()->set(0, ozVec3f(-400, 0, 0));
  b->position()->set(1, ozVec3f(400, 0, 0));
  Held<ozPerspCamera> near;
  near->setPosition(0, 0, 500);
  near->setOrientation(0, 1, 0, 0.2f);
  near->setHorizFOV(140);
  near->setVertFOV(140);
  near->setFarClip(5000);
  draw.setCamera(near);
  std::vector<std::string> const calls = drawIt();
  ASSERT_EQ(calls.size(), 8u);
  EXPECT_EQ(calls[2], calls[6]);
  EXPECT_NE(calls[2], Identity);
}

TEST_F(BillboardDrawTest, TheScaleAboveReachesTheChildren) {
  Held<ozTransform> t;
  t->setScale(2, 3, 4);
  t->addChild(b);
  camera->setOrientation(0, 1, 0, 0.5f);
  camera->draw(&draw);
  draw.reset();
  t->drawVisit(&draw);
  ozMatrix4f view, scale, turn;
  camera->getViewMat(view);
  scale.makeScale(2, 3, 4);
  turn.makeRot(0, 1, 0, 0.5f); // as without the scale
  turn.mult(turn, scale);
  turn.mult(turn, view);
  EXPECT_TRUE(matrix.almostEqual(turn, 1e-4f));
  EXPECT_TRUE(modelview.almostEqual(turn, 1e-4f));
}

TEST_F(BillboardDrawTest, SeveralHundredLevelsLeaveTheActionUsable) {
  Held<ozBillboard> root;
  ozBillboard *last = root;
  for (int i = 0; i < 400; ++i) {
    ozBillboard *const inner = new ozBillboard;
    last->addChild(inner);
    last = inner;
  }
  last->addChild(new ProbeNode("deep", 1));
  for (ozNode *node = root; node != last; node = static_cast<ozGroup *>(node)->getChild(0)) {
    node->setBoundMode(ozNode::STATIC); // each level's own would be larger than the one's below
    node->setBoxBound(cubeAt(0, 0, 0, 1));
  }
  camera->draw(&draw);
  draw.reset();
  notes.clear();
  std::string const message = stderrOf([&] { root->drawVisit(&draw); });
  EXPECT_NE(message.find("ozMatStack4f::push() - Matrix stack full"), std::string::npos);
  EXPECT_NE(std::find(notes.begin(), notes.end(), "draw deep"), notes.end());
  while (glGetError() != GL_NO_ERROR) {
  }
  EXPECT_EQ(stderrOf([&] { drawIt(); }), "");
  EXPECT_EQ(depth, 2);
  EXPECT_TRUE(matrix.almostEqual(modelview, 1e-5f));
}

TEST_F(BillboardDrawTest, TheTypeOfTheMatrixIsTwoBelowAndBackAfterwards) {
  drawIt();
  EXPECT_EQ(type, 2);
  EXPECT_EQ(depth, 2);
  EXPECT_EQ(draw.getMatType(), 0);
  EXPECT_EQ(draw.getMatrixDepth(), 1);
}

TEST_F(BillboardDrawTest, SeenAlongItsAxisItVanishes) {
  b->setAxis(0, 0, 1);
  b->setForward(ozBillboard::POS_X_AXIS);
  EXPECT_THAT(drawIt(), IsEmpty());
  EXPECT_THAT(notes, ElementsAre("pre b", "post b"));
  EXPECT_EQ(verdict, TRAV_CONT);
}

TEST_F(BillboardDrawTest, OutsideTheViewItIsPruned) {
  b->position()->set(0, ozVec3f(0, 0, 5000));
  b->position()->set(1, ozVec3f(0, 0, 5000));
  EXPECT_THAT(drawIt(), IsEmpty());
  EXPECT_EQ(verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(BillboardDrawTest, PreVisitAndPostVisitCountAsInAGroup) {
  draw.pre["b"] = TRAV_PRUNE;
  EXPECT_THAT(drawIt(), IsEmpty());
  EXPECT_EQ(verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre b", "post b"));
  draw.pre.clear();
  draw.post["b"] = TRAV_TERM;
  drawIt();
  EXPECT_EQ(verdict, TRAV_TERM);
}

TEST_F(BillboardDrawTest, TermOfAChildUnwindsAndEndsTheLoop) {
  first->verdict = TRAV_TERM;
  EXPECT_THAT(drawIt(), ElementsAre("glPushMatrix()", "glTranslatef(0, 0, 0)", Identity, "glPopMatrix()"));
  EXPECT_EQ(verdict, TRAV_TERM);
  EXPECT_EQ(draw.getMatrixDepth(), 1);
  first->verdict = TRAV_PRUNE;
  drawIt();
  EXPECT_EQ(verdict, TRAV_CONT);
}

TEST_F(BillboardDrawTest, TheLimitOfOpenGLsStackIsNotRespected) {
  ozTransform::setMaxOglStackDepth(1);
  EXPECT_EQ(drawIt().front(), "glPushMatrix()");
  ozTransform::setMaxOglStackDepth(-1);
}

TEST_F(BillboardDrawTest, WithBackPrimitiveCullingTheViewVectorIsInTheChildsSpace) {
  draw.setViewVector(ozVec3f(7, 8, 9));
  drawIt();
  EXPECT_VEC(view, 7, 8, 9);
  draw.setBPCullMode(ozDrawAction::FRONT_BPC);
  camera->setOrientation(0, 1, 0, 0.5f);
  drawIt();
  EXPECT_VEC(view, 0, 0, 1); // turned towards the eye
  EXPECT_VEC(draw.getViewVector(), 7, 8, 9);
}

TEST_F(BillboardDrawTest, NullChildrenArePassedOver) {
  b->position()->set(0, ozVec3f(1, 2, 3));
  b->position()->set(1, ozVec3f(4, 5, 6));
  b->setChild(0, nullptr);
  EXPECT_THAT(drawIt(), ElementsAre("glPushMatrix()", "glTranslatef(4, 5, 6)", Identity, "glPopMatrix()"));
}

TEST_F(BillboardDrawTest, AVisitMayRemoveSiblings) {
  first->during = [&] { b->setChildCount(1); };
  drawIt();
  EXPECT_THAT(notes, ElementsAre("pre b", "draw first", "post b"));
}

TEST_F(BillboardDrawTest, OtherVisitsSeeTheChildrenAsTheyAre) {
  camera->setOrientation(0, 1, 0, 0.5f);
  b->position()->set(0, ozVec3f(1, 2, 3));
  first->duringTransform = second->duringTransform = nullptr;
  int deepest = 0;
  first->duringTransform = [&](ozTransformAction *action) { deepest = action->getMatrixDepth(); };
  ozTransformAction transform;
  transform.apply(b);
  EXPECT_EQ(deepest, 1);
  transform.reset();
  b->visit(&transform);
  EXPECT_EQ(deepest, 1);
  Noting<ozVFCullAction> cull;
  cull.setCamera(camera);
  cull.apply(b);
  EXPECT_EQ(deepest, 1);
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  notes.clear();
  isect.apply(b);
  EXPECT_EQ(deepest, 1);
  EXPECT_THAT(notes, ElementsAre("isect second", "isect first"));
}
