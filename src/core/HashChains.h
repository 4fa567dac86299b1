#ifndef OZ_HASH_CHAINS_H
#define OZ_HASH_CHAINS_H

#include <limits.h>
#include <stdlib.h>

/// What the dictionaries share: an array of buckets, each a chain of entries linked by their member next.
namespace hashChains {

/// Zeroed buckets, at least one.
template <class Entry> Entry **make(unsigned int &count) {
  if (count == 0) count = 1;
  return static_cast<Entry **>(calloc(count, sizeof(Entry *)));
}

/// The link in the chain at which matches(entry) holds, or the one at its end.
template <class Entry, class Matches> Entry **find(Entry **link, Matches matches) {
  while (*link && !matches(**link)) link = &(*link)->next;
  return link;
}

/// Takes the entry behind a link out and frees it. False if there is none.
template <class Entry> unsigned char remove(Entry **link) {
  Entry *entry = *link;
  if (!entry) return 0;
  *link = entry->next;
  delete entry;
  return 1;
}

template <class Entry> void clear(Entry **buckets, unsigned int count) {
  for (unsigned int i = 0; i < count; ++i)
    while (remove(&buckets[i])) {
    }
}

/// Spreads the entries by hash(entry) over four times as many buckets, if there is memory. What shares a bucket stays
/// in order.
template <class Entry, class Hash> void grow(Entry **&buckets, unsigned int &count, Entry *Entry::*next, Hash hash) {
  if (count > UINT_MAX / 4 - 1) return;
  unsigned int grown = 4 * count + 3; // odd: many keys are addresses
  Entry **const place = make<Entry>(grown);
  if (!place) return;
  for (unsigned int i = 0; i < count; ++i)
    while (Entry *const entry = buckets[i]) {
      buckets[i] = entry->*next;
      entry->*next = nullptr;
      Entry **link = &place[hash(*entry) % grown];
      while (*link) link = &((*link)->*next);
      *link = entry;
    }
  free(buckets);
  buckets = place;
  count = grown;
}

/// Gives the value behind a link; false with null if there is none.
template <class Entry> unsigned char value(Entry *entry, void *&value) {
  value = entry ? entry->value : nullptr;
  return entry != nullptr;
}

} // namespace hashChains

#endif
