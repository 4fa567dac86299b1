#ifndef OZ_TRANSFORM_ACTION_H
#define OZ_TRANSFORM_ACTION_H

#include "oz/ozAction.h"
#include "oz/ozByteArray.h"
#include "oz/ozMatStack4f.h"

/// The walk that accumulates the matrix from the root to the current node.
///
/// Each level of the matrix stack also says how its matrix treats lengths. There are 256 levels: a push beyond them is
/// reported by ozMatStack4f, and what follows works on the level that is there.
class OZ_API ozTransformAction : public ozAction {
  OZ_OBJECT_CLASS(ozTransformAction);

public:
  /// How a matrix treats lengths: any value but 0 means that it may scale them unevenly. Nodes store values of their
  /// own.
  enum MatTypeEnum : int { UNIFORM_MAT = 0, NON_UNIFORM_MAT = 1 };

  ozTransformAction();
  /// Shares the matrix storage of the other.
  ozTransformAction(ozTransformAction const &other);
  ozTransformAction &operator=(ozTransformAction const &other);
  ~ozTransformAction() override;

  /// Walks with ozNode::transformVisit, from the identity; root must not be null.
  ozTravDirective apply(ozNode *root) override;
  ozAction *instantiate() override;

  /// One level, the identity, of uniform scale.
  void reset();

  /// The accumulated matrix, from the current node's space to the root's. It is the top of the stack itself.
  ozMatrix4f *getMatrix() const { return _matrices.getTop(); }
  void getMatrix(ozMatrix4f &matrix) const { _matrices.get(matrix); }
  /// The number of levels, 1 at the least.
  int getMatrixDepth() const { return _matrices.getDepth(); }
  /// How the accumulated matrix treats lengths.
  MatTypeEnum getMatType() const { return _matTypes[_matrices.getDepth() - 1]; }

  /// Puts a matrix in place of the top; the top's type stays as it was.
  void loadMatrix(ozMatrix4f const &matrix) { _matrices.load(matrix); }
  /// The matrix acts ahead of what is on top; the type replaces the top's.
  void multMatrix(ozMatrix4f const &matrix, MatTypeEnum type) {
    _matrices.preMult(matrix);
    setMatType(type);
  }
  /// One level more, a copy of the top. A full stack is reported and stays as it is.
  void pushMatrix() {
    if (_matrices.push()) setMatType(_matTypes[_matrices.getDepth() - 2]);
  }
  /// pushMatrix(), and then multMatrix() with a matrix and its type.
  void pushMatrix(ozMatrix4f const &matrix, MatTypeEnum type) {
    _matrices.pushPreMult(matrix);
    setMatType(type);
  }
  /// One level less. On the last level that is reported, and the stack is back to the identity.
  void popMatrix() {
    if (!_matrices.pop()) resetTypes();
  }

  /// These act ahead of what is on top.
  void translate(float x, float y, float z) { _matrices.preTrans(x, y, z); }
  void rotate(float x, float y, float z, float radians) { _matrices.preRot(x, y, z, radians); }
  /// An uneven scale also marks the top as such.
  void scale(float x, float y, float z);

protected:
  explicit ozTransformAction(ozType *type);

  void setMatType(MatTypeEnum type) { _matTypes[_matrices.getDepth() - 1] = type; }

private:
  enum { LEVELS = 256 };
  void resetTypes() { _matTypes[0] = UNIFORM_MAT; }

  ozMatStack4f _matrices;
  MatTypeEnum _matTypes[LEVELS]; // one a level of the matrix stack
};

#endif
