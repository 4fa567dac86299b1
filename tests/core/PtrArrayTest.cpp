#include "core/ArrayElements.h"
#include "oz/ozFieldInfoArray.h"
#include "support/capture.h"

#include <sys/resource.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define OZ_SANITIZED 1
#endif

namespace {

int Stand[10]; // their addresses stand for those of objects

ozFieldInfo *info(int i) { return reinterpret_cast<ozFieldInfo *>(&Stand[i]); }

// An alias with pointers of its own type, by way of the field infos'.
std::string numbers(ozFieldInfoArray const &array) {
  std::string text;
  for (unsigned int i = 0; i < array.getCount(); ++i) text += std::to_string(reinterpret_cast<int *>(array[i]) - Stand);
  return text;
}

TEST(PtrArray, ComparesByAddress) {
  ozPtrArray array;
  int same[2] = {1, 1};
  array.append(&same[0]);
  EXPECT_EQ(0, array.find(&same[0]));
  EXPECT_EQ(-1, array.find(&same[1]));
}

TEST(PtrArray, HoldsNullsLikeAnyPointer) {
  ozPtrArray array;
  array.append(&Stand[0]);
  array.append(nullptr);
  EXPECT_EQ(1, array.find(nullptr));
  EXPECT_EQ(2u, array.getCount());
}

TEST(PtrArray, WritesTheLow32BitsOfAPointer) {
  ozPtrArray array;
  array.append(reinterpret_cast<void *>(0x1234567890abcdeful));
  EXPECT_EQ("[\n0x90abcdef,\n]", textOf(array));
}

TEST(TypedPtrArray, IsAPtrArray) {
  EXPECT_TRUE((std::is_base_of<ozPtrArray, ozFieldInfoArray>::value));
  EXPECT_TRUE((std::is_base_of<ozPtrArray, ozFieldArray>::value));
  EXPECT_TRUE((std::is_base_of<ozPtrArray, ozRefArray>::value));
  EXPECT_EQ(sizeof(ozPtrArray), sizeof(ozFieldInfoArray));
}

TEST(TypedPtrArray, GivesPointersOfItsOwnType) {
  ozFieldInfoArray array;
  array.append(info(3));
  ozFieldInfo *byGet = array.get(0), *byIndex = array[0], *out = nullptr, **all = array.getArray();
  array.get(0, out);
  EXPECT_EQ(info(3), byGet);
  EXPECT_EQ(info(3), byIndex);
  EXPECT_EQ(info(3), out);
  EXPECT_EQ(info(3), all[0]);
}

TEST(TypedPtrArray, HasAllOperations) {
  ozFieldInfoArray array(4), other;
  ozFieldInfo *const values[] = {info(1), info(2), info(3)};
  array.setRange(0, 3, values);
  EXPECT_EQ("123", numbers(array));
  array.append(info(4));
  array.set(4, info(5));
  EXPECT_EQ("12345", numbers(array));
  array.insert(1, info(6));
  EXPECT_EQ("162345", numbers(array));
  EXPECT_EQ(2, array.find(info(2)));
  EXPECT_EQ(-1, array.find(info(9)));
  EXPECT_EQ(1, array.replace(info(6), info(7)));
  EXPECT_TRUE(array.remove(info(2)));
  EXPECT_EQ("17345", numbers(array));
  EXPECT_TRUE(array.fastRemove(info(1)));
  EXPECT_EQ("5734", numbers(array));
  array.removeIndex(0);
  array.fastRemoveIndex(0);
  EXPECT_EQ("43", numbers(array));
  array.fillRange(1, 2, info(8));
  EXPECT_EQ("488", numbers(array));
  ozFieldInfo *out[2];
  array.getRange(0, 2, out);
  EXPECT_EQ(info(4), out[0]);
  EXPECT_EQ(info(8), out[1]);
  other.set(array);
  EXPECT_EQ("488", numbers(other));
}

TEST(TypedPtrArray, LeavesNoLineForANullElement) {
  ozRefArray refs;
  ozFieldArray fields;
  refs.append(nullptr);
  fields.append(nullptr);
  fields.append(nullptr);
  EXPECT_EQ("[\n  ]", textOf(refs, 1));
  EXPECT_EQ("[\n  ]", textOf(fields, 1));
}

// Memory that the system refuses.
class ArrayMemory : public testing::Test {
protected:
  void SetUp() override {
#ifdef OZ_SANITIZED
    GTEST_SKIP() << "the sanitizer needs its address space";
#endif
    ASSERT_EQ(0, getrlimit(RLIMIT_AS, &before));
    rlimit limit = {4ul << 30, before.rlim_max};
    ASSERT_EQ(0, setrlimit(RLIMIT_AS, &limit));
    limited = true;
  }
  void TearDown() override {
    if (limited) setrlimit(RLIMIT_AS, &before);
  }

  rlimit before;
  bool limited = false;
};

TEST_F(ArrayMemory, ThatIsRefusedIsReportedOnceAndChangesNothing) {
  ozMatrix4fArray array;
  array.append(ozMatrix4f());
  ozMatrix4f *place = array.getArray();
  auto refused = [&](auto request) {
    std::string text = stderrOf(request);
    return text.find("(FATAL, RESOURCE): ") == 0 && text.find('\n') == text.size() - 1;
  };
  const unsigned int many = 0x10000000; // 16 gigabytes: a size in 32 bits would wrap to 0
  EXPECT_TRUE(refused([&] { array.setSize(many); }));
  EXPECT_TRUE(refused([&] { array.setCount(many); }));
  EXPECT_TRUE(refused([&] { array.set(many, ozMatrix4f()); }));
  EXPECT_TRUE(refused([&] { array.fillRange(many, 1, ozMatrix4f()); }));
  EXPECT_EQ(1u, array.getCount());
  EXPECT_EQ(16u, array.getSize());
  EXPECT_EQ(place, array.getArray());
  EXPECT_TRUE(array[0] == ozMatrix4f());
}

TEST_F(ArrayMemory, OfADataBlockThatIsRefusedGivesNull) {
  rlimit small = {1ul << 30, before.rlim_max};
  ASSERT_EQ(0, setrlimit(RLIMIT_AS, &small));
  EXPECT_EQ(nullptr, new (0x7fffffffu) ozData);
}

} // namespace
