#include "oz/ozObjectId.h"

#include "oz/ozContext.h"

ozObjectId::ozObjectId() : _id(ozContext::newId(1)), _version(1) {}
ozObjectId::~ozObjectId() { ozContext::freeId(_id, 1); }

bool ozObjectId::isDirty(ozContext *context) const { return context->isDirty(_id, getVersion()) != 0; }
