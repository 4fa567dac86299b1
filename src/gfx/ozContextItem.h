#ifndef OZ_CONTEXT_ITEM_H
#define OZ_CONTEXT_ITEM_H

#include <GL/gl.h>

#include "oz/ozContext.h"

/// @file
/// The rule that every setter of a state item follows, and what the setters have in common.

/// A statement of the application, and not of something that is being applied, is kept.
template <class T> inline void ozContext::keepDefault(int item, T _ozGfx::*member, T const &value) {
  if (_whichSetState != _defaultState) return;
  _defaultState->mask.onBit(item);
  _defaultState->*member = value;
  _stateDirty = 1;
}

/// Stores what OpenGL is about to hold; false where it holds that already, and nothing is to be issued.
template <class T> inline bool ozContext::change(int item, T _ozGfx::*member, T const &value) {
  if (!(_curState->*member != value)) return false;
  _curState->mask.onBit(item);
  _curState->*member = value;
  return true;
}

template <class T> inline bool ozContext::setItem(int item, T _ozGfx::*member, T const &value) {
  keepDefault(item, member, value);
  return change(item, member, value);
}

namespace ozGL {

inline void enable(GLenum what, bool on) {
  if (on)
    glEnable(what);
  else
    glDisable(what);
}

/// The OpenGL value of an enumerator; NO_TOKEN for anything else that a file or a caller may have stored.
enum : GLenum { NO_TOKEN = ~0u };
template <unsigned int N> inline GLenum token(GLenum const (&table)[N], int value) {
  return static_cast<unsigned int>(value) < N ? table[value] : static_cast<GLenum>(NO_TOKEN);
}

} // namespace ozGL

#endif
