#ifndef OZ_INDEXED_FACE_SET_H
#define OZ_INDEXED_FACE_SET_H

#include "oz/ozPolySet.h"

class ozOutput;

/// Polygons in the form of VRML: lists of indices in which -1 ends a face. The set keeps the fields of ozPolySet up to
/// date from them: when they are next needed after a change of `coordIndex` or one of the other lists, which any
/// getter, a draw or a ray does. Nothing is tessellated, so faces must be flat and convex.
///
/// An empty list of indices means what VRML means by it: an attribute of vertices follows `coordIndex`, one of faces
/// comes in their order.
class OZ_API ozIndexedFaceSet : public ozPolySet {
  OZ_CLASS(ozIndexedFaceSet);
  OZ_COPYABLE(ozIndexedFaceSet)

public:
  ozIndexedFaceSet();

  /// Whether the corners run counter-clockwise as seen from the front. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, CCW, 16, _ccw)
  /// Whether the back of a face is never seen, and so neither drawn nor hit. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, Solid, 17, _solid)
  /// Only kept. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, Convex, 18, _convex)
  /// Radians; only kept, for the reader that generates normals. 0 by default.
  OZ_VALUE_ACCESS(float, CreaseAngle, 19, _creaseAngle)
  /// Whether a colour belongs to a vertex or to a face. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, ColorPerVertex, 24, _colorPerVertex)
  OZ_VALUE_ACCESS(unsigned char, NormalPerVertex, 25, _normalPerVertex)
  ozMFInt *coordIndex() const { return _coordIndex; }
  ozMFInt *colorIndex() const { return _colorIndex; }
  ozMFInt *texCoordIndex() const { return _texCoordIndex; }
  ozMFInt *normalIndex() const { return _normalIndex; }

  using ozPolySet::copy;
  void copy(ozContainer *src, ozCloneTable *table) override;

protected:
  void recursiveCopy(ozContainer *src, ozCloneTable *table) override;
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;
  /// Writes the fields of VRML and no others.
  void write(ozOutput *out) override;
  void init();

private:
  friend struct ozOwnIndices;

  unsigned char _copying;       // the fields come one by one, and nothing is derived from them yet
  ozIndexSet *_ownIndexSets[4]; // of coordinates, normals, colours and texture coordinates, made on demand
  unsigned char _ccw;
  unsigned char _solid;
  unsigned char _convex;
  float _creaseAngle;
  ozMFInt *_coordIndex;
  ozIntArray _coordIndices;
  ozMFInt *_colorIndex;
  ozIntArray _colorIndices;
  ozMFInt *_texCoordIndex;
  ozIntArray _texCoordIndices;
  ozMFInt *_normalIndex;
  ozIntArray _normalIndices;
  unsigned char _colorPerVertex;
  unsigned char _normalPerVertex;
};

#endif
