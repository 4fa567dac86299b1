#ifndef TESTS_MATH_SLOT_H
#define TESTS_MATH_SLOT_H

#include <cstring>

/// The slot of a virtual operation in the table of its class, as the pointer to it tells on this machine; -1 where
/// pointers to members have another form.
template <class Operation> int slotOf(Operation operation) {
#if defined(__x86_64__) && defined(__GNUC__)
  long words[2];
  static_assert(sizeof operation == sizeof words, "a pointer to a member function");
  std::memcpy(words, &operation, sizeof words);
  return static_cast<int>((words[0] - 1) / static_cast<long>(sizeof(void *)));
#else
  (void)operation;
  return -1;
#endif
}

#endif
