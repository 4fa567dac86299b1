#ifndef OZ_D_LIST_H
#define OZ_D_LIST_H

#include "oz/ozPlatform.h"

/// What an item of an ozDList derives from: the links to its neighbours, both null outside a list.
class OZ_API ozDLink {
public:
  ozDLink() { init(); }

  void init() { _next = _prev = nullptr; }
  unsigned char isLinked() const { return _next && _prev; }

  /// Takes the item out of its list. Does nothing outside a list.
  void unlink() {
    if (!isLinked()) return;
    _prev->_next = _next;
    _next->_prev = _prev;
    init();
  }

protected:
  template <class T, class L> friend class ozDList;
  template <class T, class L> friend class ozDListIter;

  ozDLink *_next;
  ozDLink *_prev;
};

/// A doubly linked list of items of class T, which derives from the link class L, ozDLink or of it. The list itself
/// stands in the ring as the mark of its end. It allocates and frees nothing: the items are the caller's, and an item
/// stands in one list at a time.
template <class T, class L> class ozDList : private ozDLink {
public:
  ozDList() { clear(); }
  ozDList(ozDList const &) = delete;
  ozDList &operator=(ozDList const &) = delete;

  /// Puts an item at the end.
  void append(L *link) {
    ozDLink *item = link;
    item->_next = this;
    item->_prev = _prev;
    _prev->_next = item;
    _prev = item;
  }

  unsigned char isEmpty() const { return _next == this; }
  /// Forgets all items. Frees nothing and touches none of them.
  void clear() { _next = _prev = this; }
  /// Takes an item out of whatever list it stands in.
  static void unlink(L *link) { link->ozDLink::unlink(); }

private:
  template <class U, class M> friend class ozDListIter;
};

/// Goes over an ozDList once. The item that next gave may be unlinked or deleted before next is called again.
template <class T, class L> class ozDListIter {
public:
  ozDListIter(ozDList<T, L> const &list) : _list(&list), _next(list._next) {}

  /// The current item, and one step on; null at the end.
  T *next() {
    if (_next == _list) return nullptr;
    ozDLink *link = _next;
    _next = link->_next;
    return static_cast<T *>(static_cast<L *>(link));
  }

private:
  ozDLink const *_list;
  ozDLink *_next;
};

#endif
