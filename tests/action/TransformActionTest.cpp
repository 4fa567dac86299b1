#include "oz/ozTransformAction.h"

#include <cmath>
#include <gmock/gmock.h>

#include "action/probeNode.h"
#include "support/capture.h"

using ::testing::ElementsAre;

namespace {

ozMatrix4f scaling(float x, float y, float z) {
  ozMatrix4f m;
  m.makeScale(x, y, z);
  return m;
}

ozVec3f transformed(ozTransformAction const &action, float x, float y, float z) {
  ozVec3f point;
  point.xformPt(ozVec3f(x, y, z), *action.getMatrix());
  return point;
}

} // namespace

TEST(TransformAction, StartsWithOneIdentityOfUniformScale) {
  ozTransformAction action;
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
  EXPECT_EQ(action.getMatType(), 0);
}

TEST(TransformAction, ApplyResetsAndCallsTransformVisitBetweenBeginAndEnd) {
  Held<ProbeNode> node;
  node->setName("n");
  Hooked<ozTransformAction> action;
  action.translate(1, 2, 3);
  action.pushMatrix();
  action.scale(1, 2, 1);
  node->verdict = TRAV_TERM;
  node->work = [&](ozAction *) {
    EXPECT_EQ(action.getMatrixDepth(), 1);
    EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
    EXPECT_EQ(action.getMatType(), 0);
    action.log.push_back("visit");
  };
  EXPECT_EQ(action.apply(node), TRAV_TERM);
  EXPECT_THAT(action.log, ElementsAre("begin n", "visit", "end n"));
  EXPECT_THAT(node->visits, ElementsAre("transformVisit"));
}

TEST(TransformAction, GetMatrixGivesTheTopItselfOrACopy) {
  ozTransformAction action;
  action.translate(1, 2, 3);
  ozMatrix4f copy;
  action.getMatrix(copy);
  EXPECT_EQ(copy, *action.getMatrix());
  (*action.getMatrix())[3][0] = 7;
  EXPECT_EQ(action.getMatrix()->get(3, 0), 7);
  EXPECT_EQ(copy[3][0], 1);
}

TEST(TransformAction, LoadMatrixLeavesTheTypeAlone) {
  ozTransformAction action;
  action.scale(1, 2, 3);
  action.loadMatrix(ozMatrix4f());
  EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
  EXPECT_EQ(action.getMatType(), 1);
}

TEST(TransformAction, MultMatrixActsFirstAndReplacesTheType) {
  ozTransformAction action;
  action.scale(1, 2, 3);
  action.loadMatrix(ozMatrix4f());
  action.translate(10, 0, 0);
  action.multMatrix(scaling(2, 2, 2), static_cast<ozTransformAction::MatTypeEnum>(8));
  EXPECT_EQ(transformed(action, 1, 1, 1), ozVec3f(12, 2, 2));
  EXPECT_EQ(action.getMatType(), 8);
  action.multMatrix(ozMatrix4f(), ozTransformAction::UNIFORM_MAT);
  EXPECT_EQ(action.getMatType(), 0);
}

TEST(TransformAction, PushCopiesMatrixAndTypeAndPopBringsThemBack) {
  ozTransformAction action;
  action.translate(1, 0, 0);
  action.scale(1, 2, 1);
  action.pushMatrix();
  EXPECT_EQ(action.getMatrixDepth(), 2);
  EXPECT_EQ(action.getMatType(), 1);
  EXPECT_EQ(transformed(action, 0, 1, 0), ozVec3f(1, 2, 0));
  action.multMatrix(scaling(3, 3, 3), ozTransformAction::UNIFORM_MAT);
  EXPECT_EQ(action.getMatType(), 0);
  action.popMatrix();
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(action.getMatType(), 1);
  EXPECT_EQ(transformed(action, 0, 1, 0), ozVec3f(1, 2, 0));
}

TEST(TransformAction, TranslateAndRotateActFirstAndKeepTheType) {
  ozTransformAction action;
  action.scale(1, 2, 1);
  action.translate(5, 0, 0);
  action.rotate(0, 0, 1, static_cast<float>(M_PI / 2));
  // (1, 0, 0) turns to (0, 1, 0), moves to (5, 1, 0), and is scaled last.
  ozVec3f const point = transformed(action, 1, 0, 0);
  EXPECT_TRUE(point.almostEqual(ozVec3f(5, 2, 0), 1e-5f));
  EXPECT_EQ(action.getMatType(), 1);
}

TEST(TransformAction, OnlyAnUnevenScaleChangesTheType) {
  ozTransformAction action;
  action.scale(2, 2, 2);
  EXPECT_EQ(action.getMatType(), 0);
  action.scale(2, 3, 2);
  EXPECT_EQ(action.getMatType(), 1);
  EXPECT_EQ(transformed(action, 1, 1, 1), ozVec3f(4, 6, 4));
  action.scale(2, 2, 2);
  EXPECT_EQ(action.getMatType(), 1);
}

TEST(TransformAction, AZScaleOfItsOwnIsUneven) {
  ozTransformAction action;
  action.scale(2, 2, 3);
  EXPECT_EQ(action.getMatType(), 1);
}

TEST(TransformAction, PopOnTheLastLevelIsReportedAndGivesTheIdentity) {
  ozTransformAction action;
  action.translate(1, 2, 3);
  action.scale(1, 2, 3);
  EXPECT_EQ(stderrOf([&] { action.popMatrix(); }), "(WARN, USAGE): ozMatStack4f::pop() - Matrix stack empty\n");
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
  EXPECT_EQ(action.getMatType(), 0);
}

TEST(TransformAction, Holds256LevelsAndReportsThePushBeyond) {
  ozTransformAction action;
  EXPECT_EQ(stderrOf([&] {
              for (int i = 1; i < 256; ++i) action.pushMatrix();
            }),
            "");
  EXPECT_EQ(action.getMatrixDepth(), 256);
  action.scale(1, 2, 1);
  EXPECT_EQ(stderrOf([&] { action.pushMatrix(); }), "(WARN, USAGE): ozMatStack4f::push() - Matrix stack full\n");
  EXPECT_EQ(action.getMatrixDepth(), 256);
  EXPECT_EQ(action.getMatType(), 1);
  action.popMatrix();
  EXPECT_EQ(action.getMatType(), 0);
  for (int i = 0; i < 254; ++i) action.popMatrix();
  EXPECT_EQ(action.getMatrixDepth(), 1);
}

TEST(TransformAction, ResetGivesOneIdentityOfUniformScale) {
  ozTransformAction action;
  action.pushMatrix();
  action.scale(1, 2, 3);
  action.reset();
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(*action.getMatrix(), ozMatrix4f());
  EXPECT_EQ(action.getMatType(), 0);
}

TEST(TransformAction, ACopySharesTheMatricesAndOutlivesTheFirst) {
  auto *first = new ozTransformAction;
  first->scale(1, 2, 1);
  ozTransformAction copy(*first);
  ozTransformAction assigned;
  assigned = copy;
  assigned = assigned;
  first->translate(1, 0, 0);
  EXPECT_EQ(transformed(copy, 0, 1, 0), ozVec3f(1, 2, 0));
  EXPECT_EQ(copy.getMatType(), 1);
  first->pushMatrix();
  EXPECT_EQ(copy.getMatrixDepth(), 1);
  delete first;
  EXPECT_EQ(transformed(assigned, 0, 1, 0), ozVec3f(1, 2, 0));
}
