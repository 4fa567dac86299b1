// Which fog is in force, level by level. Entry 0 is the context's own fog, which is off. Each level holds a reference.

#include "oz/ozContext.h"
#include "oz/ozFog.h"

void ozContext::pushFog(ozFog *fog) {
  if (!fog) fog = _fogStack[slot(_fogLevel)];
  if (++_fogLevel >= LEVEL_COUNT) return; // shares the top level, whose fog stays in force
  _fogStack[_fogLevel] = fog;
  fog->push();
  fog->ref();
}

void ozContext::popFog() {
  OZ_REQUIRE(_fogLevel > 0, "popFog without pushFog");
  if (_fogLevel-- >= LEVEL_COUNT) return;
  ozFog *const leaving = _fogStack[_fogLevel + 1];
  _fogStack[_fogLevel]->pop(leaving, this);
  leaving->unref();
}

unsigned char ozContext::syncFogState(ozFog *fog) {
  if (!_defaultState->fogEnable) return 0;
  _whichSetState = _curState;
  setFogEnable(fog->getOn());
  _whichSetState = _defaultState;
  return fog->getOn();
}
