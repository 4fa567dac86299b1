// Marks go out and values are pulled. While the trigger's mark is set, all outputs are marked; evaluation takes the
// marks off the inputs first, then runs, then takes them off the outputs, and off the trigger last.

#include "oz/ozEngine.h"

#include "oz/ozSFByte.h"

OZ_DEFINE_TYPE(ozEngine, "Engine", ozNode) { ozSFInt::addTypeField(type, "trigger", 2, 0, &ozEngine::_trigger); }

ozEngine::ozEngine(ozType *type) : ozNode(type), _triggerField(getField(2)), _evaluating(0) {
  setFlag(PROPAGATING_FLAG, false);
  initFieldDefaults(_ClassType);
  initEngine();
}

ozEngine::~ozEngine() { destroyFieldContents(_ClassType); }

void ozEngine::initEngine() {
  ozShortArray const &inputs = getType()->getEngineInputs();
  ozShortArray const &outputs = getType()->getEngineOutputs();
  _inputs.setSize(inputs.getCount());
  _outputs.setSize(outputs.getCount());
  for (unsigned int i = 0; i < inputs.getCount(); ++i) {
    _inputs.append(getField(inputs[i]));
    _inputs[i]->connect(_triggerField);
  }
  for (unsigned int i = 0; i < outputs.getCount(); ++i) {
    _outputs.append(getField(outputs[i]));
    _outputs[i]->setEventClass(ozField::EVENT_FORWARD);
  }
  _triggerField->setDirty(0);
}

void ozEngine::draw(ozDrawAction *) {}

void ozEngine::dirtyFieldOutputs(ozField *f) {
  f->_dirty = 1; // the flag alone: for an input the mask stays as it is
  if (hasFlag(PROPAGATING_FLAG)) return;
  _triggerField->_dirty = 1;
  setFlag(PROPAGATING_FLAG, true);
  for (unsigned int i = 0; i < _outputs.getCount(); ++i) {
    _outputs[i]->setDirty(1);
    if (_outputs[i]->getOutputs()) _outputs[i]->dirtyOutputs();
  }
  setFlag(PROPAGATING_FLAG, false);
}

void ozEngine::cleanFieldInputs(ozField *) {
  // A target that is written while the engine evaluates asks its source, this engine, to settle: it is settling.
  if (isStale()) evalWrapper();
}

void ozEngine::evalWrapper() {
  if (_evaluating) return;
  _evaluating = 1;
  for (unsigned int i = 0; i < _inputs.getCount(); ++i)
    if (_inputs[i]->isDirty()) ozNode::cleanFieldInputs(_inputs[i]);
  eval();
  for (unsigned int i = 0; i < _outputs.getCount(); ++i) _outputs[i]->setDirty(0);
  _triggerField->_dirty = 0;
  _evaluating = 0;
}

unsigned char ozEngine::isEngineOutput(ozContainer *container, short id) {
  return container->isOfType(getClassType()) && container->getType()->getEngineOutputs().find(id) >= 0;
}

void ozEngine::markStale() {
  _triggerField->setDirty(0);
  dirtyFieldOutputs(_triggerField);
}

void ozEngine::copy(ozContainer *src, ozCloneTable *table) {
  ozNode::copy(src, table);
  markStale();
}

ozContainer *ozEngine::clone(CloneEnum mode, ozCloneTable *table) {
  ozContainer *const copied = ozNode::clone(mode, table);
  if (copied) static_cast<ozEngine *>(copied)->markStale();
  return copied;
}
