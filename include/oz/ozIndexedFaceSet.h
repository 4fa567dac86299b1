#ifndef OZ_INDEXED_FACE_SET_H
#define OZ_INDEXED_FACE_SET_H

#include "oz/ozIndexedSet.h"
#include "oz/ozPolySet.h"

/// VRML's IndexedFaceSet: polygons given by lists of indices with a -1 behind each, drawn as the ozPolySet that it is.
///
/// The flat index sets, lengths and number of primitives are derived from the lists when they are next read. An index list
/// that is empty stands for VRML's default: per vertex "coordIndex" is followed, per face the faces' order. Faces are not
/// taken apart: concave ones are drawn as OpenGL draws them, whatever "convex" says.
class OZ_API ozIndexedFaceSet : public ozPolySet {
  OZ_CLASS(ozIndexedFaceSet);
  OZ_COPYABLE(ozIndexedFaceSet)

public:
  ozIndexedFaceSet();

  using ozPolySet::copy;
  /// The copy has index sets of its own.
  void copy(ozContainer *src, ozCloneTable *table) override;

  /// Whether the corners run counter-clockwise seen from the front; 1 by default. Decides "cullFace".
  OZ_VALUE_ACCESS(unsigned char, CCW, 16, _ccw)
  /// Whether the back of the faces is never seen; 1 by default. Decides "cullFace".
  OZ_VALUE_ACCESS(unsigned char, Solid, 17, _solid)
  /// Stored only; 1 by default.
  OZ_VALUE_ACCESS(unsigned char, Convex, 18, _convex)
  /// In radians; 0 by default. The reader smooths the normals that it makes within this angle; stored only.
  OZ_VALUE_ACCESS(float, CreaseAngle, 19, _creaseAngle)
  /// Whether colours are bound per vertex (1, the default) or per face.
  OZ_VALUE_ACCESS(unsigned char, ColorPerVertex, 24, _colorPerVertex)
  /// Whether normals are bound per vertex (1, the default) or per face.
  OZ_VALUE_ACCESS(unsigned char, NormalPerVertex, 25, _normalPerVertex)

  ozMFInt *coordIndex() const { return _coordIndex; }
  ozMFInt *colorIndex() const { return _colorIndex; }
  ozMFInt *texCoordIndex() const { return _texCoordIndex; }
  ozMFInt *normalIndex() const { return _normalIndex; }

protected:
  void write(ozOutput *out) override;
  void recursiveCopy(ozContainer *src, ozCloneTable *table) override;
  void fieldChanged(short id) override;
  void cleanSideEffect(short id) override;
  void init();

private:
  friend struct ozIndexedSets;

  void derive(short id);

  ozOwnIndexSets _own;
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
