#include "oz/ozInline.h"

OZ_DEFINE_INSTANCES(ozInline)

OZ_DEFINE_TYPE(ozInline, "Inline", ozSwitch) {
  ozMFString::addTypeField(type, "url", 4, &ozInline::_url);
  ozSFVec3f::addTypeField(type, "bboxSize", 5, ozVec3f(0, 0, 0), &ozInline::_bboxSize);
  ozSFVec3f::addTypeField(type, "bboxCenter", 6, ozVec3f(0, 0, 0), &ozInline::_bboxCenter);
}

ozInline::ozInline(ozType *type) : ozSwitch(type) {
  initFieldDefaults(_ClassType);
  _urlField = static_cast<ozMFString *>(getField(4));
}

ozInline::~ozInline() {
  destroyFieldContents(_ClassType);
  _url.freeTexts();
}

void ozInline::getBboxSize(ozVec3f &size) { size = read(5, _bboxSize); }
void ozInline::getBboxSize(float *x, float *y, float *z) { read(5, _bboxSize).get(x, y, z); }
void ozInline::setBboxSize(ozVec3f const &size) { store(5, _bboxSize, size); }
void ozInline::setBboxSize(float x, float y, float z) { store(5, _bboxSize, ozVec3f(x, y, z)); }
void ozInline::getBboxCenter(ozVec3f &center) { center = read(6, _bboxCenter); }
void ozInline::getBboxCenter(float *x, float *y, float *z) { read(6, _bboxCenter).get(x, y, z); }
void ozInline::setBboxCenter(ozVec3f const &center) { store(6, _bboxCenter, center); }
void ozInline::setBboxCenter(float x, float y, float z) { store(6, _bboxCenter, ozVec3f(x, y, z)); }
