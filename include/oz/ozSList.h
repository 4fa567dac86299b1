#ifndef OZ_S_LIST_H
#define OZ_S_LIST_H

#include "oz/ozPlatform.h"

/// What an item of an ozSList derives from: the link to the next one.
class OZ_API ozSLink {
public:
  ozSLink(ozSLink *next = nullptr) : _next(next) {}

  ozSLink *next() const { return _next; }
  void init() { _next = nullptr; }

private:
  template <class T, class L> friend class ozSList;

  ozSLink *_next;
};

/// A singly linked list of items of class T, which derives from the link class L, ozSLink or of it. It allocates and
/// frees nothing: the items are the caller's, and an item stands in one list at a time.
template <class T, class L> class ozSList {
public:
  constexpr ozSList() : _head(nullptr), _tail(nullptr) {}
  ozSList(ozSList const &) = delete;
  ozSList &operator=(ozSList const &) = delete;

  /// Puts an item at the head.
  void insert(L *link) {
    link->_next = _head;
    _head = link;
    if (!_tail) _tail = link;
  }

  /// Takes the head out and gives it; null if the list is empty.
  T *unlinkHead() {
    if (!_head) return nullptr;
    L *link = _head;
    _head = static_cast<L *>(link->_next);
    if (!_head) _tail = nullptr;
    link->init();
    return static_cast<T *>(link);
  }

  unsigned char isEmpty() const { return !_head; }
  /// Forgets all items. Frees nothing.
  void clear() { _head = _tail = nullptr; }

  /// The first and the last item, null if the list is empty.
  T *getHead() const { return static_cast<T *>(_head); }
  T *getTail() const { return static_cast<T *>(_tail); }

private:
  L *_head;
  L *_tail;
};

#endif
