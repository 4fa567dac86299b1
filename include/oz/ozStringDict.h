#ifndef OZ_STRING_DICT_H
#define OZ_STRING_DICT_H

#include "oz/ozPlatform.h"

/// One pair of an ozStringDict. The key is a copy of its own; null counts as "".
class OZ_API ozStringDictEntry {
public:
  ozStringDictEntry(char const *key, void *value);
  ~ozStringDictEntry();
  ozStringDictEntry(ozStringDictEntry const &) = delete;
  ozStringDictEntry &operator=(ozStringDictEntry const &) = delete;

  void *value;
  char *key;
  ozStringDictEntry *next;
};

/// Maps texts to pointers. Keys are copied; a null key counts as "". What the pointers point at stays the caller's.
class OZ_API ozStringDict {
public:
  /// The number of buckets never changes; 0 counts as 1.
  ozStringDict(unsigned int buckets);
  ~ozStringDict();
  ozStringDict(ozStringDict const &) = delete;
  ozStringDict &operator=(ozStringDict const &) = delete;

  /// Stores a value. True if the key is new, false if it was there, in which case its value is replaced.
  unsigned char enter(char const *key, void *value);
  /// True if the key is there, with its value; false with null otherwise.
  unsigned char find(char const *key, void *&value) const;
  /// True if the key was there.
  unsigned char remove(char const *key);
  /// Takes all keys out.
  void clear();

  /// The number of keys.
  unsigned int getSize() { return _entryCount; }
  /// The value at an index from 0 on, bucket after bucket and in each from its oldest entry; false with null past the
  /// end.
  unsigned char get(unsigned int index, void *&value) const;

  /// The link that points at the key's entry, or that would, at the end of its chain.
  ozStringDictEntry **findEntry(char const *key) const;

private:
  unsigned int _bucketCount;
  unsigned int _entryCount;
  ozStringDictEntry **_buckets;
};

#endif
