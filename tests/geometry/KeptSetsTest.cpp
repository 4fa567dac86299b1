// What a geometry set keeps of its sets from one draw to the next: each change is seen at the next draw, whatever road
// it takes.

#include "geometry/geometryFixture.h"

namespace {

class KeptSets : public DrawTest {
protected:
  KeptSets() : set(triSet(somePoints(6), 2)) {
    set->setNormalSet(normalSet(somePoints(6)));
    set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
    share(indexSet({0, 1, 2, 3, 4, 5}));
    drawTwice();
  }

  void share(ozIndexSet *index) {
    set->setCoordIndexSet(index);
    set->setNormalIndexSet(index);
  }
  ozCoordSet3f *coords() { return static_cast<ozCoordSet3f *>(set->getCoordSet()); }
  ozNormalSet3f *normals() { return static_cast<ozNormalSet3f *>(set->getNormalSet()); }

  struct Drawn {
    double points = 0, normals = 0;
    std::string elements;
  };
  Drawn drawOnce() {
    GLRecorder rec;
    set->draw(&action);
    Drawn drawn;
    for (GLCall const &call : rec.calls()) {
      if (call.name == "glVertexPointer") drawn.points = call.args[3];
      if (call.name == "glNormalPointer") drawn.normals = call.args[2];
      if (call.name == "glDrawElements") drawn.elements = call.text;
    }
    return drawn;
  }
  Drawn drawTwice() {
    Drawn const first = drawOnce(), second = drawOnce();
    EXPECT_EQ(first.points, second.points);
    EXPECT_EQ(first.normals, second.normals);
    EXPECT_EQ(first.elements, second.elements);
    return second;
  }
  // Both draws send the arrays as they are now.
  void expectPresent(char const *elements = "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0, 1, 2, 3, 4, 5)") {
    Drawn const drawn = drawTwice();
    EXPECT_EQ(drawn.points, addressArg(coords()->point()->get().getArray()));
    EXPECT_EQ(drawn.normals, addressArg(normals()->vector()->get().getArray()));
    EXPECT_EQ(drawn.elements, elements);
  }

  Held<ozTriSet> set;
};

// A set of an application, which says that its elements lie elsewhere.
class ElsewhereCoords : public ozCoordSet3f {
public:
  ElsewhereCoords() : ozCoordSet3f(getClassType()) {}
  ozContainer *instantiate() override { return new ElsewhereCoords; }
  static ozType *getClassType() {
    static ozType *const type = new ozType(ozCoordSet3f::getClassType(), "ElsewhereCoords");
    return type;
  }
  void getGLAttr(ozGLAttr &attr) override {
    ozCoordSet3f::getGLAttr(attr);
    attr.data = reinterpret_cast<char *>(elsewhere);
  }
  float (*elsewhere)[3] = nullptr;
};

} // namespace

TEST_F(KeptSets, TheSecondDrawSendsWhatTheFirstDid) { expectPresent(); }

TEST_F(KeptSets, AnArrayThatGrowsIsSentFromItsNewPlace) {
  coords()->point()->setCount(5000);
  expectPresent();
  normals()->vector()->setSize(70000);
  expectPresent();
}

TEST_F(KeptSets, AnArrayThatIsNotInUseHereMayMoveToo) {
  Held<ozCoordSet3f> other(coordSet(somePoints(3)));
  other->point()->setCount(9000);
  expectPresent();
}

TEST_F(KeptSets, ANewIndexIsFollowed) {
  set->getCoordIndexSet()->index()->set(0, 5);
  expectPresent("glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, 5, 1, 2, 3, 4, 5)");
  share(indexSet({2, 1, 0}));
  expectPresent("glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, 2, 1, 0)");
}

TEST_F(KeptSets, AnIndexThatBecomesBadDrawsNothing) {
  testing::internal::CaptureStderr();
  set->getCoordIndexSet()->index()->set(4, 6);
  EXPECT_EQ(drawTwice().elements, "");
  testing::internal::GetCapturedStderr();
  set->getCoordIndexSet()->index()->set(4, 4);
  expectPresent();
}

TEST_F(KeptSets, FewerPointsMakeAnIndexBad) {
  testing::internal::CaptureStderr();
  coords()->point()->setCount(5);
  EXPECT_EQ(drawTwice().elements, "");
  testing::internal::GetCapturedStderr();
}

TEST_F(KeptSets, AnotherSetTakesTheOldOnesPlace) {
  set->setCoordSet(coordSet(somePoints(8)));
  expectPresent();
  set->setNormalSet(normalSet(somePoints(7)));
  expectPresent();
}

TEST_F(KeptSets, ANormalSetThatIsNoLongerBoundIsNotSent) {
  set->setNormalBind(ozGeoSet::NO_NORMAL);
  EXPECT_EQ(drawTwice().normals, 0);
}

TEST_F(KeptSets, WhatAConnectionBringsIsDrawn) {
  Held<ozCoordSet3f> source(coordSet(somePoints(2000)));
  source->point()->connect(coords()->point());
  expectPresent();
  EXPECT_EQ(coords()->point()->getCount(), 2000u);
  source->point()->set(0, ozVec3f(7, 7, 7));
  drawOnce(); // pulls
  EXPECT_EQ(coords()->point()->get()[0], ozVec3f(7, 7, 7));
}

TEST_F(KeptSets, EditsThatAreNotAnnouncedAreSeenWhenTheArrayMoves) {
  coords()->point()->setEventClass(ozField::EVENT_FORWARD);
  expectPresent();
  coords()->point()->setCount(100000);
  expectPresent();
}

TEST_F(KeptSets, ACopyWithoutAWordIsSeenWhenTheArrayMoves) {
  Held<ozCoordSet3f> from(coordSet(somePoints(4000)));
  coords()->getType()->getFieldInfo(0)->copy(coords(), from.get());
  expectPresent();
}

TEST_F(KeptSets, AnApplicationsSetIsAskedAtEveryDraw) {
  float here[6][3] = {}, there[6][3] = {};
  auto *const own = new ElsewhereCoords;
  own->point()->setCount(6);
  own->elsewhere = here;
  set->setCoordSet(own);
  EXPECT_EQ(drawTwice().points, addressArg(here));
  own->elsewhere = there;
  EXPECT_EQ(drawTwice().points, addressArg(there));
}

TEST_F(KeptSets, ASetThatTwoGeometriesShareTellsBoth) {
  Held<ozTriSet> other(triSet(somePoints(6), 2));
  other->setCoordSet(coords());
  draw(other.get());
  draw(other.get());
  coords()->point()->setCount(6000);
  expectPresent();
  GLRecorder rec;
  other->draw(&action);
  EXPECT_EQ(rec.named("glVertexPointer").at(0).args[3], addressArg(coords()->point()->get().getArray()));
}

TEST_F(KeptSets, FourBoundAttributesAreSentAsTheyAre) {
  auto *const colors = new ozColorSet4f;
  auto *const texCoords = new ozTexCoordSet2f;
  for (unsigned int i = 0; i < 6; ++i) {
    colors->color()->set(i, ozVec4f(1, 0, 0, 1));
    texCoords->point()->set(i, ozVec2f(0, 0));
  }
  set->setColorSet(colors);
  set->setColorIndexSet(set->getCoordIndexSet());
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  drawTwice();
  set->setTexCoordSet(texCoords);
  set->setTexCoordIndexSet(set->getCoordIndexSet());
  set->setTexCoordBind(ozGeoSet::PER_VERTEX_TEX_COORD);
  drawTwice();
  colors->color()->setCount(3000);
  texCoords->point()->setCount(3000);
  GLRecorder rec;
  set->draw(&action);
  EXPECT_EQ(rec.named("glColorPointer").at(0).args[3], addressArg(colors->color()->get().getArray()));
  EXPECT_EQ(rec.named("glTexCoordPointer").at(0).args[3], addressArg(texCoords->point()->get().getArray()));
}
