#ifndef OZ_GEO_SET_H
#define OZ_GEO_SET_H

#include "oz/ozCoordSet.h"
#include "oz/ozFieldAccess.h"
#include "oz/ozGeometry.h"
#include "oz/ozSFRef.h"

class ozPickIndex;

/// Base of all sets of primitives. A set refers to coordinates and up to three more attributes, each with an index of
/// its own or none, and says how often each attribute changes: once for the set, once a primitive or once a vertex.
///
/// From these it derives at each change which small function runs at each of the three frequencies, and whether the set
/// goes to OpenGL through vertex arrays (all attributes share one index, or none has one) or vertex by vertex. Drawing
/// is single threaded: the tables of functions are shared and depend on the transparency mode.
class OZ_API ozGeoSet : public ozGeometry {
  OZ_ABSTRACT_CLASS(ozGeoSet);
  OZ_COPYABLE(ozGeoSet)

public:
  enum NormalBindEnum : int { NO_NORMAL = 0, OVERALL_NORMAL = 1, PER_PRIM_NORMAL = 2, PER_VERTEX_NORMAL = 3 };
  enum ColorBindEnum : int { NO_COLOR = 0, OVERALL_COLOR = 1, PER_PRIM_COLOR = 2, PER_VERTEX_COLOR = 3 };
  enum TexCoordBindEnum : int { NO_TEX_COORD = 0, PER_VERTEX_TEX_COORD = 1 };

  void compile(ozCompileAction *action) override;

protected:
  void fieldChanged(short id) override;
  void childChanged(ozContainer *child, short id) override;
  void cleanSideEffect(short id) override;

public:
  /// Computes the bound of the vertices that are drawn.
  virtual void calcBound(ozBoxBound &bound) = 0;
  /// Brings all sets up to date, describes them in attrs and applies the set's own state to the context.
  virtual void beginDraw(ozGLAttrSet &attrs, ozContext *context);
  /// 1: the culling data bound the stored normals; 0: the normals of the faces. Does nothing in this class.
  virtual void setBPCullPrimNormModeEnable(unsigned char on);
  virtual unsigned char getBPCullPrimNormModeEnable();
  /// The number of vertices of a primitive. 0 in this class.
  virtual int getPrimLen(int prim);
  /// The box of the face normals of a primitive that has `len` vertices from vertex `first` on. Zero in this class.
  virtual void getPrimFaceNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max);

  /// The number of primitives, 0 by default; independent of any array of lengths.
  OZ_VALUE_ACCESS(int, PrimCount, 2, _primCount)
  /// How often a normal is sent. Without a normal set there is none, whatever this says. NO_NORMAL by default.
  OZ_ENUM_ACCESS(NormalBindEnum, NormalBind, 3, _normalBind)
  OZ_ENUM_ACCESS(ColorBindEnum, ColorBind, 4, _colorBind)
  OZ_ENUM_ACCESS(TexCoordBindEnum, TexCoordBind, 5, _texCoordBind)
  // The attribute sets and the indices into them; null by default. A set without coordinates draws nothing.
  OZ_REF_ACCESS(ozCoordSet, CoordSet, 6, _coordSet)
  OZ_REF_ACCESS(ozNormalSet, NormalSet, 7, _normalSet)
  OZ_REF_ACCESS(ozColorSet, ColorSet, 8, _colorSet)
  OZ_REF_ACCESS(ozTexCoordSet, TexCoordSet, 9, _texCoordSet)
  OZ_REF_ACCESS(ozIndexSet, CoordIndexSet, 10, _coordIndexSet)
  OZ_REF_ACCESS(ozIndexSet, NormalIndexSet, 11, _normalIndexSet)
  OZ_REF_ACCESS(ozIndexSet, ColorIndexSet, 12, _colorIndexSet)
  OZ_REF_ACCESS(ozIndexSet, TexCoordIndexSet, 13, _texCoordIndexSet)
  /// Which faces are not drawn and not hit; BACK_CULL by default. Until it is set, drawing takes the context's default.
  OZ_ENUM_ACCESS(ozContext::CullFaceEnum, CullFace, 14, _cullFace)

  /// Works out the draw flags, as each change of a field does: bits 0 and 1 normal and colour for the set, 3 and 4 a
  /// primitive, 6 to 8 texture coordinate, normal and colour a vertex, 9 to 11 the draw path.
  void calcBindings();

  /// Whether rays may build an index of the triangles, which they do in sets of more than a few hundred once they have
  /// cost, since the last change of the triangles, about what building does. Hits are the same with and without.
  /// Coordinates and indices that are written in place must be announced (ozMField::editDone). 0 frees the index. 1 by
  /// default.
  void setPickIndexEnable(unsigned char on);
  unsigned char getPickIndexEnable() const { return _pickIndexEnable; }

  // Culling of back primitives: each primitive is tested as a whole, ahead of OpenGL, while the draw action's culling
  // mode is on and the data have been built.

  /// Computes a reference point and a cone of normals for each primitive, replacing what there was.
  void buildBPCullData();
  void deleteBPCullData();
  unsigned char existsBPCullData() const { return _bpcPoint != nullptr; }
  /// Whether a change of coordinates, normals or their indices builds the data anew, once they exist. 1 by default.
  void setBPCullDynamicBuildMode(unsigned char on) { _bpcDynamicBuildMode = on; }
  unsigned char getBPCullDynamicBuildMode() const { return _bpcDynamicBuildMode; }
  /// The data, one entry a primitive, null while there are none. The setters free nothing; the set frees with free()
  /// what is there in the end.
  ozVec3f *getBPCullPoint() const { return _bpcPoint; }
  void setBPCullPoint(ozVec3f *points);
  ozVec3f *getBPCullCenter() const { return _bpcCenter; }
  void setBPCullCenter(ozVec3f *centers);
  float *getBPCullDelta() const { return _bpcDelta; }
  void setBPCullDelta(float *deltas);
  /// Whether any part of a primitive may face the action's eye; 1 while there are no data.
  unsigned char isPrimBpcFrontFacing(int prim, ozDrawAction *action);

protected:
  typedef void (ozGeoSet::*DrawFunction)(ozGLAttrSet &);

  /// What runs once for the set, once a primitive, once a vertex, and to set up the vertex arrays. Entries 2 and 3 of
  /// the first two depend on the transparency of the last set with colours.
  static DrawFunction OverallSwitch[4];
  static DrawFunction PerPrimSwitch[4];
  static DrawFunction PerVertSwitch[8];
  static DrawFunction const VertArraySwitch[8];

  // One function a combination of colour, normal and texture coordinate.
  void overallDraw0(ozGLAttrSet &attrs);
  void overallDrawN(ozGLAttrSet &attrs);
  void overallDrawC(ozGLAttrSet &attrs);
  void overallDrawCN(ozGLAttrSet &attrs);
  void overallDrawCScrDoor(ozGLAttrSet &attrs);
  void overallDrawCNScrDoor(ozGLAttrSet &attrs);
  void perPrimDraw0(ozGLAttrSet &attrs);
  void perPrimDrawN(ozGLAttrSet &attrs);
  void perPrimDrawC(ozGLAttrSet &attrs);
  void perPrimDrawCN(ozGLAttrSet &attrs);
  void perPrimDrawCScrDoor(ozGLAttrSet &attrs);
  void perPrimDrawCNScrDoor(ozGLAttrSet &attrs);
  void perVertDraw0(ozGLAttrSet &attrs);
  void perVertDrawT(ozGLAttrSet &attrs);
  void perVertDrawN(ozGLAttrSet &attrs);
  void perVertDrawNT(ozGLAttrSet &attrs);
  void perVertDrawC(ozGLAttrSet &attrs);
  void perVertDrawCT(ozGLAttrSet &attrs);
  void perVertDrawCN(ozGLAttrSet &attrs);
  void perVertDrawCNT(ozGLAttrSet &attrs);
  void vertArrayDraw0(ozGLAttrSet &attrs);
  void vertArrayDrawT(ozGLAttrSet &attrs);
  void vertArrayDrawN(ozGLAttrSet &attrs);
  void vertArrayDrawNT(ozGLAttrSet &attrs);
  void vertArrayDrawC(ozGLAttrSet &attrs);
  void vertArrayDrawCT(ozGLAttrSet &attrs);
  void vertArrayDrawCN(ozGLAttrSet &attrs);
  void vertArrayDrawCNT(ozGLAttrSet &attrs);

  /// The draw paths, as bits 9 to 11 of the draw flags hold them.
  enum DrawPathEnum : int {
    IMMEDIATE_PATH = 0,
    ARRAY_PATH = 1,
    ARRAY_PRIM_PATH = 2, ///< with attributes that change a primitive
    ELEMENT_PATH = 3,    ///< indexed
    ELEMENT_PRIM_PATH = 4
  };
  DrawPathEnum getDrawPath() const { return static_cast<DrawPathEnum>(_drawFlags >> 9 & 7); }

  /// The common bound: of primCount primitives of vertsPerPrim vertices each, or of as many as the lengths say. Indices
  /// and counts beyond the data are passed over; too few lengths leave the box as it was.
  void boundCoords(ozBoxBound &box, int vertsPerPrim, ozIntArray const *primLengths);
  /// Takes VRML indices apart: all that are not negative go to dst, the lengths of the runs between the negative ones
  /// to lengths, unless that is null. Returns the number of lengths. Neither destination is shortened.
  int flattenVRMLIndices(ozMFInt *src, ozIndexSet *dst, ozMFInt *lengths);
  /// What a change of the lengths of primitives does, in the classes that have some.
  void lengthsChanged(short id);
  void init();

  /// How a kind of primitive goes to OpenGL.
  struct Kind {
    /// Which primitives share a glBegin in immediate mode.
    enum GroupEnum : int { ALL, EACH, POLYGONS, POINTS };
    unsigned int mode; ///< OpenGL's
    int len;           ///< vertices of a primitive; 0: an array of lengths
    int least;         ///< vertices sent in immediate mode even if the length is below
    GroupEnum group;
    unsigned char primFirst; ///< a primitive that is culled sends its own attributes all the same
  };

  /// Begins to draw with the action's context; 0 if there is nothing that could be drawn.
  int openDraw(ozGLAttrSet &attrs, ozContext *context, Kind const &kind, ozIntArray const *lengths);
  /// Sends the primitives; with cull, those that pass its test. To be called between openDraw and nothing else.
  void drawPrims(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull);
  /// Both in one, for sets without a display list.
  void drawSet(ozContext *context, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull);

  /// Reads vectors as drawing does: through an index, if there is one, and with the stride of the array.
  struct VecReader {
    /// Nothing is there to read from a set that is null or does not hold vectors of three floats.
    VecReader(ozContainer *set, ozIndexSet *indexSet);

    char const *data;
    unsigned int stride;
    unsigned int vecCount;
    int const *index;
    unsigned int count; ///< of entries, indexed or not

    ozVec3f const &vec(unsigned int i) const {
      return *reinterpret_cast<ozVec3f const *>(data + static_cast<size_t>(stride) * i);
    }
    /// Entry i; null if it does not exist.
    ozVec3f const *get(unsigned int i) const {
      if (i >= count) return nullptr;
      unsigned int const at = index ? static_cast<unsigned int>(index[i]) : i;
      return at < vecCount ? &vec(at) : nullptr;
    }
  };
  VecReader readCoords() const { return VecReader(_coordSet, _coordIndexSet); }
  /// Whether the indices that are drawn lie within their sets. Tested once a change, with a message when they do not.
  bool hasWholeIndices(Kind const &kind, ozIntArray const *lengths);
  /// Tests the triangles of all primitives, with cull; split(prim, position, len, triangle) calls triangle(a, b, c,
  /// primIndex) for each, by the position of the vertices in the primitive, and returns how many vertices the primitive
  /// takes. Ahead of it, there were `position` triangles.
  template <class Split>
  int isectPrims(ozIsectAction *action, Kind const &kind, ozIntArray const *lengths, ozContext::CullFaceEnum cull,
                 Split split);

  // The parts of buildBPCullData.
  void bpcBuildDataPrim(int prim, int first, int len, ozVec3f &point, ozVec3f &center, float &delta);
  ozVec3f getRefPoint(int prim, int first, int len);
  void getNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max);
  void getPrimNormBB(int prim, int first, int len, ozVec3f &min, ozVec3f &max);
  float getNormBBDelta(ozVec3f const &min, ozVec3f const &max, ozVec3f const &center);
  /// Grows the box by the normal of a triangle of three vertices, if it has one; `any` says whether it has begun.
  void addFaceNormal(VecReader const &coords, int a, int b, int c, ozVec3f &min, ozVec3f &max, bool &any);
  /// The unit normal of a triangle; returns whether it has one.
  unsigned char getTriNormal(ozVec3f const &a, ozVec3f const &b, ozVec3f const &c, float &x, float &y, float &z);

  unsigned short _drawFlags;
  unsigned char _normalBindNow; // the binding, 0 while the set is absent
  unsigned char _colorBindNow;
  unsigned char _texCoordBindNow;
  unsigned char _bpcDynamicBuildMode;
  unsigned char _bpcPrimNormMode;
  ozBitMask _setMask; // bit 29: the cull face was set, 30: a line width, 31: a point size
  ozContext::CullFaceEnum _cullFace;
  int _primCount;

private:
  /// How far the sets reach: what may be drawn. Holds while the counts of everything that it was worked out from do.
  struct Reach {
    enum { KEYS = 9, KEPT = 3 };
    struct Kept {
      char *data[KEPT]; // of the coordinates, and of up to two more attributes that are bound
      int *index;
      unsigned int counts[KEPT], indices;
    };
    int prims;
    bool known;
    bool whole;  // no index lies outside its set
    bool isKept; // `kept` holds what the sets said, and they have not changed since; otherwise `keys` counts
    unsigned char kinds[KEPT];
    unsigned int lengths;
    unsigned int moves; // of arrays, as of the time when the addresses were taken
    union {
      unsigned int keys[KEYS];
      Kept kept;
    };
  };
  Reach _reach; // here, since a draw looks at it and at little else

protected:
  ozCoordSet *_coordSet;
  ozIndexSet *_coordIndexSet;
  ozNormalSet *_normalSet;
  ozIndexSet *_normalIndexSet;
  ozColorSet *_colorSet;
  ozIndexSet *_colorIndexSet;
  ozTexCoordSet *_texCoordSet;
  ozIndexSet *_texCoordIndexSet;

  NormalBindEnum _normalBind;
  ColorBindEnum _colorBind;
  TexCoordBindEnum _texCoordBind;
  int _listId;
  unsigned int _version;
  float _bpcTolerance;
  ozVec3f *_bpcPoint;
  ozVec3f *_bpcCenter;
  float *_bpcDelta;

private:
  friend class ozPrimDrawer;
  friend struct ozListDraw;

  int openSet(ozGLAttrSet &attrs, ozContext *context, Kind const &kind, ozIntArray const *lengths);
  void sendInTurn(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull);
  void sendPrims(ozGLAttrSet &attrs, Kind const &kind, ozIntArray const *lengths, ozDrawAction *cull);
  void findReach(Kind const &kind, ozIntArray const *lengths);
  void workOutReach(Kind const &kind, ozIntArray const *lengths);
  struct Source;
  static unsigned int elementCount(ozValueSet *set);
  static int *indicesOf(ozIndexSet *set);
  template <class Set> static void describe(Set *set, ozIndexSet *indexSet, ozGLAttr &attr);
  void describeAttributes(ozGLAttrSet &attrs);
  void chooseColorFunctions(ozContext *context);
  void applyCullFace(ozContext *context);
  void beginInFull(ozGLAttrSet &attrs, ozContext *context, bool kept);
  template <class Split, class Visit>
  void visitTris(VecReader const &coords, Kind const &kind, ozIntArray const *lengths, Split const &split,
                 Visit const &visit) const;
  void followPicks(VecReader const &coords, ozIntArray const *lengths);
  void deletePickIndex();
  template <class See> bool forEachBound(See see);
  void keepDescription();
  bool isDescriptionFresh() { return _reach.moves == ozArray::getMoveCount() || refreshDescription(); }
  bool refreshDescription();
  bool recallDescription(ozGLAttrSet &attrs);
  friend class ozValueSet;
  void forgetReach() { _reach.known = _reach.isKept = false; }

  int _bpcCount;          // entries in the culling arrays
  unsigned int _triEdits; // counts changes of what the triangles are made of, but for the values of the index
  unsigned char _pickIndexEnable;
  ozPickIndex *_pickIndex; // null until rays have met a large set
};

#endif
