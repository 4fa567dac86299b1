#include "core/FieldList.h"

#include <stdlib.h>
#include <string.h>

static unsigned long keyOf(ozField *field) { return reinterpret_cast<unsigned long>(field); }

FieldList::Index::~Index() { free(block); }

FieldList::~FieldList() {
  delete followers;
  dropIndex();
}

bool FieldList::has(ozField *field) {
  void *number;
  return isIndexed() ? _index->byField.find(keyOf(field), number) : find(field) >= 0;
}

void FieldList::add(ozField *field) {
  if (!_index && _count >= LONG) makeIndex();
  bool const indexed = isIndexed();
  if (_count == _size) {
    if (indexed) {
      if (!spread()) return;
    } else if (_inPlace && _size < FEW) {
      _size = FEW;
    } else {
      setSize(2 * _count);
    }
  }
  append(field);
  if (indexed) number(_count - 1);
}

bool FieldList::take(ozField *field) {
  if (!isIndexed()) return remove(field);
  void *number;
  if (!_index->byField.find(keyOf(field), number)) return false;
  _index->byField.remove(keyOf(field));
  --_index->count;
  unsigned int const place = placeOf(reinterpret_cast<unsigned long>(number));
  // A walk over all elements, to close holes, has to be worth it.
  if (_shown || ++_index->taken < MANY)
    closeAt(place);
  else
    makeHole(place);
  if (!_count) dropIndex();
  return true;
}

void FieldList::settle() {
  if (!_index) return;
  closeHoles();
  _index->taken = 0;
}

void FieldList::show() {
  settle();
  _shown = true;
}

// ---- the index

// Whoever was shown the list may have changed it: then it is indexed anew.
bool FieldList::isIndexed() { return _index && ((_inPlace && _index->count + _index->holes == _count) || makeIndex()); }

bool FieldList::makeIndex() {
  if (!_index) _index = new Index;
  _index->byField.clear();
  _index->count = _index->holes = 0;
  if ((!_index->block || !_inPlace) && !spread()) {
    delete _index;
    _index = nullptr;
    return false;
  }
  for (unsigned int i = 0; i < _count; ++i) number(i);
  return true;
}

void FieldList::dropIndex() {
  if (_index && _inPlace) {
    _array = reinterpret_cast<char *>(_room);
    _size = FEW;
  }
  delete _index;
  _index = nullptr;
}

// Moves everything to a block with as much room behind the elements as they take.
bool FieldList::spread() {
  closeHoles();
  size_t const room = 2 * static_cast<size_t>(_count), bytes = _count * sizeof(void *);
  void **const block = static_cast<void **>(calloc(2 * room, sizeof *block));
  if (!block) return false;
  memcpy(block, places(), bytes);
  if (_index->block && _inPlace) memcpy(block + room, numbers(), bytes);
  if (!_inPlace) free(_array);
  free(_index->block);
  _index->block = block;
  _index->room = room;
  _array = reinterpret_cast<char *>(block);
  _size = static_cast<unsigned int>(room);
  _inPlace = 1;
  return true;
}

void FieldList::number(unsigned int place) {
  numbers()[place] = _index->next;
  _index->byField.enter(keyOf(get(place)), reinterpret_cast<void *>(_index->next++));
  ++_index->count;
}

unsigned int FieldList::placeOf(unsigned long number) const {
  // As long as none is missing, the numbers tell the place. So many places ahead of it there are at the most.
  unsigned long const atMost = number - numbers()[0];
  unsigned int low = 0, high = atMost < _count ? static_cast<unsigned int>(atMost) : _count - 1;
  if (numbers()[high] == number) return high;
  while (low < high) {
    unsigned int const middle = low + (high - low) / 2;
    if (numbers()[middle] < number)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}

// ---- holes

void FieldList::dropFirst(unsigned int count) {
  _array += count * sizeof(void *);
  _size -= count;
  _count -= count;
}

// Moves what lies between a place and the nearer end over it.
void FieldList::closeAt(unsigned int place) {
  unsigned int const behind = _count - place - 1;
  bool const fromFront = place < behind;
  auto const close = [&](auto *list) {
    if (fromFront)
      memmove(list + 1, list, place * sizeof *list);
    else
      memmove(list + place, list + place + 1, behind * sizeof *list);
  };
  close(places());
  close(numbers());
  if (fromFront)
    dropFirst(1);
  else
    --_count;
}

void FieldList::makeHole(unsigned int place) {
  places()[place] = nullptr;
  ++_index->holes;
  // At the ends there are none: a graph that is torn down in its order, or backwards, leaves no hole at all.
  unsigned int const before = _count;
  while (_count && !get(_count - 1)) --_count;
  unsigned int first = 0;
  while (first < _count && !get(first)) ++first;
  dropFirst(first);
  _index->holes -= before - _count;
}

void FieldList::closeHoles() {
  if (!_index->holes) return;
  unsigned int kept = 0;
  for (unsigned int i = 0; i < _count; ++i) {
    if (!get(i)) continue;
    places()[kept] = places()[i];
    numbers()[kept++] = numbers()[i];
  }
  _count = kept;
  _index->holes = 0;
}
