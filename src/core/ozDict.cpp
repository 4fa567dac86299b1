#include "oz/ozDict.h"

#include "core/HashChains.h"

#include <new>

ozDict::ozDict(unsigned int buckets) : _bucketCount(buckets), _buckets(hashChains::make<ozDictEntry>(_bucketCount)) {}

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
  return *link != nullptr;
}

unsigned char ozDict::find(unsigned long key, void *&value) const { return hashChains::value(*findEntry(key), value); }

unsigned char ozDict::remove(unsigned long key) { return hashChains::remove(findEntry(key)); }

void ozDict::clear() { hashChains::clear(_buckets, _bucketCount); }
