#include "oz/ozDList.h"
#include "oz/ozSList.h"

#include <gtest/gtest.h>

#include <string>

namespace {

struct SItem : ozSLink {
  explicit SItem(char name) : name(name) {}
  char name;
};

typedef ozSList<SItem, ozSLink> SItemList;

std::string takeAll(SItemList &list) {
  std::string names;
  while (SItem *item = list.unlinkHead()) names += item->name;
  return names;
}

TEST(SList, StartsEmpty) {
  SItemList list;
  EXPECT_TRUE(list.isEmpty());
  EXPECT_EQ(nullptr, list.unlinkHead());
  EXPECT_EQ(nullptr, list.getHead());
  EXPECT_EQ(nullptr, list.getTail());
}

TEST(SList, InsertsAtTheHead) {
  SItemList list;
  SItem a('a'), b('b'), c('c');
  list.insert(&a);
  list.insert(&b);
  list.insert(&c);
  EXPECT_FALSE(list.isEmpty());
  EXPECT_EQ(&c, list.getHead());
  EXPECT_EQ(&a, list.getTail());
  EXPECT_EQ("cba", takeAll(list));
  EXPECT_TRUE(list.isEmpty());
}

TEST(SList, TheTailGoesWithTheLastItem) {
  SItemList list;
  SItem a('a'), b('b');
  list.insert(&a);
  EXPECT_EQ(&a, list.unlinkHead());
  EXPECT_EQ(nullptr, list.getTail());
  list.insert(&b);
  EXPECT_EQ(&b, list.getTail());
}

TEST(SList, AnUnlinkedItemPointsNowhere) {
  SItemList list;
  SItem a('a'), b('b');
  list.insert(&a);
  list.insert(&b);
  EXPECT_EQ(&a, b.next());
  list.unlinkHead();
  EXPECT_EQ(nullptr, b.next());
}

TEST(SList, ClearForgetsAllAndFreesNothing) {
  SItemList list;
  SItem a('a'), b('b'); // on the stack: a free would end the test
  list.insert(&a);
  list.insert(&b);
  list.clear();
  EXPECT_TRUE(list.isEmpty());
  EXPECT_EQ(nullptr, list.getTail());
  list.insert(&a);
  EXPECT_EQ("a", takeAll(list));
}

TEST(SLink, HoldsTheNextLink) {
  ozSLink last(nullptr), first(&last);
  EXPECT_EQ(&last, first.next());
  EXPECT_EQ(nullptr, last.next());
  first.init();
  EXPECT_EQ(nullptr, first.next());
  EXPECT_EQ(sizeof(void *), sizeof(ozSLink));
}

struct DItem : ozDLink {
  explicit DItem(char name) : name(name) {}
  char name;
};

typedef ozDList<DItem, ozDLink> DItemList;
typedef ozDListIter<DItem, ozDLink> DItemIter;

std::string namesOf(DItemList const &list) {
  std::string names;
  DItemIter iter(list);
  while (DItem *item = iter.next()) names += item->name;
  return names;
}

TEST(DList, StartsEmpty) {
  DItemList list;
  EXPECT_TRUE(list.isEmpty());
  EXPECT_EQ("", namesOf(list));
}

TEST(DList, AppendsAtTheEnd) {
  DItemList list;
  DItem a('a'), b('b'), c('c');
  list.append(&a);
  list.append(&b);
  list.append(&c);
  EXPECT_FALSE(list.isEmpty());
  EXPECT_EQ("abc", namesOf(list));
}

TEST(DList, UnlinksHeadMiddleAndTail) {
  DItemList list;
  DItem a('a'), b('b'), c('c'), d('d');
  for (DItem *item : {&a, &b, &c, &d}) list.append(item);
  DItemList::unlink(&b);
  EXPECT_EQ("acd", namesOf(list));
  DItemList::unlink(&a);
  EXPECT_EQ("cd", namesOf(list));
  d.unlink();
  EXPECT_EQ("c", namesOf(list));
  c.unlink();
  EXPECT_TRUE(list.isEmpty());
  list.append(&b);
  EXPECT_EQ("b", namesOf(list));
}

TEST(DList, ClearForgetsAllAndFreesNothing) {
  DItemList list;
  DItem a('a'), b('b'); // on the stack: a free would end the test
  list.append(&a);
  list.append(&b);
  list.clear();
  EXPECT_TRUE(list.isEmpty());
  list.append(&b);
  list.append(&a);
  EXPECT_EQ("ba", namesOf(list));
}

TEST(DList, ClearTouchesNoItem) {
  DItemList list;
  DItem *item = new DItem('a');
  list.append(item);
  delete item; // the items are the application's, and it may have freed them
  list.clear();
  EXPECT_TRUE(list.isEmpty());
}

TEST(DList, IsOneLinkOfItsOwnRing) {
  EXPECT_EQ(sizeof(DItemList), 2 * sizeof(void *));
  EXPECT_EQ(sizeof(ozDLink), 2 * sizeof(void *));
  EXPECT_EQ(sizeof(SItemList), 2 * sizeof(void *));
  EXPECT_EQ(sizeof(DItemIter), 2 * sizeof(void *));
}

TEST(DLink, StartsOutsideAnyList) {
  DItem a('a');
  EXPECT_FALSE(a.isLinked());
  a.unlink(); // does nothing
  EXPECT_FALSE(a.isLinked());
}

TEST(DLink, IsLinkedWhileInAList) {
  DItemList list;
  DItem a('a');
  list.append(&a);
  EXPECT_TRUE(a.isLinked());
  a.unlink();
  EXPECT_FALSE(a.isLinked());
}

TEST(DLink, InitMakesItLinkedToNothing) {
  DItemList list;
  DItem a('a');
  list.append(&a);
  a.init();
  EXPECT_FALSE(a.isLinked());
}

TEST(DListIter, OverAnEmptyListGivesNullAtOnce) {
  DItemList list;
  DItemIter iter(list);
  EXPECT_EQ(nullptr, iter.next());
  EXPECT_EQ(nullptr, iter.next());
}

TEST(DListIter, GivesNullAtTheEndAndStaysThere) {
  DItemList list;
  DItem a('a');
  list.append(&a);
  DItemIter iter(list);
  EXPECT_EQ(&a, iter.next());
  EXPECT_EQ(nullptr, iter.next());
  EXPECT_EQ(nullptr, iter.next());
}

TEST(DListIter, GoesOnBehindAnItemThatWasUnlinkedOrDeleted) {
  DItemList list;
  DItem a('a'), c('c');
  DItem *b = new DItem('b');
  for (DItem *item : {&a, b, &c}) list.append(item);
  DItemIter iter(list);
  iter.next()->unlink();
  DItem *second = iter.next();
  EXPECT_EQ(b, second);
  second->unlink();
  delete second;
  EXPECT_EQ(&c, iter.next());
  EXPECT_EQ("c", namesOf(list));
}

// An item of two lists at once, with a link class for each.
struct FirstLink : ozDLink {};
struct SecondLink : ozDLink {};
struct StackLink : ozSLink {};
struct Member : FirstLink, SecondLink, StackLink {};

TEST(DList, AnItemStandsInAListForEachOfItsLinkClasses) {
  ozDList<Member, FirstLink> first;
  ozDList<Member, SecondLink> second;
  Member a, b;
  first.append(&a);
  first.append(&b);
  second.append(&b);
  second.append(&a);
  ozDList<Member, SecondLink>::unlink(&b);
  ozDListIter<Member, FirstLink> both(first);
  EXPECT_EQ(&a, both.next());
  EXPECT_EQ(&b, both.next());
  ozDListIter<Member, SecondLink> one(second);
  EXPECT_EQ(&a, one.next());
  EXPECT_EQ(nullptr, one.next());
}

TEST(SList, GivesTheItemThatHoldsTheLink) {
  ozSList<Member, StackLink> list;
  Member a, b;
  list.insert(&a);
  list.insert(&b);
  EXPECT_EQ(&b, list.getHead());
  EXPECT_EQ(&b, list.unlinkHead());
  EXPECT_EQ(&a, list.getTail());
  EXPECT_EQ(&a, list.unlinkHead());
}

} // namespace
