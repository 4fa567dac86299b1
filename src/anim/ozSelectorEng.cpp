#include "oz/ozSelectorEng.h"

OZ_DEFINE_ABSTRACT_CLASS(ozSelectorEng, "SelectorEng", ozEngine) {
  ozSFInt::addTypeField(type, "selector", 3, 0, &ozSelectorEng::_selector);
  static short const inputs[] = {3};
  type->setEngineIO(1, inputs, 0, nullptr);
}

#define OZ_DEFINE_SELECTOR_ENGINE(Class, Name, InputField, ValueField)                                                 \
  OZ_DEFINE_CLASS(Class, Name, ozSelectorEng) {                                                                        \
    InputField::addTypeField(type, "input", 4, &Class::_input);                                                        \
    ValueField::addTypeField(type, "value", 5, ValueField::Value(), &Class::_value);                                   \
    static short const inputs[] = {4}, outputs[] = {5};                                                                \
    type->setEngineIO(1, inputs, 1, outputs);                                                                          \
  }                                                                                                                    \
  void Class::eval() {                                                                                                 \
    unsigned int const i = static_cast<unsigned int>(_selector);                                                       \
    if (i < _input.getCount()) value()->set(_input[i]);                                                                \
  }

OZ_DEFINE_SELECTOR_ENGINE(ozSelectorEng3f, "SelectorEng3f", ozMFVec3f, ozSFVec3f)
OZ_DEFINE_SELECTOR_ENGINE(ozSelectorEng4f, "SelectorEng4f", ozMFVec4f, ozSFVec4f)
