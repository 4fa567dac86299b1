#ifndef OZ_DICT_H
#define OZ_DICT_H

#include "oz/ozPlatform.h"

/// One pair of an ozDict.
class OZ_API ozDictEntry {
public:
  ozDictEntry(unsigned long key, void *value) : key(key), value(value), next(nullptr) {}

  unsigned long key;
  void *value;
  ozDictEntry *next;
};

/// Maps numbers, such as addresses of objects, to pointers. Keys keep all their bits. What the pointers point at stays
/// the caller's.
class OZ_API ozDict {
public:
  /// With this many buckets to start with; 0 counts as 1. More are made as keys come, so that chains stay short.
  ozDict(unsigned int buckets);
  ~ozDict();
  ozDict(ozDict const &) = delete;
  ozDict &operator=(ozDict const &) = delete;

  /// Stores a value. True if the key is new, false if it was there, in which case its value is replaced.
  unsigned char enter(unsigned long key, void *value);
  /// True if the key is there, with its value; false with null otherwise.
  unsigned char find(unsigned long key, void *&value) const;
  /// True if the key was there.
  unsigned char remove(unsigned long key);
  /// Takes all keys out.
  void clear();

  /// The link that points at the key's entry, or that would, at the end of its chain. Good until the next enter().
  ozDictEntry **findEntry(unsigned long key) const;

private:
  unsigned int _bucketCount;
  ozDictEntry **_buckets;
  unsigned int _count;
};

#endif
