#ifndef OZ_ARRAY_H
#define OZ_ARRAY_H

#include <stddef.h>
#include <string.h>

#include <type_traits>

#include "oz/ozPlatform.h"

class ozData;
class ozOutput;

/// The growable array under all lists of the library.
///
/// It either owns a heap block, or is a strided view into a shared ozData, which lets several arrays interleave in one
/// buffer. Element i stands at getArray() plus stride times i in both cases. New storage is zeroed. Indices on read are
/// the caller's to keep in range.
class OZ_API ozArray {
public:
  ozArray(ozArray const &) = delete;
  ~ozArray();

  /// Shares the other array's storage, as the plain copy of all members it is. To copy contents use set().
  ozArray &operator=(ozArray const &) = default;

  /// Makes room for exactly n elements. The count is not touched, so shrinking can leave it above the size. A request
  /// that cannot be met is reported and changes nothing; an interleaved array cannot be resized and says so.
  void setSize(unsigned int n);
  /// Makes room if needed and sets the number of elements in use. Lowering it frees nothing.
  void setCount(unsigned int n);

  unsigned int getCount() const { return _count; }
  /// The number of elements that there is room for.
  unsigned int getSize() const { return _size; }
  /// The growth step in elements, 32 unless set. 0 counts as 1.
  unsigned int getExtension() const { return _extension; }
  void setExtension(unsigned int n) { _extension = n ? n : 1; }
  /// Bytes from one element to the next.
  unsigned int getStride() const { return _stride; }
  /// Byte offset of element 0 in the shared data; 0 for an owned block.
  unsigned int getOffset() const { return _offset; }
  /// The shared data; null for an owned block.
  ozData *getData() const { return _data; }
  char *getArray() const { return _array; }

  /// Counts the arrays of the process that had elements and changed their room: as long as it stands, no address of an
  /// element has changed.
  static unsigned int getMoveCount() { return __atomic_load_n(&_MoveCount, __ATOMIC_RELAXED); }
  static void countMove() { __atomic_fetch_add(&_MoveCount, 1, __ATOMIC_RELAXED); }

protected:
  explicit ozArray(unsigned int elementSize);
  ozArray(unsigned int elementSize, unsigned int size);
  ozArray(unsigned int elementSize, ozData *data, unsigned int offset, unsigned int stride);
  /// Room for `size` elements in zeroed memory that belongs to somebody else, until more are needed.
  ozArray(unsigned int elementSize, void *place, unsigned int size);

  /// Grows in whole steps of the extension until there is room for n elements; never shrinks. Returns whether the
  /// caller may store there: 0 only where an owned block could not grow.
  unsigned char fit(unsigned int n);
  unsigned char fitSum(unsigned int a, unsigned int b); // fit(a + b), with the sum tested

  unsigned int _offset;
  unsigned int _stride;
  unsigned int _elementSize : 31;
  unsigned int _inPlace : 1; // the elements lie in memory that is not the array's own
  unsigned int _count;
  unsigned int _size;
  unsigned int _extension;
  ozData *_data;
  char *_array;

private:
  unsigned char resize(size_t n);

  static unsigned int _MoveCount;
};

/// How a value travels as an argument: scalars, pointers and times by value, everything else by constant reference.
template <class T> struct ozPass { typedef std::conditional_t<std::is_scalar<T>::value, T, T const &> Type; };

/// The operations of all value arrays, written once. Array is the class itself, T its element.
template <class Array, class T> class OZ_API ozValueArray : public ozArray {
public:
  typedef T Value;
  typedef typename ozPass<T>::Type Pass;

  /// Room for 16 elements.
  ozValueArray() : ozArray(sizeof(T), 16u) {}
  /// Room for n elements; 0 is taken as 1.
  explicit ozValueArray(unsigned int n) : ozArray(sizeof(T), n ? n : 1u) {}
  /// A view into data: element 0 at byte `offset`, then one every `stride` bytes. Holds a reference on the data.
  ozValueArray(ozData *data, short offset, short stride)
      : ozArray(sizeof(T), data, static_cast<unsigned int>(offset), static_cast<unsigned int>(stride)) {}

  Pass get(unsigned int i) const { return list(i); }
  Pass operator[](unsigned int i) const { return list(i); }
  void get(unsigned int i, T &out) const { out = list(i); }
  T *getArray() const { return reinterpret_cast<T *>(_array); }

  /// Adds one element at the end.
  void append(Pass value) {
    if (_count < _size) {
      slot(_count++) = value;
    } else {
      T const kept = value; // may lie in the block that is about to move
      if (fit(_count + 1)) slot(_count++) = kept;
    }
  }

  /// Stores one element; the array grows, and the count rises, as far as needed.
  void set(unsigned int i, Pass value) {
    if (i < _size) {
      slot(i) = value;
    } else {
      T const kept = value;
      if (!fitSum(i, 1)) return;
      slot(i) = kept;
    }
    if (i >= _count) _count = i + 1;
  }

  /// Takes over the other array's elements.
  void set(Array const &other) {
    unsigned int const n = other.getCount();
    if (static_cast<ozArray const *>(&other) == this || !fit(n)) return;
    _count = n;
    ozValueArray const &from = other;
    if (std::is_trivially_copyable<T>::value && _stride == sizeof(T) && from._stride == sizeof(T)) {
      if (n) memmove(static_cast<void *>(_array), from._array, n * sizeof(T));
    } else {
      for (unsigned int i = 0; i < n; ++i) slot(i) = from.list(i);
    }
  }

  /// Stores n elements from `start` on.
  void setRange(unsigned int start, unsigned int n, T const *values) {
    char const *const from = reinterpret_cast<char const *>(values);
    bool const own = !_data && from >= _array && from < _array + static_cast<size_t>(_size) * _stride;
    size_t const place = own ? static_cast<size_t>(from - _array) : 0;
    if (!openRange(start, n)) return;
    if (own) values = reinterpret_cast<T const *>(_array + place); // the block may have moved
    if (own && place < static_cast<size_t>(start) * _stride)
      for (unsigned int i = n; i-- > 0;) slot(start + i) = values[i];
    else
      for (unsigned int i = 0; i < n; ++i) slot(start + i) = values[i];
  }

  /// Stores one value n times from `start` on.
  void fillRange(unsigned int start, unsigned int n, Pass value) {
    T const kept = value;
    if (!openRange(start, n)) return;
    for (unsigned int i = 0; i < n; ++i) slot(start + i) = kept;
  }

  /// Copies n elements from `start` on, fewer where the array ends earlier.
  void getRange(unsigned int start, unsigned int n, T *out) const {
    if (start >= _count) return;
    if (n > _count - start) n = _count - start;
    for (unsigned int i = 0; i < n; ++i) out[i] = list(start + i);
  }

  /// Stores the value at i and moves what stood there and behind it up by one.
  void insert(unsigned int i, Pass value) {
    T const kept = value;
    unsigned int const last = i > _count ? i : _count;
    if (!fitSum(last, 1)) return;
    for (unsigned int k = _count; k > i; --k) slot(k) = list(k - 1);
    slot(i) = kept;
    ++_count;
  }

  /// The first index of a value, by exact comparison; -1 if it is not there.
  long int find(Pass value) const {
    for (unsigned int i = 0; i < _count; ++i)
      if (list(i) == value) return static_cast<long int>(i);
    return -1;
  }

  /// Stores `now` in the place of the first `old`; returns the index, -1 if there was none.
  long int replace(Pass old, Pass now) {
    long int const i = find(old);
    if (i >= 0) slot(static_cast<unsigned int>(i)) = now;
    return i;
  }

  /// Takes out the first such value, keeping the order; returns whether there was one.
  unsigned char remove(Pass value) {
    long int const i = find(value);
    if (i >= 0) removeIndex(static_cast<unsigned int>(i));
    return i >= 0;
  }
  /// Takes out one element, keeping the order. An index at or beyond the count does nothing.
  void removeIndex(unsigned int i) {
    if (i >= _count) return;
    for (unsigned int k = i + 1; k < _count; ++k) slot(k - 1) = list(k);
    --_count;
  }
  /// As remove(), but the last element takes the freed place.
  unsigned char fastRemove(Pass value) {
    long int const i = find(value);
    if (i >= 0) fastRemoveIndex(static_cast<unsigned int>(i));
    return i >= 0;
  }
  /// As removeIndex(), but the last element takes the freed place.
  void fastRemoveIndex(unsigned int i) {
    if (i >= _count) return;
    if (i + 1 < _count) slot(i) = list(_count - 1);
    --_count;
  }

  /// Writes "[", a line an element, and "]".
  void write(ozOutput *out) const;

protected:
  ozValueArray(T *place, unsigned int n) : ozArray(sizeof(T), place, n) {}

  T &list(unsigned int i) const {
    OZ_REQUIRE(i < _count || i < _size, "array index out of range");
    return slot(i);
  }

private:
  T &slot(unsigned int i) const { return *reinterpret_cast<T *>(_array + static_cast<size_t>(_stride) * i); }

  // Room for a range, the count raised to its end.
  unsigned char openRange(unsigned int start, unsigned int n) {
    if (!fitSum(start, n)) return 0;
    if (_count < start + n) _count = start + n;
    return 1;
  }
};

#endif
