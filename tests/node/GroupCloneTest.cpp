#include "probes.h"

#include "support/capture.h"

#include <gtest/gtest.h>

namespace {

/// A copy that lives as long as the test, taken as a group.
class Copied : public Held<ozGroup> {
public:
  Copied(ozGroup *source, ozContainer::CloneEnum mode) : Held<ozGroup>(static_cast<ozGroup *>(source->clone(mode))) {}
  ozGroup *group(int i) { return static_cast<ozGroup *>(get()->getChild(i)); }
};

} // namespace

TEST(GroupClone, AShallowCopySharesTheChildren) {
  Held<ozGroup> source;
  ProbeNode *const child = new ProbeNode;
  source->addChild(child);
  Copied copy(source, ozContainer::CLONE_SHALLOW);
  ASSERT_EQ(copy->getChildCount(), 1);
  EXPECT_EQ(copy->getChild(0), child);
  EXPECT_EQ(child->getParentCount(), 2);
}

TEST(GroupClone, AnUnknownModeSharesTheChildren) {
  Held<ozGroup> source;
  ProbeNode *const child = new ProbeNode;
  source->addChild(child);
  Copied copy(source, static_cast<ozContainer::CloneEnum>(7));
  EXPECT_EQ(copy->getChild(0), child);
}

TEST(GroupClone, AChildrenCopyCopiesGroupsAndLeavesAllTheWayDown) {
  Held<ozGroup> source;
  ozGroup *const inner = new ozGroup;
  ProbeNode *const leaf = new ProbeNode("leaf");
  inner->addChild(leaf);
  source->addChild(inner);
  Copied copy(source, ozContainer::CLONE_CHILDREN);
  ASSERT_EQ(copy->getChildCount(), 1);
  EXPECT_NE(copy->getChild(0), inner);
  ASSERT_EQ(copy.group(0)->getChildCount(), 1);
  EXPECT_NE(copy.group(0)->getChild(0), leaf);
  EXPECT_STREQ(copy.group(0)->getChild(0)->getName(), "leaf");
  EXPECT_EQ(leaf->getParentCount(), 1);
}

TEST(GroupClone, AChildrenCopySharesWhatShapesReferTo) {
  Held<ozGroup> source;
  ozShape *const shape = new ozShape;
  ProbeGeometry *const geometry = new ProbeGeometry;
  shape->addGeometry(geometry);
  source->addChild(shape);
  Copied copy(source, ozContainer::CLONE_CHILDREN);
  EXPECT_EQ(static_cast<ozShape *>(copy->getChild(0))->getGeometry(0), geometry);
}

TEST(GroupClone, ADeepCopyCopiesWhatShapesReferTo) {
  Held<ozGroup> source;
  ozShape *const shape = new ozShape;
  ProbeGeometry *const geometry = new ProbeGeometry;
  shape->addGeometry(geometry);
  source->addChild(shape);
  Copied copy(source, ozContainer::CLONE_DEEP);
  ozShape *const copied = static_cast<ozShape *>(copy->getChild(0));
  ASSERT_EQ(copied->getGeometryCount(), 1);
  EXPECT_NE(copied->getGeometry(0), geometry);
}

TEST(GroupClone, AChildOfTwoParentsHasTwoParentsInTheCopy) {
  for (ozContainer::CloneEnum mode : {ozContainer::CLONE_CHILDREN, ozContainer::CLONE_DEEP}) {
    Held<ozGroup> source;
    ozGroup *const left = new ozGroup, *const right = new ozGroup;
    ProbeNode *const shared = new ProbeNode;
    left->addChild(shared);
    right->addChild(shared);
    source->addChild(left);
    source->addChild(right);
    Copied copy(source, mode);
    ozNode *const copied = copy.group(0)->getChild(0);
    EXPECT_EQ(copied, copy.group(1)->getChild(0));
    EXPECT_NE(copied, shared);
    EXPECT_EQ(copied->getParentCount(), 2);
    EXPECT_EQ(shared->getParentCount(), 2);
  }
}

TEST(GroupClone, AChildThatStandsTwiceInAGroupStandsTwiceInTheCopy) {
  Held<ozGroup> source;
  ProbeNode *const child = new ProbeNode;
  source->addChild(child);
  source->addChild(child);
  Copied copy(source, ozContainer::CLONE_DEEP);
  EXPECT_EQ(copy->getChild(0), copy->getChild(1));
  EXPECT_NE(copy->getChild(0), child);
}

TEST(GroupClone, TwoChildrenOfOneParentEachStayTwoInTheCopy) {
  Held<ozGroup> source;
  source->addChild(new ProbeNode("a"));
  source->addChild(new ProbeNode("b"));
  Copied copy(source, ozContainer::CLONE_DEEP);
  EXPECT_STREQ(copy->getChild(0)->getName(), "a");
  EXPECT_STREQ(copy->getChild(1)->getName(), "b");
}

TEST(GroupClone, NullChildrenStayNull) {
  Held<ozGroup> source;
  source->addChild(new ProbeNode);
  source->setChildCount(3);
  Copied copy(source, ozContainer::CLONE_DEEP);
  ASSERT_EQ(copy->getChildCount(), 3);
  EXPECT_EQ(copy->getChild(1), nullptr);
  EXPECT_NE(copy->getChild(0), nullptr);
}

TEST(GroupClone, OnlyADeepCopyHasUserDataOfItsOwn) {
  Held<ozGroup> source;
  source->setUserData(new (16) ozData);
  Copied shallow(source, ozContainer::CLONE_SHALLOW), children(source, ozContainer::CLONE_CHILDREN);
  EXPECT_EQ(shallow->getUserData(), source->getUserData());
  EXPECT_EQ(children->getUserData(), source->getUserData());
  Copied deep(source, ozContainer::CLONE_DEEP);
  ASSERT_NE(deep->getUserData(), nullptr);
  EXPECT_NE(deep->getUserData(), source->getUserData());
}

TEST(GroupClone, TheCopyIsOfTheSameClassAndHasTheFields) {
  Held<ozCollision> source;
  source->setName("c");
  source->setCollide(0);
  source->setBoundMode(ozNode::STATIC);
  source->setBoxBound(cubeAt(0, 0, 0, 4));
  Copied copy(source.get(), ozContainer::CLONE_DEEP);
  ASSERT_EQ(copy->getType(), ozCollision::getClassType());
  EXPECT_STREQ(copy->getName(), "c");
  EXPECT_EQ(static_cast<ozCollision *>(copy.get())->getCollide(), 0);
  EXPECT_EQ(copy->getBoundMode(), ozNode::STATIC);
  EXPECT_BOX(*copy->getBoxBound(), -4, -4, -4, 4, 4, 4);
}

TEST(GroupClone, TheCopyComputesItsBoxFromItsOwnChildren) {
  Held<ozGroup> source;
  ProbeNode *const child = new ProbeNode("a", 2);
  source->addChild(child);
  source->getBoxBound();
  Copied copy(source, ozContainer::CLONE_DEEP);
  child->setBoxBound(cubeAt(0, 0, 0, 9));
  EXPECT_BOX(*copy->getBoxBound(), -2, -2, -2, 2, 2, 2);
  copy->getChild(0)->setBoxBound(cubeAt(0, 0, 0, 5));
  EXPECT_BOX(*copy->getBoxBound(), -5, -5, -5, 5, 5, 5);
  EXPECT_BOX(*source->getBoxBound(), -9, -9, -9, 9, 9, 9);
}

TEST(GroupClone, AConnectionBetweenChildrenExistsBetweenTheirCopiesAlone) {
  Held<ozGroup> source;
  ozCollision *const from = new ozCollision, *const to = new ozCollision;
  source->addChild(from);
  source->addChild(to);
  from->connect(3, to, 3);
  Copied copy(source, ozContainer::CLONE_DEEP);
  ozCollision *const copiedFrom = static_cast<ozCollision *>(copy->getChild(0));
  ozCollision *const copiedTo = static_cast<ozCollision *>(copy->getChild(1));
  copiedFrom->setCollide(5);
  EXPECT_EQ(copiedTo->getCollide(), 5);
  EXPECT_EQ(to->getCollide(), 1);
  from->setCollide(9);
  EXPECT_EQ(to->getCollide(), 9);
  EXPECT_EQ(copiedTo->getCollide(), 5);
}

TEST(GroupClone, AConnectionFromTheGroupToAChildExistsBetweenTheCopies) {
  Held<ozCollision> source;
  ozCollision *const child = new ozCollision;
  source->addChild(child);
  source->connect(3, child, 3);
  Copied copy(source.get(), ozContainer::CLONE_DEEP);
  static_cast<ozCollision *>(copy.get())->setCollide(5);
  EXPECT_EQ(static_cast<ozCollision *>(copy->getChild(0))->getCollide(), 5);
  EXPECT_EQ(child->getCollide(), 1);
}

TEST(GroupClone, AGraphOfManyLevelsIsCopied) {
  Held<ozGroup> source;
  ozGroup *last = source;
  for (int i = 0; i < 300; ++i) {
    ozGroup *const inner = new ozGroup;
    last->addChild(inner);
    last = inner;
  }
  last->addChild(new ProbeNode("leaf"));
  Copied copy(source, ozContainer::CLONE_DEEP);
  int depth = 0;
  ozNode *node = copy;
  while (node->isOfType(ozGroup::getClassType()) && static_cast<ozGroup *>(node)->getChildCount()) {
    node = static_cast<ozGroup *>(node)->getChild(0);
    ++depth;
  }
  EXPECT_EQ(depth, 301);
  EXPECT_STREQ(node->getName(), "leaf");
}

TEST(GroupClone, ACycleEndsWithOneMessage) {
  Held<ozGroup> source;
  ozGroup *const inner = new ozGroup;
  source->addChild(inner);
  inner->addChild(source);
  ozGroup *copy = nullptr;
  std::string const message = stderrOf([&] { copy = static_cast<ozGroup *>(source->clone(ozContainer::CLONE_DEEP)); });
  ASSERT_NE(copy, nullptr);
  EXPECT_EQ(message, "ozContainer: the graph to be copied holds a cycle through a Group\n");
  EXPECT_EQ(copy->getChildCount(), 1);
  copy->unref();
  inner->setChildCount(0);
}
