// The field object and its connections. The invariant: a field's dirty flag and its bit in the container's dirty mask
// are set and cleared together (but see disconnect), and a dirty field's source holds the newer value.

#include "oz/ozField.h"

#include "core/FieldList.h"
#include "oz/ozContainer.h"
#include "oz/ozSList.h"
#include "oz/ozType.h"

/// A record of the list of dirty fields.
struct ozDirtyField : ozSLink {
  explicit ozDirtyField(ozField *f) : ozSLink(nullptr), field(f) {}
  ozField *field;
};

typedef ozSList<ozDirtyField, ozSLink> ozDirtyFieldList;

// Never destroyed: fields of objects that die while the process exits still look here.
static ozDirtyFieldList DirtyFields;
static ozDirtyFieldList SpentRecords; // kept for reuse

ozType *ozField::_ClassType = nullptr;
unsigned char ozField::_Tracking = 0;

void ozField::initClass() {
  if (!_ClassType) _ClassType = new ozType(nullptr, "ozField");
}

ozField::ozField(ozContainer *parent, short id)
    : _parent(parent), _id(id), _dirty(0), _busy(0), _delivers(0), _eventClass(EVENT_ANY), _source(nullptr), _outputs(),
      _inputs() {
  _parent->addField(this);
}

ozField::~ozField() {
  setSource(nullptr);
  for (unsigned int n = _inputs.getCount(); n > 0 && _inputs.getCount(); --n) _inputs.get(0)->disconnect(this);
  for (unsigned int n = _outputs.getCount(); n > 0 && _outputs.getCount(); --n) disconnect(_outputs.get(0));
  if (FieldList *const followers = getFollowers())
    while (!followers->isEmpty()) followers->get(followers->getCount() - 1)->setSource(nullptr);

  if (!DirtyFields.isEmpty()) {
    ozDirtyFieldList kept; // comes out in reverse order, and goes back so
    while (ozDirtyField *record = DirtyFields.unlinkHead())
      (record->field == this ? SpentRecords : kept).insert(record);
    while (ozDirtyField *record = kept.unlinkHead()) DirtyFields.insert(record);
  }
}

void ozField::write(ozOutput *out) { getFieldInfo()->write(out, _parent); }
unsigned char ozField::isDefault() { return getFieldInfo()->isDefault(_parent); }
ozFieldInfo *ozField::getFieldInfo() const { return _parent->getType()->getFieldInfo(_id); }
char const *ozField::getName() const { return getFieldInfo()->getName(); }

void *ozField::getStorage() {
  ozFieldInfo *const info = getFieldInfo();
  return info->getOffset() ? info->getStorage(_parent) : nullptr;
}

void ozField::askFor(ozField *source) { source->_parent->cleanFieldInputs(this); }

void ozField::setEventClass(EventClassEnum eventClass) {
  _eventClass = static_cast<unsigned char>(eventClass);
  ozArray::countMove(); // edits may no longer be announced: who keeps addresses has to look again
}

ozFieldArray *ozField::getInputs() const { return _inputs.show(); }
ozFieldArray *ozField::getOutputs() const { return _outputs.show(); }

// Keeps track of who still points here after a disconnection, so that a field that dies leaves no pointer to itself.
void ozField::setSource(ozField *source) {
  if (source == _source) return;
  if (_source) _source->dropFollower(this);
  _source = source;
}

FieldList *ozField::getFollowers() const {
  FieldList *const list = _outputs.findList();
  return list ? list->followers : nullptr;
}

void ozField::addFollower(ozField *field) {
  FieldList *&followers = _outputs.makeList()->followers;
  if (!followers) followers = new FieldList;
  if (!followers->has(field)) followers->add(field);
}

void ozField::dropFollower(ozField *field) {
  if (FieldList *const followers = getFollowers()) followers->take(field);
}

void ozField::connect(ozField *target) {
  if (_eventClass == EVENT_IN_ONLY || target->_eventClass == EVENT_OUT_ONLY || _outputs.has(target)) return;
  _outputs.add(target);
  target->_inputs.add(this);
  dropFollower(target);
  target->setSource(this);
  target->_parent->dirtyFieldOutputs(target);
}

void ozField::disconnect(ozField *target) {
  if (!_outputs.wereAny()) return;
  if (_outputs.take(target)) {
    target->_inputs.take(this);
    if (target->_inputs.isEmpty()) target->_parent->_dirtyMask &= ~ozContainer::narrowBit(target->_id);
    // The target's source stays, which is meant: with other inputs left, its mask bit may still be set.
    if (target->_source == this) addFollower(target);
  }
  target->_dirty = 0;
}

void ozField::dirtyOutputs() {
  unsigned int const count = _outputs.getCount();
  for (unsigned int i = 0; i < count; ++i) {
    ozField *const output = _outputs.find(i);
    if (!output) break; // a listener has disconnected some
    if (output->_busy) {
      _parent->cleanFieldInputs(this); // a cycle has closed: this field is settled at once
    } else {
      output->setSource(this);
      output->_parent->dirtyFieldOutputs(output);
    }
  }
}

void ozField::recordDirty() {
  if (_dirty) return;
  ozDirtyField *record = SpentRecords.unlinkHead();
  if (record)
    record->field = this;
  else
    record = new ozDirtyField(this);
  DirtyFields.insert(record);
}

void ozField::cleanFields() {
  while (ozDirtyField *record = DirtyFields.unlinkHead()) {
    ozField *const field = record->field;
    SpentRecords.insert(record);
    field->_parent->validateField(field->_id);
  }
}

static void freeRecords(ozDirtyFieldList &list) {
  while (ozDirtyField *record = list.unlinkHead()) delete record;
}

void ozField::freeDirtyFields() {
  freeRecords(DirtyFields);
  freeRecords(SpentRecords);
}

void ozField::enableDirtyFieldTracking(unsigned char on) {
  _Tracking = on;
  if (!on) freeDirtyFields();
}
