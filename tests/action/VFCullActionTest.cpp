#include "oz/ozVFCullAction.h"

#include <gmock/gmock.h>

#include "action/probeNode.h"
#include "oz/ozCamera.h"
#include "oz/ozGroup.h"
#include "support/capture.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// At the origin, 45 degrees each way along -Z, from 1 to 1000.
class VFCullAction : public ::testing::Test {
protected:
  VFCullAction() {
    action.setCamera(camera);
    action.reset();
  }
  Held<ozPerspCamera> camera;
  ozVFCullAction action;
};

char const TooDeep[] = "ozVFCullAction::pushCull() Scene graph is too deep (256)\n";

/// Lets a test reach the stack.
struct Opened : ozVFCullAction {
  using ozVFCullAction::_cullDepth;
  using ozVFCullAction::_cullStack;
};

} // namespace

TEST_F(VFCullAction, TheRootHasStatusTwoAndDepthZero) {
  Opened opened;
  opened.setCamera(camera);
  opened.reset();
  opened.pushCull(ozBoxBound());
  opened.reset();
  EXPECT_EQ(opened._cullDepth, 0);
  EXPECT_EQ(opened._cullStack[0], 2);
}

TEST_F(VFCullAction, ResetLoadsTheCamerasViewMatrixWithTypeZero) {
  camera->setPosition(1, 2, 3);
  camera->setOrientation(0, 1, 0, 0.5f);
  action.pushMatrix();
  action.scale(1, 2, 3);
  action.reset();
  ozMatrix4f view;
  camera->getViewMat(view);
  EXPECT_TRUE(action.getMatrix()->almostEqual(view, 1e-6f));
  EXPECT_EQ(action.getMatrixDepth(), 1);
  EXPECT_EQ(action.getMatType(), 0);
}

TEST_F(VFCullAction, ABoxBehindTheCameraIsOutside) { EXPECT_EQ(action.pushCull(makeBox(-1, -1, 5, 1, 1, 6)), 0u); }

TEST_F(VFCullAction, ABoxWhollyInTheFrustumGivesSeven) {
  EXPECT_EQ(action.pushCull(makeBox(-1, -1, -21, 1, 1, -20)), 7u);
}

TEST_F(VFCullAction, ABoxAcrossTheFrustumsSideGivesOne) {
  // At a distance of 20 the frustum reaches 8.28 to each side.
  EXPECT_EQ(action.pushCull(makeBox(0, -1, -21, 10, 1, -20)), 1u);
}

TEST_F(VFCullAction, AnEmptyBoxIsOutsideWhateverTheMatrix) {
  EXPECT_EQ(action.pushCull(ozBoxBound()), 0u);
  action.rotate(1, 1, 0, 1);
  action.scale(-1, 2, 1);
  EXPECT_EQ(action.pushCull(ozBoxBound()), 0u);
}

TEST_F(VFCullAction, BoundsAreTestedWhereTheMatrixPutsThem) {
  ozBoxBound const box = makeBox(-1, -1, -1, 1, 1, 1);
  EXPECT_NE(action.pushCull(box), 7u);
  action.translate(0, 0, -20);
  EXPECT_EQ(action.pushCull(box), 7u);
  action.translate(0, 0, 40);
  EXPECT_EQ(action.pushCull(box), 0u);
}

TEST_F(VFCullAction, TheCamerasPositionMovesTheFrustum) {
  ozBoxBound const box = makeBox(-1, -1, 5, 1, 1, 6);
  camera->setPosition(0, 0, 30);
  action.reset();
  EXPECT_EQ(action.pushCull(box), 7u);
}

TEST_F(VFCullAction, SpheresGiveTheStatusOfTheFrustum) {
  EXPECT_EQ(action.pushCull(ozSphereBound(0, 0, -20, 1)), 7u);
  EXPECT_EQ(action.pushCull(ozSphereBound(0, 0, 20, 1)), 0u);
  EXPECT_EQ(action.pushCull(ozSphereBound(0, 0, -1, 0.3f)), 3u); // across the near plane
  EXPECT_EQ(action.pushCull(ozSphereBound()), 0u);
}

TEST_F(VFCullAction, UnderUniformScaleASpheresRadiusShrinks) {
  ozMatrix4f tenth;
  tenth.makeScale(0.1f, 0.1f, 0.1f);
  // In the eye's space at a distance of 1.5: 0.5 from the near plane, 1.5 * sin(22.5 degrees) = 0.574 from the sides.
  ozSphereBound const sphere(0, 0, -15, 3);
  action.pushMatrix();
  action.multMatrix(tenth, ozTransformAction::UNIFORM_MAT);
  EXPECT_EQ(action.pushCull(sphere), 7u);
  action.popMatrix();
  // Otherwise the radius never shrinks: 3 reaches across the near plane.
  action.multMatrix(tenth, ozTransformAction::NON_UNIFORM_MAT);
  EXPECT_EQ(action.pushCull(sphere), 3u);
}

TEST_F(VFCullAction, UniformScaleIsReadOffTheFirstRow) {
  ozMatrix4f uneven;
  uneven.makeScale(0.1f, 1, 1);
  action.multMatrix(uneven, ozTransformAction::UNIFORM_MAT);
  EXPECT_EQ(action.pushCull(ozSphereBound(0, 0, -1.5f, 3)), 7u);
}

TEST_F(VFCullAction, PopCullStopsAtTheRoot) {
  Opened opened;
  opened.setCamera(camera);
  opened.reset();
  opened.pushCull(makeBox(-1, -1, -21, 1, 1, -20));
  EXPECT_EQ(opened._cullDepth, 1);
  opened.popCull();
  opened.popCull();
  EXPECT_EQ(opened._cullDepth, 0);
}

TEST_F(VFCullAction, AChildOfANodeWhollyInsideIsTestedAgain) {
  EXPECT_EQ(action.pushCull(makeBox(-1, -1, -21, 1, 1, -20)), 7u);
  EXPECT_EQ(action.pushCull(makeBox(-1, -1, 5, 1, 1, 6)), 0u);
}

TEST_F(VFCullAction, AStatusOfFourIsHandedDownWithoutATest) {
  Opened opened;
  opened.setCamera(camera);
  opened.reset();
  opened._cullStack[0] = 4;
  EXPECT_EQ(opened.pushCull(makeBox(-1, -1, 5, 1, 1, 6)), 4u);
  EXPECT_EQ(opened._cullDepth, 1);
  EXPECT_EQ(opened.pushCull(ozSphereBound(0, 0, 5, 1)), 4u);
  EXPECT_EQ(opened._cullDepth, 2);
}

TEST_F(VFCullAction, PastTheLastLevelItSaysSoAndKeepsTheStatus) {
  Opened opened;
  opened.setCamera(camera);
  opened.reset();
  ozBoxBound const inside = makeBox(-1, -1, -21, 1, 1, -20);
  EXPECT_EQ(stderrOf([&] {
              for (int i = 0; i < 255; ++i) opened.pushCull(inside);
            }),
            "");
  EXPECT_EQ(opened._cullDepth, 255);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(opened.pushCull(ozBoxBound()), 7u); }), TooDeep);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(opened.pushCull(ozSphereBound()), 7u); }), TooDeep);
  EXPECT_EQ(opened._cullDepth, 255);
}

TEST_F(VFCullAction, ApplyResetsAndCallsVfCullVisitBetweenBeginAndEnd) {
  Held<ProbeNode> node;
  node->setName("n");
  Hooked<ozVFCullAction> hooked;
  hooked.setCamera(camera);
  camera->setPosition(0, 0, 9);
  node->verdict = TRAV_PRUNE;
  node->work = [&](ozAction *) {
    EXPECT_EQ(hooked.getMatrix()->get(3, 2), -9);
    hooked.log.push_back("visit");
  };
  EXPECT_EQ(hooked.apply(node), TRAV_PRUNE);
  EXPECT_THAT(hooked.log, ElementsAre("begin n", "visit", "end n"));
  EXPECT_THAT(node->visits, ElementsAre("vfCullVisit"));
}

TEST_F(VFCullAction, TheSubtreeOfAGroupBehindTheCameraIsNotVisited) {
  Held<ozGroup> group;
  Held<ProbeNode> child;
  group->addChild(child);
  child->setBoxBound(makeBox(-1, -1, 5, 1, 1, 6));
  Hooked<ozVFCullAction> hooked;
  hooked.setCamera(camera);
  EXPECT_EQ(hooked.apply(group), TRAV_PRUNE);
  EXPECT_THAT(child->visits, IsEmpty());
  child->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  EXPECT_EQ(hooked.apply(group), TRAV_CONT);
  EXPECT_THAT(child->visits, ElementsAre("vfCullVisit"));
}

TEST_F(VFCullAction, ManyNestedGroupsPassTheLimitAndLeaveTheActionUsable) {
  Held<ProbeNode> leaf;
  leaf->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  ozNode *node = leaf;
  for (int i = 0; i < 400; ++i) {
    auto *group = new ozGroup;
    group->addChild(node);
    node = group;
  }
  Held<ozNode> root(node);
  std::string const messages = stderrOf([&] { EXPECT_EQ(action.apply(root), TRAV_CONT); });
  // 255 pushes have room.
  std::string expected;
  for (int i = 255; i < 400; ++i) expected += TooDeep;
  EXPECT_EQ(messages, expected);
  EXPECT_EQ(leaf->visits.size(), 1u);
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(action.apply(leaf), TRAV_CONT); }), "");
  EXPECT_EQ(action.pushCull(makeBox(-1, -1, 5, 1, 1, 6)), 0u);
}

TEST_F(VFCullAction, HoldsOneReferenceOnItsCamera) {
  EXPECT_EQ(action.getCamera(), camera);
  EXPECT_EQ(camera->getRefCount(), 2u);
  action.setCamera(camera);
  EXPECT_EQ(camera->getRefCount(), 2u);
  Held<ozPerspCamera> other;
  action.setCamera(other);
  EXPECT_EQ(camera->getRefCount(), 1u);
  EXPECT_EQ(other->getRefCount(), 2u);
  action.setCamera(nullptr);
  EXPECT_EQ(other->getRefCount(), 1u);
  EXPECT_EQ(action.getCamera(), nullptr);
  {
    ozVFCullAction passing;
    passing.setCamera(camera);
  }
  EXPECT_EQ(camera->getRefCount(), 1u);
}

TEST_F(VFCullAction, SettingTheOnlyHolderOfACameraAgainKeepsIt) {
  ozVFCullAction holder;
  auto *own = new ozPerspCamera;
  holder.setCamera(own);
  holder.setCamera(own);
  EXPECT_EQ(own->getRefCount(), 1u);
}

TEST_F(VFCullAction, HasNoCameraAtFirst) { EXPECT_EQ(ozVFCullAction().getCamera(), nullptr); }

TEST_F(VFCullAction, ACopyTakesTheCameraWithoutAReference) {
  {
    ozVFCullAction const copy(action);
    EXPECT_EQ(copy.getCamera(), camera);
    EXPECT_EQ(camera->getRefCount(), 2u);
    ozVFCullAction assigned;
    assigned = action;
    EXPECT_EQ(assigned.getCamera(), camera);
    EXPECT_EQ(camera->getRefCount(), 2u);
  }
  EXPECT_EQ(camera->getRefCount(), 2u);
}

TEST_F(VFCullAction, ACopyTakesTheWholeCullStack) {
  Opened opened;
  opened.setCamera(camera);
  opened.reset();
  opened.pushCull(makeBox(-1, -1, -21, 1, 1, -20));
  opened.pushCull(makeBox(0, -1, -21, 10, 1, -20));
  Opened const copy(opened);
  EXPECT_EQ(copy._cullDepth, 2);
  EXPECT_EQ(copy._cullStack[0], 2);
  EXPECT_EQ(copy._cullStack[1], 7);
  EXPECT_EQ(copy._cullStack[2], 1);
}
