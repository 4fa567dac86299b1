#include <gtest/gtest.h>

#include <vector>

#include "core/ArrayElements.h"
#include "core/testContainers.h"

namespace {

template <class Field> struct ArrayOf;
template <> struct ArrayOf<ozMFByte> { typedef ozByteArray Type; };
template <> struct ArrayOf<ozMFUByte> { typedef ozUByteArray Type; };
template <> struct ArrayOf<ozMFShort> { typedef ozShortArray Type; };
template <> struct ArrayOf<ozMFInt> { typedef ozIntArray Type; };
template <> struct ArrayOf<ozMFUInt> { typedef ozUIntArray Type; };
template <> struct ArrayOf<ozMFFloat> { typedef ozFloatArray Type; };
template <> struct ArrayOf<ozMFVec2f> { typedef ozVec2fArray Type; };
template <> struct ArrayOf<ozMFVec3f> { typedef ozVec3fArray Type; };
template <> struct ArrayOf<ozMFVec4f> { typedef ozVec4fArray Type; };
template <> struct ArrayOf<ozMFVec2s> { typedef ozVec2sArray Type; };
template <> struct ArrayOf<ozMFVec3s> { typedef ozVec3sArray Type; };
template <> struct ArrayOf<ozMFVec2i> { typedef ozVec2iArray Type; };
template <> struct ArrayOf<ozMFVec3i> { typedef ozVec3iArray Type; };
template <> struct ArrayOf<ozMFVec3b> { typedef ozVec3bArray Type; };
template <> struct ArrayOf<ozMFVec4ub> { typedef ozVec4ubArray Type; };
template <> struct ArrayOf<ozMFMatrix4f> { typedef ozMatrix4fArray Type; };
template <> struct ArrayOf<ozMFRotation> { typedef ozRotationArray Type; };
template <> struct ArrayOf<ozMFString> { typedef ozStringArray Type; };

typedef ::testing::Types<ozMFByte, ozMFUByte, ozMFShort, ozMFInt, ozMFUInt, ozMFFloat, ozMFVec2f, ozMFVec3f, ozMFVec4f,
                         ozMFVec2s, ozMFVec3s, ozMFVec2i, ozMFVec3i, ozMFVec3b, ozMFVec4ub, ozMFMatrix4f, ozMFRotation,
                         ozMFString>
    AllMultiFields;

/// A container with one field whose array is a member, and one that owns its array.
template <class Field> class Holder : public ozContainer {
public:
  enum : short { VALUES, ALONE };

  Holder() : ozContainer(getClassType()) { initFieldDefaults(getClassType()); }
  ~Holder() override { destroyFieldContents(getClassType()); }
  ozContainer *instantiate() override { return new Holder; }
  static ozType *getClassType() {
    static ozType *const type = makeType();
    return type;
  }

  Field *values() { return static_cast<Field *>(getField(VALUES)); }
  Field *alone() { return static_cast<Field *>(getField(ALONE)); }
  ozFieldInfo *info() { return getClassType()->getFieldInfo(VALUES); }
  void touch() { touchField(VALUES); }

  Tested<typename ArrayOf<Field>::Type> member;
  std::vector<short> changes;

protected:
  void fieldChanged(short id) override {
    changes.push_back(id);
    ozContainer::fieldChanged(id);
  }

private:
  static ozType *makeType() {
    ozType *const type = new ozType(ozContainer::getClassType(), "Holder");
    Field::addTypeField(type, "values", VALUES, &Holder::member);
    Field::addTypeField(type, "alone", ALONE, nullptr);
    return type;
  }
};

template <class Field> class MultiField : public ::testing::Test {
protected:
  typedef typename Field::Value T;
  typedef Tested<typename ArrayOf<Field>::Type> Array;

  Holder<Field> a, b, c;
  T elements[4] = {element<T>(0), element<T>(1), element<T>(2), element<T>(3)};
  Array source;

  void SetUp() override { source.appendElements(3); }
  static std::vector<short> once() { return {Holder<Field>::VALUES}; }
};
TYPED_TEST_SUITE(MultiField, AllMultiFields);

TYPED_TEST(MultiField, ItsClassSharesTheNameOfTheSingleValuedOneAndDerivesFromMField) {
  EXPECT_EQ(ozMField::getClassType(), TypeParam::getClassType()->getAncestor());
  EXPECT_EQ(TypeParam::getClassType(), this->a.values()->getType());
  EXPECT_EQ(TypeParam::getClassType(), this->a.info()->getFieldType());
}

TYPED_TEST(MultiField, AtCount0ItIsAtItsDefaultAndWritesNothingThoughItsSizeMayBeLarge) {
  this->a.values()->setSize(100);
  EXPECT_EQ(0u, this->a.values()->getCount());
  EXPECT_EQ(100u, this->a.values()->getSize());
  EXPECT_TRUE(this->a.values()->isDefault());
  EXPECT_EQ("\nHolder {\n}", textOf(&this->a));
  this->a.values()->setCount(1);
  EXPECT_FALSE(this->a.values()->isDefault());
}

TYPED_TEST(MultiField, IsWrittenAsItsArrayOnALineOfItsOwn) {
  this->a.member.appendElements(2);
  EXPECT_EQ("\nHolder {\n  values " + textOf(this->a.member, 1) + "\n}", textOf(&this->a));
}

TYPED_TEST(MultiField, ReadsTheMember) {
  typedef typename TestFixture::T T;
  this->a.member.appendElements(3);
  TypeParam *const values = this->a.values();
  EXPECT_EQ(&this->a.member, &values->get());
  EXPECT_EQ(static_cast<void *>(static_cast<ozArray *>(&this->a.member)), values->getStorage());
  EXPECT_EQ(3u, values->getCount());
  EXPECT_EQ(this->a.member.getSize(), values->getSize());
  EXPECT_EQ(0, values->getOffset());
  EXPECT_EQ(static_cast<short>(sizeof(T)), values->getStride());
  EXPECT_TRUE(values->get(1) == element<T>(1));
  EXPECT_TRUE((*values)[2] == element<T>(2));
  T out{};
  values->get(1, out);
  EXPECT_TRUE(out == element<T>(1));
  T range[2] = {};
  values->getRange(1, 2, range);
  EXPECT_TRUE(range[0] == element<T>(1));
  EXPECT_TRUE(range[1] == element<T>(2));
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(MultiField, EachEditIsStoredAndAnnouncedOnce) {
  TypeParam *const values = this->a.values();
  values->set(this->source);
  EXPECT_EQ("0 1 2", this->a.member.numbers());
  EXPECT_EQ(this->once(), this->a.changes);
  this->a.changes.clear();
  values->set(1, this->elements[3]);
  EXPECT_EQ("0 3 2", this->a.member.numbers());
  EXPECT_EQ(this->once(), this->a.changes);
  this->a.changes.clear();
  values->setRange(2, 3, this->elements);
  EXPECT_EQ("0 3 0 1 2", this->a.member.numbers());
  EXPECT_EQ(this->once(), this->a.changes);
  this->a.changes.clear();
  values->fillRange(0, 2, this->elements[2]);
  EXPECT_EQ("2 2 0 1 2", this->a.member.numbers());
  EXPECT_EQ(this->once(), this->a.changes);
  this->a.changes.clear();
  values->setCount(1);
  EXPECT_EQ("2", this->a.member.numbers());
  EXPECT_EQ(this->once(), this->a.changes);
  this->a.changes.clear();
  values->setSize(40);
  EXPECT_EQ(40u, this->a.member.getSize());
  EXPECT_EQ(this->once(), this->a.changes);
}

TYPED_TEST(MultiField, EditsThroughTheRawArrayStayUnseenUntilEditDone) {
  typedef typename TestFixture::T T;
  this->a.values()->set(this->source);
  this->a.connect(0, &this->b, 0);
  EXPECT_EQ(3u, this->b.values()->getCount());
  this->a.changes.clear();
  T *const raw = this->a.values()->edit();
  EXPECT_EQ(this->a.member.getArray(), raw);
  raw[0] = this->elements[3];
  EXPECT_TRUE(this->a.changes.empty());
  EXPECT_FALSE(this->b.values()->isDirty());
  EXPECT_TRUE(this->b.values()->get(0) == this->elements[0]);
  this->a.values()->editDone();
  EXPECT_EQ(this->once(), this->a.changes);
  EXPECT_TRUE(this->b.values()->get(0) == this->elements[3]);
}

TYPED_TEST(MultiField, EveryReadPullsTheNewerArrayOfAnInput) {
  typedef typename TestFixture::T T;
  this->a.connect(0, &this->b, 0);
  TypeParam *const in = this->a.values(), *const out = this->b.values();
  in->set(this->source);
  EXPECT_TRUE(out->isDefault()) << "this one does not validate";
  EXPECT_EQ(3u, out->getCount());
  in->setSize(64);
  in->setCount(2);
  EXPECT_LE(2u, out->getSize());
  EXPECT_EQ(2u, this->b.member.getCount());
  in->set(0, this->elements[3]);
  EXPECT_TRUE((*out)[0] == this->elements[3]);
  in->set(0, this->elements[1]);
  T got{};
  out->get(0, got);
  EXPECT_TRUE(got == this->elements[1]);
  in->set(0, this->elements[2]);
  out->getRange(0, 1, &got);
  EXPECT_TRUE(got == this->elements[2]);
  in->set(0, this->elements[3]);
  EXPECT_TRUE(out->edit()[0] == this->elements[3]);
}

TYPED_TEST(MultiField, CopyValidatesTheSourceTakesItsElementsAndTells) {
  this->a.connect(0, &this->b, 0);
  this->a.values()->set(this->source);
  this->c.values()->copy(this->b.values());
  EXPECT_EQ("0 1 2", this->c.member.numbers());
  EXPECT_EQ(this->once(), this->c.changes);
  EXPECT_NE(this->b.member.getArray(), this->c.member.getArray());
}

TYPED_TEST(MultiField, CopyOfAFieldOfAnotherClassDoesNothing) {
  Thing thing;
  this->a.values()->set(this->source);
  this->a.changes.clear();
  this->a.values()->copy(thing.number());
  this->a.values()->copy(nullptr);
  EXPECT_EQ("0 1 2", this->a.member.numbers());
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(MultiField, TheDescriptionCopiesTheArrayWhateverItsStateAndTellsNobody) {
  this->a.member.appendElements(3);
  this->a.info()->copy(&this->b, &this->a);
  EXPECT_EQ("0 1 2", this->b.member.numbers());
  this->a.member.setCount(0);
  this->a.info()->copy(&this->b, &this->a);
  EXPECT_EQ(0u, this->b.member.getCount());
  EXPECT_TRUE(this->a.changes.empty());
  EXPECT_TRUE(this->b.changes.empty());
}

TYPED_TEST(MultiField, ResetEmptiesTheArrayAndKeepsItsStorage) {
  this->a.member.appendElements(3);
  void *const storage = this->a.member.getArray();
  this->a.info()->reset(&this->a);
  EXPECT_EQ(0u, this->a.member.getCount());
  EXPECT_EQ(storage, static_cast<void *>(this->a.member.getArray()));
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(MultiField, AForwardingFieldMakesEachEditOnAllItsOutputsAndTellsNobody) {
  TypeParam *const values = this->a.values();
  values->setEventClass(ozField::EVENT_FORWARD);
  this->a.connect(0, &this->b, 0);
  this->a.connect(0, &this->c, 0);
  auto const expectBoth = [&](char const *numbers) {
    EXPECT_EQ(numbers, this->a.member.numbers());
    EXPECT_TRUE(this->a.changes.empty());
    for (Holder<TypeParam> *output : {&this->b, &this->c}) {
      EXPECT_EQ(numbers, output->member.numbers());
      EXPECT_EQ(this->once(), output->changes);
      EXPECT_FALSE(output->values()->isDirty());
      output->changes.clear();
    }
  };
  values->set(this->source);
  expectBoth("0 1 2");
  values->set(1, this->elements[3]);
  expectBoth("0 3 2");
  values->setRange(2, 3, this->elements);
  expectBoth("0 3 0 1 2");
  values->fillRange(0, 2, this->elements[2]);
  expectBoth("2 2 0 1 2");
  values->setCount(2);
  expectBoth("2 2");
  values->setSize(50);
  expectBoth("2 2");
  EXPECT_EQ(50u, this->b.member.getSize());
}

TYPED_TEST(MultiField, AForwardedEditIsForwardedOn) {
  this->a.values()->setEventClass(ozField::EVENT_FORWARD);
  this->b.values()->setEventClass(ozField::EVENT_FORWARD);
  this->a.connect(0, &this->b, 0);
  this->b.connect(0, &this->c, 0);
  this->c.values()->getCount(); // settles what the connections marked
  this->c.changes.clear();
  this->a.values()->set(this->source);
  EXPECT_TRUE(this->b.changes.empty());
  EXPECT_EQ("0 1 2", this->c.member.numbers());
  EXPECT_EQ(this->once(), this->c.changes);
}

TYPED_TEST(MultiField, AForwardingFieldWithoutOutputsTellsNobody) {
  TypeParam *const values = this->a.values();
  values->setEventClass(ozField::EVENT_FORWARD);
  values->set(this->source);
  values->set(0, this->elements[1]);
  values->setRange(0, 1, this->elements);
  values->fillRange(0, 1, this->elements[1]);
  values->setCount(2);
  values->setSize(20);
  EXPECT_EQ("1 1", this->a.member.numbers());
  EXPECT_TRUE(this->a.changes.empty());
}

TYPED_TEST(MultiField, WithoutAMemberTheFieldOwnsItsArray) {
  EXPECT_EQ(nullptr, this->a.alone()->getStorage());
  EXPECT_EQ(0u, this->a.alone()->getCount());
  this->a.alone()->set(0, this->elements[2]);
  EXPECT_TRUE(this->a.alone()->get(0) == this->elements[2]);
  EXPECT_EQ(0u, this->a.member.getCount());
  EXPECT_EQ(0u, this->b.alone()->getCount());
  this->a.alone()->edit()[0] = typename TestFixture::T(); // a string's text is for whoever stored it to free
}

TYPED_TEST(MultiField, TheExtensionIsTheArrays) {
  this->a.values()->setExtension(5);
  EXPECT_EQ(5u, this->a.member.getExtension());
  EXPECT_TRUE(this->a.changes.empty());
}

TEST(MultiFieldForms, ElementsStandOnALineEach) {
  Holder<ozMFInt> holder;
  holder.member.append(1);
  holder.member.append(-2);
  EXPECT_EQ("\nHolder {\n  values [\n  1,\n  -2,\n  ]\n}", textOf(&holder));
}

TEST(MultiFieldForwarding, OutputsOfAnotherClassAreLeftAloneButTakeACount) {
  Holder<ozMFInt> from;
  Holder<ozMFFloat> to;
  from.values()->setEventClass(ozField::EVENT_FORWARD);
  from.connect(0, &to, 0);
  from.values()->set(0, 5);
  EXPECT_EQ(0u, to.member.getCount());
  from.values()->setCount(4);
  EXPECT_EQ(4u, to.member.getCount());
  EXPECT_EQ(1u, to.changes.size());
}

TEST(MultiFieldForwarding, SingleValuedOutputsArePassedOver) {
  Holder<ozMFInt> from;
  Thing to;
  from.values()->setEventClass(ozField::EVENT_FORWARD);
  from.connect(0, &to, Thing::NUMBER);
  from.values()->set(0, 5);
  from.values()->setCount(2);
  EXPECT_TRUE(to.changes.empty());
  EXPECT_EQ(7, to._number);
}

TEST(MultiFieldView, OffsetAndStrideAreTheArrays) {
  ozData *const data = new (64) ozData;
  data->ref();
  {
    class View : public ozContainer {
    public:
      explicit View(ozData *data) : ozContainer(getClassType()), array(data, 8, 16) {}
      ozContainer *instantiate() override { return nullptr; }
      static ozType *getClassType() {
        static ozType *type = nullptr;
        if (!type) {
          type = new ozType(ozContainer::getClassType(), "View");
          ozMFFloat::addTypeField(type, "values", 0, &View::array);
        }
        return type;
      }
      ozFloatArray array;
    };
    View view(data);
    auto *const values = static_cast<ozMFFloat *>(view.getField(0));
    EXPECT_EQ(8, values->getOffset());
    EXPECT_EQ(16, values->getStride());
  }
  data->unref();
}

} // namespace
