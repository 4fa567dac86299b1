#ifndef TESTS_CORE_ARRAY_ELEMENTS_H
#define TESTS_CORE_ARRAY_ELEMENTS_H

#include "oz/ozByteArray.h"
#include "oz/ozData.h"
#include "oz/ozOutput.h"
#include "oz/ozPtrArray.h"

#include <gtest/gtest.h>

#include <stdio.h>
#include <stdlib.h>
#include <string>
#include <type_traits>
#include <utility>

/// What the tests of the value arrays share: elements to tell apart, and arrays that leave nothing behind.

typedef testing::Types<ozByteArray, ozUByteArray, ozShortArray, ozIntArray, ozUIntArray, ozFloatArray, ozVec2fArray,
                       ozVec3fArray, ozVec4fArray, ozVec2sArray, ozVec3sArray, ozVec2iArray, ozVec3iArray, ozVec3bArray,
                       ozVec4ubArray, ozMatrix4fArray, ozRotationArray, ozStringArray, ozPtrArray>
    AllValueArrays;

/// The element class of an array.
template <class Array> using ElementOf = std::remove_pointer_t<decltype(std::declval<Array &>().getArray())>;

/// The i-th of 100 elements that all differ from each other and from zero.
template <class T> T element(int i) {
  T value{};
  if constexpr (std::is_same<T, void *>::value)
    value = reinterpret_cast<void *>(static_cast<size_t>(i) + 1);
  else if constexpr (std::is_scalar<T>::value)
    value = static_cast<T>(i + 1);
  else if constexpr (std::is_same<T, ozMatrix4f>::value)
    value[3][i % 3] = static_cast<float>(i + 1);
  else if constexpr (std::is_same<T, ozRotation>::value)
    value.set(0.25f, 0.5f, static_cast<float>(i + 1), 1.0f);
  else if constexpr (std::is_same<T, ozString>::value)
    value = std::to_string(i).c_str();
  else
    for (int k = 0; k < T::SIZE; ++k) value[k] = static_cast<std::remove_reference_t<decltype(value[k])>>(i + 1 + k);
  return value;
}

/// An array for a test. The library leaves the texts of string elements to whoever fills them; here they go with the
/// array.
template <class Array> class Tested : public Array {
public:
  typedef ElementOf<Array> T;

  Tested() = default;
  explicit Tested(unsigned int n) : Array(n) {}
  Tested(ozData *data, short offset, short stride) : Array(data, offset, stride) {}
  ~Tested() {
    if constexpr (std::is_same<T, ozString>::value) {
      if (!this->getStride())
        this->at(0).makeEmpty();
      else
        for (unsigned int i = 0; i < places(); ++i) this->at(i).makeEmpty();
    }
  }

  /// The element as the class's own code reaches it.
  T &at(unsigned int i) const { return this->list(i); }

  void appendElements(int n) {
    for (int i = 0; i < n; ++i) this->append(element<T>(i));
  }

  /// Which elements the array holds, by their numbers: "0 1 2", "?" for any other.
  std::string numbers() const {
    std::string text;
    for (unsigned int i = 0; i < this->getCount(); ++i) {
      int number = 0;
      while (number < 100 && !(this->get(i) == element<T>(number))) ++number;
      text += (i ? " " : "") + (number < 100 ? std::to_string(number) : "?");
    }
    return text;
  }

  /// Whether the storage of an element is all zero.
  bool isZero(unsigned int i) const {
    static char const zeros[sizeof(T)] = {};
    char const *place = reinterpret_cast<char const *>(this->getArray()) + static_cast<size_t>(this->getStride()) * i;
    return memcmp(place, zeros, sizeof(T)) == 0;
  }

private:
  // Elements that truly fit: the size of a view counts by the element and not by the stride.
  unsigned int places() const {
    if (!this->getData()) return this->getSize();
    unsigned int bytes = static_cast<unsigned int>(this->getData()->getSize()) - this->getOffset();
    return bytes < sizeof(T) ? 0 : (bytes - sizeof(T)) / this->getStride() + 1;
  }
};

/// What write puts on a stream, behind so many indentations.
template <class Value, class = std::enable_if_t<!std::is_pointer<Value>::value>>
std::string textOf(Value const &value, int indentation = 0) {
  char *text = nullptr;
  size_t size = 0;
  FILE *file = open_memstream(&text, &size);
  {
    ozOutput out(file);
    for (int i = 0; i < indentation; ++i) out.pushIndent();
    value.write(&out);
  }
  fclose(file);
  std::string result(text, size);
  free(text);
  return result;
}

#endif
