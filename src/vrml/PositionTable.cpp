#include "vrml/PositionTable.h"

#include <string.h>

PositionTable::PositionTable(unsigned int size)
    : _bucketCount(bucketCount(size)), _buckets(new Entry *[_bucketCount]()), _order(_bucketCount) {}

PositionTable::~PositionTable() {
  for (unsigned int i = 0; i < getCount(); ++i) delete get(i);
  delete[] _buckets;
}

unsigned int PositionTable::bucketCount(unsigned int size) {
  static unsigned int const primes[] = {
      3,       7,       13,       31,       61,       127,       251,       509,       1021,       2039,
      4093,    8191,    16381,    32749,    65521,    131071,    262139,    524287,    1048573,    2097143,
      4194301, 8388593, 16777213, 33554393, 67108859, 134217689, 268435399, 536870909, 1073741789, 2147483647};
  for (unsigned int prime : primes)
    if (prime >= size) return prime;
  return primes[sizeof primes / sizeof primes[0] - 1];
}

unsigned int PositionTable::hash(void const *key, unsigned int bytes) {
  unsigned int h = 0;
  for (unsigned int i = 0; i < bytes; ++i) {
    h = (h << 4) + static_cast<unsigned char const *>(key)[i];
    unsigned int const g = h & 0xf0000000u;
    if (g) h ^= g >> 24; // the top bits stay: meant so
  }
  return h;
}

void PositionTable::add(ozVec3f const &position, int face, int corner) {
  float const coordinates[3] = {position[0], position[1], position[2]};
  unsigned int key[3];
  memcpy(key, coordinates, sizeof key);
  unsigned int const h = hash(key, sizeof key);
  Entry **link = &_buckets[h % _bucketCount];
  while (*link && ((*link)->hash != h || memcmp((*link)->key, key, sizeof key) != 0)) link = &(*link)->next;
  if (!*link) {
    *link = new Entry{h, {key[0], key[1], key[2]}, ozIntArray(8), nullptr};
    if (_order.getCount() == _order.getSize()) _order.setExtension(_order.getSize());
    _order.append(*link);
  }
  (*link)->pairs.append(face);
  (*link)->pairs.append(corner);
}
