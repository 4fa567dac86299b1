// The start of a draw: what the attribute sets say of themselves. Most sets are the library's own and seldom change, so
// what they said is kept from one draw to the next.

#include <string.h>

#include <GL/gl.h>

#include "geometry/ozCountInUse.h"
#include "oz/ozData.h"
#include "oz/ozGeoSet.h"
#include "oz/ozMaterial.h"

namespace {

// How OpenGL takes the elements of the library's own sets.
struct Format {
  ozType *(*type)();
  ozGLAttr attr; // but for the addresses
};
template <class Function> Format format(ozType *(*type)(), int glType, short stride, short size, Function *function) {
  return {type, {nullptr, nullptr, glType, stride, size, reinterpret_cast<void (*)(void const *)>(function)}};
}
Format const formats[] = {
    format(ozCoordSet3f::getClassType, GL_FLOAT, 12, 3, glVertex3fv),
    format(ozNormalSet3f::getClassType, GL_FLOAT, 12, 3, glNormal3fv),
    format(ozTexCoordSet2f::getClassType, GL_FLOAT, 8, 2, glTexCoord2fv),
    format(ozColorSet4f::getClassType, GL_FLOAT, 16, 4, glColor4fv),
    format(ozNormalSet3s::getClassType, GL_SHORT, 6, 3, glNormal3sv),
};
int const formatCount = sizeof formats / sizeof *formats;

bool isSilent(ozValueSet *set) {
  ozField *const field = set->findFieldObject(0);
  return field && field->getEventClass() == ozField::EVENT_FORWARD;
}

// Whether a fourth float stands behind each of the colours. Only a tight view on shared data may have none behind the
// last: such colours are drawn without a stipple.
bool hasFourthFloats(ozColorSet *set) {
  if (!set->isOfType(ozColorSet3f::getClassType())) return true;
  ozVec3fArray const &colors = static_cast<ozColorSet3f *>(set)->color()->get();
  if (!colors.getData() || !colors.getCount()) return true;
  size_t const last = colors.getOffset() + static_cast<size_t>(colors.getStride()) * (colors.getCount() - 1);
  return last + 4 * sizeof(float) <= static_cast<size_t>(colors.getData()->getSize());
}

} // namespace

// Calls see(set, attribute) for the sets that are bound, until it gives false. Returns whether it never did.
template <class See> bool ozGeoSet::forEachBound(See see) {
  return see(static_cast<ozValueSet *>(_coordSet), &ozGLAttrSet::coord) &&
         (!_normalBindNow || see(static_cast<ozValueSet *>(_normalSet), &ozGLAttrSet::normal)) &&
         (!_texCoordBindNow || see(static_cast<ozValueSet *>(_texCoordSet), &ozGLAttrSet::texCoord)) &&
         (!_colorBindNow || see(static_cast<ozValueSet *>(_colorSet), &ozGLAttrSet::color));
}

// Keeps what the sets have just said, if all of them are the library's own with tight arrays, which tell of each
// change, and share one index. To be called with the reach known.
void ozGeoSet::keepDescription() {
  if (getDrawPath() == IMMEDIATE_PATH || (_coordIndexSet && isSilent(_coordIndexSet))) return;
  unsigned char kinds[Reach::KEPT];
  int count = 0;
  bool const plain = forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    if (count == Reach::KEPT || !set->elements() || isSilent(set)) return false;
    int kind = 0;
    while (kind < formatCount && formats[kind].type() != set->getType()) ++kind;
    if (kind == formatCount || set->elements()->getStride() != static_cast<unsigned int>(formats[kind].attr.stride))
      return false;
    kinds[count++] = static_cast<unsigned char>(kind);
    return true;
  });
  if (!plain || (_coordIndexSet && _coordIndexSet->getType() != ozIndexSet::getClassType())) return;
  memcpy(_reach.kinds, kinds, sizeof kinds);
  _reach.moves = ozArray::getMoveCount();
  count = 0;
  forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    _reach.kept.data[count] = set->elements()->getArray();
    _reach.kept.counts[count++] = ozCountInUse(*set->elements());
    return true;
  });
  _reach.kept.index = _coordIndexSet ? indicesOf(_coordIndexSet) : nullptr;
  _reach.kept.indices = _coordIndexSet ? elementCount(_coordIndexSet) : 0;
  _reach.isKept = true;
}

// Takes the addresses anew where some array has moved. False, and all is forgotten, if one has changed without a word.
bool ozGeoSet::refreshDescription() {
  unsigned int const moves = ozArray::getMoveCount();
  int at = 0;
  bool const same = forEachBound([&](ozValueSet *set, ozGLAttr ozGLAttrSet::*) {
    _reach.kept.data[at] = set->elements()->getArray();
    return ozCountInUse(*set->elements()) == _reach.kept.counts[at++] && !isSilent(set);
  });
  if (!same || (_coordIndexSet && elementCount(_coordIndexSet) != _reach.kept.indices)) {
    forgetReach();
    return false;
  }
  if (_coordIndexSet) _reach.kept.index = indicesOf(_coordIndexSet);
  _reach.moves = moves;
  return true;
}

inline bool ozGeoSet::recallDescription(ozGLAttrSet &attrs) {
  if (!_reach.isKept || !isDescriptionFresh()) return false;
  int at = 0;
  auto const recall = [&](ozGLAttr &attr) {
    attr = formats[_reach.kinds[at]].attr;
    attr.data = _reach.kept.data[at++];
    attr.index = _reach.kept.index;
  };
  recall(attrs.coord); // as forEachBound goes
  if (_normalBindNow) recall(attrs.normal);
  if (_texCoordBindNow) recall(attrs.texCoord);
  if (_colorBindNow) recall(attrs.color);
  return true;
}

// ---- the start of a draw

template <class Set> inline void ozGeoSet::describe(Set *set, ozIndexSet *indexSet, ozGLAttr &attr) {
  set->cleanFields();
  set->getGLAttr(attr);
  attr.index = indexSet ? indicesOf(indexSet) : nullptr;
}

void ozGeoSet::describeAttributes(ozGLAttrSet &attrs) {
  if (_texCoordBindNow) describe(_texCoordSet, _texCoordIndexSet, attrs.texCoord);
  if (_normalBindNow) describe(_normalSet, _normalIndexSet, attrs.normal);
  if (_colorBindNow) describe(_colorSet, _colorIndexSet, attrs.color);
}

// The functions that send colours follow the transparency.
void ozGeoSet::chooseColorFunctions(ozContext *context) {
  bool door = context->getTranspEnable() && (context->getTranspMode() == ozContext::FAST_TRANSP ||
                                             context->getTranspMode() == ozContext::SCREEN_DOOR_TRANSP);
  if (door) {
    ozMaterial::getClassType(); // its registration builds the patterns
    door = hasFourthFloats(_colorSet);
  }
  OverallSwitch[2] = door ? &ozGeoSet::overallDrawCScrDoor : &ozGeoSet::overallDrawC;
  OverallSwitch[3] = door ? &ozGeoSet::overallDrawCNScrDoor : &ozGeoSet::overallDrawCN;
  PerPrimSwitch[2] = door ? &ozGeoSet::perPrimDrawCScrDoor : &ozGeoSet::perPrimDrawC;
  PerPrimSwitch[3] = door ? &ozGeoSet::perPrimDrawCNScrDoor : &ozGeoSet::perPrimDrawCN;
}

inline void ozGeoSet::applyCullFace(ozContext *context) {
  context->setCullFace(_setMask.getBit(ozContext::CULL_FACE_ITEM) ? _cullFace
                                                                  : getContextDefaultStateCullFace(context));
}

void ozGeoSet::beginDraw(ozGLAttrSet &attrs, ozContext *context) {
  setContextWhichSetStateAsCurrentState(context);
  cleanFields();
  bool const kept = recallDescription(attrs);
  if (!kept || _colorBindNow || context->getMaterialModeEnable()) return beginInFull(attrs, context, kept);
  applyCullFace(context);
  setContextWhichSetStateAsDefaultState(context);
}

void ozGeoSet::beginInFull(ozGLAttrSet &attrs, ozContext *context, bool kept) {
  if (!kept) describeAttributes(attrs);
  if (_colorBindNow)
    chooseColorFunctions(context);
  else if (context->getMaterialModeEnable())
    glColor4f(1, 1, 1, 1);
  applyCullFace(context);
  if (!kept && _coordSet) describe(_coordSet, _coordIndexSet, attrs.coord);
  setContextWhichSetStateAsDefaultState(context);
}
