#ifndef OZ_CONTAINER_H
#define OZ_CONTAINER_H

#include "oz/ozField.h"
#include "oz/ozObject.h"

class ozCloneTable;
class ozData;

/// The field objects of one container, by id: none, one, or a table. Most containers have no more than one.
class ozFieldSlots {
public:
  bool isEmpty() const { return !_slots; }
  /// Null if there is none with this id.
  ozField *get(int id) const {
    if (_slots & SINGLE) return single()->getId() == id ? single() : nullptr;
    return _slots && id >= 0 && id < table()->count ? table()->at[id] : nullptr;
  }
  /// Enters a field; a table that is needed has room for `count` at the least.
  void set(ozField *field, int count);
  /// Calls visit(field) for all, in the order of their ids; what it returns false for is forgotten.
  template <class Visit> void keepIf(Visit visit);

private:
  struct Table {
    int count;
    ozField *at[1];
  };
  enum : unsigned long { SINGLE = 1 };

  ozField *single() const { return reinterpret_cast<ozField *>(_slots & ~static_cast<unsigned long>(SINGLE)); }
  Table *table() const { return reinterpret_cast<Table *>(_slots); }

  unsigned long _slots = 0; // the address of a field with the bit SINGLE, or that of a table
};

/// Base of everything that has fields.
///
/// Two lanes carry changes and are kept apart. Connections between fields mark what is connected and copy on demand,
/// when somebody reads. Side effects are values that a container derives from its children, such as a bound: a change
/// marks the derived field, tells the parents once, and the value is computed again at the next read.
///
/// A container that refers to another through a reference field holds one count on it and stands in its parent list
/// once for each reference. Parent entries do not count.
class OZ_API ozContainer : public ozObject {
  OZ_TYPE_POINTER;

public:
  enum CloneEnum : int {
    CLONE_SHALLOW = 0,  ///< a copy that shares its children
    CLONE_CHILDREN = 1, ///< as CLONE_SHALLOW, but groups copy their children
    CLONE_DEEP = 2      ///< a copy of the whole subgraph below
  };

  explicit ozContainer(ozType *type);
  /// Copies all members bit by bit and duplicates nothing; for a real copy see copy() and clone().
  ozContainer(ozContainer const &other) = default;
  ozContainer &operator=(ozContainer const &other) = default;
  ~ozContainer() override;

protected:
  /// Writes the object and the graph below it, see ozOutput. Reached through ozObject.
  void write(ozOutput *out) override;

public:
  /// Holds one count on the data; null for none.
  virtual void setUserData(ozData *data);
  /// A new empty object of the same class.
  virtual ozContainer *instantiate() = 0;
  /// Takes over all fields of src that both classes share by id, and its connections. Children are shared.
  virtual void copy(ozContainer *src, ozCloneTable *table);
  virtual void copy(ozContainer *src);
  /// A new object like this one, with count 0.
  virtual ozContainer *clone(CloneEnum mode, ozCloneTable *table);
  virtual ozContainer *clone(CloneEnum mode);

protected:
  virtual void recursiveCopy(ozContainer *src, ozCloneTable *table);
  /// Called at every change of a field. An override does its own work and ends in the base's version or touchField().
  virtual void fieldChanged(short id);
  /// Called when a child has announced a change of its field id. Does nothing here.
  virtual void childChanged(ozContainer *child, short id);
  /// Pulls a newer value into f from its source.
  virtual void cleanFieldInputs(ozField *f);
  /// Marks f and everything that it is connected to.
  virtual void dirtyFieldOutputs(ozField *f);
  /// Computes the derived field id anew. Does nothing here. It must not mark the field again.
  virtual void cleanSideEffect(short id);

public:
  /// The field object of an id, made on first request.
  ozField *getField(int id);
  /// The field of a name; "set_x" and "x_changed" also find x. Null if there is none.
  ozField *getField(char const *name);
  /// The description of the field that getField(name) gives.
  ozFieldInfo *findFieldInfo(char const *name) const;
  /// The field object of an id if there is one: none is made.
  ozField *findFieldObject(int id) const { return _fields.get(id); }
  void connect(short id, ozContainer *other, short otherId);
  void disconnect(short id, ozContainer *other, short otherId);
  /// Takes back the single-valued field objects that nothing is connected to.
  void freeUnconnectedFields();

  char const *getName() const { return _name; }
  /// Copies the text; null takes the name away.
  void setName(char const *name);
  ozData *getUserData() const { return _userData; }

  int getParentCount() const;
  ozContainer *getParent(int index) const;

  /// Brings a field's value up to date; comes ahead of every read.
  void validateField(short id) {
    if ((_dirtyMask | _sideEffectMask) & wideBit(id)) validatePending(id);
  }
  /// Brings all pending fields up to date.
  void cleanFields() {
    if (long long const pending = _dirtyMask | _sideEffectMask) internalCleanFields(pending);
  }
  /// Whether any field is pending.
  bool hasPendingFields() const { return (_dirtyMask | _sideEffectMask) != 0; }
  bool isFieldPending(short id) const { return ((_dirtyMask | _sideEffectMask) & wideBit(id)) != 0; }
  void internalCleanFields(long long mask);

protected:
  void addField(ozField *field);
  ozFieldInfo *getFieldInfo(short id) const;
  int getFieldInfoCount() const;

  /// The end point of every change to a field: settles it and marks what it is connected to.
  void touchField(short id) {
    if (!_fields.isEmpty()) touchFieldObject(id);
  }
  /// Calls childChanged(this, id) on each parent.
  void notifyParents(short id);
  /// Marks a derived field as stale and tells the parents, once.
  void propagateSideEffect(short id);
  /// Marks a derived field as stale without telling anybody.
  void markSideEffect(short id) { _sideEffectMask |= wideBit(id); }
  /// Takes the mark back without a word: the derived field was stored, and there is nothing to compute.
  void settleSideEffect(short id) { _sideEffectMask &= ~wideBit(id); }

  void addParent(ozContainer *parent);
  /// Takes out one entry. With one parent: 0 if it was it, -1 if not. With several: 1 if it was found, 0 if not.
  int removeParent(ozContainer *parent);
  /// Takes a reference on c, and this object becomes its parent.
  void refer(ozContainer *c);
  /// The same, and then releases `old`.
  void refer(ozContainer *old, ozContainer *c);
  void unrefer(ozContainer *c);

  /// Gives the fields of one class level their defaults.
  void initFieldDefaults(ozType *level);
  /// Releases what the reference fields of one class level hold.
  void destroyFieldContents(ozType *level);
  /// Writes "DEF name Class {" or "USE name"; returns 1 for a USE.
  int writeHeader(ozOutput *out);
  /// Writes the object with these fields, in this order; with null, with its first `count`.
  void writeFields(ozOutput *out, short const *ids, int count);

  /// A getter of a field: brings it up to date, gives the member.
  template <class T> T const &read(short id, T const &member) {
    validateField(id);
    return member;
  }
  /// A setter of a field: stores, tells.
  template <class T, class V> void store(short id, T &member, V const &value) {
    member = value;
    fieldChanged(id);
  }
  /// A setter of a reference field: counts, stores, tells.
  template <class T, class V> void storeRef(short id, T *&member, V *value) {
    refer(member, value);
    member = value;
    fieldChanged(id);
  }

private:
  friend class ozCloneTable;
  friend class ozField;
  friend class ozFieldInfo;
  friend class ozMFRef;
  friend class ozMFRefInfo;
  friend class ozSFRef;
  friend class ozSFRefInfo;

  // The two bit forms agree for ids up to 30. Field ids above that are not for fields with inputs.
  static long long wideBit(short id) { return static_cast<unsigned short>(id) < 64 ? 1LL << id : 0; }
  static int narrowBit(short id) { return static_cast<int>(1u << (id & 31)); }

  void validatePending(short id);
  void touchFieldObject(short id);
  void copyFrame(ozContainer *src, ozCloneTable *table, bool deep);
  void copyReferences(ozFieldInfo *info, ozContainer *src, ozCloneTable *table);
  static ozContainer *cloneChild(ozContainer *child, ozCloneTable *table);

  // Every visit looks at the masks, and at what a subclass puts behind them; the rest stays out of the way.
  ozFieldSlots _fields;
  void *_parents; // ozParentList * where PARENT_ARRAY_FLAG is set, otherwise ozContainer *
  ozData *_userData;
  char *_name;
  long long _dirtyMask;      // bit per field id: an input holds a newer value
  long long _sideEffectMask; // bit per field id: the derived value is stale, and the parents know
};

inline void ozField::validate() { _parent->validateField(_id); }
inline void ozField::fieldChanged() { _parent->fieldChanged(_id); }

inline void ozField::setDirty(int on) {
  if (on) {
    if (_Tracking) recordDirty();
    _dirty = 1;
    _parent->_dirtyMask |= ozContainer::narrowBit(_id);
  } else {
    _dirty = 0;
    _parent->_dirtyMask &= ~ozContainer::narrowBit(_id);
  }
}

#endif
