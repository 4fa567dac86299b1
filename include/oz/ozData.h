#ifndef OZ_DATA_H
#define OZ_DATA_H

#include "oz/ozObject.h"

/// A counted block of raw bytes that lie directly behind the object, allocated together with it:
///
///     ozData *block = new (1024) ozData; // 1024 zeroed bytes
///
/// It carries an application's data on containers and the storage that interleaved arrays share.
class OZ_API ozData : public ozObject {
  OZ_TYPE_POINTER;

public:
  ozData();

  /// The number of bytes.
  int getSize() const { return _size; }
  /// The address of the bytes.
  virtual void *getData() const;
  /// A new block with the same bytes and count 0; null if memory is out.
  virtual ozData *clone();

  /// Null: a block cannot be made without its size.
  static void *operator new(size_t size) noexcept;
  /// Allocates the object and `extra` bytes behind it; null if memory is out.
  static void *operator new(size_t size, unsigned int extra) noexcept;
  static void operator delete(void *data) noexcept;
  static void operator delete(void *data, unsigned int) noexcept;

protected:
  explicit ozData(ozType *type);

private:
  int _size; // stored by operator new; the constructors leave it alone
};

#endif
