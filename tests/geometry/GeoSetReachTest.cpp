// Sets that do not fit together: what is whole is drawn, no memory outside the arrays is touched (the sanitizers see to
// that), and a set with an index that leads nowhere is left out with one message.

#include "geometry/geometryFixture.h"

#include <algorithm>

namespace {

class GeoSetReach : public DrawTest {
protected:
  static int vertices(Calls const &calls) {
    return static_cast<int>(std::count_if(
        calls.begin(), calls.end(), [](std::string const &call) { return call.compare(0, 11, "glVertex3fv") == 0; }));
  }
  static std::string last(Calls const &calls) { return calls.empty() ? "" : calls.back(); }
  // Makes the set draw in immediate mode.
  static void split(ozGeoSet *set) {
    set->setTexCoordSet(new ozTexCoordSet2f);
    set->setNormalSet(normalSet({ozVec3f(0, 0, 1)}));
    set->setNormalIndexSet(indexSet({0}));
    set->setNormalBind(ozGeoSet::OVERALL_NORMAL);
  }
};

TEST_F(GeoSetReach, ACountBeyondTheCoordinatesDrawsTheWholePrimitives) {
  Held<ozTriSet> set(triSet(somePoints(8), 1000));
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 6)");
  split(set.get());
  EXPECT_EQ(vertices(draw(set.get())), 6);
  set->setPrimCount(2147483647);
  EXPECT_EQ(vertices(draw(set.get())), 6);
}

TEST_F(GeoSetReach, AnIndexThatIsTooShortDrawsTheWholePrimitives) {
  Held<ozTriSet> set(triSet(somePoints(8), 3));
  set->setCoordIndexSet(indexSet({0, 1, 2, 3, 4}));
  EXPECT_EQ(last(draw(set.get())), "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, 0, 1, 2)");
}

TEST_F(GeoSetReach, AttributesOfVerticesLimitTheSet) {
  Held<ozTriSet> set(triSet(somePoints(9), 3));
  set->setColorSet(colorSet(somePoints(7)));
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 6)");
}

TEST_F(GeoSetReach, AttributesOfPrimitivesLimitTheSet) {
  Held<ozTriSet> set(triSet(somePoints(9), 3));
  set->setColorSet(colorSet(somePoints(1)));
  set->setColorBind(ozGeoSet::PER_PRIM_COLOR);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 3)");
}

TEST_F(GeoSetReach, AnAttributeWithoutAnyElementDrawsNothing) {
  for (int bind : {1, 2, 3}) {
    Held<ozTriSet> set(triSet(somePoints(9), 3));
    set->setNormalSet(new ozNormalSet3f);
    set->setNormalBindHack(bind);
    EXPECT_EQ(draw(set.get()), Calls()) << bind;
  }
}

TEST_F(GeoSetReach, LengthsThatOverreachEndTheSet) {
  for (int length : {6, 2147483647}) {
    Held<ozTriStripSet> set(new ozTriStripSet);
    set->setCoordSet(coordSet(somePoints(8)));
    setLengths(set->stripLength(), {3, length, 3});
    set->setPrimCount(3);
    EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLE_STRIP, 0, 3)");
    split(set.get());
    EXPECT_EQ(vertices(draw(set.get())), 3);
  }
}

TEST_F(GeoSetReach, ANegativeLengthCountsAsNothing) {
  Held<ozPolySet> set(new ozPolySet);
  set->setCoordSet(coordSet(somePoints(8)));
  setLengths(set->polyLength(), {3, -2147483647, 4});
  set->setPrimCount(3);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_POLYGON, 3, 4)");
  split(set.get());
  EXPECT_EQ(vertices(draw(set.get())), 7);
}

TEST_F(GeoSetReach, LengthsThatAreMissingCountAsNothing) {
  Held<ozTriFanSet> set(new ozTriFanSet);
  set->setCoordSet(coordSet(somePoints(8)));
  setLengths(set->fanLength(), {3});
  set->setPrimCount(5);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLE_FAN, 0, 3)");
}

TEST_F(GeoSetReach, AStripThatWouldSendTwoVerticesStaysWithinTheData) {
  Held<ozTriStripSet> set(new ozTriStripSet);
  set->setCoordSet(coordSet(somePoints(4)));
  setLengths(set->stripLength(), {3, 1});
  set->setPrimCount(2);
  split(set.get());
  EXPECT_EQ(vertices(draw(set.get())), 3);
}

TEST_F(GeoSetReach, ANegativeCountDrawsAnEmptyGroup) {
  Held<ozTriSet> set(triSet(somePoints(9), -5));
  split(set.get());
  EXPECT_EQ(vertices(draw(set.get())), 0);
}

TEST_F(GeoSetReach, AnArrayThatWasShrunkIsReadAsFarAsItGoes) {
  Held<ozTriSet> set(triSet(somePoints(9), 3));
  ozMFVec3f *const points = static_cast<ozCoordSet3f *>(set->getCoordSet())->point();
  points->setSize(4); // the count stays 9
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 3)");
}

TEST_F(GeoSetReach, FollowsSetsThatShrinkWithoutTellingAnybody) {
  Held<ozTriSet> set(triSet(somePoints(9), 3));
  ozColorSet3f *const colors = colorSet(somePoints(9));
  set->setColorSet(colors);
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 9)");
  colors->color()->setCount(5);
  EXPECT_EQ(last(draw(set.get())), "glDrawArrays(GL_TRIANGLES, 0, 3)");
}

// ---- indices that lead nowhere

TEST_F(GeoSetReach, ABadIndexDrawsNothingAndSaysSoOnce) {
  for (int bad : {9, -1, 2147483647}) {
    Held<ozTriSet> set(triSet(somePoints(9), 2));
    set->setName("wing");
    ozIndexSet *const index = indexSet({0, 1, 2, 3, bad, 5});
    set->setCoordIndexSet(index);
    CaptureStderr errors;
    EXPECT_EQ(draw(set.get()), Calls());
    EXPECT_EQ(draw(set.get()), Calls());
    EXPECT_EQ(errors.text(), "TriSet \"wing\": an index is out of range, nothing is drawn\n");
    index->index()->set(4, 4);
    EXPECT_EQ(last(draw(set.get())), "glDrawElements(GL_TRIANGLES, 6, GL_UNSIGNED_INT, 0, 1, 2, 3, 4, 5)");
  }
}

TEST_F(GeoSetReach, ABadIndexOfAnyAttributeCounts) {
  for (int which = 0; which < 3; ++which) {
    Held<ozTriSet> set(triSet(somePoints(3), 1));
    ozIndexSet *const index = indexSet({0, 1, 7});
    if (which == 0) {
      set->setNormalSet(normalSet(somePoints(3)));
      set->setNormalBind(ozGeoSet::PER_VERTEX_NORMAL);
      set->setNormalIndexSet(index);
    } else if (which == 1) {
      set->setColorSet(colorSet(somePoints(3)));
      set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
      set->setColorIndexSet(index);
    } else {
      ozTexCoordSet2f *const texCoords = new ozTexCoordSet2f;
      texCoords->point()->setCount(3);
      set->setTexCoordSet(texCoords);
      set->setTexCoordBind(ozGeoSet::PER_VERTEX_TEX_COORD);
      set->setTexCoordIndexSet(index);
    }
    CaptureStderr errors;
    EXPECT_EQ(draw(set.get()), Calls()) << which;
    EXPECT_NE(errors.text(), "");
  }
}

TEST_F(GeoSetReach, ASharedIndexMustServeEveryAttribute) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  ozIndexSet *const index = indexSet({0, 1, 8});
  set->setCoordIndexSet(index);
  set->setColorSet(colorSet(somePoints(8)));
  set->setColorIndexSet(index);
  set->setColorBind(ozGeoSet::PER_VERTEX_COLOR);
  CaptureStderr errors;
  EXPECT_EQ(draw(set.get()), Calls());
  EXPECT_NE(errors.text(), "");
}

TEST_F(GeoSetReach, AnIndexThatIsNotUsedMayBeBad) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  set->setCoordIndexSet(indexSet({0, 1, 2, 99}));
  set->setColorIndexSet(indexSet({-8})); // not bound
  CaptureStderr errors;
  EXPECT_EQ(last(draw(set.get())), "glDrawElements(GL_TRIANGLES, 3, GL_UNSIGNED_INT, 0, 1, 2)");
  EXPECT_EQ(errors.text(), "");
}

TEST_F(GeoSetReach, FewerCoordinatesMakeAnIndexBad) {
  Held<ozTriSet> set(triSet(somePoints(9), 1));
  set->setCoordIndexSet(indexSet({0, 1, 8}));
  EXPECT_NE(draw(set.get()), Calls());
  static_cast<ozCoordSet3f *>(set->getCoordSet())->point()->setCount(8);
  CaptureStderr errors;
  EXPECT_EQ(draw(set.get()), Calls());
  EXPECT_NE(errors.text(), "");
}

TEST_F(GeoSetReach, ASetWithABadIndexIsNotHit) {
  Held<ozTriSet> set(new ozTriSet);
  set->setCoordSet(coordSet({ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(0, 1, 0)}));
  set->setCoordIndexSet(indexSet({0, 1, 2, 0, 1, 77}));
  set->setPrimCount(2);
  ozIsectAction isect;
  CaptureStderr errors;
  EXPECT_FALSE(cast(isect, set.get(), ozVec3f(0.25f, 0.25f, 5), ozVec3f(0, 0, -1), 100).isValid());
  set->setPrimCount(1);
  EXPECT_TRUE(cast(isect, set.get(), ozVec3f(0.25f, 0.25f, 5), ozVec3f(0, 0, -1), 100).isValid());
}

TEST_F(GeoSetReach, RaysTestOnlyWholePrimitives) {
  Held<ozPolySet> set(new ozPolySet);
  set->setCoordSet(
      coordSet({ozVec3f(0, 0, 0), ozVec3f(1, 0, 0), ozVec3f(0, 1, 0), ozVec3f(5, 0, 0), ozVec3f(6, 0, 0)}));
  setLengths(set->polyLength(), {3, 2000000000});
  set->setPrimCount(9);
  ozBoxBound box;
  box.min = -10.0f;
  box.max = 10.0f;
  set->setBoundMode(ozGeometry::STATIC);
  set->setBoxBound(box);
  ozIsectAction isect;
  EXPECT_EQ(cast(isect, set.get(), ozVec3f(0.25f, 0.25f, 5), ozVec3f(0, 0, -1), 100).primIndex, 0);
  EXPECT_FALSE(cast(isect, set.get(), ozVec3f(3, 0.25f, 5), ozVec3f(0, 0, -1), 100).isValid());
}

} // namespace
