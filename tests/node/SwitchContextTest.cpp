#include "probes.h"

#include "support/capture.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// Addresses that stand for contexts: the switch never looks inside one.
char fakes[4];
ozContext *fake(int i) { return reinterpret_cast<ozContext *>(&fakes[i]); }

std::string text(char const *format, void const *address, int i) {
  char line[200];
  snprintf(line, sizeof line, format, address, i);
  return line;
}

class SwitchContextTest : public ::testing::Test {
protected:
  SwitchContextTest() : a(new ProbeNode("a", 1)), b(new ProbeNode("b", 1)), camera(wideCamera()) {
    s->setName("s");
    s->addChild(a);
    s->addChild(b);
    draw.setCamera(camera);
    notes.clear();
  }

  ozTravDirective drawOn(ozContext *context) {
    notes.clear();
    draw.reset();
    draw.setContext(context);
    return s->drawVisit(&draw);
  }

  Held<ozSwitchContext> s;
  ProbeNode *a, *b;
  Held<ozOrthoCamera> camera;
  Noting<ozDrawAction> draw;
};

} // namespace

TEST(SwitchContext, IsASwitchWithoutFieldsOfItsOwn) {
  EXPECT_STREQ(ozSwitchContext::getClassType()->getName(), "SwitchContext");
  EXPECT_EQ(ozSwitchContext::getClassType()->getAncestor(), ozSwitch::getClassType());
  EXPECT_EQ(ozSwitchContext::getClassType()->getFieldInfoCount(), 4);
}

TEST(SwitchContext, ChoosesTheFirstChildAtTheStart) {
  Held<ozSwitchContext> s;
  EXPECT_EQ(s->getWhichChild(), 0);
}

TEST_F(SwitchContextTest, TheLastContextCannotBeRead) {
  s->setContext(0, fake(0));
  s->setContext(1, fake(1));
  EXPECT_EQ(s->getContext(0), fake(0));
  ozContext *context = fake(3);
  EXPECT_EQ(stderrOf([&] { context = s->getContext(1); }),
            text("ozSwitchContext(%p)::getContext: attempting to read uninitialized range %d\n", s.get(), 1));
  EXPECT_EQ(context, nullptr);
}

TEST_F(SwitchContextTest, IndicesOutOfRangeGiveAMessageAndNull) {
  for (int i : {-1, 0, 7}) {
    ozContext *context = fake(3);
    EXPECT_EQ(stderrOf([&] { context = s->getContext(i); }),
              text("ozSwitchContext(%p)::getContext: attempting to read uninitialized range %d\n", s.get(), i));
    EXPECT_EQ(context, nullptr);
  }
}

TEST_F(SwitchContextTest, ANegativeIndexStoresNothing) {
  s->setContext(-1, fake(0));
  EXPECT_NE(stderrOf([&] { drawOn(fake(0)); }), "");
}

TEST_F(SwitchContextTest, DrawsTheChildOfTheContext) {
  s->setContext(0, fake(0));
  s->setContext(1, fake(1));
  EXPECT_EQ(drawOn(fake(0)), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "post s"));
  drawOn(fake(1));
  EXPECT_THAT(notes, ElementsAre("pre s", "draw b", "post s"));
}

TEST_F(SwitchContextTest, OfSeveralEntriesTheLastCounts) {
  s->setContext(0, fake(0));
  s->setContext(1, fake(0));
  drawOn(fake(0));
  EXPECT_THAT(notes, ElementsAre("pre s", "draw b", "post s"));
}

TEST_F(SwitchContextTest, AnUnknownContextGivesAMessageAndEndsTheTraversal) {
  s->setContext(0, fake(0));
  ozTravDirective verdict = TRAV_CONT;
  char line[200];
  snprintf(line, sizeof line, "ozSwitchContext(%p)::drawVisit called with unknown context %p\n",
           static_cast<void *>(&draw), static_cast<void *>(fake(2)));
  EXPECT_EQ(stderrOf([&] { verdict = drawOn(fake(2)); }), line);
  EXPECT_EQ(verdict, TRAV_TERM);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchContextTest, ANullContextPrintsAsAnAddressToo) {
  std::string const errors = stderrOf([&] { drawOn(nullptr); });
  EXPECT_EQ(errors.substr(errors.find("unknown")), "unknown context 0x0\n");
}

TEST_F(SwitchContextTest, AnUnknownContextBringsTheFieldsUpToDateAllTheSame) {
  EXPECT_TRUE(s->hasPendingFields());
  stderrOf([&] { drawOn(fake(2)); });
  EXPECT_FALSE(s->hasPendingFields());
}

TEST_F(SwitchContextTest, PreVisitAndPostVisitCountAsInAGroup) {
  s->setContext(0, fake(0));
  draw.pre["s"] = TRAV_PRUNE;
  EXPECT_EQ(drawOn(fake(0)), TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
  draw.pre.clear();
  draw.post["s"] = TRAV_TERM;
  EXPECT_EQ(drawOn(fake(0)), TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw a", "post s"));
}

TEST_F(SwitchContextTest, ANullChildIsPassedOver) {
  s->setContext(0, fake(0));
  s->setChild(0, nullptr);
  EXPECT_EQ(drawOn(fake(0)), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
}

TEST_F(SwitchContextTest, WithoutAnyContextDrawingEndsTheTraversalToo) {
  ozTravDirective verdict = TRAV_CONT;
  stderrOf([&] { verdict = drawOn(fake(0)); });
  EXPECT_EQ(verdict, TRAV_TERM);
}

TEST_F(SwitchContextTest, WhichChildPlaysNoPartInDrawing) {
  s->setContext(1, fake(1));
  s->setWhichChild(-1);
  EXPECT_EQ(drawOn(fake(1)), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "draw b", "post s"));
}

TEST_F(SwitchContextTest, CullingAndIntersectionGoByWhichChild) {
  Noting<ozVFCullAction> cull;
  cull.setCamera(camera);
  cull.apply(s);
  EXPECT_THAT(notes, ElementsAre("pre s", "cull a", "post s"));
  notes.clear();
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  isect.apply(s);
  EXPECT_THAT(notes, ElementsAre("isect a"));
}

TEST_F(SwitchContextTest, AChildsPruneReachesTheVerdict) {
  s->setContext(1, fake(1));
  b->verdict = TRAV_PRUNE;
  EXPECT_EQ(drawOn(fake(1)), TRAV_PRUNE);
  b->verdict = TRAV_TERM;
  EXPECT_EQ(drawOn(fake(1)), TRAV_TERM);
}

TEST_F(SwitchContextTest, OutsideTheViewItIsPruned) {
  s->setContext(0, fake(0));
  a->setBoxBound(cubeAt(0, 0, 5000, 1));
  b->setBoxBound(cubeAt(0, 0, 5000, 1));
  EXPECT_EQ(drawOn(fake(0)), TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TEST_F(SwitchContextTest, AContextWithoutAChildDrawsNone) {
  s->setContext(2, fake(2));
  EXPECT_EQ(drawOn(fake(2)), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre s", "post s"));
}
