// The class names that a file may use: those that make an object, those that are refused, and all others.

#include <gtest/gtest.h>

#include "oz/vlDB.h"
#include "oz/vlError.h"
#include "oz/vlInput.h"
#include "readText.h"

namespace {

struct ClassRow {
  char const *name;
  char const *type;
};

class AcceptedClass : public ::testing::TestWithParam<ClassRow> {};

TEST_P(AcceptedClass, IsMade) {
  Reading const r(std::string("Group { children ") + GetParam().name + " { } }");
  EXPECT_EQ(std::string::npos, r.messages.find("class \"")) << r.messages;
  ozType *const type = ozType::getType(GetParam().type);
  ASSERT_NE(nullptr, type);
  if (type->isDerivedFrom(ozNode::getClassType())) {
    ASSERT_EQ(1, r.child<ozGroup>(0)->getChildCount());
    EXPECT_STREQ(GetParam().type, r.child<ozGroup>(0)->getChild(0)->getType()->getName());
  } else { // the group names the class that it refuses
    EXPECT_NE(std::string::npos, r.messages.find(std::string("Bad type - ") + GetParam().type + " not derived"));
  }
}

INSTANTIATE_TEST_SUITE_P(
    Table, AcceptedClass,
    ::testing::Values(
        ClassRow{"LineSet", "LineSet"}, ClassRow{"LineStripSet", "LineStripSet"}, ClassRow{"TriSet", "TriSet"},
        ClassRow{"QuadSet", "QuadSet"}, ClassRow{"PolySet", "PolySet"}, ClassRow{"TriStripSet", "TriStripSet"},
        ClassRow{"IndexedLineSet", "IndexedLineSet"}, ClassRow{"IndexSet", "IndexSet"},
        ClassRow{"SphereSensor", "SphereSensor"}, ClassRow{"PlaneSensor", "PlaneSensor"},
        ClassRow{"Appearance", "Appearance"}, ClassRow{"Billboard", "Billboard"}, ClassRow{"Box", "Box"},
        ClassRow{"Cone", "Cone"}, ClassRow{"Cylinder", "Cylinder"}, ClassRow{"Sphere", "Sphere"},
        ClassRow{"Collision", "Collision"}, ClassRow{"Color", "ColorSet3f"},
        ClassRow{"ColorInterpolator", "ColorInterpolator"}, ClassRow{"Coordinate", "CoordSet3f"},
        ClassRow{"CoordinateInterpolator", "CoordinateInterpolator"}, ClassRow{"DirectionalLight", "DirectionalLight"},
        ClassRow{"Environment", "Environment"}, ClassRow{"Group", "Group"}, ClassRow{"ImageTexture", "ImageTexture"},
        ClassRow{"IndexedFaceSet", "IndexedFaceSet"}, ClassRow{"Material", "Material"},
        ClassRow{"Normal", "NormalSet3f"}, ClassRow{"NormalInterpolator", "NormalInterpolator"},
        ClassRow{"OrientationInterpolator", "OrientationInterpolator"}, ClassRow{"PointLight", "PointLight"},
        ClassRow{"PositionInterpolator", "PositionInterpolator"}, ClassRow{"ScalarInterpolator", "ScalarInterpolator"},
        ClassRow{"Shape", "Shape"}, ClassRow{"Switch", "Switch"}, ClassRow{"TextureCoordinate", "TexCoordSet2f"},
        ClassRow{"TimeSensor", "TimeSensor"}, ClassRow{"TouchSensor", "TouchSensor"},
        ClassRow{"Transform", "Transform"}, ClassRow{"Inline", "Inline"}),
    [](auto const &info) { return std::string(info.param.name); });

class RefusedClass : public ::testing::TestWithParam<char const *> {};

TEST_P(RefusedClass, IsToldAsUnsupported) {
  EXPECT_EQ(std::string("vl read error: Unsupported class \"") + GetParam() + "\"\n",
            Reading(std::string(GetParam()) + " { field { } } Group { }").said());
}

INSTANTIATE_TEST_SUITE_P(Table, RefusedClass,
                         ::testing::Values("Background", "BoxProximitySensor", "ClickSensor", "CylinderSensor",
                                           "DirectedSound", "DiskSensor", "ElevationGrid", "Fog", "FontStyle",
                                           "GeneralCylinder", "LOD", "NavigationInfo", "PointSet", "PointSound",
                                           "Script", "SpotLight", "Text", "Texture2Transform", "Viewpoint", "WorldInfo",
                                           "WWWAnchor"));

class UnknownClass : public ::testing::TestWithParam<char const *> {};

TEST_P(UnknownClass, IsToldAsUnknown) {
  EXPECT_EQ(std::string("vl read error: Unknown class \"") + GetParam() + "\"\n",
            Reading(std::string(GetParam()) + " { } Group { }").said());
}

INSTANTIATE_TEST_SUITE_P(Names, UnknownClass,
                         ::testing::Values("Anchor", "Extrusion", "TriFanSet", "CoordSet3f", "ScreenAlignedText"));

} // namespace
