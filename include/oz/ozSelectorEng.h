#ifndef OZ_SELECTOR_ENG_H
#define OZ_SELECTOR_ENG_H

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// Base of the engines that pick one element of an array.
class OZ_API ozSelectorEng : public ozEngine {
  OZ_ABSTRACT_CLASS(ozSelectorEng);

public:
  /// Which element; 0 by default. One that does not exist leaves the value as it was.
  int getSelector() { return read(3, _selector); }
  void setSelector(int selector) { store(3, _selector, selector); }

protected:
  int _selector;
};

#define OZ_SELECTOR_ENGINE(Class, InputField, Array, ValueField, Value)                                                \
  class OZ_API Class : public ozSelectorEng {                                                                          \
    OZ_CLASS(Class);                                                                                                   \
                                                                                                                       \
  public:                                                                                                              \
    Class();                                                                                                           \
    InputField *input() { return static_cast<InputField *>(getField(4)); }                                             \
    /** The output: reading it evaluates the engine. */                                                                \
    ValueField *value() { return static_cast<ValueField *>(getField(5)); }                                             \
    void eval() override;                                                                                              \
                                                                                                                       \
  private:                                                                                                             \
    Array _input;                                                                                                      \
    Value _value;                                                                                                      \
  }

/// Picks a vector of three floats.
OZ_SELECTOR_ENGINE(ozSelectorEng3f, ozMFVec3f, ozVec3fArray, ozSFVec3f, ozVec3f);
/// Picks a vector of four floats.
OZ_SELECTOR_ENGINE(ozSelectorEng4f, ozMFVec4f, ozVec4fArray, ozSFVec4f, ozVec4f);

#undef OZ_SELECTOR_ENGINE

#endif
