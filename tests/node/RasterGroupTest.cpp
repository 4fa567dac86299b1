#include "probes.h"

#include "support/contextFixture.h"
#include "support/glRecorder.h"

#include <GL/glext.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

using ::testing::ElementsAre;
using ::testing::IsEmpty;

namespace {

/// A group of one of the three classes, "g", with two probes, drawn in a context.
template <class Group> class RasterTest : public ContextTest {
protected:
  void SetUp() override {
    ContextTest::SetUp();
    Group::extensionDetect();
    group.emplace();
    (*group)->setName("g");
    for (ProbeNode *child : {a, b}) (*group)->addChild(child);
    draw.setCamera(camera);
    notes.clear();
  }

  Group *g() { return *group; }

  /// The calls of OpenGL but for reading state.
  std::vector<std::string> drawIt() {
    notes.clear();
    GLRecorder rec;
    draw.reset();
    verdict = g()->drawVisit(&draw);
    return textsOf(rec.without({"glGetIntegerv", "glGetFloatv", "glIsEnabled"}));
  }

  std::optional<Held<Group>> group;
  ProbeNode *a = new ProbeNode("a", 1), *b = new ProbeNode("b", 1);
  Held<ozOrthoCamera> camera{wideCamera()};
  Noting<ozDrawAction> draw;
  ozTravDirective verdict = TRAV_CONT;
};

class BlendEquationTest : public RasterTest<ozBlendEquation> {};
class LogicOpTest : public RasterTest<ozLogicOp> {};
class PolygonOffsetTest : public RasterTest<ozPolygonOffset> {};

GLint integer(GLenum name) {
  GLint value = 0;
  glGetIntegerv(name, &value);
  return value;
}

} // namespace

// ---- ozBlendEquation

TEST_F(BlendEquationTest, HasTheFieldEqMode) {
  ozType *const type = ozBlendEquation::getClassType();
  EXPECT_STREQ(type->getName(), "BlendEquation");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 4);
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "eqMode");
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozSFEnum::getClassType());
  EXPECT_EQ(g()->getEqMode(), 0);
}

TEST_F(BlendEquationTest, SetsItsEquationAroundTheChildrenAndPutsTheOldOneBack) {
  static GLint const equations[] = {GL_FUNC_ADD, GL_FUNC_SUBTRACT, GL_FUNC_REVERSE_SUBTRACT, GL_MIN, GL_MAX};
  ASSERT_GT(ozBlendEquation::isSupported(), 0);
  for (int mode = 0; mode < 5; ++mode) {
    g()->setEqMode(static_cast<ozBlendEquation::BlendEqEnum>(mode));
    EXPECT_EQ(g()->getEqMode(), mode);
    GLint inside = 0;
    a->during = [&] { inside = integer(GL_BLEND_EQUATION); };
    drawIt();
    EXPECT_EQ(inside, equations[mode]);
    EXPECT_EQ(integer(GL_BLEND_EQUATION), GL_FUNC_ADD);
    EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "draw b", "post g"));
  }
}

TEST_F(BlendEquationTest, NestedEquationsComeBackOneByOne) {
  Held<ozBlendEquation> outer;
  outer->addChild(g());
  outer->setEqMode(ozBlendEquation::MIN_BEQ);
  g()->setEqMode(ozBlendEquation::MAX_BEQ);
  ProbeNode *const after = new ProbeNode("after", 1);
  GLint between = 0;
  after->during = [&] { between = integer(GL_BLEND_EQUATION); };
  outer->addChild(after);
  draw.reset();
  outer->drawVisit(&draw);
  EXPECT_EQ(between, GL_MIN);
}

TEST_F(BlendEquationTest, ValuesThatAreNoEnumeratorsChangeNothingInOpenGL) {
  for (int mode : {-1, 7, 1000000}) {
    g()->setEqMode(static_cast<ozBlendEquation::BlendEqEnum>(mode));
    GLint inside = 0;
    a->during = [&] { inside = integer(GL_BLEND_EQUATION); };
    drawIt();
    EXPECT_EQ(inside, GL_FUNC_ADD);
    EXPECT_EQ(glGetError(), static_cast<GLenum>(GL_NO_ERROR));
  }
}

TEST_F(BlendEquationTest, TermOfAChildPutsTheEquationBackToo) {
  g()->setEqMode(ozBlendEquation::MIN_BEQ);
  a->verdict = TRAV_TERM;
  drawIt();
  EXPECT_EQ(verdict, TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "post g"));
  EXPECT_EQ(integer(GL_BLEND_EQUATION), GL_FUNC_ADD);
}

TEST_F(BlendEquationTest, ASetEquationReachesAConnectedField) {
  Held<ozBlendEquation> other;
  g()->connect(3, other, 3);
  g()->setEqMode(ozBlendEquation::MIN_BEQ);
  EXPECT_EQ(other->getEqMode(), ozBlendEquation::MIN_BEQ);
}

// ---- ozLogicOp

TEST_F(LogicOpTest, HasTheFieldLogicOp) {
  ozType *const type = ozLogicOp::getClassType();
  EXPECT_STREQ(type->getName(), "LogicOp");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 4);
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "logicOp");
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozSFEnum::getClassType());
  EXPECT_EQ(g()->getLogicOp(), 4);
}

TEST_F(LogicOpTest, SetsItsOperationAroundTheChildren) {
  static char const *const ops[] = {"GL_CLEAR",       "GL_SET",          "GL_COPY",       "GL_COPY_INVERTED",
                                    "GL_NOOP",        "GL_INVERT",       "GL_AND",        "GL_NAND",
                                    "GL_OR",          "GL_NOR",          "GL_XOR",        "GL_EQUIV",
                                    "GL_AND_REVERSE", "GL_AND_INVERTED", "GL_OR_REVERSE", "GL_OR_INVERTED"};
  for (int op = 0; op < 16; ++op) {
    g()->setLogicOp(static_cast<ozLogicOp::LogicOpEnum>(op));
    EXPECT_EQ(g()->getLogicOp(), op);
    EXPECT_THAT(drawIt(), ElementsAre(std::string("glLogicOp(") + ops[op] + ")", "glEnable(GL_COLOR_LOGIC_OP)",
                                      "glLogicOp(GL_COPY)", "glDisable(GL_COLOR_LOGIC_OP)"));
    EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "draw b", "post g"));
  }
}

TEST_F(LogicOpTest, SwitchesLogicalOperationsOffAfterwardsWhateverStoodThere) {
  glEnable(GL_COLOR_LOGIC_OP);
  glLogicOp(GL_XOR);
  drawIt();
  EXPECT_FALSE(glIsEnabled(GL_COLOR_LOGIC_OP));
  EXPECT_EQ(integer(GL_LOGIC_OP_MODE), GL_XOR);
}

TEST_F(LogicOpTest, ValuesThatAreNoEnumeratorsSetNoOperation) {
  for (int op : {-1, 16, 1000000}) {
    g()->setLogicOp(static_cast<ozLogicOp::LogicOpEnum>(op));
    EXPECT_THAT(drawIt(),
                ElementsAre("glEnable(GL_COLOR_LOGIC_OP)", "glLogicOp(GL_COPY)", "glDisable(GL_COLOR_LOGIC_OP)"));
  }
}

TEST_F(LogicOpTest, ASetOperationReachesAConnectedField) {
  Held<ozLogicOp> other;
  g()->connect(3, other, 3);
  g()->setLogicOp(ozLogicOp::XOR_LOP);
  EXPECT_EQ(other->getLogicOp(), ozLogicOp::XOR_LOP);
}

// ---- ozPolygonOffset

TEST_F(PolygonOffsetTest, HasItsFields) {
  ozType *const type = ozPolygonOffset::getClassType();
  EXPECT_STREQ(type->getName(), "PolygonOffset");
  EXPECT_EQ(type->getAncestor(), ozGroup::getClassType());
  ASSERT_EQ(type->getFieldInfoCount(), 6);
  EXPECT_STREQ(type->getFieldInfo(3)->getName(), "offsetType");
  EXPECT_EQ(type->getFieldInfo(3)->getFieldType(), ozSFInt::getClassType());
  EXPECT_STREQ(type->getFieldInfo(4)->getName(), "factor");
  EXPECT_EQ(type->getFieldInfo(4)->getFieldType(), ozSFFloat::getClassType());
  EXPECT_STREQ(type->getFieldInfo(5)->getName(), "units");
  EXPECT_EQ(type->getFieldInfo(5)->getFieldType(), ozSFFloat::getClassType());
  EXPECT_EQ(g()->getOffsetType(), 0);
  EXPECT_EQ(g()->getFactor(), 0);
  EXPECT_EQ(g()->getUnits(), 0);
}

TEST_F(PolygonOffsetTest, SwitchesItsKindOnAroundTheChildren) {
  static char const *const kinds[] = {"(GL_POLYGON_OFFSET_FILL)", "(GL_POLYGON_OFFSET_LINE)",
                                      "(GL_POLYGON_OFFSET_POINT)"};
  g()->setFactor(1.5f);
  g()->setUnits(2);
  for (int kind = 0; kind < 3; ++kind) {
    g()->setOffsetType(static_cast<ozPolygonOffset::OffsetTypes>(kind));
    EXPECT_EQ(g()->getOffsetType(), kind);
    EXPECT_THAT(drawIt(), ElementsAre("glPolygonOffset(1.5, 2)", std::string("glEnable") + kinds[kind],
                                      std::string("glDisable") + kinds[kind], "glPolygonOffset(0, 0)"));
    EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "draw b", "post g"));
  }
}

TEST_F(PolygonOffsetTest, WhatWasOnBeforeStaysOn) {
  glEnable(GL_POLYGON_OFFSET_LINE);
  glPolygonOffset(3, 4);
  g()->setOffsetType(ozPolygonOffset::LINE_OFFSET);
  EXPECT_THAT(drawIt(),
              ElementsAre("glPolygonOffset(0, 0)", "glEnable(GL_POLYGON_OFFSET_LINE)", "glPolygonOffset(3, 4)"));
}

TEST_F(PolygonOffsetTest, AnotherKindDrawsNothingAndRestoresTheNumbers) {
  glPolygonOffset(3, 4);
  g()->setFactor(1);
  for (int kind : {3, -1}) {
    g()->setOffsetType(static_cast<ozPolygonOffset::OffsetTypes>(kind));
    EXPECT_THAT(drawIt(), ElementsAre("glPolygonOffset(1, 0)", "glPolygonOffset(3, 4)"));
    EXPECT_THAT(notes, ElementsAre("pre g", "post g"));
    EXPECT_EQ(verdict, TRAV_CONT);
  }
}

TEST_F(PolygonOffsetTest, SetValuesReachConnectedFields) {
  Held<ozPolygonOffset> other;
  for (short id = 3; id <= 5; ++id) g()->connect(id, other, id);
  g()->setOffsetType(ozPolygonOffset::POINT_OFFSET);
  g()->setFactor(1.5f);
  g()->setUnits(2.5f);
  EXPECT_EQ(other->getOffsetType(), ozPolygonOffset::POINT_OFFSET);
  EXPECT_EQ(other->getFactor(), 1.5f);
  EXPECT_EQ(other->getUnits(), 2.5f);
}

// ---- all three

template <class Group> class RasterGroupTest : public RasterTest<Group> {};
typedef ::testing::Types<ozBlendEquation, ozLogicOp, ozPolygonOffset> RasterGroups;
TYPED_TEST_SUITE(RasterGroupTest, RasterGroups);

TYPED_TEST(RasterGroupTest, OutsideTheViewTheStateIsNotTouched) {
  for (ProbeNode *child : {this->a, this->b}) child->setBoxBound(cubeAt(0, 0, 5000, 1));
  EXPECT_THAT(this->drawIt(), IsEmpty());
  EXPECT_EQ(this->verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, IsEmpty());
}

TYPED_TEST(RasterGroupTest, APreVisitThatPrunesTouchesNoState) {
  this->draw.pre["g"] = TRAV_PRUNE;
  EXPECT_THAT(this->drawIt(), IsEmpty());
  EXPECT_EQ(this->verdict, TRAV_PRUNE);
  EXPECT_THAT(notes, ElementsAre("pre g", "post g"));
}

TYPED_TEST(RasterGroupTest, TermOfAChildOrOfPostVisitIsTheVerdict) {
  this->a->verdict = TRAV_TERM;
  this->drawIt();
  EXPECT_EQ(this->verdict, TRAV_TERM);
  EXPECT_THAT(notes, ElementsAre("pre g", "draw a", "post g"));
  this->a->verdict = TRAV_PRUNE;
  this->drawIt();
  EXPECT_EQ(this->verdict, TRAV_CONT);
  this->draw.post["g"] = TRAV_TERM;
  this->drawIt();
  EXPECT_EQ(this->verdict, TRAV_TERM);
}

TYPED_TEST(RasterGroupTest, CullingAndIntersectionAreThoseOfAGroup) {
  Noting<ozVFCullAction> cull;
  cull.setCamera(this->camera);
  GLRecorder rec;
  EXPECT_EQ(cull.apply(this->g()), TRAV_CONT);
  EXPECT_THAT(notes, ElementsAre("pre g", "cull a", "cull b", "post g"));
  notes.clear();
  ozIsectAction isect;
  isect.seg = segment(0, 0, 10, 0, 0, -1);
  isect.apply(this->g());
  EXPECT_THAT(notes, ElementsAre("isect b", "isect a"));
  EXPECT_THAT(rec.texts(), IsEmpty());
}

TYPED_TEST(RasterGroupTest, DrawingBringsTheFieldsUpToDate) {
  EXPECT_TRUE(this->g()->hasPendingFields());
  this->drawIt();
  EXPECT_FALSE(this->g()->hasPendingFields());
}
