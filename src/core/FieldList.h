#ifndef OZ_FIELD_LIST_H
#define OZ_FIELD_LIST_H

#include "oz/ozDict.h"
#include "oz/ozFieldInfoArray.h"

/// The fields at the other ends of a field's connections, each once, in the order in which they came.
///
/// A single one lies in the list itself. A long list keeps an index, so that nothing is searched, and taking a field
/// out moves only what lies between it and the nearer end.
class OZ_API FieldList : public ozFieldArray {
public:
  FieldList() : ozFieldArray(&_room, 1), _room(nullptr), _index(nullptr) {}
  FieldList(FieldList const &) = delete;
  FieldList &operator=(FieldList const &) = delete;
  ~FieldList() { dropIndex(); }

  bool has(ozField *field);
  /// Enters a field that is not there, at the end.
  void add(ozField *field);
  /// Takes a field out; the others keep their order. Returns whether it was there.
  bool take(ozField *field);

private:
  enum : unsigned int { LONG = 32 };

  /// Where the fields of a long list stand. A place changes as others go, so each field has a number instead; numbers
  /// ascend along the list.
  struct Index {
    Index() : numbers(2 * LONG + 1), next(0), count(0), block(nullptr) {}
    ~Index();

    ozDict numbers;
    unsigned long next;
    unsigned int count;
    void **block; // the elements, behind a gap
  };

  bool isIndexed();
  void makeIndex();
  void dropIndex();
  void spread();
  void number(ozField *field);
  unsigned long numberOf(ozField *field) const;
  long int placeOf(ozField *field) const;

  void *_room;
  Index *_index;
};

/// The fields that a field is connected to.
struct OutputList : FieldList {
  ~OutputList() { delete followers; }

  FieldList *followers = nullptr; // were connected, are no longer, and still have this field as their source
};

#endif
