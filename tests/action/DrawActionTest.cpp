#include "oz/ozDrawAction.h"

#include <gmock/gmock.h>

#include "action/drawFixture.h"
#include "oz/ozAppearance.h"
#include "oz/ozGroup.h"
#include "oz/ozTransform.h"

using ::testing::ElementsAre;

typedef DrawFixture DrawAction;

TEST_F(DrawAction, ItsDefaultsAreNoCullingAndADirectionAlongZ) {
  ozDrawAction const fresh;
  EXPECT_EQ(fresh.getBPCullMode(), 0);
  EXPECT_EQ(fresh.getViewVector(), ozVec3f(0, 0, 1));
  EXPECT_EQ(fresh.getOrthoCamera(), 1);
}

TEST_F(DrawAction, KeepsWhatItIsGiven) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  EXPECT_EQ(action.getBPCullMode(), 1);
  action.setViewVector(ozVec3f(1, 2, 3));
  EXPECT_EQ(action.getViewVector(), ozVec3f(1, 2, 3));
  action.setOrthoCamera(0);
  EXPECT_EQ(action.getOrthoCamera(), 0);
}

TEST_F(DrawAction, GetContextTakesTheCurrentOneOnceAndKeepsIt) {
  ozDrawAction fresh;
  EXPECT_EQ(fresh.getContext(), context);
  ozContext::releaseCurrent();
  EXPECT_EQ(fresh.getContext(), context);
  fresh.setContext(nullptr);
  EXPECT_EQ(fresh.getContext(), nullptr);
  context->makeCurrent(device);
  EXPECT_EQ(fresh.getContext(), context);
}

TEST_F(DrawAction, ApplyTakesTheCurrentContextWhateverWasSet) {
  ozContext::releaseCurrent();
  auto *other = new ozContext(device);
  other->makeCurrent(device);
  action.setContext(context);
  action.apply(nullptr);
  EXPECT_EQ(action.getContext(), other);
  ozContext::releaseCurrent();
  other->unref();
  context->makeCurrent(device);
}

TEST_F(DrawAction, ApplyBracketsDrawVisitWithBeginAndEnd) {
  Held<ProbeNode> node;
  node->setName("n");
  node->verdict = TRAV_PRUNE;
  node->work = [&](ozAction *) { action.log.push_back("visit"); };
  EXPECT_EQ(action.apply(node), TRAV_PRUNE);
  EXPECT_THAT(action.log, ElementsAre("begin n", "visit", "end n"));
  EXPECT_THAT(node->visits, ElementsAre("drawVisit"));
}

TEST_F(DrawAction, WithoutARootBeginAndEndAreStillCalled) {
  EXPECT_EQ(action.apply(nullptr), TRAV_CONT);
  EXPECT_THAT(action.log, ElementsAre("begin null", "end null"));
}

TEST_F(DrawAction, ApplyStartsFromTheCamerasViewMatrix) {
  camera->setPosition(0, 0, 7);
  action.pushMatrix();
  Held<ProbeNode> node;
  node->work = [&](ozAction *) {
    EXPECT_EQ(action.getMatrix()->get(3, 2), -7);
    EXPECT_EQ(action.getMatrixDepth(), 1);
  };
  action.apply(node);
  EXPECT_EQ(node->visits.size(), 1u);
}

// A plain action leaves preVisit out, since nobody can have overridden it there.
TEST_F(DrawAction, ACopyOfAnotherClassMadeDuringAPlainWalkIsAskedAtEachNode) {
  struct Asking : ozDrawAction {
    Asking() = default;
    explicit Asking(ozDrawAction const &other) : ozDrawAction(other) {}
    ozTravDirective preVisit(ozNode *node) override { return seen.push_back(node), TRAV_CONT; }
    ozTravDirective postVisit(ozNode *node) override { return seen.push_back(node), TRAV_CONT; }
    std::vector<ozNode *> seen;
  };
  Held<ozGroup> group;
  group->setBoundMode(ozNode::STATIC);
  group->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  Held<ProbeNode> node;
  node->work = [&](ozAction *walk) {
    Asking copied(*static_cast<ozDrawAction *>(walk)), assigned;
    group->drawVisit(&copied);
    std::vector<ozNode *> const twice = {group, group};
    EXPECT_EQ(copied.seen, twice);
    static_cast<ozDrawAction &>(assigned) = *static_cast<ozDrawAction *>(walk);
    group->drawVisit(&assigned);
    EXPECT_EQ(assigned.seen, twice);
  };
  ozDrawAction plain;
  plain.setCamera(camera);
  plain.apply(node);
  EXPECT_EQ(node->visits.size(), 1u);
}

TEST_F(DrawAction, NormalizingIsOffFromTheStart) {
  context->setNormalizeEnable(1);
  Held<ProbeNode> node;
  node->work = [&](ozAction *) {
    EXPECT_FALSE(glIsEnabled(GL_NORMALIZE));
    EXPECT_EQ(context->getNormalizeEnable(), 0);
  };
  action.apply(node);
  EXPECT_EQ(node->visits.size(), 1u);
}

TEST_F(DrawAction, NormalizingIsOnWithinATransformWithScaleAlone) {
  Held<ozGroup> root;
  auto *scaled = new ozTransform;
  scaled->setScale(2, 2, 2);
  auto *inner = new ProbeNode, *after = new ProbeNode;
  for (ProbeNode *node : {inner, after}) node->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  scaled->addChild(inner);
  root->addChild(scaled);
  root->addChild(after);
  inner->work = [](ozAction *) { EXPECT_TRUE(glIsEnabled(GL_NORMALIZE)); };
  after->work = [](ozAction *) { EXPECT_FALSE(glIsEnabled(GL_NORMALIZE)); };
  camera->draw(&action);
  action.apply(root);
  EXPECT_EQ(inner->visits.size(), 1u);
  EXPECT_EQ(after->visits.size(), 1u);
}

TEST_F(DrawAction, TheWalkRunsOnAStateLevelOfItsOwn) {
  _ozGfx const *const outer = &context->getCurState();
  Held<ProbeNode> node;
  node->work = [&](ozAction *) { EXPECT_NE(&context->getCurState(), outer); };
  action.apply(node);
  EXPECT_EQ(node->visits.size(), 1u);
  EXPECT_EQ(&context->getCurState(), outer);
}

TEST_F(DrawAction, AfterTheWalkTheContextsStateIsAsBefore) {
  ASSERT_EQ(context->getDepthEnable(), 0);
  ASSERT_EQ(context->getShadeModel(), ozContext::SMOOTH_SHADE);
  Held<ozAppearance> appearance;
  appearance->setDepthEnable(1);
  appearance->setShadeModel(ozContext::FLAT_SHADE);
  Held<ProbeNode> node;
  node->work = [&](ozAction *) {
    context->drawApp(appearance, 1);
    EXPECT_TRUE(glIsEnabled(GL_DEPTH_TEST));
    EXPECT_EQ(context->getShadeModel(), ozContext::FLAT_SHADE);
  };
  action.apply(node);
  EXPECT_EQ(node->visits.size(), 1u);
  EXPECT_EQ(context->getDepthEnable(), 0);
  EXPECT_EQ(context->getShadeModel(), ozContext::SMOOTH_SHADE);
  EXPECT_FALSE(glIsEnabled(GL_DEPTH_TEST));
  GLint model = 0;
  glGetIntegerv(GL_SHADE_MODEL, &model);
  EXPECT_EQ(model, GL_SMOOTH);
}

TEST_F(DrawAction, TheStateIsPoppedAfterEnd) {
  struct AtEnd : ozDrawAction {
    void end(ozNode *) override { level = &getContext()->getCurState(); }
    _ozGfx const *level = nullptr;
  } atEnd;
  atEnd.setCamera(camera);
  _ozGfx const *const outer = &context->getCurState();
  atEnd.apply(nullptr);
  EXPECT_NE(atEnd.level, outer);
}

TEST_F(DrawAction, OnlyAnOrthoCameraMakesTheViewVectorADirection) {
  Held<ozOrthoCamera> ortho;
  Held<ozFrustumCamera> free;
  action.apply(nullptr);
  EXPECT_FALSE(action.getOrthoCamera());
  action.setCamera(ortho);
  action.apply(nullptr);
  EXPECT_TRUE(action.getOrthoCamera());
  action.setCamera(free);
  action.apply(nullptr);
  EXPECT_FALSE(action.getOrthoCamera());
}

TEST_F(DrawAction, UpdateViewVectorGivesTheEyeInLocalSpace) {
  camera->setPosition(1, 2, 3);
  action.apply(nullptr);
  action.translate(10, 0, 0);
  action.updateViewVector();
  EXPECT_TRUE(action.getViewVector().almostEqual(ozVec3f(-9, 2, 3), 1e-4f));
}

TEST_F(DrawAction, UpdateViewVectorGivesTheEyesZAxisForADirection) {
  camera->setPosition(1, 2, 3);
  camera->setOrientation(0, 1, 0, 1.5707963f); // looks along -X, so its Z is +X
  action.apply(nullptr);
  action.setOrthoCamera(1);
  action.updateViewVector();
  EXPECT_TRUE(action.getViewVector().almostEqual(ozVec3f(1, 0, 0), 1e-5f));
}

TEST_F(DrawAction, ApplyItselfLeavesTheViewVector) {
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  action.setViewVector(ozVec3f(4, 5, 6));
  action.apply(nullptr);
  EXPECT_EQ(action.getViewVector(), ozVec3f(4, 5, 6));
}

TEST_F(DrawAction, TransformsKeepTheViewVectorCurrentWithBackPrimitiveCulling) {
  auto *probe = new ProbeNode;
  probe->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  Held<ozTransform> root;
  root->setTranslation(0, 0, -10);
  root->addChild(probe);
  ozVec3f seen;
  probe->work = [&](ozAction *) { seen = action.getViewVector(); };
  action.apply(root);
  EXPECT_EQ(seen, ozVec3f(0, 0, 1));
  action.setBPCullMode(ozDrawAction::FRONT_BPC);
  action.apply(root);
  EXPECT_TRUE(seen.almostEqual(ozVec3f(0, 0, 10), 1e-4f));
  EXPECT_EQ(action.getViewVector(), ozVec3f(0, 0, 1));
}

TEST_F(DrawAction, ChildrenAreDrawnInGraphOrderWhateverTheirDistance) {
  Held<ozGroup> root;
  Held<ProbeNode> near, far;
  near->setBoxBound(makeBox(-1, -1, -6, 1, 1, -5));
  far->setBoxBound(makeBox(-1, -1, -60, 1, 1, -50));
  std::vector<std::string> order;
  near->work = [&](ozAction *) { order.push_back("near"); };
  far->work = [&](ozAction *) { order.push_back("far"); };
  root->addChild(near);
  root->addChild(far);
  action.apply(root);
  EXPECT_THAT(order, ElementsAre("near", "far"));
  root->removeChild(0);
  root->addChild(near);
  order.clear();
  action.apply(root);
  EXPECT_THAT(order, ElementsAre("far", "near"));
}

TEST_F(DrawAction, TheCameraFixesTheActionsContextWhenItDraws) {
  ozDrawAction fresh;
  camera->draw(&fresh);
  ozContext::releaseCurrent();
  EXPECT_EQ(fresh.getContext(), context);
  context->makeCurrent(device);
}

TEST_F(DrawAction, TheShortPickUsesTheContextsViewport) {
  context->setViewport(10, 4, 40, 20);
  Held<ProbeNode> root;
  ozVec3f direction;
  root->work = [&](ozAction *given) {
    direction = static_cast<ozIsectAction *>(given)->getActiveSeg()->getDirection();
  };
  ozHit hit;
  EXPECT_EQ(camera->pick(root, 30, 14, hit), 0);
  EXPECT_TRUE(direction.almostEqual(ozVec3f(0, 0, -1), 1e-6f));
  EXPECT_EQ(camera->pick(root, 9, 14, hit), 0);
  EXPECT_EQ(root->visits.size(), 1u);
}

TEST_F(DrawAction, ACopyHasTheSameSettings) {
  action.setBPCullMode(ozDrawAction::BACK_BPC);
  action.setViewVector(ozVec3f(1, 2, 3));
  action.getContext();
  ozDrawAction const copy(action);
  EXPECT_EQ(copy.getBPCullMode(), ozDrawAction::BACK_BPC);
  EXPECT_EQ(copy.getViewVector(), ozVec3f(1, 2, 3));
  EXPECT_EQ(copy.getCamera(), camera);
}
