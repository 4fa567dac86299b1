#ifndef OZ_ATOMIC_H
#define OZ_ATOMIC_H

#include "oz/ozPlatform.h"

/// Counts that any thread may change. The class holds nothing; its operations work on the caller's word.
class OZ_API ozAtomic {
public:
  ozAtomic() = default;
  ozAtomic(ozAtomic const &) = default;
  /// Does nothing and returns itself.
  ozAtomic &operator=(ozAtomic const &) { return *this; }

  /// Adds 1 as one step. Gives 1 if the new value is not 0, else 0.
  static unsigned char increment(unsigned int &value) { return __atomic_add_fetch(&value, 1u, __ATOMIC_SEQ_CST) != 0; }
  /// Takes 1 away as one step. Gives 1 if the new value is not 0, else 0.
  static unsigned char decrement(unsigned int &value) { return __atomic_sub_fetch(&value, 1u, __ATOMIC_SEQ_CST) != 0; }
};

#endif
