#ifndef OZ_CONTEXT_TABLES_H
#define OZ_CONTEXT_TABLES_H

#include "oz/ozContext.h"
#include "oz/ozPtrArray.h"

/// What all contexts share. Never destroyed, so that an object that dies at exit can still give its numbers back.
struct ozContext::Tables {
  ozPtrArray contexts{4u}; // null where a context was deleted: the next new one takes the place
  int nextId = 1;
  ozIntArray freeIds{32u};
  unsigned int freeIdHead = 0;         // those ahead of it have been taken
  unsigned int textureNameCount = 512; // taken over when the class is registered
  ozIntArray textureNames;             // OpenGL's name, 0 for a free entry
  ozIntArray freedTextureNames;
  int freedTop = -1;
};

/// Calls visit(context) for each live context.
template <class Visit> void ozContext::forEachContext(Visit visit) {
  ozPtrArray const &contexts = tables().contexts;
  for (unsigned int i = 0; i < contexts.getCount(); ++i)
    if (void *context = contexts[i]) visit(*static_cast<ozContext *>(context));
}

#endif
