// The fields of a geometry set and what their changes set off. Invariants: the effective bindings and the draw flags
// follow the fields at every change; in mode DYNAMIC the bound is stale as soon as the number of primitives, the
// coordinates or their index change, and is computed when it is next read.

#include "oz/ozGeoSet.h"

#include <stdlib.h>

#include <GL/gl.h>

#include "oz/ozCompileAction.h"

OZ_DEFINE_TYPE(ozGeoSet, "GeoSet", ozGeometry) {
  static char const *const cullFaces[] = {"NO_CULL", "FRONT_CULL", "BACK_CULL", "BOTH_CULL"};
  static char const *const normalBinds[] = {"NO_NORMAL", "OVERALL_NORMAL", "PER_PRIM_NORMAL", "PER_VERTEX_NORMAL"};
  static char const *const colorBinds[] = {"NO_COLOR", "OVERALL_COLOR", "PER_PRIM_COLOR", "PER_VERTEX_COLOR"};
  static char const *const texCoordBinds[] = {"NO_TEX_COORD", "PER_VERTEX_TEX_COORD"};
  static int const values[] = {0, 1, 2, 3};

  ozSFEnum::addTypeField(type, "cullFace", 14, ozContext::BACK_CULL,
                         &ozGeoSet::_cullFace); // ahead of the others: meant
  type->defineEnums(14, 4, cullFaces, values);
  ozSFInt::addTypeField(type, "primCount", 2, 0, &ozGeoSet::_primCount);
  ozSFEnum::addTypeField(type, "normalBind", 3, NO_NORMAL, &ozGeoSet::_normalBind);
  type->defineEnums(3, 4, normalBinds, values);
  ozSFEnum::addTypeField(type, "colorBind", 4, NO_COLOR, &ozGeoSet::_colorBind);
  type->defineEnums(4, 4, colorBinds, values);
  ozSFEnum::addTypeField(type, "texCoordBind", 5, NO_TEX_COORD, &ozGeoSet::_texCoordBind);
  type->defineEnums(5, 2, texCoordBinds, values);
  ozSFRef::addTypeField(type, "coordSet", 6, ozCoordSet::getClassType(), &ozGeoSet::_coordSet);
  type->getFieldInfo(6)->addAlias("coord");
  ozSFRef::addTypeField(type, "normalSet", 7, ozNormalSet::getClassType(), &ozGeoSet::_normalSet);
  type->getFieldInfo(7)->addAlias("normal");
  ozSFRef::addTypeField(type, "colorSet", 8, ozColorSet::getClassType(), &ozGeoSet::_colorSet);
  type->getFieldInfo(8)->addAlias("color");
  ozSFRef::addTypeField(type, "texCoordSet", 9, ozTexCoordSet::getClassType(), &ozGeoSet::_texCoordSet);
  type->getFieldInfo(9)->addAlias("texCoord");
  ozSFRef::addTypeField(type, "coordIndexSet", 10, ozIndexSet::getClassType(), &ozGeoSet::_coordIndexSet);
  ozSFRef::addTypeField(type, "normalIndexSet", 11, ozIndexSet::getClassType(), &ozGeoSet::_normalIndexSet);
  ozSFRef::addTypeField(type, "colorIndexSet", 12, ozIndexSet::getClassType(), &ozGeoSet::_colorIndexSet);
  ozSFRef::addTypeField(type, "texCoordIndexSet", 13, ozIndexSet::getClassType(), &ozGeoSet::_texCoordIndexSet);
}

ozGeoSet::ozGeoSet(ozType *type) : ozGeometry(type), _drawFlags(0), _bpcPrimNormMode(0) {
  init();
  _listId = -1;
  _version = 0;
}

// A copy has neither the display list nor the culling data nor the picking index of the other.
ozGeoSet::ozGeoSet(ozGeoSet const &other) : ozGeometry(other) {
  init();
  _listId = -1;
  _version = 0;
  ozCopyFields(_ClassType, this, &other);
  _drawFlags = other._drawFlags;
  _setMask = other._setMask;
  _normalBindNow = other._normalBindNow;
  _colorBindNow = other._colorBindNow;
  _texCoordBindNow = other._texCoordBindNow;
  _bpcDynamicBuildMode = other._bpcDynamicBuildMode;
  _bpcPrimNormMode = other._bpcPrimNormMode;
  _bpcTolerance = other._bpcTolerance;
  _pickIndexEnable = other._pickIndexEnable;
}

ozGeoSet &ozGeoSet::operator=(ozGeoSet const &other) {
  if (this == &other) return *this;
  ozGeometry::operator=(other);
  ozAssignFields(_ClassType, this, &other);
  _setMask = other._setMask;
  return *this;
}

ozGeoSet::~ozGeoSet() {
  deleteBPCullData();
  deletePickIndex();
  destroyFieldContents(_ClassType);
}

void ozGeoSet::init() {
  _normalBindNow = _colorBindNow = _texCoordBindNow = 0;
  _drawFlags &= static_cast<unsigned short>(~0x1ff);
  _bpcDynamicBuildMode = 1;
  _bpcPoint = _bpcCenter = nullptr;
  _bpcDelta = nullptr;
  _bpcCount = 0;
  _bpcTolerance = 1e-06f;
  _setMask.off();
  forgetReach();
  _triEdits = 0;
  _pickIndexEnable = 1;
  _pickIndex = nullptr;
  initFieldDefaults(_ClassType);
}

void ozGeoSet::fieldChanged(short id) {
  if (id < _ClassType->getAncestorFieldCount()) {
    ozGeometry::fieldChanged(id);
    return;
  }
  if (_boundMode == DYNAMIC && (id == 2 || id == 6 || id == 10)) propagateSideEffect(0);
  if (getBPCullDynamicBuildMode() && existsBPCullData() && (id == 6 || id == 7 || id == 10 || id == 11))
    buildBPCullData();
  if (id == 14) _setMask.onBit(ozContext::CULL_FACE_ITEM);
  if (id == 2 || id == 6 || id == 10) ++_triEdits;
  calcBindings();
  touchField(id);
  ++_version;
  forgetReach();
}

// Looks at no bound mode: meant so.
void ozGeoSet::lengthsChanged(short id) {
  propagateSideEffect(0);
  touchField(id);
  forgetReach();
  ++_triEdits;
}

void ozGeoSet::childChanged(ozContainer *child, short id) {
  bool const coords = child == _coordSet || child == _coordIndexSet;
  if (coords && _boundMode == DYNAMIC)
    propagateSideEffect(0);
  else
    ozContainer::childChanged(child, id);
  if (coords) ++_triEdits;
  ++_version;
}

void ozGeoSet::cleanSideEffect(short id) {
  if (id != 0) {
    ozContainer::cleanSideEffect(id);
    return;
  }
  calcBound(_boxBound);
  touchField(0);
}

void ozGeoSet::calcBindings() {
  // A value that is none of the enumerators binds nothing.
  auto const effective = [](void const *set, int bind, int last) {
    return static_cast<unsigned char>(set && bind > 0 && bind <= last ? bind : 0);
  };
  _normalBindNow = effective(_normalSet, _normalBind, PER_VERTEX_NORMAL);
  _colorBindNow = effective(_colorSet, _colorBind, PER_VERTEX_COLOR);
  _texCoordBindNow = effective(_texCoordSet, _texCoordBind, PER_VERTEX_TEX_COORD);

  unsigned int const flags = (_normalBindNow == OVERALL_NORMAL) << 0 | (_colorBindNow == OVERALL_COLOR) << 1 |
                             (_normalBindNow == PER_PRIM_NORMAL) << 3 | (_colorBindNow == PER_PRIM_COLOR) << 4 |
                             (_texCoordBindNow == PER_VERTEX_TEX_COORD) << 6 |
                             (_normalBindNow == PER_VERTEX_NORMAL) << 7 | (_colorBindNow == PER_VERTEX_COLOR) << 8;

  // An attribute that is sent once for the set counts as well: meant so.
  bool const split = (_colorBindNow && _colorIndexSet != _coordIndexSet) ||
                     (_normalBindNow && _normalIndexSet != _coordIndexSet) ||
                     (_texCoordBindNow && _texCoordIndexSet != _coordIndexSet);
  unsigned int path = IMMEDIATE_PATH;
  if (!split && (flags & 0x38))
    path = _coordIndexSet ? ELEMENT_PRIM_PATH : ARRAY_PRIM_PATH;
  else if (!split)
    path = _coordIndexSet ? ELEMENT_PATH : ARRAY_PATH;
  _drawFlags = static_cast<unsigned short>((_drawFlags & ~0xfffu) | flags | path << 9);
}

void ozGeoSet::compile(ozCompileAction *action) {
  if (action->getUncompile()) glDeleteLists(static_cast<unsigned int>(_listId), 1);
}

int ozGeoSet::getPrimLen(int) { return 0; }

// ---- coordinates

ozGeoSet::VecReader::VecReader(ozContainer *set, ozIndexSet *indexSet)
    : data(nullptr), stride(0), vecCount(0), index(nullptr), count(0) {
  ozField *const field = set && set->getType()->getFieldInfoCount() > 0 ? set->getField(0) : nullptr;
  if (!field || !field->getType()->isDerivedFrom(ozMFVec3f::getClassType())) return;
  ozVec3fArray const &values = static_cast<ozMFVec3f *>(field)->get();
  data = reinterpret_cast<char const *>(values.getArray());
  stride = values.getStride();
  vecCount = values.getCount() < values.getSize() ? values.getCount() : values.getSize();
  count = vecCount;
  if (!indexSet) return;
  ozIntArray const &indices = indexSet->index()->get();
  index = indices.getArray();
  count = indices.getCount() < indices.getSize() ? indices.getCount() : indices.getSize();
}

void ozGeoSet::boundCoords(ozBoxBound &box, int vertsPerPrim, ozIntArray const *primLengths) {
  validateField(6);
  validateField(10);
  if (!_coordSet) {
    box.makeEmpty();
    return;
  }
  long long used = 0;
  if (primLengths) {
    unsigned int const prims = _primCount > 0 ? static_cast<unsigned int>(_primCount) : 0;
    if (primLengths->getCount() < prims) return;
    for (unsigned int i = 0; i < prims; ++i)
      if ((*primLengths)[i] > 0) used += (*primLengths)[i];
  } else if (_primCount > 0 && vertsPerPrim > 0) {
    used = static_cast<long long>(_primCount) * vertsPerPrim;
  }
  VecReader const coords = readCoords();
  unsigned int const count = used < coords.count ? static_cast<unsigned int>(used) : coords.count;
  if (!coords.index && coords.stride == sizeof(ozVec3f)) {
    box.around(reinterpret_cast<ozVec3f const *>(coords.data), static_cast<int>(count));
    return;
  }
  ozVec3f *const points = static_cast<ozVec3f *>(malloc((count ? count : 1) * sizeof(ozVec3f)));
  if (!points) return;
  int found = 0;
  for (unsigned int i = 0; i < count; ++i)
    if (ozVec3f const *point = coords.get(i)) points[found++] = *point;
  box.around(points, found);
  free(points);
}

int ozGeoSet::flattenVRMLIndices(ozMFInt *src, ozIndexSet *dst, ozMFInt *lengths) {
  ozIntArray const &from = src->get();
  unsigned int const count = from.getCount();
  unsigned int indices = 0, runs = 0;
  for (unsigned int i = 0; i < count; ++i) ++(from[i] < 0 ? runs : indices);
  if (count && from[count - 1] >= 0) ++runs; // a run without its terminator
  // Each destination is written in place and announced once.
  ozMFInt *const to = dst->index();
  if (indices > to->getCount()) to->setCount(indices);
  if (lengths && runs > lengths->getCount()) lengths->setCount(runs);
  if (to->getCount() < indices || (lengths && lengths->getCount() < runs)) return 0; // no memory
  int *index = indices ? to->edit() : nullptr;
  int *length = lengths && runs ? lengths->edit() : nullptr;
  int run = 0;
  for (unsigned int i = 0; i < count; ++i) {
    if (from[i] >= 0) {
      *index++ = from[i];
      ++run;
    } else {
      if (length) *length++ = run;
      run = 0;
    }
  }
  if (length && from[count - 1] >= 0) *length = run;
  if (indices) to->editDone();
  if (length) lengths->editDone();
  return lengths ? static_cast<int>(runs) : 0;
}
