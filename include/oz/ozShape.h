#ifndef OZ_SHAPE_H
#define OZ_SHAPE_H

#include "oz/ozByteArray.h"
#include "oz/ozNode.h"
#include "oz/ozSFRef.h"

class ozAppearance;
class ozGeometry;

/// The leaf that brings something to the screen: geometries under one appearance.
///
/// A list of paths with cull statuses and a pointer are the application's own; the library stores them and never reads
/// them.
class OZ_API ozShape : public ozNode {
  OZ_CLASS(ozShape);

public:
  ozShape();

  /// Null, which is the default, stands for the default state of the context.
  ozAppearance *getAppearance();
  void setAppearance(ozAppearance *appearance);

  // Each change of the list of geometries is announced, also if there was nothing to do.
  void addGeometry(ozGeometry *geometry);
  void insertGeometry(int index, ozGeometry *geometry);
  void setGeometry(int index, ozGeometry *geometry);
  /// Takes out the first such geometry; returns 1 if there was one, otherwise 0.
  unsigned char removeGeometry(ozGeometry *geometry);
  void removeGeometry(int index);
  /// Puts a geometry in the place of the first such one; returns its index, -1 if there was none.
  long int replaceGeometry(ozGeometry *old, ozGeometry *now);
  /// The index of a geometry, -1 if it is none of these.
  long int findGeometry(ozGeometry *geometry);
  /// The geometry at an index, which must be below the count.
  ozGeometry *getGeometry(int index);
  int getGeometryCount();
  /// A lower count releases what it cuts off; a higher one adds nulls.
  void setGeometryCount(int count);
  /// The field "geometry" itself.
  ozMFRef *geometry() { return static_cast<ozMFRef *>(getField(3)); }

  /// Draws without culling and without preVisit and postVisit, at the action's present place.
  virtual void draw(ozDrawAction *action);
  /// The same, with the fields as they stand.
  void drawWithoutClean(ozDrawAction *action);

  /// The status that the last vfCullVisit found; drawing does not write it.
  int getLastCullResult() const { return _lastCullResult; }

  /// The shape takes the path over and deletes it.
  void appendPath(ozPtrArray *path) { notes().paths.append(path); }
  ozPtrArray *getPath(int index) const;
  int getPathListCount() const { return _notes ? static_cast<int>(_notes->paths.getCount()) : 0; }
  /// A lower count deletes the paths that it cuts off.
  void setPathListCount(int count);
  /// The index must be below the count.
  int getCullStatus(int index) const { return _notes ? _notes->cullStatus[static_cast<unsigned int>(index)] : 0; }
  /// Past the end, the list grows.
  void setCullStatus(int index, int status) { notes().cullStatus.set(static_cast<unsigned int>(index), status); }
  void *getSystemUserData() const { return _notes ? _notes->userData : nullptr; }
  void setSystemUserData(void *data) { notes().userData = data; }

  void isect(ozIsectAction *action) override;
  ozTravDirective visit(ozAction *action) override;
  ozTravDirective transformVisit(ozTransformAction *action) override;
  ozTravDirective vfCullVisit(ozVFCullAction *action) override;
  ozTravDirective drawVisit(ozDrawAction *action) override;

protected:
  void fieldChanged(short id) override;
  void childChanged(ozContainer *child, short id) override;
  void cleanSideEffect(short id) override;

private:
  // What applications keep with a shape.
  struct Notes {
    ozPtrArray paths{1u}; // of ozPtrArray *
    ozIntArray cullStatus{1u};
    void *userData = nullptr;
  };
  Notes &notes();
  void drawParts(ozDrawAction *action);

  int _lastCullResult;
  ozAppearance *_appearance;
  ozShortRefArray<2> _geometries;
  Notes *_notes; // null until something is noted
};

#endif
