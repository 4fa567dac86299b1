#include "core/ArrayElements.h"
#include "support/capture.h"

#include <limits.h>

namespace {

template <class Array> class ValueArray : public testing::Test {};
TYPED_TEST_SUITE(ValueArray, AllValueArrays);

#define USING_ARRAY                                                                                                    \
  using Array [[maybe_unused]] = Tested<TypeParam>;                                                                    \
  using T [[maybe_unused]] = ElementOf<TypeParam>

TYPED_TEST(ValueArray, StartsEmptyWithRoomFor16) {
  USING_ARRAY;
  Array array;
  EXPECT_EQ(0u, array.getCount());
  EXPECT_EQ(16u, array.getSize());
  EXPECT_EQ(32u, array.getExtension());
  EXPECT_EQ(sizeof(T), array.getStride());
  EXPECT_EQ(0u, array.getOffset());
  EXPECT_EQ(nullptr, array.getData());
  EXPECT_NE(nullptr, array.getArray());
}

TYPED_TEST(ValueArray, HasTheRoomThatWasAskedFor) {
  USING_ARRAY;
  EXPECT_EQ(5u, Array(5).getSize());
  EXPECT_EQ(1u, Array(1).getSize());
  EXPECT_EQ(100u, Array(100).getSize());
  EXPECT_EQ(0u, Array(5).getCount());
}

TYPED_TEST(ValueArray, NoRoomCountsAsRoomForOne) {
  USING_ARRAY;
  Array array(0);
  EXPECT_EQ(1u, array.getSize());
  array.append(element<T>(7));
  EXPECT_EQ("7", array.numbers());
  EXPECT_EQ(1u, array.getSize());
}

TYPED_TEST(ValueArray, ElementsLieOneBehindTheOther) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  T *elements = array.getArray();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(elements[i] == element<T>(i)) << i;
  EXPECT_EQ(static_cast<void *>(elements), static_cast<void *>(static_cast<ozArray &>(array).getArray()));
}

TYPED_TEST(ValueArray, NewStorageIsZeroed) {
  USING_ARRAY;
  Array array(20);
  for (unsigned int i = 0; i < 20; ++i) EXPECT_TRUE(array.isZero(i)) << i;
}

TYPED_TEST(ValueArray, IsNeverCopyConstructed) { EXPECT_FALSE(std::is_copy_constructible<TypeParam>::value); }

// Access

TYPED_TEST(ValueArray, GivesAnElementInEveryForm) {
  USING_ARRAY;
  Array array;
  array.appendElements(5);
  T out{};
  array.get(3, out);
  EXPECT_TRUE(array.get(3) == element<T>(3));
  EXPECT_TRUE(array[3] == element<T>(3));
  EXPECT_TRUE(out == element<T>(3));
}

TYPED_TEST(ValueArray, GivesScalarsByValueAndTheRestByReference) {
  USING_ARRAY;
  typedef std::conditional_t<std::is_scalar<T>::value, T, T const &> Expected;
  Array array;
  EXPECT_TRUE((std::is_same<Expected, decltype(array.get(0u))>::value));
  EXPECT_TRUE((std::is_same<Expected, decltype(array[0u])>::value));
}

TYPED_TEST(ValueArray, ListGivesSubclassesAPlaceToStore) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.at(1) = element<T>(9);
  EXPECT_EQ("0 9 2", array.numbers());
}

// Append and set

TYPED_TEST(ValueArray, AppendKeepsTheOrder) {
  USING_ARRAY;
  Array array;
  array.appendElements(4);
  EXPECT_EQ("0 1 2 3", array.numbers());
  EXPECT_EQ(16u, array.getSize());
}

TYPED_TEST(ValueArray, TheSeventeenthAppendTakesTheSizeTo48) {
  USING_ARRAY;
  Array array;
  array.appendElements(16);
  EXPECT_EQ(16u, array.getSize());
  array.append(element<T>(16));
  EXPECT_EQ(48u, array.getSize());
  EXPECT_EQ("0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 16", array.numbers());
  for (unsigned int i = 17; i < 48; ++i) EXPECT_TRUE(array.isZero(i)) << i;
}

TYPED_TEST(ValueArray, AppendsItsOwnElementWhileItGrows) {
  USING_ARRAY;
  Array array(2);
  array.appendElements(2);
  array.append(array[0]);
  EXPECT_EQ("0 1 0", array.numbers());
}

TYPED_TEST(ValueArray, SetFarBeyondTheSizeGrowsInWholeSteps) {
  USING_ARRAY;
  Array array;
  array.set(100, element<T>(5));
  EXPECT_EQ(101u, array.getCount());
  EXPECT_EQ(112u, array.getSize());
  for (unsigned int i = 0; i < 100; ++i) EXPECT_TRUE(array.isZero(i)) << i;
  EXPECT_TRUE(array[100] == element<T>(5));
}

TYPED_TEST(ValueArray, SetWithinTheCountLeavesTheCount) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.set(1, element<T>(8));
  EXPECT_EQ("0 8 2", array.numbers());
}

TYPED_TEST(ValueArray, SetAtOrBeyondTheCountRaisesIt) {
  USING_ARRAY;
  Array array;
  array.appendElements(1);
  array.set(1, element<T>(8));
  EXPECT_EQ("0 8", array.numbers());
  array.set(9, element<T>(7));
  EXPECT_EQ(10u, array.getCount());
  EXPECT_EQ(16u, array.getSize());
}

TYPED_TEST(ValueArray, SetsItsOwnElementWhileItGrows) {
  USING_ARRAY;
  Array array(2);
  array.appendElements(2);
  array.set(2, array[1]);
  EXPECT_EQ("0 1 1", array.numbers());
}

// The contents of another array

TYPED_TEST(ValueArray, SetTakesTheContentsOfAnother) {
  USING_ARRAY;
  Array from, to;
  from.appendElements(3);
  to.append(element<T>(50));
  to.set(from);
  EXPECT_EQ("0 1 2", to.numbers());
  from.set(1, element<T>(9));
  EXPECT_EQ("0 1 2", to.numbers()) << "the storage is its own";
}

TYPED_TEST(ValueArray, SetOfAShorterArrayLowersTheCountAndFreesNothing) {
  USING_ARRAY;
  Array from, to;
  from.appendElements(2);
  to.appendElements(20);
  to.set(from);
  EXPECT_EQ("0 1", to.numbers());
  EXPECT_EQ(48u, to.getSize());
}

TYPED_TEST(ValueArray, SetOfALongerArrayGrowsInWholeSteps) {
  USING_ARRAY;
  Array from(20), to;
  from.appendElements(20);
  to.set(from);
  EXPECT_EQ(from.numbers(), to.numbers());
  EXPECT_EQ(48u, to.getSize());
}

TYPED_TEST(ValueArray, SetOfItselfChangesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.set(array);
  EXPECT_EQ("0 1 2", array.numbers());
}

TYPED_TEST(ValueArray, SetOfAnEmptyArrayLeavesNone) {
  USING_ARRAY;
  Array from, to;
  to.appendElements(3);
  to.set(from);
  EXPECT_EQ(0u, to.getCount());
}

// Ranges

TYPED_TEST(ValueArray, SetRangeStoresAndRaisesTheCountToItsEnd) {
  USING_ARRAY;
  Array array;
  T const values[] = {element<T>(10), element<T>(11), element<T>(12)};
  array.appendElements(3);
  array.setRange(2, 3, values);
  EXPECT_EQ("0 1 10 11 12", array.numbers());
}

TYPED_TEST(ValueArray, SetRangeWithinTheCountLeavesTheCount) {
  USING_ARRAY;
  Array array;
  T const values[] = {element<T>(10), element<T>(11)};
  array.appendElements(5);
  array.setRange(1, 2, values);
  EXPECT_EQ("0 10 11 3 4", array.numbers());
}

TYPED_TEST(ValueArray, SetRangeBeyondTheSizeGrowsInWholeSteps) {
  USING_ARRAY;
  Array array;
  T const values[] = {element<T>(10), element<T>(11)};
  array.setRange(47, 2, values);
  EXPECT_EQ(49u, array.getCount());
  EXPECT_EQ(80u, array.getSize());
  EXPECT_TRUE(array.isZero(46));
  EXPECT_TRUE(array[47] == element<T>(10));
  EXPECT_TRUE(array[48] == element<T>(11));
}

TYPED_TEST(ValueArray, SetRangeOfNothingOnlyRaisesTheCount) {
  USING_ARRAY;
  Array array;
  array.setRange(4, 0, nullptr);
  EXPECT_EQ(4u, array.getCount());
}

TYPED_TEST(ValueArray, SetRangeTakesItsOwnElements) {
  USING_ARRAY;
  Array array(4);
  array.appendElements(4);
  array.setRange(2, 4, array.getArray()); // overlaps, and grows
  EXPECT_EQ("0 1 0 1 2 3", array.numbers());
  array.setRange(0, 4, array.getArray() + 2);
  EXPECT_EQ("0 1 2 3 2 3", array.numbers());
}

TYPED_TEST(ValueArray, FillRangeStoresOneValue) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.fillRange(1, 4, element<T>(9));
  EXPECT_EQ("0 9 9 9 9", array.numbers());
  array.fillRange(0, 2, element<T>(8));
  EXPECT_EQ("8 8 9 9 9", array.numbers());
}

TYPED_TEST(ValueArray, FillRangeTakesItsOwnElement) {
  USING_ARRAY;
  Array array(2);
  array.appendElements(2);
  array.fillRange(0, 20, array[1]);
  EXPECT_EQ("1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1 1", array.numbers());
  EXPECT_EQ(34u, array.getSize());
}

TYPED_TEST(ValueArray, GetRangeCopies) {
  USING_ARRAY;
  Array array;
  array.appendElements(5);
  T out[3] = {element<T>(60), element<T>(60), element<T>(60)};
  array.getRange(1, 2, out);
  EXPECT_TRUE(out[0] == element<T>(1));
  EXPECT_TRUE(out[1] == element<T>(2));
  EXPECT_TRUE(out[2] == element<T>(60));
}

TYPED_TEST(ValueArray, GetRangePastTheEndCopiesWhatIsThere) {
  USING_ARRAY;
  Array array;
  array.appendElements(5);
  for (unsigned int n : {2u, 3u, 1000u, UINT_MAX}) { // start + n passes 32 bits with the last
    T out[3] = {element<T>(60), element<T>(60), element<T>(60)};
    array.getRange(3, n, out);
    EXPECT_TRUE(out[0] == element<T>(3));
    EXPECT_TRUE(out[1] == element<T>(4));
    EXPECT_TRUE(out[2] == element<T>(60));
  }
}

TYPED_TEST(ValueArray, GetRangeFromTheEndOnCopiesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(5);
  T out[2] = {element<T>(60), element<T>(60)};
  array.getRange(5, 2, out);
  array.getRange(6, 2, out);
  array.getRange(UINT_MAX, 2, out);
  EXPECT_TRUE(out[0] == element<T>(60));
}

// Insert

TYPED_TEST(ValueArray, InsertMovesWhatStandsBehindUpByOne) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.insert(0, element<T>(9));
  EXPECT_EQ("9 0 1 2", array.numbers());
  array.insert(2, element<T>(8));
  EXPECT_EQ("9 0 8 1 2", array.numbers());
  array.insert(5, element<T>(7));
  EXPECT_EQ("9 0 8 1 2 7", array.numbers());
}

TYPED_TEST(ValueArray, InsertIntoAFullArrayGrowsIt) {
  USING_ARRAY;
  Array array(2);
  array.appendElements(2);
  array.insert(1, element<T>(9));
  EXPECT_EQ("0 9 1", array.numbers());
  EXPECT_EQ(34u, array.getSize());
}

TYPED_TEST(ValueArray, InsertBeyondTheEndStoresThereAndCountsOne) {
  USING_ARRAY;
  Array array;
  array.appendElements(2);
  array.insert(40, element<T>(9));
  EXPECT_EQ(48u, array.getSize());
  EXPECT_EQ(3u, array.getCount()) << "one more, wherever it was put";
  EXPECT_TRUE(array.isZero(2));
  array.setCount(41);
  EXPECT_TRUE(array[40] == element<T>(9));
}

TYPED_TEST(ValueArray, InsertsItsOwnElement) {
  USING_ARRAY;
  Array array(3);
  array.appendElements(3);
  array.insert(0, array[2]); // grows
  EXPECT_EQ("2 0 1 2", array.numbers());
  array.insert(0, array[1]); // moves
  EXPECT_EQ("0 2 0 1 2", array.numbers());
}

// Search

TYPED_TEST(ValueArray, FindGivesTheFirstIndex) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.appendElements(3);
  EXPECT_EQ(0, array.find(element<T>(0)));
  EXPECT_EQ(2, array.find(element<T>(2)));
}

TYPED_TEST(ValueArray, FindOfAnAbsentValueIsMinusOne) {
  USING_ARRAY;
  Array array;
  EXPECT_EQ(-1, array.find(element<T>(0)));
  array.appendElements(3);
  EXPECT_EQ(-1, array.find(element<T>(3)));
  array.setCount(2);
  EXPECT_EQ(-1, array.find(element<T>(2))) << "behind the count";
}

TYPED_TEST(ValueArray, ReplaceStoresInThePlaceOfTheFirst) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.appendElements(3);
  EXPECT_EQ(1, array.replace(element<T>(1), element<T>(9)));
  EXPECT_EQ("0 9 2 0 1 2", array.numbers());
}

TYPED_TEST(ValueArray, ReplaceOfAnAbsentValueIsNegativeAndChangesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  EXPECT_GT(0, array.replace(element<T>(4), element<T>(9)));
  EXPECT_EQ("0 1 2", array.numbers());
}

// Removal

TYPED_TEST(ValueArray, RemoveTakesTheFirstAndKeepsTheOrder) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.appendElements(3);
  EXPECT_TRUE(array.remove(element<T>(1)));
  EXPECT_EQ("0 2 0 1 2", array.numbers());
  EXPECT_EQ(16u, array.getSize());
}

TYPED_TEST(ValueArray, RemoveOfAnAbsentValueIsFalseAndChangesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  EXPECT_FALSE(array.remove(element<T>(5)));
  EXPECT_EQ("0 1 2", array.numbers());
}

TYPED_TEST(ValueArray, RemovesTheLastAndTheOnlyElement) {
  USING_ARRAY;
  Array array;
  array.appendElements(2);
  EXPECT_TRUE(array.remove(element<T>(1)));
  EXPECT_EQ("0", array.numbers());
  EXPECT_TRUE(array.remove(element<T>(0)));
  EXPECT_EQ(0u, array.getCount());
}

TYPED_TEST(ValueArray, RemoveIndexKeepsTheOrder) {
  USING_ARRAY;
  Array array;
  array.appendElements(4);
  array.removeIndex(1);
  EXPECT_EQ("0 2 3", array.numbers());
  array.removeIndex(2);
  EXPECT_EQ("0 2", array.numbers());
}

TYPED_TEST(ValueArray, RemoveIndexAtOrBeyondTheCountDoesNothing) {
  USING_ARRAY;
  Array array;
  array.removeIndex(0);
  array.appendElements(2);
  array.removeIndex(2);
  array.removeIndex(100);
  EXPECT_EQ("0 1", array.numbers());
}

TYPED_TEST(ValueArray, FastRemovePutsTheLastIntoThePlace) {
  USING_ARRAY;
  Array array;
  array.appendElements(4);
  EXPECT_TRUE(array.fastRemove(element<T>(1)));
  EXPECT_EQ("0 3 2", array.numbers());
  EXPECT_TRUE(array.fastRemove(element<T>(2)));
  EXPECT_EQ("0 3", array.numbers());
  EXPECT_FALSE(array.fastRemove(element<T>(2)));
  EXPECT_EQ("0 3", array.numbers());
}

TYPED_TEST(ValueArray, FastRemoveOfTheOnlyElementLeavesNone) {
  USING_ARRAY;
  Array array;
  array.appendElements(1);
  EXPECT_TRUE(array.fastRemove(element<T>(0)));
  EXPECT_EQ(0u, array.getCount());
}

TYPED_TEST(ValueArray, FastRemoveIndexPutsTheLastIntoThePlace) {
  USING_ARRAY;
  Array array;
  array.appendElements(4);
  array.fastRemoveIndex(0);
  EXPECT_EQ("3 1 2", array.numbers());
  array.fastRemoveIndex(3);
  array.fastRemoveIndex(100);
  EXPECT_EQ("3 1 2", array.numbers());
  array.fastRemoveIndex(2);
  EXPECT_EQ("3 1", array.numbers());
}

// Size and count

TYPED_TEST(ValueArray, SetSizeGivesExactlyThatRoomAndKeepsTheContents) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.setSize(50);
  EXPECT_EQ(50u, array.getSize());
  EXPECT_EQ("0 1 2", array.numbers());
  for (unsigned int i = 3; i < 50; ++i) EXPECT_TRUE(array.isZero(i)) << i;
}

TYPED_TEST(ValueArray, AShrinkingSetSizeLeavesTheCount) {
  USING_ARRAY;
  Array array;
  array.setCount(5);
  array.setSize(2);
  EXPECT_EQ(2u, array.getSize());
  EXPECT_EQ(5u, array.getCount());
  array.setCount(2);
}

TYPED_TEST(ValueArray, SetSizeZeroesOnlyWhatIsNew) {
  USING_ARRAY;
  Array array;
  array.appendElements(16);
  array.setSize(20);
  EXPECT_TRUE(array[15] == element<T>(15));
  EXPECT_TRUE(array.isZero(16));
}

TYPED_TEST(ValueArray, ASizeOf0LeavesAUsableArray) {
  USING_ARRAY;
  Array array;
  array.setSize(0);
  EXPECT_EQ(0u, array.getSize());
  array.appendElements(2);
  EXPECT_EQ("0 1", array.numbers());
  EXPECT_EQ(32u, array.getSize());
  array.setCount(0);
}

TYPED_TEST(ValueArray, SetCountMakesRoomInWholeStepsOfZeroedElements) {
  USING_ARRAY;
  Array array;
  array.appendElements(1);
  array.setCount(50); // 16 + 32 is not enough
  EXPECT_EQ(50u, array.getCount());
  EXPECT_EQ(80u, array.getSize());
  for (unsigned int i = 1; i < 50; ++i) EXPECT_TRUE(array.isZero(i)) << i;
}

TYPED_TEST(ValueArray, LoweringTheCountFreesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(20);
  T *before = array.getArray();
  array.setCount(1);
  EXPECT_EQ(1u, array.getCount());
  EXPECT_EQ(48u, array.getSize());
  EXPECT_EQ(before, array.getArray());
  array.setCount(3);
  EXPECT_EQ("0 1 2", array.numbers());
}

TYPED_TEST(ValueArray, GrowsByItsExtension) {
  USING_ARRAY;
  Array array;
  array.setExtension(5);
  EXPECT_EQ(5u, array.getExtension());
  array.setCount(17);
  EXPECT_EQ(21u, array.getSize());
  array.setCount(32);
  EXPECT_EQ(36u, array.getSize());
  array.setCount(36);
  EXPECT_EQ(36u, array.getSize());
}

TYPED_TEST(ValueArray, AnExtensionOf0CountsAs1) {
  USING_ARRAY;
  Array array;
  array.setExtension(0);
  EXPECT_EQ(1u, array.getExtension());
  array.appendElements(17);
  EXPECT_EQ(17u, array.getSize());
}

// Requests that cannot be met

TYPED_TEST(ValueArray, ARequestThatCannotBeMetIsReportedOnceAndChangesNothing) {
  USING_ARRAY;
  Array array;
  array.appendElements(2);
  T const value = element<T>(9);
  auto expectRefused = [&](auto request) {
    std::string text = stderrOf([&] { request(); });
    EXPECT_EQ(0u, text.find("(FATAL, RESOURCE): ")) << text;
    EXPECT_EQ(text.size() - 1, text.find('\n')) << text;
    EXPECT_EQ("0 1", array.numbers());
    EXPECT_EQ(16u, array.getSize());
  };
  expectRefused([&] { array.set(UINT_MAX, value); });
  expectRefused([&] { array.insert(UINT_MAX, value); });
  expectRefused([&] { array.setRange(UINT_MAX, 1, &value); });
  expectRefused([&] { array.fillRange(UINT_MAX - 1, 5, value); });
  expectRefused([&] { array.setCount(UINT_MAX); });
}

// Shared storage

TYPED_TEST(ValueArray, AssignmentSharesTheStorage) {
  USING_ARRAY;
  Array array;
  array.appendElements(3);
  array.setExtension(7);
  alignas(TypeParam) char place[sizeof(TypeParam)];
  TypeParam &view = *new (place) TypeParam(1); // never destroyed: the storage belongs to both
  void *own = view.getArray();
  view = array;
  free(own);
  EXPECT_EQ(array.getArray(), view.getArray());
  EXPECT_EQ(3u, view.getCount());
  EXPECT_EQ(16u, view.getSize());
  EXPECT_EQ(7u, view.getExtension());
  view.set(1, element<T>(9));
  EXPECT_EQ("0 9 2", array.numbers());
}

} // namespace
