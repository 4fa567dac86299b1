#ifndef OZ_ENGINE_H
#define OZ_ENGINE_H

#include "oz/ozNode.h"

/// Base of the nodes that compute output fields from input fields.
///
/// Engines are pulled: a change of an input marks the outputs and all that is connected to them, and eval() runs, once,
/// when somebody reads one. Which fields are inputs and which outputs is a property of the class (ozType::setEngineIO);
/// the inputs are connected to the field "trigger", whose mark says that the engine is to be evaluated.
class OZ_API ozEngine : public ozNode {
  OZ_ABSTRACT_CLASS(ozEngine);

public:
  /// Computes the outputs. Called by evalWrapper() alone, with all inputs up to date.
  virtual void eval() = 0;
  /// Does nothing.
  virtual void draw(ozDrawAction *action);

  /// Brings the inputs up to date, evaluates, and takes the marks off the outputs.
  void evalWrapper();
  /// False, always.
  unsigned char needsEval() const { return 0; }
  /// Whether the container is an engine and id one of its outputs.
  static unsigned char isEngineOutput(ozContainer *container, short id);

  using ozNode::clone;
  using ozNode::copy;
  /// The copy is marked, so that it evaluates afresh.
  void copy(ozContainer *src, ozCloneTable *table) override;
  ozContainer *clone(CloneEnum mode, ozCloneTable *table) override;

protected:
  /// Whether the outputs have to be computed anew, and are not being computed.
  bool isStale() const { return !_evaluating && _triggerField->isDirty(); }
  bool isEvaluating() const { return _evaluating; }
  /// Collects the fields of the object's class, and connects the inputs to the trigger.
  void initEngine();
  void cleanFieldInputs(ozField *f) override;
  void dirtyFieldOutputs(ozField *f) override;

private:
  void markStale();
  // Calls visit(field) for each of the fields with these ids. The type knows which are inputs and outputs, and the
  // container where they are: the engine keeps no lists of its own.
  template <class Visit> void forEach(ozShortArray const &ids, Visit visit) const {
    short const *const id = ids.getArray();
    for (unsigned int i = 0; i < ids.getCount(); ++i) visit(findFieldObject(id[i]));
  }

  ozField *_triggerField;
  int _trigger;
  unsigned char _evaluating;
};

#endif
