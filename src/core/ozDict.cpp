#include "oz/ozDict.h"

#include "core/HashChains.h"

#include <new>

// The mean length at which more buckets are made.
static unsigned int const LongChain = 2;

ozDict::ozDict(unsigned int buckets)
    : _bucketCount(buckets), _buckets(hashChains::make<ozDictEntry>(_bucketCount)), _count(0) {}

ozDict::~ozDict() {
  clear();
  free(_buckets);
}

ozDictEntry **ozDict::findEntry(unsigned long key) const {
  return hashChains::find(&_buckets[key % _bucketCount], [key](ozDictEntry const &entry) { return entry.key == key; });
}

unsigned char ozDict::enter(unsigned long key, void *value) {
  ozDictEntry **link = findEntry(key);
  if (*link) {
    (*link)->value = value;
    return 0;
  }
  *link = new (std::nothrow) ozDictEntry(key, value);
  if (!*link) return 0;
  if (++_count / LongChain >= _bucketCount)
    hashChains::grow(_buckets, _bucketCount, &ozDictEntry::next, [](ozDictEntry const &entry) { return entry.key; });
  return 1;
}

unsigned char ozDict::find(unsigned long key, void *&value) const { return hashChains::value(*findEntry(key), value); }

unsigned char ozDict::remove(unsigned long key) {
  if (!hashChains::remove(findEntry(key))) return 0;
  --_count;
  return 1;
}

void ozDict::clear() {
  hashChains::clear(_buckets, _bucketCount);
  _count = 0;
}
