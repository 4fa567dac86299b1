#include "vrml/RouteChains.h"

#include "oz/ozEngine.h"

// The two halves of an entry's value: the length, and whether the field lies on the way that is being walked.
static long const Walked = 1;
static short const TriggerField = 2; // of every engine
static long lengthOf(void *value) { return reinterpret_cast<long>(value) >> 1; }
static void *entryOf(long length, long flag) { return reinterpret_cast<void *>(length << 1 | flag); }

bool RouteChains::add(ozField *from, ozField *to) {
  void *value = nullptr;
  _lengths.find(reinterpret_cast<unsigned long>(from), value);
  return raise(to, lengthOf(value) + 1);
}

bool RouteChains::raise(ozField *field, long length) {
  unsigned long const key = reinterpret_cast<unsigned long>(field);
  void *value = nullptr;
  _lengths.find(key, value);
  if (reinterpret_cast<long>(value) & Walked || lengthOf(value) >= length) return true;
  if (length > MaxLength) return false;
  _lengths.enter(key, entryOf(length, Walked));
  bool fits = true;
  for (unsigned int i = 0; i < field->getOutputEnds().getCount() && fits; ++i)
    fits = raise(field->getOutputEnds().get(i), length + 1);
  // Inside an engine the inputs are connected to the trigger, and that marks the outputs.
  ozContainer *const parent = field->getParent();
  if (field->getId() == TriggerField && parent->isOfType(ozEngine::getClassType())) {
    ozShortArray const &outputs = parent->getType()->getEngineOutputs();
    for (unsigned int i = 0; i < outputs.getCount() && fits; ++i)
      fits = raise(parent->getField(outputs[i]), length + 1);
  }
  _lengths.enter(key, entryOf(length, 0));
  return fits;
}
