// What both kinds of bound share: the warnings of operations that a kind does not have.
#include "math/slot.h"
#include "oz/ozBound.h"
#include "oz/ozSeg.h"
#include "support/capture.h"

#include <gtest/gtest.h>

#include <type_traits>

namespace {

std::string const WARNING = "WARNING: Shouldn't be in pure virtual ";

ozBoxBound box() {
  ozBoxBound b;
  b.extendBy(ozVec3f(1, 2, 3));
  return b;
}

// A kind of bound that overrides nothing it need not.
struct BareBound : ozBound {
  using ozBound::contains;
  using ozBound::extendBy;
  void makeEmpty() override {}
  int isEmpty() const override { return 1; }
  void extendBy(ozVec3f const &) override {}
  int contains(ozVec3f const &) const override { return 1; }
  int isect(ozSeg const *, float *, float *) const override { return 0; }
};

TEST(Bound, EveryMissingOperationWarnsInItsOwnWords) {
  BareBound b;
  ozBoxBound const aBox;
  ozSphereBound const aSphere;
  ozBoxBound const *boxes[] = {&aBox};
  ozSphereBound const *spheres[] = {&aSphere};
  ozVec3f const points[1];
  EXPECT_EQ(stderrOf([&] { b.around(&aBox); }), WARNING + "around(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { b.around(&aSphere); }), WARNING + "around(const ozSphereBound* sph)");
  EXPECT_EQ(stderrOf([&] { b.around(boxes, 1); }), WARNING + "around(const ozBoxBound* boxes[], int nbox)");
  EXPECT_EQ(stderrOf([&] { b.around(spheres, 1); }), WARNING + "around(const ozSphereBound* sphs[], int nsph)");
  EXPECT_EQ(stderrOf([&] { b.around(points, 1); }), WARNING + "around(const ozVec3f pts[], int npt)");
  EXPECT_EQ(stderrOf([&] { b.extendBy(&aBox); }), WARNING + "extendBy(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { b.extendBy(&aSphere); }), WARNING + "extendBy(const ozSphereBound* sph)");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(b.contains(&aBox), 0); }), WARNING + "contains(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(b.contains(&aSphere), 0); }), WARNING + "contains(const ozSphereBound* sph)");
}

TEST(Bound, ABoxLeavesTheSphereOperationsInPlace) {
  ozBoxBound b = box();
  ozBoxBound const other;
  ozSphereBound const sphere(0, 0, 0, 9);
  EXPECT_EQ(stderrOf([&] { b.around(&other); }), WARNING + "around(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { b.around(&sphere); }), WARNING + "around(const ozSphereBound* sph)");
  EXPECT_EQ(stderrOf([&] { b.extendBy(&sphere); }), WARNING + "extendBy(const ozSphereBound* sph)");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(b.contains(&sphere), 0); }), WARNING + "contains(const ozSphereBound* sph)");
  EXPECT_EQ(b, box());
}

TEST(Bound, ASphereLeavesTheBoxOperationsInPlace) {
  ozSphereBound s(1, 2, 3, 4);
  ozBoxBound const aBox = box();
  ozSphereBound const other(0, 0, 0, 9);
  EXPECT_EQ(stderrOf([&] { s.around(&aBox); }), WARNING + "around(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { s.around(&other); }), WARNING + "around(const ozSphereBound* sph)");
  EXPECT_EQ(stderrOf([&] { s.extendBy(&aBox); }), WARNING + "extendBy(const ozBoxBound* box)");
  EXPECT_EQ(stderrOf([&] { EXPECT_EQ(s.contains(&aBox), 0); }), WARNING + "contains(const ozBoxBound* box)");
  EXPECT_EQ(s, ozSphereBound(1, 2, 3, 4));
}

TEST(Bound, TheOverriddenOperationsAreReachedThroughTheBase) {
  ozBoxBound aBox;
  ozSphereBound aSphere;
  ozVec3f const points[2] = {ozVec3f(0, 0, 0), ozVec3f(2, 0, 0)};
  for (ozBound *bound : {static_cast<ozBound *>(&aBox), static_cast<ozBound *>(&aSphere)}) {
    EXPECT_EQ(stderrOf([&] {
                bound->around(points, 2);
                EXPECT_FALSE(bound->isEmpty());
                EXPECT_EQ(bound->contains(ozVec3f(1, 0, 0)), 1);
                EXPECT_EQ(bound->contains(ozVec3f(3, 0, 0)), 0);
                bound->makeEmpty();
                EXPECT_TRUE(bound->isEmpty());
              }),
              "");
  }
}

TEST(Bound, TheBitsHaveTheirValues) {
  EXPECT_EQ(ozBound::BOUND_MAYBE, 1);
  EXPECT_EQ(ozBound::BOUND_TRUE, 2);
  EXPECT_EQ(ozBound::BOUND_ALL_IN, 4);
  EXPECT_EQ(ozBound::BOUND_START_IN, 8);
  EXPECT_EQ(ozBound::BOUND_END_IN, 16);
}

TEST(Bound, HasNoDataAndNoVirtualDestructor) {
  EXPECT_EQ(sizeof(BareBound), sizeof(void *));
  EXPECT_FALSE(std::has_virtual_destructor<ozBound>::value);
  EXPECT_FALSE(std::has_virtual_destructor<ozBoxBound>::value);
  EXPECT_FALSE(std::has_virtual_destructor<ozSphereBound>::value);
}

TEST(Bound, HasItsOperationsInTheirSlots) {
  if (slotOf(&ozBound::isEmpty) < 0) GTEST_SKIP() << "SKIPPED: slots are not known on this machine";
  using Box = ozBoxBound const *;
  using Sphere = ozSphereBound const *;
  EXPECT_EQ(slotOf(&ozBound::makeEmpty), 0);
  EXPECT_EQ(slotOf(&ozBound::isEmpty), 1);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Box)>(&ozBound::around)), 2);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Sphere)>(&ozBound::around)), 3);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Box *, int)>(&ozBound::around)), 4);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Sphere *, int)>(&ozBound::around)), 5);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(ozVec3f const *, int)>(&ozBound::around)), 6);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Sphere)>(&ozBound::extendBy)), 7);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(Box)>(&ozBound::extendBy)), 8);
  EXPECT_EQ(slotOf(static_cast<void (ozBound::*)(ozVec3f const &)>(&ozBound::extendBy)), 9);
  EXPECT_EQ(slotOf(static_cast<int (ozBound::*)(Sphere) const>(&ozBound::contains)), 10);
  EXPECT_EQ(slotOf(static_cast<int (ozBound::*)(Box) const>(&ozBound::contains)), 11);
  EXPECT_EQ(slotOf(static_cast<int (ozBound::*)(ozVec3f const &) const>(&ozBound::contains)), 12);
  EXPECT_EQ(slotOf(&ozBound::isect), 13);
}

TEST(Bound, WithoutAPlaceForTheFirstDistanceIsectStoresNeither) {
  ozBoxBound aBox = box();
  aBox.extendBy(ozVec3f());
  ozSphereBound const aSphere(0, 0, 0, 1);
  ozSeg segment;
  segment.makePts(ozVec3f(), ozVec3f(9, 0, 0));
  for (ozBound const *bound : {static_cast<ozBound const *>(&aBox), static_cast<ozBound const *>(&aSphere)}) {
    float far = -9;
    EXPECT_EQ(bound->isect(&segment, nullptr, &far), 11);
    EXPECT_EQ(far, -9);
  }
}

TEST(Bound, IsItsVirtualTableAndItsNumbers) {
  EXPECT_EQ(sizeof(ozBoxBound), sizeof(void *) + 24);
  EXPECT_EQ(sizeof(ozSphereBound), sizeof(void *) + 16);
}

} // namespace
