#include "core/FieldList.h"

#include <stdlib.h>
#include <string.h>

static unsigned long keyOf(ozField *field) { return reinterpret_cast<unsigned long>(field); }

FieldList::Index::~Index() { free(block); }

FieldList::~FieldList() {
  delete followers;
  dropIndex();
}

bool FieldList::has(ozField *field) { return (isIndexed() ? placeOf(field) : find(field)) >= 0; }

void FieldList::add(ozField *field) {
  if (!_index && _count >= LONG) makeIndex();
  bool const indexed = isIndexed();
  if (_count == _size && indexed)
    spread();
  else if (_count == _size && _inPlace && _size < FEW)
    _size = FEW;
  else if (_count == _size)
    setSize(2 * _count);
  append(field);
  if (indexed) number(field);
}

bool FieldList::take(ozField *field) {
  if (!isIndexed()) return remove(field);
  long int const place = placeOf(field);
  if (place < 0) return false;
  size_t const before = static_cast<size_t>(place), behind = _count - before - 1, step = sizeof(void *);
  if (before < behind) {
    memmove(_array + step, _array, before * step);
    _array += step;
    --_size;
  } else {
    memmove(_array + before * step, _array + (before + 1) * step, behind * step);
  }
  _index->numbers.remove(keyOf(field));
  --_index->count;
  if (!--_count) dropIndex();
  return true;
}

bool FieldList::isIndexed() {
  if (!_index) return false;
  // Whoever was given the list may have changed it.
  if (!_inPlace || _index->count != _count) makeIndex();
  return true;
}

void FieldList::makeIndex() {
  if (!_index) _index = new Index;
  _index->numbers.clear();
  _index->count = 0;
  spread();
  for (unsigned int i = 0; i < _count; ++i) number(get(i));
}

void FieldList::dropIndex() {
  if (_index && _inPlace) {
    _array = reinterpret_cast<char *>(_room);
    _size = FEW;
  }
  delete _index;
  _index = nullptr;
}

// Moves the elements to a block with as much room behind them as they take.
void FieldList::spread() {
  void **const block = static_cast<void **>(calloc(2 * static_cast<size_t>(_count), sizeof(void *)));
  if (!block) return; // and the array grows as arrays do, if it can
  memcpy(block, _array, _count * sizeof(void *));
  if (!_inPlace) free(_array);
  free(_index->block);
  _index->block = block;
  _array = reinterpret_cast<char *>(block);
  _size = 2 * _count;
  _inPlace = 1;
}

void FieldList::number(ozField *field) {
  _index->numbers.enter(keyOf(field), reinterpret_cast<void *>(_index->next++));
  ++_index->count;
}

unsigned long FieldList::numberOf(ozField *field) const {
  void *number;
  _index->numbers.find(keyOf(field), number);
  return reinterpret_cast<unsigned long>(number);
}

long int FieldList::placeOf(ozField *field) const {
  void *found;
  if (!_index->numbers.find(keyOf(field), found)) return -1;
  // A graph that is torn down takes them mostly in their order, or backwards.
  if (get(0) == field) return 0;
  unsigned int low = 1, high = _count - 1;
  if (get(high) == field) return high;
  unsigned long const number = reinterpret_cast<unsigned long>(found);
  while (low < high) {
    unsigned int const middle = low + (high - low) / 2;
    if (numberOf(get(middle)) < number)
      low = middle + 1;
    else
      high = middle;
  }
  return low;
}
