#ifndef TEXT_MEMORY_H
#define TEXT_MEMORY_H

#include "oz/ozGlobal.h"

#include <stdlib.h>

/// Memory for texts, to be given back with free; null, and a message, if it cannot be had.
inline char *allocateText(size_t bytes) {
  char *text = static_cast<char *>(malloc(bytes));
  if (!text) ozGlobal::notify(ozGlobal::FATAL, ozGlobal::RESOURCE, "Cannot allocate memory for text");
  return text;
}

#endif
