#include "geometry/geometryFixture.h"

namespace {

TEST(OverrideGeoProp, IsAnObjectAndNoContainer) {
  EXPECT_STREQ(ozOverrideGeoProp::getClassType()->getName(), "OverrideGeoProp");
  EXPECT_EQ(ozOverrideGeoProp::getClassType()->getAncestor(), ozObject::getClassType());
}

TEST(OverrideGeoProp, SetsNothingAtFirst) {
  Held<ozOverrideGeoProp> properties(new ozOverrideGeoProp);
  ozBitMask mask(1);
  properties->getOverride(mask);
  EXPECT_EQ(mask.getMask(), 0);
  EXPECT_EQ(properties->getCullFace(), ozContext::NO_CULL);
}

TEST(OverrideGeoProp, MarksWhatIsSet) {
  Held<ozOverrideGeoProp> properties(new ozOverrideGeoProp);
  ozBitMask mask;
  properties->setCullFace(ozContext::FRONT_CULL);
  properties->getOverride(mask);
  EXPECT_EQ(mask.getMask(), 1LL << 29);
  properties->setLineWidth(3);
  properties->getOverride(mask);
  EXPECT_EQ(mask.getMask(), 1LL << 29 | 1LL << 30);
  properties->setPointSize(5);
  properties->getOverride(mask);
  EXPECT_EQ(mask.getMask(), 1LL << 29 | 1LL << 30 | 1LL << 31);
  EXPECT_EQ(properties->getCullFace(), ozContext::FRONT_CULL);
  EXPECT_EQ(properties->getLineWidth(), 3.0f);
  EXPECT_EQ(properties->getPointSize(), 5.0f);
}

TEST(OverrideGeoProp, TakesAMaskAsItIs) {
  Held<ozOverrideGeoProp> properties(new ozOverrideGeoProp);
  ozBitMask mask, got;
  mask.onBit(30);
  properties->setOverride(mask);
  properties->getOverride(got);
  EXPECT_EQ(got.getMask(), 1LL << 30);
}

TEST(OverrideGeoProp, GivesTheRecordThatItFills) {
  Held<ozOverrideGeoProp> properties(new ozOverrideGeoProp);
  properties->setLineWidth(7);
  EXPECT_EQ(properties->getGfx()->lineWidth, 7.0f);
  EXPECT_EQ(properties->getGfx()->mask.getMask(), 1LL << 30);
}

class OverrideGeoPropDraw : public DrawTest {};

TEST_F(OverrideGeoPropDraw, WinsOverTheGeometrysOwnWidth) {
  Held<ozLineSet> lines(new ozLineSet);
  lines->setCoordSet(coordSet(somePoints(2)));
  lines->setPrimCount(1);
  lines->setWidth(2);
  ozOverrideGeoProp *const properties = new ozOverrideGeoProp;
  properties->setLineWidth(6);
  context->pushOverrideGeoProp(properties);
  {
    GLRecorder rec;
    lines->draw(&action);
    EXPECT_EQ(rec.count("glLineWidth(6)"), 1);
    EXPECT_EQ(rec.count("glLineWidth"), 1);
  }
  context->popOverrideGeoProp();
  GLRecorder rec;
  lines->draw(&action);
  EXPECT_EQ(rec.count("glLineWidth(2)"), 1);
}

} // namespace
