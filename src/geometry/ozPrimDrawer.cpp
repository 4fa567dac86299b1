// The loops over primitives that all primitive sets share: one for immediate mode, in four groupings, and one for the
// four paths through vertex arrays. Which functions run is decided ahead of them.

#include <GL/gl.h>

#include "oz/ozDrawAction.h"
#include "oz/ozGeoSet.h"

class ozPrimDrawer {
public:
  ozPrimDrawer(ozGeoSet &set, ozGLAttrSet &attrs, ozGeoSet::Kind const &kind, ozIntArray const *lengths,
               ozDrawAction *action)
      : _set(set), _attrs(attrs), _kind(kind), _lengths(lengths), _action(action), _prims(set._reach.prims) {}

  template <bool CULL> void draw() {
    sendOverall();
    if (_kind.group == ozGeoSet::Kind::POINTS) {
      // What changes a point changes a vertex. The flags keep that until the bindings are worked out again: meant so.
      _set._drawFlags |= static_cast<unsigned short>((_set._drawFlags & 24) << 4);
    }
    if (_set.getDrawPath() != ozGeoSet::IMMEDIATE_PATH) return drawArrays<CULL>();
    _perPrim = perPrim();
    _perVert = ozGeoSet::PerVertSwitch[_set._drawFlags >> 6 & 7];
    if (_kind.group == ozGeoSet::Kind::EACH)
      drawEach<CULL>();
    else if (_kind.group == ozGeoSet::Kind::POLYGONS)
      drawPolygons<CULL>();
    else
      drawAll<CULL>();
  }

  /// Whether all primitives are one range of the arrays, and nobody tests them.
  bool isOneRange() const {
    ozGeoSet::DrawPathEnum const path = _set.getDrawPath();
    return (path == ozGeoSet::ELEMENT_PATH || path == ozGeoSet::ARRAY_PATH) && !_lengths && !_action &&
           _kind.group != ozGeoSet::Kind::POINTS;
  }
  void drawOneRange() {
    sendOverall();
    call(ozGeoSet::VertArraySwitch[_set._drawFlags >> 6 & 7]);
    drawRange(0, _prims * _kind.len);
  }

private:
  void sendOverall() {
    if (_set._drawFlags & 7) call(ozGeoSet::OverallSwitch[_set._drawFlags & 7]);
  }
  ozGeoSet::DrawFunction perPrim() const { return ozGeoSet::PerPrimSwitch[_set._drawFlags >> 3 & 7]; }
  void call(ozGeoSet::DrawFunction function) {
    ozGeoSet *const set = &_set;
    (set->*function)(_attrs);
  }

  int length(int prim) const {
    if (!_lengths) return _kind.len;
    int const len = (*_lengths)[static_cast<unsigned int>(prim)];
    return len > 0 ? len : 0;
  }

  template <bool CULL> bool passes(int prim) {
    return !CULL || (_action->getBPCullMode() == ozDrawAction::FRONT_BPC) == _set.isPrimBpcFrontFacing(prim, _action);
  }

  // Whether the primitive is to be drawn, after its own attributes have been sent if they are. A primitive that is
  // passed over advances no cursor of its vertices, so that later ones slip back: meant so.
  template <bool CULL> bool open(int prim) {
    if (_kind.primFirst) {
      call(_perPrim);
      return passes<CULL>(prim);
    }
    if (!passes<CULL>(prim)) return false;
    call(_perPrim);
    return true;
  }

  void sendVertices(int count) {
    for (int i = 0; i < count; ++i) call(_perVert);
  }

  // One glBegin for all primitives. The vertices of points carry all there is.
  template <bool CULL> void drawAll() {
    glBegin(_kind.mode);
    if (_kind.group == ozGeoSet::Kind::POINTS) {
      sendVertices(_prims);
    } else {
      for (int i = 0; i < _prims; ++i)
        if (open<CULL>(i)) sendVertices(_kind.len);
    }
    glEnd();
  }

  template <bool CULL> void drawEach() {
    for (int i = 0; i < _prims; ++i) {
      if (!open<CULL>(i)) continue;
      int const len = length(i);
      glBegin(_kind.mode);
      sendVertices(len < _kind.least ? _kind.least : len);
      glEnd();
    }
  }

  // Runs of triangles and runs of quadrilaterals share a glBegin; a larger polygon has its own.
  template <bool CULL> void drawPolygons() {
    int last = -1;
    glBegin(GL_TRIANGLES);
    for (int i = 0; i < _prims; ++i) {
      if (!open<CULL>(i)) continue;
      int const len = length(i);
      if (len != last || (len != 3 && len != 4)) {
        glEnd();
        glBegin(len == 3 ? GL_TRIANGLES : len == 4 ? GL_QUADS : GL_POLYGON);
        last = len;
      }
      sendVertices(len);
    }
    glEnd();
  }

  void drawRange(int start, int count) {
    if (_set.getDrawPath() >= ozGeoSet::ELEMENT_PATH)
      glDrawElements(_kind.mode, count, GL_UNSIGNED_INT, _attrs.coord.index + start);
    else
      glDrawArrays(_kind.mode, start, count);
  }

  template <bool CULL> void drawArrays() {
    call(ozGeoSet::VertArraySwitch[_set._drawFlags >> 6 & 7]);
    bool const hasPrimAttributes =
        _set.getDrawPath() == ozGeoSet::ARRAY_PRIM_PATH || _set.getDrawPath() == ozGeoSet::ELEMENT_PRIM_PATH;
    if (_kind.group == ozGeoSet::Kind::POINTS) {
      drawRange(0, _prims * _kind.len);
      return;
    }
    _perPrim = perPrim();
    int start = 0;
    for (int i = 0; i < _prims; ++i) {
      int const len = length(i);
      if (hasPrimAttributes) call(_perPrim);
      if (passes<CULL>(i)) drawRange(start, len);
      start += len;
    }
  }

  ozGeoSet &_set;
  ozGLAttrSet &_attrs;
  ozGeoSet::Kind const &_kind;
  ozIntArray const *const _lengths;
  ozDrawAction *const _action;
  int const _prims;
  ozGeoSet::DrawFunction _perPrim;
  ozGeoSet::DrawFunction _perVert;
};

inline int ozGeoSet::openSet(ozGLAttrSet &attrs, ozContext *context, Kind const &kind, ozIntArray const *lengths) {
  beginDraw(attrs, context);
  if (!_reach.isKept || lengths) { // otherwise it has just been looked at
    if (!_coordSet || !hasWholeIndices(kind, lengths)) return 0;
    if (!_reach.isKept) keepDescription();
  }
  return _reach.prims > 0 || _primCount <= 0;
}

// What goes as one range goes at once, ahead of all that the others need.
inline void ozGeoSet::sendPrims(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull) {
  ozPrimDrawer drawer(*this, attrs, kind, lengths, cull);
  if (drawer.isOneRange())
    drawer.drawOneRange();
  else
    sendInTurn(attrs, kind, lengths, cull);
}

__attribute__((noinline)) void ozGeoSet::sendInTurn(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths,
                                                    ozDrawAction *cull) {
  ozPrimDrawer drawer(*this, attrs, kind, lengths, cull);
  if (cull)
    drawer.draw<true>();
  else
    drawer.draw<false>();
}

int ozGeoSet::openDraw(ozGLAttrSet &attrs, ozContext *context, Kind const &kind, ozIntArray const *lengths) {
  return openSet(attrs, context, kind, lengths);
}

void ozGeoSet::drawPrims(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull) {
  sendPrims(attrs, kind, lengths, cull);
}

void ozGeoSet::drawSet(ozContext *context, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull) {
  ozGLAttrSet attrs;
  if (openSet(attrs, context, kind, lengths)) sendPrims(attrs, kind, lengths, cull);
}
