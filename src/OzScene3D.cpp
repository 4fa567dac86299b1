// The one source that knows every room: it registers all classes in the library's fixed order.

#include "oz/OzScene3D.h"

namespace {

typedef ozType *(*ClassType)();

// The order decides object ids, dispatch ids and which class of a pair holds a shared name. It follows no other rule.
// ozSoundPlayer ahead of the fields is meant: it pulls in nodes, and these the field classes that they need.
ClassType const Classes[] = {
    ozObject::getClassType,
    ozData::getClassType,
    ozContainer::getClassType,
    ozContext::getClassType,
    ozField::getClassType,
    ozSFByte::getClassType,
    ozSFUByte::getClassType,
    ozSFShort::getClassType,
    ozSFInt::getClassType,
    ozSFUInt::getClassType,
    ozSFFloat::getClassType,
    ozSFDouble::getClassType,
    ozSFEnum::getClassType,
    ozSFRef::getClassType,
    ozSFVec2f::getClassType,
    ozSFVec3f::getClassType,
    ozSFVec4f::getClassType,
    ozSFVec2s::getClassType,
    ozSFVec3s::getClassType,
    ozSFVec2i::getClassType,
    ozSFVec3i::getClassType,
    ozSFVec3b::getClassType,
    ozSFVec4ub::getClassType,
    ozSFBitMask::getClassType,
    ozSFName::getClassType,
    ozSFMatrix4f::getClassType,
    ozSFRotation::getClassType,
    ozSFSphereBound::getClassType,
    ozSFBoxBound::getClassType,
    ozSFString::getClassType,
    ozSFTime::getClassType,
    ozMField::getClassType,
    ozMFByte::getClassType,
    ozMFUByte::getClassType,
    ozMFShort::getClassType,
    ozMFInt::getClassType,
    ozMFUInt::getClassType,
    ozMFFloat::getClassType,
    ozMFVec2f::getClassType,
    ozMFVec3f::getClassType,
    ozMFVec4f::getClassType,
    ozMFVec2s::getClassType,
    ozMFVec3s::getClassType,
    ozMFVec2i::getClassType,
    ozMFVec3i::getClassType,
    ozMFVec3b::getClassType,
    ozMFVec4ub::getClassType,
    ozMFMatrix4f::getClassType,
    ozMFRotation::getClassType,
    ozMFRef::getClassType,
    ozMFString::getClassType,
    ozIndexSet::getClassType,
    ozCoordSet::getClassType,
    ozNormalSet::getClassType,
    ozColorSet::getClassType,
    ozTexCoordSet::getClassType,
    ozCoordSet3f::getClassType,
    ozNormalSet3f::getClassType,
    ozNormalSet3s::getClassType,
    ozColorSet3f::getClassType,
    ozColorSet4f::getClassType,
    ozTexCoordSet2f::getClassType,
    ozGeometry::getClassType,
    ozGeoSet::getClassType,
    ozPointSet::getClassType,
    ozLineSet::getClassType,
    ozLineStripSet::getClassType,
    ozTriSet::getClassType,
    ozTriStripSet::getClassType,
    ozTriFanSet::getClassType,
    ozQuadSet::getClassType,
    ozPolySet::getClassType,
    ozImage::getClassType,
    ozTexture::getClassType,
    ozImageTexture::getClassType,
    ozTexGen::getClassType,
    ozMaterial::getClassType,
    ozAppearance::getClassType,
    ozCamera::getClassType,
    ozOrthoCamera::getClassType,
    ozPerspCamera::getClassType,
    ozAction::getClassType,
    ozDrawAction::getClassType,
    ozIsectAction::getClassType,
    ozHit::getClassType,
};

} // namespace

void ozObject::initClasses() {
  static bool done = false;
  if (done) return;
  done = true; // first: registration may come back here
  for (ClassType getClassType : Classes) getClassType();
}
