#include "oz/ozStringDict.h"

#include "core/HashChains.h"
#include "oz/ozString.h"

#include <new>

ozStringDictEntry::ozStringDictEntry(char const *key, void *value)
    : value(value), key(strdup(key ? key : "")), next(nullptr) {}

ozStringDictEntry::~ozStringDictEntry() { free(key); }

ozStringDict::ozStringDict(unsigned int buckets)
    : _bucketCount(buckets), _entryCount(0), _buckets(hashChains::make<ozStringDictEntry>(_bucketCount)) {}

ozStringDict::~ozStringDict() {
  clear();
  free(_buckets);
}

ozStringDictEntry **ozStringDict::findEntry(char const *key) const {
  char const *text = key ? key : "";
  return hashChains::find(&_buckets[ozString::hash(text) % _bucketCount],
                          [text](ozStringDictEntry const &entry) { return strcmp(entry.key, text) == 0; });
}

unsigned char ozStringDict::enter(char const *key, void *value) {
  ozStringDictEntry **link = findEntry(key);
  if (*link) {
    (*link)->value = value;
    return 0;
  }
  ozStringDictEntry *entry = new (std::nothrow) ozStringDictEntry(key, value);
  if (!entry || !entry->key) {
    delete entry;
    return 0;
  }
  *link = entry;
  ++_entryCount;
  return 1;
}

unsigned char ozStringDict::find(char const *key, void *&value) const {
  return hashChains::value(*findEntry(key), value);
}

unsigned char ozStringDict::remove(char const *key) {
  unsigned char removed = hashChains::remove(findEntry(key));
  _entryCount -= removed;
  return removed;
}

void ozStringDict::clear() {
  hashChains::clear(_buckets, _bucketCount);
  _entryCount = 0;
}

unsigned char ozStringDict::get(unsigned int index, void *&value) const {
  for (unsigned int i = 0; i < _bucketCount; ++i)
    for (ozStringDictEntry *entry = _buckets[i]; entry; entry = entry->next)
      if (index-- == 0) return hashChains::value(entry, value);
  value = nullptr;
  return 0;
}
