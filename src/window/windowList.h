#ifndef WINDOW_LIST_H
#define WINDOW_LIST_H

#include "oz/ozWindow.h"

/// All windows, in the order of their making. A window whose toolkit window is gone is no longer among them.
struct ozWindowList {
  typedef ozDList<ozWindowItem, ozDLink> List;
  static List &all();
  static bool isEmpty() { return all().isEmpty(); }
  static ozWindow *first();
  /// The first that its next frame deletes, and that is not in a frame now; null if there is none.
  static ozWindow *firstClosed();

  /// The window with this address, number or handle; null if there is none (any more).
  static ozWindow *find(void const *window);
  static ozWindow *findId(int windowId);
  static ozWindow *findHandle(HWND window);
  /// The first window that this idle turn has not come by yet; null at its end.
  static ozWindow *nextOfPass(unsigned long pass);

private:
  template <class Test> static ozWindow *search(Test test) {
    ozDListIter<ozWindowItem, ozDLink> items(all());
    while (ozWindowItem *item = items.next())
      if (test(*item->getWindow())) return item->getWindow();
    return nullptr;
  }
};

#endif
