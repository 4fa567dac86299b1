#ifndef OZ_INDEXED_LINE_SET_H
#define OZ_INDEXED_LINE_SET_H

#include "oz/ozLineStripSet.h"

class ozOutput;

/// Connected lines in the form of VRML: lists of indices in which -1 ends a line. The fields of ozLineStripSet follow
/// at each change. Lines are drawn without light and texture, whatever the appearance says, and as wide as the
/// context's default: `width` has no effect here.
class OZ_API ozIndexedLineSet : public ozLineStripSet {
  OZ_CLASS(ozIndexedLineSet);
  OZ_COPYABLE(ozIndexedLineSet)

public:
  ozIndexedLineSet();

  /// White where no colours are bound.
  void draw(ozDrawAction *action) override;

  /// Whether a colour belongs to a vertex or to a line. 1 by default.
  OZ_VALUE_ACCESS(unsigned char, ColorPerVertex, 19, _colorPerVertex)
  ozMFInt *coordIndex() const { return _coordIndex; }
  /// Empty: colours of vertices follow `coordIndex`, colours of lines come in their order.
  ozMFInt *colorIndex() const { return _colorIndex; }

  using ozLineStripSet::copy;
  void copy(ozContainer *src, ozCloneTable *table) override;

protected:
  void recursiveCopy(ozContainer *src, ozCloneTable *table) override;
  void fieldChanged(short id) override;
  /// Writes the fields of VRML and no others.
  void write(ozOutput *out) override;
  void init();

private:
  friend struct ozOwnIndices;

  unsigned char _copying;       // the fields come one by one, and nothing is derived from them yet
  ozIndexSet *_ownIndexSets[4]; // of coordinates and, made on demand, of colours; the others stay null
  ozMFInt *_coordIndex;
  ozIntArray _coordIndices;
  ozMFInt *_colorIndex;
  ozIntArray _colorIndices;
  unsigned char _colorPerVertex;
};

#endif
