#include "oz/ozAction.h"

#include <gmock/gmock.h>

#include "action/probeNode.h"
#include "oz/ozCompileAction.h"
#include "oz/ozGroup.h"

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A group over named probes "a" and "b", itself "g".
struct Family {
  Family() : group(new ozGroup), a(new ProbeNode), b(new ProbeNode) {
    group->setName("g");
    group->addChild(a);
    group->addChild(b);
  }
  Held<ozGroup> group;
  ProbeNode *a, *b;
};

} // namespace

TEST(TravDirective, IsOrderedFromGoingOnToStopping) {
  EXPECT_EQ(TRAV_CONT, 0);
  EXPECT_EQ(TRAV_PRUNE, 1);
  EXPECT_EQ(TRAV_TERM, 2);
}

TEST(Action, TypeTreeHasItsNamesAndParents) {
  struct {
    ozType *type;
    char const *name;
    ozType *parent;
  } const rows[] = {
      {ozAction::getClassType(), "ozAction", ozObject::getClassType()},
      {ozTransformAction::getClassType(), "TransformAction", ozAction::getClassType()},
      {ozVFCullAction::getClassType(), "ozVFCullAction", ozTransformAction::getClassType()},
      {ozDrawAction::getClassType(), "ozDrawAction", ozVFCullAction::getClassType()},
      {ozCompileAction::getClassType(), "CompileAction", ozAction::getClassType()},
      {ozIsectAction::getClassType(), "IsectAction", ozAction::getClassType()},
  };
  for (auto const &row : rows) {
    EXPECT_STREQ(row.type->getName(), row.name);
    EXPECT_EQ(row.type->getAncestor(), row.parent) << row.name;
  }
}

TEST(Action, IsectActionIsNoTransformActionInTheTypeTree) {
  ozIsectAction action;
  EXPECT_FALSE(action.isOfType(ozTransformAction::getClassType()));
  EXPECT_TRUE(action.isOfType(ozAction::getClassType()));
}

TEST(Action, IsAColumnOfTheFunctionTableButNoRow) {
  EXPECT_EQ(ozAction::getClassType()->getDispatchID(), -1);
  EXPECT_GE(ozAction::getClassType()->getObjectID(), 0);
}

TEST(Action, KeepsTheCallersUserData) {
  ozAction action;
  EXPECT_EQ(action.getUserData(), nullptr);
  int data;
  action.setUserData(&data);
  EXPECT_EQ(action.getUserData(), &data);
  ozAction const copy(action);
  EXPECT_EQ(copy.getUserData(), &data);
}

TEST(Action, InstantiateGivesTheSameClass) {
  ozAction plain;
  ozTransformAction transform;
  ozVFCullAction cull;
  ozDrawAction draw;
  ozCompileAction compile;
  ozIsectAction isect;
  for (ozAction *action : std::initializer_list<ozAction *>{&plain, &transform, &cull, &draw, &compile, &isect}) {
    ozAction *const other = action->instantiate();
    EXPECT_EQ(other->getType(), action->getType());
    EXPECT_EQ(other->getRefCount(), 0u);
    other->unref();
  }
}

TEST(Action, ApplyBracketsVisitWithBeginAndEnd) {
  Held<ProbeNode> node;
  node->setName("root");
  Hooked<ozAction> action;
  node->work = [&](ozAction *given) {
    EXPECT_EQ(given, &action);
    action.log.push_back("visit");
  };
  node->verdict = TRAV_PRUNE;
  EXPECT_EQ(action.apply(node), TRAV_PRUNE);
  EXPECT_THAT(action.log, ElementsAre("begin root", "visit", "end root"));
  EXPECT_THAT(node->visits, ElementsAre("visit"));
}

TEST(Action, ItsOwnHooksLetTheWalkGoOn) {
  Held<ProbeNode> node;
  ozAction action;
  EXPECT_EQ(action.preVisit(node), TRAV_CONT);
  EXPECT_EQ(action.postVisit(node), TRAV_CONT);
  action.begin(node);
  action.end(node);
  action.reset();
  EXPECT_THAT(node->visits, IsEmpty());
}

TEST(Action, APruningChildIsNoMatterToItsParentAndSibling) {
  Family f;
  f.a->verdict = TRAV_PRUNE;
  Hooked<ozAction> action;
  EXPECT_EQ(action.apply(f.group), TRAV_CONT);
  EXPECT_EQ(f.b->visits.size(), 1u);
}

TEST(Action, ATerminatingChildEndsTheWalkButPostVisitIsStillCalled) {
  Family f;
  Held<ozGroup> root;
  root->setName("root");
  root->addChild(f.group);
  Held<ProbeNode> after;
  root->addChild(after);
  f.a->verdict = TRAV_TERM;
  Hooked<ozAction> action;
  EXPECT_EQ(action.apply(root), TRAV_TERM);
  EXPECT_THAT(f.b->visits, IsEmpty());
  EXPECT_THAT(after->visits, IsEmpty());
  EXPECT_THAT(action.log, ElementsAre("begin root", "pre root", "pre g", "post g", "post root", "end root"));
}

TEST(Action, ANonZeroPreVisitSkipsTheChildrenAndTheLargerVerdictCounts) {
  Family f;
  Hooked<ozAction> action;
  action.preVerdict = TRAV_PRUNE;
  EXPECT_EQ(action.apply(f.group), TRAV_PRUNE);
  EXPECT_THAT(f.a->visits, IsEmpty());
  EXPECT_THAT(action.log, ElementsAre("begin g", "pre g", "post g", "end g"));
  action.postVerdict = TRAV_TERM;
  EXPECT_EQ(action.apply(f.group), TRAV_TERM);
}
