// When a set has an index for rays. One can tell from outside: what is written in place without an announcement is seen
// by the loop over all triangles and not by an index.

#include "geometry/geometryFixture.h"

#include <malloc.h>

namespace {

int const WARM_UP = 40; // rays after which any large set has built its index

typedef std::vector<ozVec3f> Points;

// A row of triangles over x from 0 to count, all at one height.
class Row {
public:
  explicit Row(int count) : set(new ozTriSet) {
    Points points;
    for (int i = 0; i < count; ++i) {
      float const x = static_cast<float>(i);
      points.insert(points.end(), {ozVec3f(x, 0, 0), ozVec3f(x + 1, 0, 0), ozVec3f(x + 0.5f, 1, 0)});
    }
    points.push_back(ozVec3f(0, 0, 9)); // so that the bound has some height
    coords->point()->setRange(0, static_cast<unsigned int>(points.size()), points.data());
    set->setCoordSet(coords.get());
    set->setPrimCount(count);
    ozBoxBound box;
    box.min = -1e6f;
    box.max = 1e6f;
    set->setBoundMode(ozGeometry::STATIC);
    set->setBoxBound(box);
  }
  // The height at which the ray down through the first triangle hits; -1 for a miss.
  float height(ozGeometry *geometry = nullptr) {
    ozIsectAction action;
    ozHit const &hit =
        cast(action, geometry ? geometry : set.get(), ozVec3f(0.5f, 0.25f, 100), ozVec3f(0, 0, -1), 1000);
    return hit.isValid() ? 100 - hit.distance : -1.0f;
  }
  void warmUp() {
    for (int i = 0; i < WARM_UP; ++i) height();
  }
  // Lifts the first triangle without a word.
  void lift(float height) {
    for (int i = 0; i < 3; ++i) coords->point()->edit()[i][2] = height;
  }
  // Whether there is an index; the triangle comes to lie at another height, which is announced.
  bool hasIndex() {
    float const known = height();
    lift(known + 1);
    bool const kept = height() == known;
    coords->point()->editDone();
    return kept;
  }

  Held<ozTriSet> set;
  Held<ozCoordSet3f> coords{new ozCoordSet3f};
  Held<ozIndexSet> index{new ozIndexSet};
};

TEST(PickIndexUse, IsBuiltWhenRaysHaveCostAsMuchAsBuilding) {
  Row row(1000);
  row.height();
  EXPECT_FALSE(row.hasIndex());
  row.warmUp();
  EXPECT_TRUE(row.hasIndex());
}

TEST(PickIndexUse, IsNotBuiltForAFewTriangles) {
  Row row(100);
  for (int i = 0; i < 50; ++i) row.warmUp();
  EXPECT_FALSE(row.hasIndex());
}

TEST(PickIndexUse, IsNotBuiltForASetThatChangesAllTheTime) {
  Row row(1000);
  for (int i = 0; i < WARM_UP; ++i) {
    row.lift(static_cast<float>(i % 7));
    row.coords->point()->editDone();
    EXPECT_EQ(row.height(), static_cast<float>(i % 7));
    EXPECT_EQ(row.height(), static_cast<float>(i % 7));
  }
  EXPECT_FALSE(row.hasIndex());
}

TEST(PickIndexUse, IsNotBuiltForRaysThatMissTheBound) {
  Row row(1000);
  ozIsectAction action;
  for (int i = 0; i < WARM_UP; ++i) cast(action, row.set.get(), ozVec3f(3e6f, 0, 100), ozVec3f(0, 0, -1), 1000);
  EXPECT_FALSE(row.hasIndex());
}

TEST(PickIndexUse, CanBeSwitchedOffForASet) {
  Row row(1000);
  EXPECT_EQ(row.set->getPickIndexEnable(), 1);
  row.set->setPickIndexEnable(0);
  EXPECT_EQ(row.set->getPickIndexEnable(), 0);
  row.warmUp();
  EXPECT_FALSE(row.hasIndex());
  row.set->setPickIndexEnable(1);
  row.warmUp();
  EXPECT_TRUE(row.hasIndex());
  row.warmUp();
  row.set->setPickIndexEnable(0);
  EXPECT_FALSE(row.hasIndex());
}

TEST(PickIndexUse, OfACopyIsItsOwn) {
  Row row(1000);
  row.warmUp();
  Held<ozTriSet> copy(new ozTriSet(*row.set));
  row.lift(5);
  EXPECT_EQ(row.height(copy.get()), 5);
  EXPECT_EQ(row.height(), 0);
  row.set->setPickIndexEnable(0);
  Held<ozTriSet> other(new ozTriSet(*row.set));
  EXPECT_EQ(other->getPickIndexEnable(), 0);
}

TEST(PickIndexUse, SeesEachAnnouncedChange) {
  Row row(1000);
  row.warmUp();
  row.lift(1);
  row.coords->point()->editDone();
  EXPECT_EQ(row.height(), 1);

  row.warmUp();
  row.coords->point()->set(1, ozVec3f(-50, -50, 0));
  EXPECT_EQ(row.height(), -1);
  row.coords->point()->set(1, ozVec3f(1, 0, 1));

  row.warmUp();
  row.set->setPrimCount(0);
  EXPECT_EQ(row.height(), -1);
  row.set->setPrimCount(1000);
  EXPECT_EQ(row.height(), 1);

  row.warmUp();
  std::vector<int> places;
  for (int i = 0; i < 3000; ++i) places.push_back(3 + i % 2997);
  row.index->index()->setRange(0, 3000, places.data());
  row.set->setCoordIndexSet(row.index.get());
  EXPECT_EQ(row.height(), -1);

  row.warmUp();
  for (int i = 0; i < 3; ++i) row.index->index()->edit()[i] = i;
  row.index->index()->editDone();
  EXPECT_EQ(row.height(), 1);

  row.warmUp();
  Row higher(1000);
  higher.lift(7);
  row.set->setCoordSet(higher.coords.get());
  EXPECT_EQ(row.height(), 7);
}

TEST(PickIndexUse, SeesCoordinatesThatComeThroughAConnection) {
  Row row(1000), source(1000);
  source.coords->point()->connect(row.coords->point());
  row.warmUp();
  source.lift(3);
  source.coords->point()->editDone();
  EXPECT_EQ(row.height(), 3);
}

TEST(PickIndexUse, SeesLengthsThatChange) {
  Held<ozTriFanSet> set(new ozTriFanSet);
  Row row(1000);
  set->setCoordSet(row.coords.get());
  setLengths(set->fanLength(), std::vector<int>(1000, 3));
  set->setPrimCount(1000);
  for (int i = 0; i < WARM_UP; ++i) EXPECT_EQ(row.height(set.get()), 0);
  set->fanLength()->set(0, 0); // all fans begin where the one before did
  EXPECT_EQ(row.height(set.get()), 0);
  set->fanLength()->set(1, 2);
  EXPECT_EQ(row.height(set.get()), -1);
}

TEST(PickIndexUse, SeesFacesThatChange) {
  Held<ozIndexedFaceSet> set(new ozIndexedFaceSet);
  Row row(1000);
  set->setCoordSet(row.coords.get());
  std::vector<int> faces;
  for (int i = 0; i < 3000; ++i) {
    faces.push_back(i);
    if (i % 3 == 2) faces.push_back(-1);
  }
  set->coordIndex()->setRange(0, static_cast<unsigned int>(faces.size()), faces.data());
  for (int i = 0; i < WARM_UP; ++i) EXPECT_EQ(row.height(set.get()), 0);
  set->coordIndex()->set(0, 8);
  EXPECT_EQ(row.height(set.get()), -1);
}

TEST(PickIndexUse, GivesItsMemoryBack) {
  auto const used = [] {
    struct mallinfo2 const info = mallinfo2();
    return static_cast<long>(info.uordblks + info.hblkhd);
  };
  if (!used()) GTEST_SKIP() << "SKIPPED: this allocator tells nothing";
  Row row(20000);
  row.height();
  long const before = used();
  row.warmUp();
  long const with = used();
  EXPECT_GT(with - before, 20000 * 36); // it holds copies of the corners
  EXPECT_LE(with - before, 20000 * 64 + 4096);
  row.set->setPickIndexEnable(0);
  EXPECT_LT(used() - before, 4096);
  row.set->setPickIndexEnable(1);
  row.warmUp();
  row.coords->point()->editDone();
  row.height(); // notices
  EXPECT_LT(used() - before, 4096);
}

} // namespace
