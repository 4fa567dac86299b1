#ifndef OZ_FIELD_LIST_H
#define OZ_FIELD_LIST_H

#include "oz/ozDict.h"
#include "oz/ozFieldInfoArray.h"

/// The fields at the other ends of a field's connections, each once, in the order in which they came.
///
/// A few lie in the list itself. A long list keeps an index, so that nothing is searched, and taking a field
/// out moves only what lies between it and the nearer end.
class OZ_API FieldList : public ozFieldArray {
public:
  FieldList() : ozFieldArray(_room, 1), _index(nullptr), _room() {}
  FieldList(FieldList const &) = delete;
  FieldList &operator=(FieldList const &) = delete;
  ~FieldList();

  bool has(ozField *field);
  /// Enters a field that is not there, at the end.
  void add(ozField *field);
  /// Takes a field out; the others keep their order. Returns whether it was there.
  bool take(ozField *field);

  /// Of a list of outputs: fields that were connected, are no longer, and still have this one as their source.
  FieldList *followers = nullptr;

private:
  enum : unsigned int { FEW = 4, LONG = 32 };

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

  Index *_index;
  void *_room[FEW];
};

#endif
