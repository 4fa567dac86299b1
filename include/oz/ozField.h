#ifndef OZ_FIELD_H
#define OZ_FIELD_H

#include "oz/ozFieldInfoArray.h"
#include "oz/ozName.h"
#include "oz/ozObject.h"

class ozCloneTable;
class ozContainer;
class ozField;
class ozOutput;
class ozType;
class FieldList;
struct ozDirtyField;

/// The description of one field of a class: name, id, where the value lies in the container, default and type. One
/// exists per field of a class, shared with all subclasses and never freed.
class OZ_API ozFieldInfo {
public:
  /// The name is interned. A null member means that no member of the container holds the value.
  ozFieldInfo(char const *name, short id, char ozContainer::*member);
  ozFieldInfo(ozFieldInfo const &) = delete;
  ozFieldInfo &operator=(ozFieldInfo const &) = delete;
  virtual ~ozFieldInfo();

  /// Makes the container's field object, which enters itself in the container.
  virtual ozField *instantiate(ozContainer *container) = 0;
  /// Stores the default into the container's member, without telling anybody.
  virtual void reset(ozContainer *container) = 0;
  /// Does nothing.
  virtual void write(ozOutput *out);
  /// Writes name and value on a line; nothing where the value is the default.
  virtual void write(ozOutput *out, ozContainer *container) = 0;
  /// Whether the member holds the default; reads it as it stands.
  virtual unsigned char isDefault(ozContainer *container) = 0;
  /// Copies the member from src to dst, without telling either.
  virtual void copy(ozContainer *dst, ozContainer *src) = 0;

  /// Gives the field a second name.
  void addAlias(char const *name);
  /// Whether the text is the name or an alias, whole and case-sensitive.
  unsigned char match(char const *name) const {
    // Most names that differ do so in their first character.
    return (*name == *getName() && !strcmp(name, getName())) || (_aliases && matchAlias(name));
  }
  /// Adds a value of an enumeration; the name is copied. Search goes in the order of these calls.
  void addEnum(int value, char const *name);
  /// The first name of a value; "(nameless)" if it has none.
  char const *mapEnum(int value) const;
  /// The value of an enumeration name; returns whether there is one.
  unsigned char findEnum(char const *name, int &value) const;
  /// The enumeration's records, in order: see EnumEntry.
  ozPtrArray const &getEnums() const { return _enums; }

  char const *getName() const { return _name->getString(); }
  short getId() const { return _id; }
  /// Bytes from the start of the container to the member; 0 for none.
  int getOffset() const { return _offset; }
  ozType *getFieldType() const { return _fieldType; }
  /// Address of the member in a container.
  void *getStorage(ozContainer *container) const { return reinterpret_cast<char *>(container) + _offset; }

  /// Returns 1 where the value is the default and nothing is to be written; otherwise writes indentation and name.
  int preWrite(ozOutput *out, ozContainer *container);

  /// One value of an enumeration, as the array of getEnums() holds it.
  struct EnumEntry {
    char *name;
    int value;
  };

  static void *operator new(size_t size) noexcept { return ozObject::operator new(size); }
  static void operator delete(void *info) noexcept { ozObject::operator delete(info); }

protected:
  void setFieldType(ozType *type) { _fieldType = type; }
  /// Tells the container that the field's value was changed.
  void fieldChanged(ozContainer *container) const;

private:
  unsigned char matchAlias(char const *name) const;

  ozNameEntry const *_name;
  short _id;
  int _offset;
  ozPtrArray *_aliases;
  ozType *_fieldType;
  ozPtrArray _enums;
};

/// Makes the member pointer that ozFieldInfo takes from one of any type in any container class.
template <class Container, class Member> char ozContainer::*ozMember(Member Container::*member) {
  return member ? static_cast<char ozContainer::*>(reinterpret_cast<char Container::*>(member)) : nullptr;
}

/// The fields at the other ends of a field's connections: none, one, or a list. Most fields have no more than one.
class OZ_API ozFieldEnds {
public:
  ozFieldEnds() = default;
  ozFieldEnds(ozFieldEnds const &) = delete;
  ozFieldEnds &operator=(ozFieldEnds const &) = delete;
  ~ozFieldEnds();

  unsigned int getCount() const {
    if (_ends & SINGLE) return single() != nullptr;
    return _ends ? list()->getCount() : 0;
  }
  ozField *get(unsigned int i) const { return _ends & SINGLE ? single() : list()->get(i); }
  /// As get(), but null where there are no more so many.
  ozField *find(unsigned int i) const {
    if (_ends & SINGLE) return i ? nullptr : single();
    ozFieldArray *const fields = _ends ? list() : nullptr;
    return fields && i < fields->getCount() ? fields->get(i) : nullptr;
  }
  /// Whether there is none now. After many were taken out, this is faster than to count them.
  bool isEmpty() const;
  /// Whether there was ever one.
  bool wereAny() const { return _ends != 0; }

private:
  friend class ozField;
  enum : unsigned long { SINGLE = 1, TAKEN = 2, BITS = 3 };

  bool has(ozField *field) const;
  void add(ozField *field);
  bool take(ozField *field);
  FieldList *findList() const;
  FieldList *makeList();
  ozFieldArray *show() const;
  void settle() const;

  ozField *single() const { return reinterpret_cast<ozField *>(_ends & ~static_cast<unsigned long>(BITS)); }
  ozFieldArray *list() const {
    if (_ends & TAKEN) settle();
    return reinterpret_cast<ozFieldArray *>(_ends);
  }

  // The address of a field, or none, with the bit SINGLE; or that of a FieldList, with the bit TAKEN if fields were
  // taken out since somebody looked at it.
  mutable unsigned long _ends = 0;
};

/// The handle of one field of one object, made on demand: it gives the value to generic code and ties it to other
/// fields. The value itself is a member of the container, so that the container reads it without any of this.
///
/// Connections work by marking on the way out and copying on demand: a change marks all that is connected, and the
/// value moves when somebody reads. Fields take no lock; a graph and all that is connected to it belong to one thread
/// at a time.
class OZ_API ozField {
  OZ_TYPE_POINTER;

public:
  enum EventClassEnum : int {
    EVENT_ANY = 0,      ///< source and target of connections
    EVENT_IN_ONLY = 1,  ///< connect() from this field does nothing
    EVENT_OUT_ONLY = 2, ///< connect() to this field does nothing
    EVENT_FORWARD = 3   ///< a computed output: an edit of a multi-valued field goes to the outputs unannounced
  };

  ozField(ozContainer *parent, short id);
  ozField(ozField const &) = delete;
  ozField &operator=(ozField const &) = delete;
  virtual ~ozField();

  virtual ozType *getType() const = 0;
  /// Takes over the value of a field of the same class; a field of another class is left alone.
  virtual void copy(ozField *source) = 0;
  virtual void write(ozOutput *out);
  /// Whether the member holds the default; does not validate.
  virtual unsigned char isDefault();

  ozContainer *getParent() const { return _parent; }
  short getId() const { return _id; }
  ozFieldInfo *getFieldInfo() const;
  char const *getName() const;
  /// Address of the container's member; null if no member holds the value.
  void *getStorage();

  /// Fields connected to this one; null until the first connection. The array is made when it is first asked for, and
  /// then follows what is connected: who only wants to look at them asks for the ends.
  ozFieldArray *getInputs() const;
  /// Fields that this one is connected to; likewise.
  ozFieldArray *getOutputs() const;
  /// The same without an array.
  ozFieldEnds const &getInputEnds() const { return _inputs; }
  ozFieldEnds const &getOutputEnds() const { return _outputs; }
  /// The input that announced a change last; the one that a read copies from.
  ozField *getSource() const { return _source; }
  EventClassEnum getEventClass() const { return static_cast<EventClassEnum>(_eventClass); }
  void setEventClass(EventClassEnum eventClass);

  /// Whether an input holds a newer value.
  unsigned char isDirty() const { return _dirty; }
  inline void setDirty(int on);
  /// Brings the value up to date.
  inline void validate();
  /// Tells the container that the value was changed.
  inline void fieldChanged();

  /// Ties target to this field: it is marked now and takes this field's value when it is next read. Connecting a pair
  /// again, from an EVENT_IN_ONLY or to an EVENT_OUT_ONLY field does nothing.
  void connect(ozField *target);
  void disconnect(ozField *target);

  /// Marks the fields that this one is connected to.
  void dirtyOutputs();
  /// Enters the field in the list of dirty fields, if it is not dirty yet.
  void recordDirty();

  /// Validates all recorded fields, last recorded first, until none is left.
  static void cleanFields();
  /// Switches the recording of dirty fields; off unless asked for. Switching it off forgets all records.
  static void enableDirtyFieldTracking(unsigned char on);
  static unsigned char isDirtyFieldTrackingEnabled() { return _Tracking; }

  static void *operator new(size_t size) noexcept { return ozObject::operator new(size); }
  static void operator delete(void *field) noexcept { ozObject::operator delete(field); }

  /// Whether the container stores what this field computes straight into the connected fields. Then nothing is copied
  /// from here: a connected field that is read asks the container to deliver.
  unsigned char getDelivers() const { return _delivers; }
  void setDelivers(unsigned char delivers) { _delivers = delivers != 0; }

protected:
  /// Has the container of a delivering field bring this field up to date.
  void askFor(ozField *source);
  /// Reproduces the connections of `from`, of which this field is the copy.
  void copyConnections(ozField *from, ozCloneTable *table);

private:
  friend class ozCloneTable;
  friend class ozContainer;
  friend class ozEngine; // marks its inputs without its own dirty mask

  void setSource(ozField *source);
  FieldList *getFollowers() const;
  void addFollower(ozField *field);
  void dropFollower(ozField *field);
  void restore(ozField *source, int dirty);
  static void freeDirtyFields();

  static unsigned char _Tracking;

  ozContainer *_parent;
  short _id;
  unsigned char _dirty : 1;
  unsigned char _busy : 1;
  unsigned char _delivers : 1;
  unsigned char _eventClass;
  ozField *_source;
  ozFieldEnds _outputs;
  ozFieldEnds _inputs;
};

#include "oz/ozContainer.h" // the inline functions of fields are there

#endif
