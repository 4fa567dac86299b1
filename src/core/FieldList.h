#ifndef OZ_FIELD_LIST_H
#define OZ_FIELD_LIST_H

#include "oz/ozDict.h"
#include "oz/ozFieldInfoArray.h"

/// The fields at the other ends of a field's connections, each once, in the order in which they came.
///
/// A few lie in the list itself. A long list keeps an index, so that nothing is searched. Where many are taken out of
/// it in a row they leave holes, for settle() to close ahead of the next look.
class OZ_API FieldList : public ozFieldArray {
public:
  FieldList() : ozFieldArray(_room, 1), _shown(false), _index(nullptr), _room() {}
  FieldList(FieldList const &) = delete;
  FieldList &operator=(FieldList const &) = delete;
  ~FieldList();

  bool has(ozField *field);
  /// Enters a field that is not there, at the end.
  void add(ozField *field);
  /// Takes a field out; the others keep their order. Returns whether it was there.
  bool take(ozField *field);

  /// Of a list that is not settled, too.
  bool isEmpty() const { return !_count; }
  /// To be called ahead of counting and getting, if a field was taken out.
  void settle();
  /// From now on somebody may hold the list, and look at it whenever he likes: it never has holes again.
  void show();

  /// Of a list of outputs: fields that were connected, are no longer, and still have this one as their source.
  FieldList *followers = nullptr;

private:
  enum : unsigned int { FEW = 4, LONG = 32, MANY = 64 };

  /// Where the fields of a long list stand. A place changes as others go, so each field has a number instead, and each
  /// place that of its field. Numbers ascend along the list.
  struct Index {
    Index() : byField(2 * LONG + 1) {}
    ~Index();

    ozDict byField;
    unsigned long next = 0;
    unsigned int count = 0;
    unsigned int taken = 0; // fields, since the list was settled
    unsigned int holes = 0; // null elements; the first and the last are none
    size_t room = 0;        // of the block: so many elements, a gap ahead of them, and then as many numbers
    void **block = nullptr;
  };

  bool isIndexed();
  bool makeIndex();
  void dropIndex();
  bool spread();
  void number(unsigned int place);
  unsigned int placeOf(unsigned long number) const;
  void dropFirst(unsigned int count);
  void closeAt(unsigned int place);
  void makeHole(unsigned int place);
  void closeHoles();

  void **places() const { return reinterpret_cast<void **>(_array); }
  unsigned long *numbers() const { return reinterpret_cast<unsigned long *>(places() + _index->room); }

  bool _shown;
  Index *_index;
  void *_room[FEW];
};

#endif
