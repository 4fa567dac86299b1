#include "probes.h"

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::Pair;

TEST(Node, IsAnAbstractContainerOfTheNameNode) {
  EXPECT_STREQ(ozNode::getClassType()->getName(), "Node");
  EXPECT_EQ(ozNode::getClassType()->getAncestor(), ozContainer::getClassType());
  EXPECT_TRUE(std::is_abstract<ozNode>::value);
}

TEST(Node, HasTheFieldsBoxBoundAndBoundMode) {
  ASSERT_EQ(ozNode::getClassType()->getFieldInfoCount(), 2);
  EXPECT_STREQ(ozNode::getClassType()->getFieldInfo(0)->getName(), "boxBound");
  EXPECT_EQ(ozNode::getClassType()->getFieldInfo(0)->getFieldType(), ozSFBoxBound::getClassType());
  EXPECT_STREQ(ozNode::getClassType()->getFieldInfo(1)->getName(), "boundMode");
  EXPECT_EQ(ozNode::getClassType()->getFieldInfo(1)->getFieldType(), ozSFEnum::getClassType());
}

TEST(Node, NamesItsBoundModes) {
  EXPECT_EQ(ozNode::STATIC, 0);
  EXPECT_EQ(ozNode::DYNAMIC, 1);
  EXPECT_STREQ(ozNode::getClassType()->mapEnum(1, 0), "STATIC");
  EXPECT_STREQ(ozNode::getClassType()->mapEnum(1, 1), "DYNAMIC");
}

TEST(Node, StartsWithAnEmptyBoxInModeDynamicAndNothingPending) {
  Held<ProbeNode> node;
  EXPECT_FALSE(node->hasPendingFields());
  EXPECT_TRUE(node->getBoxBound()->isEmpty());
  EXPECT_EQ(node->getBoundMode(), ozNode::DYNAMIC);
}

TEST(Node, GivesTheStoredBoxByPointerAndByCopy) {
  Held<ProbeNode> node;
  node->setBoxBound(boxOf(1, 2, 3, 4, 5, 6));
  EXPECT_BOX(*node->getBoxBound(), 1, 2, 3, 4, 5, 6);
  ozBoxBound box;
  node->getBoxBound(box);
  EXPECT_BOX(box, 1, 2, 3, 4, 5, 6);
  EXPECT_EQ(node->getBoxBound(), node->getBoxBound());
}

TEST(Node, StoringABoxKeepsTheMode) {
  Held<ProbeNode> node;
  node->setBoxBound(cubeAt(0, 0, 0, 1));
  EXPECT_EQ(node->getBoundMode(), ozNode::DYNAMIC);
}

TEST(Node, StoringABoxTellsTheParents) {
  Held<Watched<ozGroup>> group;
  ProbeNode *const node = new ProbeNode;
  group->addChild(node);
  group->childChanges.clear();
  node->setBoxBound(cubeAt(0, 0, 0, 1));
  EXPECT_THAT(group->childChanges, ElementsAre(Pair(node, 0)));
}

TEST(Node, ChangingTheModeTellsNoParent) {
  Held<Watched<ozGroup>> group;
  ProbeNode *const node = new ProbeNode;
  group->addChild(node);
  group->childChanges.clear();
  node->setBoundMode(ozNode::STATIC);
  EXPECT_THAT(group->childChanges, IsEmpty());
  EXPECT_EQ(node->getBoundMode(), ozNode::STATIC);
}

TEST(Node, AStoredBoxReachesAConnectedField) {
  Held<ProbeNode> from, to;
  from->connect(0, to, 0);
  from->setBoxBound(boxOf(1, 2, 3, 4, 5, 6));
  EXPECT_BOX(*to->getBoxBound(), 1, 2, 3, 4, 5, 6);
}

TEST(Node, AChangedModeReachesAConnectedField) {
  Held<ProbeNode> from, to;
  from->connect(1, to, 1);
  from->setBoundMode(ozNode::STATIC);
  EXPECT_EQ(to->getBoundMode(), ozNode::STATIC);
}

TEST(Node, SphereBoundSurroundsTheCornersOfTheBox) {
  Held<ProbeNode> node;
  node->setBoxBound(boxOf(0, 0, 0, 2, 4, 4));
  ozSphereBound sphere;
  node->getSphereBound(sphere);
  EXPECT_VEC(sphere.center, 1, 2, 2);
  EXPECT_FLOAT_EQ(sphere.radius, 3);
}

TEST(Node, SphereBoundOfAnEmptyBoxIsEmpty) {
  Held<ProbeNode> node;
  ozSphereBound sphere(1, 2, 3, 4);
  node->getSphereBound(sphere);
  EXPECT_TRUE(sphere.isEmpty());
}

TEST(Node, SphereBoundBringsTheBoxUpToDate) {
  Held<ozGroup> group;
  group->addChild(new ProbeNode("a", 1));
  ozSphereBound sphere;
  group->getSphereBound(sphere);
  EXPECT_FLOAT_EQ(sphere.radius, std::sqrt(3.0f));
}

TEST(Node, StoringABoxTakesBackAPendingComputation) {
  Held<ozGroup> group;
  group->addChild(new ProbeNode("a", 1));
  EXPECT_TRUE(group->hasPendingFields());
  group->setBoundMode(ozNode::STATIC);
  group->setBoxBound(cubeAt(0, 0, 0, 7));
  EXPECT_FALSE(group->hasPendingFields());
  EXPECT_BOX(*group->getBoxBound(), -7, -7, -7, 7, 7, 7);
}

TEST(Node, AnInstanceWithoutVisitsOfItsOwnContinuesAndDoesNothing) {
  struct Plain : ProbeNode {
    using ProbeNode::ProbeNode;
  };
  Held<Plain> node;
  notes.clear();
  Noting<ozAction> action;
  ozTransformAction transform;
  ozVFCullAction cull;
  ozDrawAction draw;
  ozIsectAction isect;
  ozSoundAction sound;
  EXPECT_EQ(node->ozNode::visit(&action), TRAV_CONT);
  EXPECT_EQ(node->ozNode::transformVisit(&transform), TRAV_CONT);
  EXPECT_EQ(node->ozNode::vfCullVisit(&cull), TRAV_CONT);
  EXPECT_EQ(node->ozNode::drawVisit(&draw), TRAV_CONT);
  node->ozNode::isect(&isect);
  node->ozNode::sound(&sound);
  EXPECT_THAT(notes, IsEmpty());
  EXPECT_EQ(transform.getMatrixDepth(), 1);
}

TEST(InsertParent, PutsTheGroupBetweenANodeAndItsParent) {
  Held<ozGroup> parent, group;
  Held<ProbeNode> node;
  parent->addChild(new ProbeNode);
  parent->addChild(node);
  node->insertParent(group);
  ASSERT_EQ(parent->getChildCount(), 2);
  EXPECT_EQ(parent->getChild(1), group.get());
  ASSERT_EQ(group->getChildCount(), 1);
  EXPECT_EQ(group->getChild(0), node.get());
  EXPECT_EQ(node->getParentCount(), 1);
  EXPECT_EQ(node->getParent(0), group.get());
}

TEST(InsertParent, ANodeWithTwoParentsStandsTwiceInTheGroup) {
  Held<ozGroup> first, second, group;
  Held<ProbeNode> node;
  first->addChild(node);
  second->addChild(node);
  node->insertParent(group);
  EXPECT_EQ(first->getChild(0), group.get());
  EXPECT_EQ(second->getChild(0), group.get());
  ASSERT_EQ(group->getChildCount(), 2);
  EXPECT_EQ(group->getChild(0), node.get());
  EXPECT_EQ(group->getChild(1), node.get());
}

TEST(InsertParent, TheGroupNeverBecomesItsOwnChild) {
  Held<ozGroup> parent, group;
  Held<ProbeNode> node;
  group->addChild(node);
  parent->addChild(node);
  node->insertParent(group);
  EXPECT_EQ(group->findChild(group), -1);
  EXPECT_EQ(parent->getChild(0), group.get());
  EXPECT_EQ(group->getChildCount(), 2);
}

TEST(InsertParent, ParentsThatAreNoGroupsKeepTheNode) {
  Held<Holder> holder;
  Held<ozGroup> group;
  Held<ProbeNode> node;
  holder->setNode(node);
  node->insertParent(group);
  EXPECT_EQ(holder->getNode(), node.get());
  EXPECT_EQ(group->getChildCount(), 0);
}

TEST(InsertParent, ANodeWithoutParentsIsLeftAlone) {
  Held<ozGroup> group;
  Held<ProbeNode> node;
  node->insertParent(group);
  EXPECT_EQ(group->getChildCount(), 0);
}
