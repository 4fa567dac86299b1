// The two override stacks. Their effect stands in drawApp, and in the setters of cull face, line width and point size.

#include <stdio.h>

#include "oz/ozAppearance.h"
#include "oz/ozContext.h"
#include "oz/ozOverrideGeoProp.h"

namespace {

struct Messages {
  char const *overflow, *null, *underflow;
};

Messages const AppearanceMessages = {"overflow in ozContext override appearance stack\n",
                                     "pushOverrideAppearance was passed a NULL node.\n",
                                     "underflow in ozContext override appearance stack\n"};
Messages const GeoPropMessages = {"overflow in ozContext override geometry property stack\n",
                                  "pushOverrideGeoProp was passed a NULL node.\n",
                                  "underflow in ozContext override geometry property stack\n"};

template <class T, int N> void push(T *(&stack)[N], int &top, T *object, Messages const &messages) {
  if (top == N - 1 || !object) {
    fputs(top == N - 1 ? messages.overflow : messages.null, stderr);
    return;
  }
  object->ref();
  stack[++top] = object;
}

template <class T, int N> T *pop(T *(&stack)[N], int &top, Messages const &messages) {
  if (top >= 0) return stack[top--];
  fputs(messages.underflow, stderr);
  return nullptr;
}

} // namespace

void ozContext::pushOverrideAppearance(ozAppearance *appearance) {
  push(_overrideAppearances, _overrideAppearanceTop, appearance, AppearanceMessages);
}

ozAppearance *ozContext::popOverrideAppearance() {
  ozAppearance *const appearance = pop(_overrideAppearances, _overrideAppearanceTop, AppearanceMessages);
  if (appearance) appearance->unref();
  return appearance;
}

void ozContext::pushOverrideGeoProp(ozOverrideGeoProp *properties) {
  push(_overrideGeoProps, _overrideGeoPropTop, properties, GeoPropMessages);
}

ozOverrideGeoProp *ozContext::popOverrideGeoProp() {
  ozOverrideGeoProp *const properties = pop(_overrideGeoProps, _overrideGeoPropTop, GeoPropMessages);
  if (!properties) return nullptr;
  // No possible values: the next setter of each finds a difference and issues its call.
  _curState->cullFace = static_cast<CullFaceEnum>(-1);
  _curState->lineWidth = -1.0f;
  _curState->pointSize = -1.0f;
  properties->unref();
  return properties;
}
