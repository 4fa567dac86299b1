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
  ozShortArray const &inputs = getType()->getEngineInputs(), &outputs = getType()->getEngineOutputs();
  // All field objects first, so that what an evaluation looks at lies together.
  for (unsigned int i = 0; i < inputs.getCount(); ++i) getField(inputs[i]);
  for (unsigned int i = 0; i < outputs.getCount(); ++i) getField(outputs[i])->setEventClass(ozField::EVENT_FORWARD);
  setFlag(PROPAGATING_FLAG, true); // nobody has heard of the outputs: nothing is marked
  forEach(inputs, [this](ozField *input) { input->connect(_triggerField); });
  setFlag(PROPAGATING_FLAG, false);
  _triggerField->setDirty(0);
}

void ozEngine::draw(ozDrawAction *) {}

void ozEngine::dirtyFieldOutputs(ozField *f) {
  f->_dirty = 1; // the flag alone: for an input the mask stays as it is
  if (hasFlag(PROPAGATING_FLAG)) return;
  _triggerField->_dirty = 1;
  setFlag(PROPAGATING_FLAG, true);
  forEach(getType()->getEngineOutputs(), [](ozField *output) {
    output->setDirty(1);
    output->dirtyOutputs();
  });
  setFlag(PROPAGATING_FLAG, false);
}

void ozEngine::cleanFieldInputs(ozField *) {
  // A target that is written while the engine evaluates asks its source, this engine, to settle: it is settling.
  if (isStale()) evalWrapper();
}

void ozEngine::evalWrapper() {
  if (_evaluating) return;
  _evaluating = 1;
  forEach(getType()->getEngineInputs(), [this](ozField *input) {
    if (input->isDirty()) ozNode::cleanFieldInputs(input);
  });
  eval();
  forEach(getType()->getEngineOutputs(), [](ozField *output) { output->setDirty(0); });
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
