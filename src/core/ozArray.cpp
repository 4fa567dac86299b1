#include "oz/ozArray.h"

#include <limits.h>
#include <stdlib.h>

#include "oz/ozData.h"
#include "oz/ozGlobal.h"

static unsigned int const DefaultExtension = 32;

unsigned int ozArray::_MoveCount = 0;

ozArray::ozArray(unsigned int elementSize)
    : _offset(0), _stride(elementSize), _elementSize(elementSize), _inPlace(0), _count(0), _size(0),
      _extension(DefaultExtension), _data(nullptr), _array(nullptr) {}

ozArray::ozArray(unsigned int elementSize, unsigned int size) : ozArray(elementSize) { setSize(size); }

ozArray::ozArray(unsigned int elementSize, ozData *data, unsigned int offset, unsigned int stride)
    : ozArray(elementSize) {
  _data = data;
  _data->ref();
  _offset = offset;
  _stride = stride;
  // By the element size, not by the stride: meant so, though fewer elements may truly fit.
  unsigned int const bytes = static_cast<unsigned int>(_data->getSize());
  _size = bytes > offset ? (bytes - offset) / elementSize : 0;
  _array = static_cast<char *>(_data->getData()) + offset;
}

ozArray::ozArray(unsigned int elementSize, void *place, unsigned int size) : ozArray(elementSize) {
  _inPlace = 1;
  _size = size;
  _array = static_cast<char *>(place);
}

ozArray::~ozArray() {
  if (_data)
    _data->unref();
  else if (!_inPlace)
    free(_array);
}

void ozArray::setSize(unsigned int n) { resize(n); }

unsigned char ozArray::resize(size_t n) {
  if (_data) {
    ozGlobal::notify(ozGlobal::FATAL, ozGlobal::RESOURCE, "Cannot resize interleaved array");
    return 1; // a caller of interleaved arrays keeps within the size
  }
  size_t const bytes = _elementSize * n;
  // realloc frees a block when asked for nothing, and the array must stay usable.
  void *const block = n > UINT_MAX ? nullptr : realloc(_inPlace ? nullptr : _array, bytes ? bytes : 1);
  if (!block) {
    ozGlobal::notify(ozGlobal::FATAL, ozGlobal::RESOURCE, "Cannot allocate memory for array");
    return 0;
  }
  if (_inPlace) memcpy(block, _array, static_cast<size_t>(_elementSize) * (n < _size ? n : _size));
  if (_size) countMove();
  _inPlace = 0;
  _array = static_cast<char *>(block);
  if (n > _size) memset(_array + static_cast<size_t>(_elementSize) * _size, 0, (n - _size) * _elementSize);
  _size = static_cast<unsigned int>(n);
  return 1;
}

unsigned char ozArray::fit(unsigned int n) {
  if (_size >= n) return 1;
  size_t const steps = (static_cast<size_t>(n) - _size + _extension - 1) / _extension;
  return resize(_size + steps * _extension);
}

unsigned char ozArray::fitSum(unsigned int a, unsigned int b) {
  size_t const sum = static_cast<size_t>(a) + b;
  return sum > UINT_MAX ? resize(sum) : fit(static_cast<unsigned int>(sum));
}

void ozArray::setCount(unsigned int n) {
  if (fit(n)) _count = n;
}
