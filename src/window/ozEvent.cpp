#include "oz/ozEvent.h"

#include "core/writeList.h"

// ozContainer as parent, although the class does not derive from it: meant.
OZ_DEFINE_TYPE(ozEvent, "Event", ozContainer) {}

ozEvent::ozEvent() : ozObject(getClassType()), type(0), key(0), window(nullptr), x(0), y(0), buttons(0), modifiers(0) {}

void ozEvent::write(ozOutput *) {}

void ozEventArray::write(ozOutput *out) const {
  writePointerList(out, *this, [out](ozEvent *event) { event->write(out); });
}
