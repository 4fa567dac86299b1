#ifndef VL_POSITION_TABLE_H
#define VL_POSITION_TABLE_H

#include "oz/ozByteArray.h"
#include "oz/ozPtrArray.h"

/// The corners of a mesh grouped by position: a chained hash table whose key is the twelve bytes of a point. Points are
/// the same where their bits are: 0 and -0 differ.
class OZ_API PositionTable {
public:
  /// One position, with what stands there: pairs of face number and corner number.
  struct Entry {
    unsigned int hash;
    unsigned int key[3];
    ozIntArray pairs;
    Entry *next;
  };

  /// Room for about `size` positions; more go in all the same.
  explicit PositionTable(unsigned int size);
  PositionTable(PositionTable const &) = delete;
  PositionTable &operator=(PositionTable const &) = delete;
  ~PositionTable();

  void add(ozVec3f const &position, int face, int corner);
  /// The number of positions, and each of them in the order in which they first came.
  unsigned int getCount() const { return _order.getCount(); }
  Entry *get(unsigned int i) const { return static_cast<Entry *>(_order[i]); }

  /// The number of buckets for a size: the next prime of a fixed list.
  static unsigned int bucketCount(unsigned int size);
  static unsigned int hash(void const *key, unsigned int bytes);

private:
  unsigned int _bucketCount;
  Entry **_buckets;
  ozPtrArray _order;
};

#endif
