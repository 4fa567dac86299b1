// How an appearance comes into force. The context remembers what the last source set: what that had and the new one has
// not goes back to the default state, then the new one's items follow. So a change from one appearance to the next
// costs the items in which they differ, and the same one again costs a few comparisons.

#include "oz/ozAppearance.h"
#include "oz/ozContext.h"

// Equals no appearance: what stands for sources that may not be passed over next time.
static void const *const NoAppearance = reinterpret_cast<void const *>(1);

void ozContext::drawApp(ozAppearance *appearance, unsigned char force) {
  if (_overrideAppearanceTop < 0)
    applyAppearance(appearance, force, appearance);
  else
    drawOverridden(_overrideAppearances[_overrideAppearanceTop], appearance, force);
}

void ozContext::drawOverridden(ozAppearance *over, ozAppearance *appearance, unsigned char force) {
  if (!appearance) {
    over->cleanFields();
    return applyAppearance(over, force, over);
  }
  ozAppearance merged;
  merged._noRefs = 1;
  merged.merge(*over, *appearance);
  applyAppearance(&merged, force, NoAppearance);
}

// Applies the source, null for the default state, and remembers it as `known`.
void ozContext::applyAppearance(ozAppearance *source, unsigned char force, void const *known) {
  if (source && source == _lastAppearance && !force && !_stateDirty) return;

  _ozGfx const &values = source ? source->_gfx : *_defaultState;
  ozBitMask const setMask = source ? source->_setMask : _defaultState->mask;
  ozBitMask leftOver = _lastSetMask;
  leftOver.andNotEqual(setMask);

  _whichSetState = _curState;
  if (leftOver.notZero()) setStateElts(leftOver, *_defaultState);
  // What an object of the application draws may change the originals, so what comes behind the first one is copied.
  unsigned long long const objects = ~0ull << TEXTURE_ITEM & (1ull << TEXTURE_ITEM | 1ull << TEX_GEN_ITEM |
                                                              1ull << MATERIAL_ITEM | 1ull << BACK_MATERIAL_ITEM);
  unsigned long long const items = static_cast<unsigned long long>(setMask.getMask()), first = items & objects;
  if ((leftOver.getMask() & static_cast<long long>(objects)) || (first & (~first + 1)) * 2 <= items)
    setStateElts(setMask, _ozGfx(values));
  else
    setStateElts(setMask, values);
  _whichSetState = _defaultState;

  _lastAppearance = known ? known : NoAppearance;
  _lastSetMask = setMask;
  _stateDirty = 0;
}
