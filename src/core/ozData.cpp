#include "oz/ozData.h"

#include <limits.h>
#include <stdlib.h>
#include <string.h>

#include "oz/ozType.h"

OZ_DEFINE_TYPE_POINTER(ozData, "Data", ozObject)

ozData::ozData() : ozObject(getClassType()) {}
ozData::ozData(ozType *type) : ozObject(type) {}

void *ozData::getData() const { return reinterpret_cast<char *>(const_cast<ozData *>(this)) + sizeof(ozData); }

ozData *ozData::clone() {
  ozData *copy = new (static_cast<unsigned int>(_size)) ozData(getType());
  if (copy) memcpy(copy->getData(), getData(), static_cast<size_t>(_size));
  return copy;
}

void *ozData::operator new(size_t) noexcept { return nullptr; }

// Out of line and behind a barrier: to the optimiser an object has no contents before its constructor runs, and it
// drops stores that it can see being made into one. No virtual table is there yet for the sanitizer to look at.
__attribute__((noinline, no_sanitize("vptr"))) void *ozData::operator new(size_t size, unsigned int extra) noexcept {
  if (extra > static_cast<unsigned int>(INT_MAX)) return nullptr;
  void *const memory = calloc(1, size + extra);
  if (memory) {
    static_cast<ozData *>(memory)->_size = static_cast<int>(extra);
    __asm__ volatile("" : : "r"(memory) : "memory");
  }
  return memory;
}

void ozData::operator delete(void *data) noexcept { free(data); }
void ozData::operator delete(void *data, unsigned int) noexcept { free(data); }
