// How an appearance comes into force. The context remembers what the last source set: what that had and the new one has
// not goes back to the default state, then the new one's items follow. So a change from one appearance to the next
// costs the items in which they differ, and the same one again costs a few comparisons.

#include <optional>

#include "oz/ozAppearance.h"
#include "oz/ozContext.h"

// Equals no appearance: what stands for sources that may not be passed over next time.
static void const *const NoAppearance = reinterpret_cast<void const *>(1);

void ozContext::drawApp(ozAppearance *appearance, unsigned char force) {
  ozAppearance *const over = _overrideAppearanceTop < 0 ? nullptr : _overrideAppearances[_overrideAppearanceTop];
  std::optional<ozAppearance> merged;
  ozAppearance *source = over ? over : appearance;
  if (over && appearance) {
    source = &merged.emplace();
    source->_noRefs = 1;
    source->merge(*over, *appearance);
  } else if (over) {
    over->cleanFields();
  }
  if (source && source == _lastAppearance && !force && !_stateDirty) return;

  // Copies: what is drawn on the way may change the originals.
  _ozGfx const values = source ? source->_gfx : *_defaultState;
  ozBitMask const setMask = source ? source->_setMask : _defaultState->mask;
  ozBitMask leftOver = _lastSetMask;
  leftOver.andNotEqual(setMask);

  _whichSetState = _curState;
  setStateElts(leftOver, *_defaultState);
  setStateElts(setMask, values);
  _whichSetState = _defaultState;

  _lastAppearance = source && !merged ? source : NoAppearance;
  _lastSetMask = setMask;
  _stateDirty = 0;
}
