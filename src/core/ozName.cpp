#include "oz/ozName.h"

#include "core/HashChains.h"
#include "core/textMemory.h"
#include "oz/ozOutput.h"

#include <new>

namespace {

const size_t BlockSize = 4000;

ozNameEntry **Buckets = nullptr;
unsigned int BucketCount = 1999; // to start with
unsigned int EntryCount = 0;
char *Block = nullptr; // the newest string block, and what is left of it
size_t BlockLeft = 0;

// Room for a text that lives as long as the process.
char *allocateLasting(size_t bytes) {
  if (bytes >= BlockSize) return allocateText(bytes);
  if (bytes > BlockLeft) {
    char *block = allocateText(BlockSize);
    if (!block) return nullptr;
    Block = block;
    BlockLeft = BlockSize;
  }
  char *text = Block;
  Block += bytes;
  BlockLeft -= bytes;
  return text;
}

} // namespace

// Not made by insert, so that empty names need no table and no memory.
ozNameEntry ozNameEntry::_Empty("", 0, nullptr);

void ozNameEntry::initClass() {
  if (Buckets) return;
  Buckets = hashChains::make<ozNameEntry>(BucketCount);
}

ozNameEntry const *ozNameEntry::insert(char const *text) {
  if (!text || !*text) return &_Empty;
  initClass();
  if (!Buckets) return &_Empty;
  unsigned long hash = ozString::hash(text);
  ozNameEntry *&head = Buckets[hash % BucketCount];
  for (ozNameEntry *entry = head; entry; entry = entry->_next)
    if (entry->_hash == hash && strcmp(entry->_text, text) == 0) return entry;

  size_t bytes = strlen(text) + 1;
  char *copy = allocateLasting(bytes);
  if (!copy) return &_Empty;
  memcpy(copy, text, bytes);
  ozNameEntry *entry = new (std::nothrow) ozNameEntry(copy, hash, head);
  if (!entry) return &_Empty;
  head = entry;
  if (++EntryCount >= BucketCount)
    hashChains::grow(Buckets, BucketCount, &ozNameEntry::_next, [](ozNameEntry const &each) { return each._hash; });
  return entry;
}

void ozName::write(ozOutput *out) const { fprintf(out->getFile(), "\"%s\"", getString()); }
