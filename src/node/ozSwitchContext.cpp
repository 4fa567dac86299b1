#include <inttypes.h>
#include <stdio.h>

#include "node/visit.h"
#include "oz/ozDrawAction.h"
#include "oz/ozSwitch.h"

OZ_DEFINE_INSTANCES(ozSwitchContext)

OZ_DEFINE_TYPE(ozSwitchContext, "SwitchContext", ozSwitch) {}

ozSwitchContext::ozSwitchContext(ozType *type) : ozSwitch(type) {
  initFieldDefaults(_ClassType);
  _whichChild = 0;
}

ozSwitchContext::~ozSwitchContext() { destroyFieldContents(_ClassType); }

ozContext *ozSwitchContext::getContext(int i) const {
  // The last entry is out of range too, which is meant.
  if (i >= 0 && i < static_cast<int>(_contexts.getCount()) - 1)
    return static_cast<ozContext *>(_contexts[static_cast<unsigned int>(i)]);
  fprintf(stderr, "ozSwitchContext(%p)::getContext: attempting to read uninitialized range %d\n",
          static_cast<void const *>(this), i);
  return nullptr;
}

void ozSwitchContext::setContext(int i, ozContext *context) {
  if (i >= 0) _contexts.set(static_cast<unsigned int>(i), context);
}

ozTravDirective ozSwitchContext::drawVisit(ozDrawAction *action) {
  cleanFields();
  ozContext *const context = action->getContext();
  int index = -1;
  for (unsigned int i = 0; i < _contexts.getCount(); ++i)
    if (_contexts[i] == context) index = static_cast<int>(i); // the last match counts
  if (index < 0) {
    fprintf(stderr, "ozSwitchContext(%p)::drawVisit called with unknown context 0x%" PRIxPTR "\n",
            static_cast<void *>(action), reinterpret_cast<uintptr_t>(context)); // 0x0 for none, where %p says "(nil)"
    return TRAV_TERM;
  }
  // Here a child's TRAV_PRUNE reaches the verdict, which is meant.
  return ozCulledFrame(this, _boxBound, action,
                       [&] { return ozVisitChild<&ozNode::drawVisit>(_children, index, action); });
}
