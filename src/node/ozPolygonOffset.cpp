#include "oz/ozPolygonOffset.h"

#include <GL/gl.h>

#include "node/glSupport.h"
#include "node/visit.h"
#include "oz/ozDrawAction.h"

int ozPolygonOffset::_supported = -1;

OZ_DEFINE_INSTANCES(ozPolygonOffset)

OZ_DEFINE_TYPE(ozPolygonOffset, "PolygonOffset", ozGroup) {
  ozSFInt::addTypeField(type, "offsetType", 3, FILL_OFFSET, &ozPolygonOffset::_offsetType);
  ozSFFloat::addTypeField(type, "factor", 4, 0.0f, &ozPolygonOffset::_factor);
  ozSFFloat::addTypeField(type, "units", 5, 0.0f, &ozPolygonOffset::_units);
}

ozPolygonOffset::ozPolygonOffset(ozType *type) : ozGroup(type) {
  if (_supported < 0) extensionDetect();
  initFieldDefaults(_ClassType);
}

ozPolygonOffset::~ozPolygonOffset() { destroyFieldContents(_ClassType); }

void ozPolygonOffset::extensionDetect() {
  static char *extensions = nullptr;
  _supported = ozSupportLevel(extensions, "GL_EXT_polygon_offset", "polygonoffset");
}

ozPolygonOffset::OffsetTypes ozPolygonOffset::getOffsetType() { return read(3, _offsetType); }
void ozPolygonOffset::setOffsetType(OffsetTypes type) { store(3, _offsetType, type); }
float ozPolygonOffset::getFactor() { return read(4, _factor); }
void ozPolygonOffset::setFactor(float factor) { store(4, _factor, factor); }
float ozPolygonOffset::getUnits() { return read(5, _units); }
void ozPolygonOffset::setUnits(float units) { store(5, _units, units); }

ozTravDirective ozPolygonOffset::drawVisit(ozDrawAction *action) {
  static GLenum const capabilities[] = {GL_POLYGON_OFFSET_FILL, GL_POLYGON_OFFSET_LINE, GL_POLYGON_OFFSET_POINT};
  if (_supported == 0) return TRAV_PRUNE;
  cleanFields();
  return ozCulledFrame(this, _boxBound, action, [&] {
    ozTravDirective verdict = TRAV_CONT;
    GLfloat factor = 0, units = 0;
    glGetFloatv(GL_POLYGON_OFFSET_FACTOR, &factor);
    glGetFloatv(GL_POLYGON_OFFSET_UNITS, &units);
    glPolygonOffset(_factor, _units);
    if (_offsetType >= FILL_OFFSET && _offsetType <= POINT_OFFSET) {
      GLenum const capability = capabilities[_offsetType];
      GLint on = 0;
      glGetIntegerv(capability, &on);
      glEnable(capability);
      verdict = ozVisitChildren<&ozNode::drawVisit>(_children, action);
      if (!on) glDisable(capability);
    }
    glPolygonOffset(factor, units);
    return verdict;
  });
}
