#include "core/ArrayElements.h"
#include "support/capture.h"

namespace {

char const *const CannotResize = "(FATAL, RESOURCE): Cannot resize interleaved array\n";

// Two views of one block: elements of 64 bytes at most, every 128 bytes, the second view 64 bytes behind the first.
template <class Array> class InterleavedArray : public testing::Test {
protected:
  typedef ElementOf<Array> T;

  InterleavedArray() : data(new (1024) ozData) { data->ref(); }
  ~InterleavedArray() override { data->unref(); }

  char *bytes() const { return static_cast<char *>(data->getData()); }
  T &at(int offset) const { return *reinterpret_cast<T *>(bytes() + offset); }

  ozData *data;
};
TYPED_TEST_SUITE(InterleavedArray, AllValueArrays);

TYPED_TEST(InterleavedArray, IsAViewOfTheData) {
  Tested<TypeParam> array(this->data, 64, 128);
  EXPECT_EQ(this->data, array.getData());
  EXPECT_EQ(64u, array.getOffset());
  EXPECT_EQ(128u, array.getStride());
  EXPECT_EQ(0u, array.getCount());
  EXPECT_EQ(32u, array.getExtension());
  EXPECT_EQ(this->bytes() + 64, reinterpret_cast<char *>(array.getArray()));
}

TYPED_TEST(InterleavedArray, ItsSizeCountsByTheElementAndNotByTheStride) {
  Tested<TypeParam> array(this->data, 64, 128);
  EXPECT_EQ((1024 - 64) / sizeof(ElementOf<TypeParam>), array.getSize());
}

TYPED_TEST(InterleavedArray, HoldsAReferenceOnTheData) {
  EXPECT_EQ(1u, this->data->getRefCount());
  {
    Tested<TypeParam> first(this->data, 0, 128), second(this->data, 64, 128);
    EXPECT_EQ(3u, this->data->getRefCount());
  }
  EXPECT_EQ(1u, this->data->getRefCount());
}

TYPED_TEST(InterleavedArray, AppendsOneElementAStride) {
  typedef ElementOf<TypeParam> T;
  Tested<TypeParam> array(this->data, 64, 128);
  array.appendElements(3);
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(this->at(64 + 128 * i) == element<T>(i)) << i;
  EXPECT_EQ("0 1 2", array.numbers());
}

TYPED_TEST(InterleavedArray, TwoViewsInterleaveInOneBlock) {
  Tested<TypeParam> first(this->data, 0, 128), second(this->data, 64, 128);
  first.appendElements(8);
  second.fillRange(0, 8, element<ElementOf<TypeParam>>(50));
  EXPECT_EQ("0 1 2 3 4 5 6 7", first.numbers());
  EXPECT_EQ("50 50 50 50 50 50 50 50", second.numbers());
}

TYPED_TEST(InterleavedArray, HasAllOperations) {
  typedef ElementOf<TypeParam> T;
  Tested<TypeParam> array(this->data, 64, 128);
  T const values[] = {element<T>(10), element<T>(11), element<T>(12), element<T>(13)};
  array.setRange(0, 4, values);
  EXPECT_EQ("10 11 12 13", array.numbers());
  array.insert(1, element<T>(20));
  EXPECT_EQ("10 20 11 12 13", array.numbers());
  EXPECT_TRUE(array.remove(element<T>(11)));
  EXPECT_EQ("10 20 12 13", array.numbers());
  EXPECT_TRUE(array.fastRemove(element<T>(10)));
  EXPECT_EQ("13 20 12", array.numbers());
  EXPECT_EQ(1, array.replace(element<T>(20), element<T>(21)));
  array.set(3, element<T>(22));
  EXPECT_EQ("13 21 12 22", array.numbers());
  EXPECT_EQ(3, array.find(element<T>(22)));
  T out[2] = {element<T>(0), element<T>(0)};
  array.getRange(2, 2, out);
  EXPECT_TRUE(out[0] == element<T>(12));
  EXPECT_TRUE(out[1] == element<T>(22));
}

TYPED_TEST(InterleavedArray, SetCopiesBetweenArraysOfDifferentStrides) {
  Tested<TypeParam> view(this->data, 64, 128), owned, other;
  owned.appendElements(4);
  view.set(owned);
  EXPECT_EQ("0 1 2 3", view.numbers());
  other.set(view);
  EXPECT_EQ("0 1 2 3", other.numbers());
}

TYPED_TEST(InterleavedArray, CannotBeResizedAndSaysSo) {
  Tested<TypeParam> array(this->data, 64, 128);
  array.appendElements(2);
  unsigned int size = array.getSize();
  EXPECT_EQ(CannotResize, stderrOf([&] { array.setSize(1); }));
  EXPECT_EQ(CannotResize, stderrOf([&] { array.setSize(10000); }));
  EXPECT_EQ(size, array.getSize());
  EXPECT_EQ("0 1", array.numbers());
  EXPECT_EQ(this->bytes() + 64, reinterpret_cast<char *>(array.getArray()));
}

TYPED_TEST(InterleavedArray, ACountBeyondTheSizeIsReportedAndStoredAllTheSame) {
  Tested<TypeParam> array(this->data, 64, 128);
  unsigned int size = array.getSize();
  EXPECT_EQ("", stderrOf([&] { array.setCount(size); }));
  EXPECT_EQ(CannotResize, stderrOf([&] { array.setCount(size + 1); }));
  EXPECT_EQ(size + 1, array.getCount());
  EXPECT_EQ(size, array.getSize());
  array.setCount(0);
}

TYPED_TEST(InterleavedArray, AppendBeyondTheSizeIsReportedAndStoredAllTheSame) {
  typedef ElementOf<TypeParam> T;
  Tested<TypeParam> array(this->data, 0, 0); // a stride of 0: all elements are one, and none lies outside the block
  unsigned int size = array.getSize();
  array.setCount(size);
  EXPECT_EQ(CannotResize, stderrOf([&] { array.append(element<T>(3)); }));
  EXPECT_EQ(size + 1, array.getCount());
  EXPECT_TRUE(this->at(0) == element<T>(3));
}

TYPED_TEST(InterleavedArray, AnOffsetBeyondTheDataLeavesNoRoom) {
  Tested<TypeParam> array(this->data, 1024, 128);
  EXPECT_EQ(0u, array.getSize());
}

} // namespace
