#include "core/ArrayElements.h"
#include "oz/ozName.h"

namespace {

template <class Array> class WrittenArray : public testing::Test {};
TYPED_TEST_SUITE(WrittenArray, AllValueArrays);

TYPED_TEST(WrittenArray, EmptyIsTwoBrackets) {
  EXPECT_EQ("[\n]", textOf(TypeParam()));
  EXPECT_EQ("[\n    ]", textOf(TypeParam(), 2));
}

TYPED_TEST(WrittenArray, ElementsStandOnALineEachBehindTheIndentation) {
  typedef ElementOf<TypeParam> T;
  if constexpr (std::is_class<T>::value) {
    Tested<TypeParam> array;
    array.appendElements(2);
    EXPECT_EQ("[\n    " + textOf(element<T>(0), 2) + ",\n    " + textOf(element<T>(1), 2) + ",\n    ]",
              textOf(array, 2));
  } else {
    Tested<TypeParam> array;
    array.append(T());
    array.append(T());
    std::string text = textOf(array, 1); // what an element looks like stands below
    EXPECT_EQ("[\n  ", text.substr(0, 4));
    EXPECT_EQ(",\n  ]", text.substr(text.size() - 5));
  }
}

TEST(WrittenArrays, OfBytesAreDecimal) {
  ozByteArray array;
  array.append(65);
  array.append(-128);
  EXPECT_EQ("[\n65,\n-128,\n]", textOf(array));
}

TEST(WrittenArrays, OfUnsignedBytesAreHexadecimal) {
  ozUByteArray array;
  array.append(7);
  array.append(255);
  EXPECT_EQ("[\n0x7,\n0xff,\n]", textOf(array));
}

TEST(WrittenArrays, OfShortsAreDecimal) {
  ozShortArray array;
  array.append(-32768);
  array.append(32767);
  EXPECT_EQ("[\n-32768,\n32767,\n]", textOf(array));
}

TEST(WrittenArrays, OfIntsAreDecimal) {
  ozIntArray array;
  array.append(-2147483647 - 1);
  array.append(2147483647);
  EXPECT_EQ("[\n-2147483648,\n2147483647,\n]", textOf(array));
}

TEST(WrittenArrays, OfUnsignedIntsAreDecimal) {
  ozUIntArray array;
  array.append(4294967295u);
  EXPECT_EQ("[\n4294967295,\n]", textOf(array));
}

TEST(WrittenArrays, OfFloatsHaveSixDecimals) {
  ozFloatArray array;
  array.append(1.5f);
  array.append(-0.25f);
  EXPECT_EQ("[\n1.500000,\n-0.250000,\n]", textOf(array));
}

TEST(WrittenArrays, OfVectorsHaveTheirComponents) {
  ozVec3fArray floats;
  floats.append(ozVec3f(1, 2, 3));
  EXPECT_EQ("[\n1.000000 2.000000 3.000000,\n]", textOf(floats));
  ozVec2sArray shorts;
  shorts.append(ozVec2s(-1, 2));
  EXPECT_EQ("[\n-1 2,\n]", textOf(shorts));
}

TEST(WrittenArrays, OfMatricesHaveFourLinesAnElement) {
  ozMatrix4fArray array;
  array.append(ozMatrix4f());
  EXPECT_EQ("[\n  "
            "  1.000000 0.000000 0.000000 0.000000\n"
            "  0.000000 1.000000 0.000000 0.000000\n"
            "  0.000000 0.000000 1.000000 0.000000\n"
            "  0.000000 0.000000 0.000000 1.000000\n"
            ",\n  ]",
            textOf(array, 1));
}

TEST(WrittenArrays, OfStringsHaveQuotesAndShowNull) {
  Tested<ozStringArray> array;
  array.append("a \"b\"");
  array.append("");
  array.append(ozString());
  EXPECT_EQ("[\n\"a \"b\"\",\n\"\",\n(null),\n]", textOf(array));
}

TEST(WrittenText, OfAStringStandsInQuotes) {
  EXPECT_EQ("\"text\"", textOf(ozString("text")));
  EXPECT_EQ("\"\"", textOf(ozString("")));
  EXPECT_EQ("\"100%s\"", textOf(ozString("100%s")));
}

TEST(WrittenText, OfANullStringIsNull) { EXPECT_EQ("(null)", textOf(ozString())); }

TEST(WrittenText, OfANameStandsInQuotes) {
  EXPECT_EQ("\"NAME\"", textOf(ozName("NAME")));
  EXPECT_EQ("\"\"", textOf(ozName()));
}

} // namespace
