// The levels of state.

#include "oz/ozContext.h"

void ozContext::pushState() {
  pushLights();
  pushFog(nullptr);
  if (++_stateLevel >= LEVEL_COUNT) return; // shares the top level, which curState is already
  _stateStack[_stateLevel].copy(*_curState);
  _curState = &_stateStack[_stateLevel];
}

void ozContext::popState() {
  OZ_REQUIRE(_stateLevel > 0, "popState without pushState");
  int const below = _stateLevel - 1;
  _ozGfx &lower = _stateStack[slot(below)];

  _whichSetState = _curState;
  ozBitMask touched = _curState->mask;
  touched.orEqual(lower.mask);
  setStateElts(touched, lower);
  // What this changes is not entered in the lower level, as meant.
  setStateElts(_defaultState->mask, *_defaultState);

  _whichSetState = _defaultState;
  _stateLevel = below;
  _curState = &lower;
  popFog();
  popLights();
  _stateDirty = 1;
}
