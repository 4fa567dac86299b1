#include <gtest/gtest.h>

#include <limits>
#include <type_traits>
#include <vector>

#include "support/capture.h"
#include "testContainers.h"

namespace {

/// What the tests need to know of a single-valued field class: a default, another value and how that one is written.
template <class Field> struct Case;
#define CASE(Field, T, Name, Standard, Other, Text)                                                                    \
  template <> struct Case<Field> {                                                                                     \
    static T standard() { return Standard; }                                                                           \
    static T other() { return Other; }                                                                                 \
    static char const *text() { return Text; }                                                                         \
    static char const *name() { return Name; }                                                                         \
  };

ozBitMask bits(long long mask) {
  ozBitMask result;
  result.setMask(mask);
  return result;
}
ozRotation degrees(float x, float y, float z, float angle) {
  ozRotation result;
  result.setDegrees(x, y, z, angle);
  return result;
}
ozBoxBound box(ozVec3f const &min, ozVec3f const &max) {
  ozBoxBound result;
  result.min = min;
  result.max = max;
  return result;
}

CASE(ozSFByte, signed char, "ozByte", 3, -5, "-5")
CASE(ozSFUByte, unsigned char, "ozUByte", 3, 200, "0xc8")
CASE(ozSFShort, short, "ozShort", 3, -300, "-300")
CASE(ozSFInt, int, "ozInt", 3, -70000, "-70000")
CASE(ozSFUInt, unsigned int, "ozUInt", 3u, 0xdeadbeefu, "0xdeadbeef")
CASE(ozSFFloat, float, "ozFloat", 1.5f, -2.25f, "-2.250000")
CASE(ozSFDouble, double, "ozDouble", 1.5, 1e10, "10000000000.000000")
CASE(ozSFEnum, int, "ozEnum", 1, 2, "TWO")
CASE(ozSFTime, ozTime, "ozTime", ozTime(1.5), ozTime(2.75), "2.750000")
CASE(ozSFBitMask, ozBitMask, "ozBitMask", bits(1), bits(0x1000000002ll), "0x102")
CASE(ozSFName, ozName, "ozName", ozName("a"), ozName("b c"), "\"b c\"")
CASE(ozSFString, ozString, "ozString", ozString("a"), ozString("b c"), "\"b c\"")
CASE(ozSFVec2f, ozVec2f, "ozVec2f", ozVec2f(1, 2), ozVec2f(3, -4.5f), "3.000000 -4.500000")
CASE(ozSFVec3f, ozVec3f, "ozVec3f", ozVec3f(1, 2, 3), ozVec3f(1, 2, -3), "1.000000 2.000000 -3.000000")
CASE(ozSFVec4f, ozVec4f, "ozVec4f", ozVec4f(1, 2, 3, 4), ozVec4f(1, 2, 3, 5), "1.000000 2.000000 3.000000 5.000000")
CASE(ozSFVec2s, ozVec2s, "ozVec2s", ozVec2s(1, 2), ozVec2s(1, -2), "1 -2")
CASE(ozSFVec3s, ozVec3s, "ozVec3s", ozVec3s(1, 2, 3), ozVec3s(1, 2, -3), "1 2 -3")
CASE(ozSFVec2i, ozVec2i, "ozVec2i", ozVec2i(1, 2), ozVec2i(-70000, 2), "-70000 2")
CASE(ozSFVec3i, ozVec3i, "ozVec3i", ozVec3i(1, 2, 3), ozVec3i(1, -70000, 3), "1 -70000 3")
CASE(ozSFVec3b, ozVec3b, "ozVec3b", ozVec3b(1, 2, 3), ozVec3b(1, -2, 3), "1 -2 3")
CASE(ozSFVec4ub, ozVec4ub, "ozVec4ub", ozVec4ub(1, 2, 3, 4), ozVec4ub(1, 2, 3, 255), "0x1 0x2 0x3 0xff")
CASE(ozSFRotation, ozRotation, "ozRotation", degrees(0, 0, 1, 90), degrees(0, 1, 0, 45),
     "0.000000 1.000000 0.000000 45.000000")
CASE(ozSFMatrix4f, ozMatrix4f, "ozMatrix4f", ozMatrix4f(),
     ozMatrix4f(1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16),
     "  1.000000 2.000000 3.000000 4.000000\n  5.000000 6.000000 7.000000 8.000000\n"
     "  9.000000 10.000000 11.000000 12.000000\n  13.000000 14.000000 15.000000 16.000000\n")
CASE(ozSFSphereBound, ozSphereBound, "ozSphereBound", ozSphereBound(1, 2, 3, 4), ozSphereBound(1, 2, 3, 5),
     "1.000000 2.000000 3.000000 5.000000")
CASE(ozSFBoxBound, ozBoxBound, "ozBoxBound", box(ozVec3f(1, 2, 3), ozVec3f(4, 5, 6)),
     box(ozVec3f(1, 2, 3), ozVec3f(4, 5, 7)), "1.000000 2.000000 3.000000 4.000000 5.000000 7.000000")

/// A container with one field whose value is a member, and one that owns its value.
template <class Field> class Holder : public ozContainer {
public:
  typedef typename Field::Value T;
  enum : short { VALUE, ALONE };

  Holder() : ozContainer(getClassType()) { initFieldDefaults(getClassType()); }
  ~Holder() override { destroyFieldContents(getClassType()); }
  ozContainer *instantiate() override { return new Holder; }
  static ozType *getClassType() {
    static ozType *const type = makeType();
    return type;
  }

  Field *value() { return static_cast<Field *>(getField(VALUE)); }
  Field *alone() { return static_cast<Field *>(getField(ALONE)); }
  ozSFValueInfo<Field, T> *info() {
    return static_cast<ozSFValueInfo<Field, T> *>(getClassType()->getFieldInfo(VALUE));
  }

  T member;
  std::vector<short> changes;

protected:
  void fieldChanged(short id) override {
    changes.push_back(id);
    ozContainer::fieldChanged(id);
  }

private:
  static ozType *makeType() {
    static char const *const names[] = {"ONE", "TWO"};
    static int const values[] = {1, 2};
    ozType *const type = new ozType(ozContainer::getClassType(), "Holder");
    Field::addTypeField(type, "value", VALUE, Case<Field>::standard(), &Holder::member);
    Field::addTypeField(type, "alone", ALONE, Case<Field>::standard(), nullptr);
    if (std::is_same<Field, ozSFEnum>::value) type->defineEnums(VALUE, 2, names, values);
    return type;
  }
};

typedef ::testing::Types<ozSFByte, ozSFUByte, ozSFShort, ozSFInt, ozSFUInt, ozSFFloat, ozSFDouble, ozSFEnum, ozSFTime,
                         ozSFBitMask, ozSFName, ozSFString, ozSFVec2f, ozSFVec3f, ozSFVec4f, ozSFVec2s, ozSFVec3s,
                         ozSFVec2i, ozSFVec3i, ozSFVec3b, ozSFVec4ub, ozSFRotation, ozSFMatrix4f, ozSFSphereBound,
                         ozSFBoxBound>
    AllSingleFields;

template <class Field> class SingleField : public ::testing::Test {
protected:
  typedef typename Field::Value T;
  T const standard = Case<Field>::standard(), other = Case<Field>::other();
  Holder<Field> a, b;
};
TYPED_TEST_SUITE(SingleField, AllSingleFields);

TYPED_TEST(SingleField, IsSetThroughItsDescriptionWithoutAnObject) {
  this->a.info()->set(&this->a, this->other);
  EXPECT_TRUE(this->a.member == this->other);
  EXPECT_EQ(1u, this->a.changes.size());
  EXPECT_EQ(nullptr, this->a.findFieldObject(0));
}

TYPED_TEST(SingleField, SettingThroughTheDescriptionReachesConnectedFields) {
  this->a.value()->connect(this->b.value());
  this->b.value()->get();
  this->a.info()->set(&this->a, this->other);
  EXPECT_TRUE(this->b.value()->isDirty());
  EXPECT_TRUE(this->b.value()->get() == this->other);
}

TYPED_TEST(SingleField, ItsClassIsRegisteredUnderTheValueTypesName) {
  EXPECT_STREQ(Case<TypeParam>::name(), TypeParam::getClassType()->getName());
  EXPECT_EQ(ozField::getClassType(), TypeParam::getClassType()->getAncestor());
  EXPECT_EQ(TypeParam::getClassType(), this->a.value()->getType());
  EXPECT_EQ(TypeParam::getClassType(), this->a.info()->getFieldType());
}

TYPED_TEST(SingleField, AnObjectStartsAtTheDefault) {
  EXPECT_TRUE(this->a.member == this->standard);
  EXPECT_TRUE(this->a.value()->isDefault());
  EXPECT_TRUE(this->a.info()->getDefault() == this->standard);
  typename TestFixture::T given = this->other;
  this->a.info()->getDefault(given);
  EXPECT_TRUE(given == this->standard);
}

TYPED_TEST(SingleField, SetStoresIntoTheMemberAndTellsTheContainer) {
  this->a.value()->set(this->other);
  EXPECT_TRUE(this->a.member == this->other);
  EXPECT_EQ(std::vector<short>{0}, this->a.changes);
  EXPECT_FALSE(this->a.value()->isDefault());
}

TYPED_TEST(SingleField, GetReadsTheMember) {
  this->a.member = this->other;
  EXPECT_TRUE(this->a.value()->get() == this->other);
  typename TestFixture::T given = this->standard;
  this->a.value()->get(given);
  EXPECT_TRUE(given == this->other);
  EXPECT_EQ(&this->a.member, this->a.value()->getStorage());
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(SingleField, GetPullsTheNewerValueOfAnInputAndIsDefaultDoesNot) {
  this->a.connect(0, &this->b, 0);
  this->a.value()->set(this->other);
  EXPECT_TRUE(this->b.value()->isDefault());
  EXPECT_TRUE(this->b.value()->isDirty());
  EXPECT_TRUE(this->b.value()->get() == this->other);
  EXPECT_EQ(std::vector<short>{0}, this->b.changes);
  EXPECT_FALSE(this->b.value()->isDefault());
}

TYPED_TEST(SingleField, CopyTakesTheSourcesValueAndTellsTheContainer) {
  this->a.member = this->other;
  this->b.value()->copy(this->a.value());
  EXPECT_TRUE(this->b.member == this->other);
  EXPECT_EQ(std::vector<short>{0}, this->b.changes);
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(SingleField, CopyValidatesTheSource) {
  Holder<TypeParam> source;
  source.member = this->other;
  source.connect(0, &this->a, 0);
  this->b.value()->copy(this->a.value());
  EXPECT_TRUE(this->b.member == this->other);
}

TYPED_TEST(SingleField, CopyOfAFieldOfAnotherClassDoesNothing) {
  Thing thing;
  this->a.value()->copy(thing.points());
  this->a.value()->copy(nullptr);
  EXPECT_TRUE(this->a.member == this->standard);
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(SingleField, TheDescriptionCopiesTheMemberAndTellsNobody) {
  this->a.member = this->other;
  this->a.info()->copy(&this->b, &this->a);
  EXPECT_TRUE(this->b.member == this->other);
  EXPECT_TRUE(this->a.changes.empty());
  EXPECT_TRUE(this->b.changes.empty());
}

TYPED_TEST(SingleField, TheDescriptionsCopyOfADefaultResetsTheDestination) {
  this->b.member = this->other;
  this->a.info()->copy(&this->b, &this->a);
  EXPECT_TRUE(this->b.member == this->standard);
}

TYPED_TEST(SingleField, ResetStoresTheDefaultAndTellsNobody) {
  this->a.member = this->other;
  this->a.info()->reset(&this->a);
  EXPECT_TRUE(this->a.member == this->standard);
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(SingleField, IsWrittenOnALineBehindTheIndentation) {
  this->a.member = this->other;
  EXPECT_EQ("\nHolder {\n  value " + std::string(Case<TypeParam>::text()) + "\n}", textOf(&this->a));
}

TYPED_TEST(SingleField, AtItsDefaultItWritesNothing) { EXPECT_EQ("\nHolder {\n}", textOf(&this->a)); }

TYPED_TEST(SingleField, WithoutAMemberTheFieldOwnsItsValueWhichStartsAtTheDefault) {
  EXPECT_EQ(nullptr, this->a.alone()->getStorage());
  EXPECT_EQ(0, this->a.alone()->getFieldInfo()->getOffset());
  EXPECT_TRUE(this->a.alone()->get() == this->standard);
  this->a.alone()->set(this->other);
  EXPECT_TRUE(this->a.alone()->get() == this->other);
  EXPECT_TRUE(this->a.member == this->standard);
  EXPECT_TRUE(this->b.alone()->get() == this->standard);
  EXPECT_EQ(std::vector<short>{1}, this->a.changes);
}

TYPED_TEST(SingleField, AFieldThatOwnsItsValueTakesPartInConnections) {
  this->a.connect(1, &this->b, 0);
  this->a.alone()->set(this->other);
  EXPECT_TRUE(this->b.value()->get() == this->other);
}

// ---- NaN

template <class Field> void expectNeverDefault(typename Field::Value const &nan) {
  Holder<Field> holder;
  holder.member = nan;
  EXPECT_FALSE(holder.value()->isDefault());
  EXPECT_NE("\nHolder {\n}", textOf(&holder));
}

TEST(FieldNaN, AValueWithANaNIsNeverTheDefaultAndIsWritten) {
  float const nan = std::numeric_limits<float>::quiet_NaN();
  expectNeverDefault<ozSFFloat>(nan);
  expectNeverDefault<ozSFDouble>(std::numeric_limits<double>::quiet_NaN());
  expectNeverDefault<ozSFTime>(ozTime(std::numeric_limits<double>::quiet_NaN()));
  expectNeverDefault<ozSFVec2f>(ozVec2f(1, nan));
  expectNeverDefault<ozSFVec3f>(ozVec3f(1, 2, nan));
  expectNeverDefault<ozSFVec4f>(ozVec4f(1, 2, nan, 4));
  expectNeverDefault<ozSFRotation>(degrees(0, 0, 1, nan));
  expectNeverDefault<ozSFSphereBound>(ozSphereBound(1, 2, 3, nan));
  expectNeverDefault<ozSFBoxBound>(box(ozVec3f(1, nan, 3), ozVec3f(4, 5, 6)));
  ozMatrix4f matrix;
  matrix[2][2] = nan;
  expectNeverDefault<ozSFMatrix4f>(matrix);
}

class NaNByDefault : public ozContainer {
  OZ_CLASS(NaNByDefault);

public:
  NaNByDefault();
  float _value;
};
OZ_DEFINE_CLASS(NaNByDefault, "NaNByDefault", ozContainer) {
  ozSFFloat::addTypeField(type, "value", 0, std::numeric_limits<float>::quiet_NaN(), &NaNByDefault::_value);
}

TEST(FieldNaN, EvenADefaultOfNaNIsNotEqualToItself) {
  NaNByDefault object;
  EXPECT_NE(object._value, object._value);
  EXPECT_FALSE(object.getField(0)->isDefault());
}

// ---- descriptions

TEST(FieldInfo, MatchesItsNameAndAliasesWholeAndCaseSensitive) {
  Stranger stranger;
  ozFieldInfo *const info = Stranger::getClassType()->getFieldInfo(0);
  EXPECT_TRUE(info->match("size"));
  EXPECT_FALSE(info->match("Size"));
  EXPECT_FALSE(info->match("siz"));
  EXPECT_FALSE(info->match("sizes"));
  EXPECT_FALSE(info->match("extent"));
  info->addAlias("extent");
  info->addAlias("width");
  EXPECT_TRUE(info->match("extent"));
  EXPECT_TRUE(info->match("width"));
  EXPECT_TRUE(info->match("size"));
  EXPECT_EQ(stranger.getField(0), stranger.getField("width"));
  EXPECT_STREQ("size", info->getName());
}

TEST(FieldInfo, NamesAreInterned) {
  char name[] = "fieldTestName";
  ozSFInt::addTypeField(new ozType(nullptr, "FieldTestInterned"), name, 0, 0, nullptr);
  ozFieldInfo *const info = ozType::getType("FieldTestInterned")->getFieldInfo(0);
  name[0] = 'X';
  EXPECT_STREQ("fieldTestName", info->getName());
  EXPECT_EQ(ozName("fieldTestName").getString(), info->getName());
}

TEST(FieldInfo, MapsEnumerationValuesBothWays) {
  ozFieldInfo *const info = Thing::getClassType()->getFieldInfo(Thing::COLOR);
  EXPECT_STREQ("BLUE", info->mapEnum(Thing::BLUE));
  EXPECT_STREQ("(nameless)", info->mapEnum(99));
  int value = -1;
  EXPECT_TRUE(info->findEnum("RED", value));
  EXPECT_EQ(Thing::RED, value);
  EXPECT_FALSE(info->findEnum("PINK", value));
}

TEST(FieldInfo, KnowsItsIdOffsetTypeAndStorage) {
  Thing thing;
  ozFieldInfo *const info = thing.getType()->getFieldInfo(Thing::VALUE);
  EXPECT_EQ(Thing::VALUE, info->getId());
  EXPECT_EQ(ozSFFloat::getClassType(), info->getFieldType());
  EXPECT_EQ(&thing._value, info->getStorage(&thing));
  EXPECT_EQ(reinterpret_cast<char *>(&thing._value) - reinterpret_cast<char *>(static_cast<ozContainer *>(&thing)),
            info->getOffset());
}

TEST(FieldInfo, InstantiateEntersTheFieldInTheContainer) {
  Thing thing;
  ozField *const made = thing.getType()->getFieldInfo(Thing::NUMBER)->instantiate(&thing);
  EXPECT_EQ(made, thing.getField(Thing::NUMBER));
}

TEST(FieldInfo, PreWriteTellsDefaultsAndBeginsTheLineOfOthers) {
  Thing thing;
  ozFieldInfo *const info = thing.getType()->getFieldInfo(Thing::NUMBER);
  char buffer[64] = {};
  FILE *const file = fmemopen(buffer, sizeof buffer, "w");
  {
    ozOutput out(file);
    out.pushIndent();
    EXPECT_EQ(1, info->preWrite(&out, &thing));
    thing._number = 1;
    EXPECT_EQ(0, info->preWrite(&out, &thing));
    info->write(&out); // does nothing
    thing.getField(Thing::NUMBER)->write(&out);
  }
  fclose(file);
  EXPECT_STREQ("  number   number 1\n", buffer);
}

TEST(FieldInfo, AnEnumerationValueWithoutANameLeavesTheLineOpen) {
  Thing thing;
  thing._color = static_cast<Thing::ColorEnum>(17);
  thing._number = 1;
  EXPECT_EQ("\nThing {\n  number 1\n  color }", textOf(&thing));
}

// ---- field objects

TEST(Field, ANewFieldIsCleanAndUnconnected) {
  Thing thing;
  ozField *const field = thing.getField(Thing::NUMBER);
  EXPECT_EQ(&thing, field->getParent());
  EXPECT_EQ(Thing::NUMBER, field->getId());
  EXPECT_EQ(thing.getType()->getFieldInfo(Thing::NUMBER), field->getFieldInfo());
  EXPECT_STREQ("number", field->getName());
  EXPECT_FALSE(field->isDirty());
  EXPECT_EQ(ozField::EVENT_ANY, field->getEventClass());
  EXPECT_EQ(nullptr, field->getSource());
  EXPECT_EQ(nullptr, field->getInputs());
  EXPECT_EQ(nullptr, field->getOutputs());
}

TEST(Field, EventClassesHaveTheirValues) {
  EXPECT_EQ(0, ozField::EVENT_ANY);
  EXPECT_EQ(1, ozField::EVENT_IN_ONLY);
  EXPECT_EQ(2, ozField::EVENT_OUT_ONLY);
  EXPECT_EQ(3, ozField::EVENT_FORWARD);
}

TEST(Field, ConnectingFromAnInOnlyFieldDoesNothing) {
  Thing a, b;
  a.number()->setEventClass(ozField::EVENT_IN_ONLY);
  EXPECT_EQ("", stderrOf([&] { a.connect(Thing::NUMBER, &b, Thing::NUMBER); }));
  EXPECT_EQ(nullptr, a.number()->getOutputs());
  EXPECT_EQ(nullptr, b.number()->getInputs());
  b.connect(Thing::NUMBER, &a, Thing::NUMBER);
  EXPECT_EQ(1u, a.number()->getInputs()->getCount()) << "as a target it serves";
}

TEST(Field, ConnectingToAnOutOnlyFieldDoesNothing) {
  Thing a, b;
  b.number()->setEventClass(ozField::EVENT_OUT_ONLY);
  EXPECT_EQ("", stderrOf([&] { a.connect(Thing::NUMBER, &b, Thing::NUMBER); }));
  EXPECT_EQ(nullptr, a.number()->getOutputs());
  EXPECT_EQ(nullptr, b.number()->getInputs());
  b.connect(Thing::NUMBER, &a, Thing::NUMBER);
  EXPECT_EQ(1u, b.number()->getOutputs()->getCount()) << "as a source it serves";
}

TEST(Field, AForwardingSingleValuedFieldAnnouncesItsChanges) {
  Thing a, b;
  a.number()->setEventClass(ozField::EVENT_FORWARD);
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  b.getNumber();
  a.changes.clear();
  a.number()->set(4);
  EXPECT_EQ(std::vector<short>{Thing::NUMBER}, a.changes);
  EXPECT_TRUE(b.number()->isDirty());
}

TEST(Field, FieldsOfDifferentClassesMayBeConnectedButMoveNothing) {
  Thing a, b;
  a.connect(Thing::VALUE, &b, Thing::NUMBER);
  a.setValue(3);
  EXPECT_TRUE(b.number()->isDirty());
  EXPECT_EQ(7, b.getNumber());
  EXPECT_FALSE(b.number()->isDirty());
}

TEST(Field, ValidateAndFieldChangedGoToTheContainer) {
  Thing a, b;
  a.connect(Thing::NUMBER, &b, Thing::NUMBER);
  a.setNumber(3);
  b.number()->validate();
  EXPECT_EQ(3, b._number);
  b.changes.clear();
  b.number()->fieldChanged();
  EXPECT_EQ(std::vector<short>{Thing::NUMBER}, b.changes);
}

TEST(Field, SetDirtySetsAndClearsTheFlagAndTheContainersBit) {
  Thing thing;
  thing.number()->setDirty(1);
  EXPECT_TRUE(thing.number()->isDirty());
  EXPECT_TRUE(thing.hasPendingFields());
  thing.number()->setDirty(0);
  EXPECT_FALSE(thing.number()->isDirty());
  EXPECT_FALSE(thing.hasPendingFields());
}

TEST(Field, ADirtyFieldWithoutASourceIsMerelyMarkedClean) {
  Thing thing;
  thing.number()->setDirty(1);
  EXPECT_EQ(7, thing.getNumber());
  EXPECT_FALSE(thing.number()->isDirty());
  EXPECT_TRUE(thing.changes.empty());
}

TEST(Field, TheMemberMayBeAnEnumeration) {
  Thing thing;
  EXPECT_EQ(Thing::GREEN, thing._color);
  thing.color()->set(Thing::BLUE);
  EXPECT_EQ(Thing::BLUE, thing._color);
}

/// A field with a high id, whose narrow bit stands for more ids than its own.
class Wide : public ozContainer {
  OZ_CLASS(Wide);

public:
  Wide();
};
OZ_DEFINE_CLASS(Wide, "Wide", ozContainer) {
  static char const *const names[] = {"f0",  "f1",  "f2",  "f3",  "f4",  "f5",  "f6",  "f7",  "f8",  "f9",  "f10",
                                      "f11", "f12", "f13", "f14", "f15", "f16", "f17", "f18", "f19", "f20", "f21",
                                      "f22", "f23", "f24", "f25", "f26", "f27", "f28", "f29", "f30", "f31"};
  for (short id = 0; id < 32; ++id) ozSFInt::addTypeField(type, names[id], id, id, nullptr);
}

TEST(Field, Id31WithAnInputIsCleanedWithoutHarm) {
  Wide a, b;
  a.connect(30, &b, 30);
  a.connect(31, &b, 31);
  static_cast<ozSFInt *>(a.getField(31))->set(5);
  b.cleanFields();
  EXPECT_FALSE(b.hasPendingFields());
  EXPECT_EQ(5, static_cast<ozSFInt *>(b.getField(31))->get());
}

} // namespace
