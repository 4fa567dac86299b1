#include <gtest/gtest.h>

#include <set>

#include "oz/OzScene3D.h"

// Nothing but initClasses registers anything here ahead of the tests.

namespace {

struct InitClasses : ::testing::Test {
  static void SetUpTestSuite() { ozObject::initClasses(); }
};

TEST_F(InitClasses, TheRootsComeFirst) {
  EXPECT_EQ(0, ozObject::getClassType()->getObjectID());
  EXPECT_EQ(1, ozData::getClassType()->getObjectID());
  EXPECT_EQ(2, ozContainer::getClassType()->getObjectID());
}

TEST_F(InitClasses, VectorNamesFindTheMultiValuedClasses) {
  EXPECT_EQ(ozMFVec3f::getClassType(), ozType::getType("ozVec3f"));
  EXPECT_STREQ("ozVec3f", ozSFVec3f::getClassType()->getName());
  EXPECT_EQ(ozMFFloat::getClassType(), ozType::getType("ozFloat"));
  EXPECT_EQ(ozMFShort::getClassType(), ozType::getType("ozShort"));
  EXPECT_EQ(ozMFRotation::getClassType(), ozType::getType("ozRotation"));
}

// The sound player, ahead of the fields, pulls in the audio clip. Its "url" registers the multi-valued class first; the
// texts and flags behind that then take the name over.
TEST_F(InitClasses, TextsAndFlagsFindTheSingleValuedClassesThatTheAudioClipTouchesLater) {
  EXPECT_EQ(ozSFString::getClassType(), ozType::getType("ozString"));
  EXPECT_EQ(ozSFUByte::getClassType(), ozType::getType("ozUByte"));
}

// The listed order of all classes that are no fields, by registered name.
char const *const Order[] = {"Object",
                             "Data",
                             "Container",
                             "SoundPlayer",
                             "Context",
                             "IndexSet",
                             "CoordSet",
                             "NormalSet",
                             "ColorSet",
                             "TexCoordSet",
                             "CoordSet3f",
                             "NormalSet3f",
                             "NormalSet3s",
                             "ColorSet3f",
                             "ColorSet4f",
                             "TexCoordSet2f",
                             "Geometry",
                             "GeoSet",
                             "PointSet",
                             "LineSet",
                             "LineStripSet",
                             "IndexedLineSet",
                             "TriSet",
                             "TriStripSet",
                             "TriFanSet",
                             "QuadSet",
                             "PolySet",
                             "IndexedFaceSet",
                             "Box",
                             "Sphere",
                             "Cone",
                             "Cylinder",
                             "Audio",
                             "AudioSamples",
                             "Image",
                             "Texture",
                             "ImageTexture",
                             "TexGen",
                             "Material",
                             "Appearance",
                             "AudioClip",
                             "Camera",
                             "OrthoCamera",
                             "PerspCamera",
                             "Microphone",
                             "ozAction",
                             "ozDrawAction",
                             "IsectAction",
                             "SoundAction",
                             "Hit",
                             "Node",
                             "Light",
                             "DirectionalLight",
                             "PointLight",
                             "SpotLight",
                             "Shape",
                             "Sound",
                             "Group",
                             "Switch",
                             "Collision",
                             "Inline",
                             "Transform",
                             "Environment",
                             "Billboard",
                             "Engine",
                             "MorphEng",
                             "MorphEng4f",
                             "MorphEng3f",
                             "TransformEng",
                             "TransformEng3f",
                             "SelectorEng",
                             "SelectorEng4f",
                             "SelectorEng3f",
                             "Spline",
                             "TimeSensor",
                             "PickSensor",
                             "TouchSensor",
                             "SphereSensor",
                             "PlaneSensor",
                             "Interpolator",
                             "ColorInterpolator",
                             "ScalarInterpolator",
                             "PositionInterpolator",
                             "CoordinateInterpolator",
                             "OrientationInterpolator",
                             "NormalInterpolator",
                             "BlendEquation",
                             "PolygonOffset",
                             "SwitchContext",
                             "LogicOp"};

// What registers along with a class: its parents, and the classes that its reference fields accept.
void addNeeded(ozType *type, std::set<ozType *> &needed) {
  if (!type || !needed.insert(type).second) return;
  addNeeded(type->getAncestor(), needed);
  for (int id = type->getAncestorFieldCount(); id < type->getFieldInfoCount(); ++id)
    if (auto *const info = dynamic_cast<ozRefInfo *>(type->getFieldInfo(id))) addNeeded(info->getRefType(), needed);
}

TEST_F(InitClasses, ClassesRegisterInTheListedOrderSaveForThoseThatOthersNeed) {
  std::set<ozType *> needed;
  addNeeded(ozContext::getClassType(), needed); // whatever owns graphics state asks for it first
  int highest = -1;
  for (char const *name : Order) {
    ozType *const type = ozType::getType(name);
    if (!type) continue;
    if (needed.count(type)) continue;
    EXPECT_GT(type->getObjectID(), highest) << name;
    std::set<ozType *> with;
    addNeeded(type, with);
    for (ozType *one : with) {
      needed.insert(one);
      if (one->getObjectID() > highest) highest = one->getObjectID();
    }
  }
  EXPECT_GT(highest, 20);
}

} // namespace
