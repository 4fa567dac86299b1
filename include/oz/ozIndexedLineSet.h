#ifndef OZ_INDEXED_LINE_SET_H
#define OZ_INDEXED_LINE_SET_H

#include "oz/ozIndexedSet.h"
#include "oz/ozLineStripSet.h"

/// VRML's IndexedLineSet: lines given by lists of indices with a -1 behind each, drawn as the ozLineStripSet that it is,
/// never lit or textured. Unlike a face set it derives its flat index sets at once, at each change of a list.
class OZ_API ozIndexedLineSet : public ozLineStripSet {
  OZ_CLASS(ozIndexedLineSet);
  OZ_COPYABLE(ozIndexedLineSet)

public:
  ozIndexedLineSet();

  using ozLineStripSet::copy;
  /// The copy has index sets of its own.
  void copy(ozContainer *src, ozCloneTable *table) override;
  void draw(ozDrawAction *action) override;

  /// Whether colours are bound per vertex (1, the default) or per line.
  OZ_VALUE_ACCESS(unsigned char, ColorPerVertex, 19, _colorPerVertex)

  ozMFInt *coordIndex() const { return _coordIndex; }
  ozMFInt *colorIndex() const { return _colorIndex; }

protected:
  void write(ozOutput *out) override;
  void recursiveCopy(ozContainer *src, ozCloneTable *table) override;
  void fieldChanged(short id) override;
  void init();

private:
  friend struct ozIndexedSets;

  void flattenCoordIndices();

  ozOwnIndexSets _own;
  ozMFInt *_coordIndex;
  ozIntArray _coordIndices;
  ozMFInt *_colorIndex;
  ozIntArray _colorIndices;
  unsigned char _colorPerVertex;
  unsigned char _copying; // the index sets at hand are the source's
};

#endif
