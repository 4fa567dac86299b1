// Triangle strips and fans through their display lists.

#include "geometry/geometryFixture.h"

#include <algorithm>

namespace {

ozMFInt *lengthsOf(ozTriStripSet *set) { return set->stripLength(); }
ozMFInt *lengthsOf(ozTriFanSet *set) { return set->fanLength(); }

template <class Set> class ListDraw : public DrawTest {
protected:
  ListDraw() {
    set->setCoordSet(coordSet(somePoints(6)));
    setLengths(lengthsOf(set.get()), {3});
    set->setPrimCount(1);
  }

  Calls compile(unsigned char uncompile = 0) {
    ozCompileAction compiler;
    compiler.apply(nullptr);
    compiler.setUncompile(uncompile);
    GLRecorder rec;
    set->compile(&compiler);
    return rec.texts();
  }

  // Recording and using a list, told by the names of the calls with the list's number taken off.
  Calls listCalls() {
    GLRecorder rec;
    set->draw(&action);
    Calls names;
    for (GLCall const &call : rec.calls())
      if (call.name.find("List") != std::string::npos) names.push_back(call.name);
    return names;
  }

  Held<Set> set{new Set};
};

typedef ::testing::Types<ozTriStripSet, ozTriFanSet> ListSets;
TYPED_TEST_SUITE(ListDraw, ListSets);

TYPED_TEST(ListDraw, WithoutACompiledListItDrawsDirectly) { EXPECT_EQ(this->listCalls(), Calls()); }

TYPED_TEST(ListDraw, CompilesIntoAListOfItsOwn) {
  int const expected = ozContext::newId(1);
  ozContext::freeId(expected, 1); // the next number given is this one
  Calls const calls = this->compile();
  std::string const id = std::to_string(expected);
  ASSERT_GE(calls.size(), 3u);
  EXPECT_EQ(calls.front(), "glNewList(" + id + ", GL_COMPILE)");
  EXPECT_EQ(calls.back(), "glEndList()");
  EXPECT_EQ(calls[calls.size() - 2].compare(0, 12, "glDrawArrays"), 0);
  Calls const again = this->compile();
  EXPECT_EQ(again[0], "glDeleteLists(" + id + ", 1)");
  EXPECT_EQ(again[1], "glNewList(" + id + ", GL_COMPILE)");
}

TYPED_TEST(ListDraw, RecordsAStaleListInsideTheDrawAndThenCallsIt) {
  this->compile();
  EXPECT_EQ(this->listCalls(), (Calls{"glDeleteLists", "glNewList", "glEndList", "glCallList"}));
  EXPECT_EQ(this->listCalls(), Calls{"glCallList"});
  this->set->setPrimCount(1); // any edit
  EXPECT_EQ(this->listCalls(), (Calls{"glDeleteLists", "glNewList", "glEndList", "glCallList"}));
  lengthsOf(this->set.get())->set(0, 4);
  EXPECT_EQ(this->listCalls().size(), 4u);
  static_cast<ozCoordSet3f *>(this->set->getCoordSet())->point()->set(0, ozVec3f(9, 9, 9));
  EXPECT_EQ(this->listCalls().size(), 4u);
  EXPECT_EQ(this->listCalls(), Calls{"glCallList"});
}

TYPED_TEST(ListDraw, KeepsTheStartOfTheDrawOutsideTheList) {
  this->compile();
  this->set->setCullFace(ozContext::BACK_CULL);
  GLRecorder rec;
  this->set->draw(&this->action);
  EXPECT_LT(rec.find("glEnable(GL_CULL_FACE)"), rec.find("glNewList"));
  EXPECT_GE(rec.find("glEnable(GL_CULL_FACE)"), 0);
}

TYPED_TEST(ListDraw, AListHoldsTheCullingOfTheFrameThatRecordedIt) {
  this->set->buildBPCullData();
  this->action.setBPCullMode(ozDrawAction::BACK_BPC);
  this->action.setViewVector(this->set->getBPCullCenter()[0]);
  this->action.setOrthoCamera(1);
  this->compile();
  GLRecorder rec;
  this->set->draw(&this->action);
  EXPECT_EQ(rec.count("glCallList"), 1);
  EXPECT_EQ(rec.count("glDrawArrays"), 0);
}

TYPED_TEST(ListDraw, UncompilingDeletesTheListAndMakesNone) {
  this->compile();
  Calls const calls = this->compile(1);
  ASSERT_EQ(calls.size(), 1u);
  EXPECT_EQ(calls[0].compare(0, 13, "glDeleteLists"), 0);
}

TYPED_TEST(ListDraw, UncompilingWhatWasNeverCompiledTakesANumber) {
  EXPECT_EQ(this->compile(1), Calls());
  EXPECT_EQ(this->listCalls().back(), "glCallList");
}

TYPED_TEST(ListDraw, GivesItsNumberBackInTheEnd) {
  int id = 0;
  GLRecorder rec;
  {
    Held<TypeParam> other(new TypeParam);
    ozCompileAction compiler;
    compiler.apply(nullptr);
    other->compile(&compiler);
    id = static_cast<int>(rec.named("glNewList").at(0).args[0]);
  }
  EXPECT_EQ(rec.count("glDeleteLists(" + std::to_string(id) + ", 1)"), 1);
  int const next = ozContext::newId(1);
  EXPECT_EQ(next, id);
  ozContext::freeId(next, 1);
}

TYPED_TEST(ListDraw, ACopyHasNoListYet) {
  this->compile();
  Held<TypeParam> copy(new TypeParam(*this->set));
  GLRecorder rec;
  copy->draw(&this->action);
  EXPECT_EQ(rec.count("glCallList"), 0);
}

TYPED_TEST(ListDraw, OtherSetsDeleteAListOnlyToUncompile) {
  Held<ozTriSet> plain(triSet(somePoints(3), 1));
  ozCompileAction compiler;
  compiler.apply(nullptr);
  GLRecorder rec;
  plain->compile(&compiler);
  EXPECT_EQ(rec.calls().size(), 0u);
  compiler.setUncompile(1);
  plain->compile(&compiler);
  EXPECT_EQ(rec.count("glDeleteLists"), 1);
}

TYPED_TEST(ListDraw, IsDrawnByItsListAsWithoutIt) {
  this->set->setCoordSet(coordSet({ozVec3f(-1, -1, 0), ozVec3f(1, -1, 0), ozVec3f(0, 1, 0)}));
  this->context->clear(ozContext::CLEAR_COLOR);
  this->set->draw(&this->action);
  Image const direct = this->gl.pixels();
  this->context->clear(ozContext::CLEAR_COLOR);
  this->compile();
  this->set->draw(&this->action);
  this->set->draw(&this->action);
  Image const listed = this->gl.pixels();
  int lit = 0;
  for (int y = 0; y < 200; ++y)
    for (int x = 0; x < 200 * 4; ++x) {
      lit += direct.row(y)[x] != 0;
      ASSERT_EQ(direct.row(y)[x], listed.row(y)[x]);
    }
  EXPECT_GT(lit, 40000); // more than the opaque background's alpha
}

} // namespace
