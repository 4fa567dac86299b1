#include "window/windowList.h"

#include "window/windowScope.h"

ozWindowList::List &ozWindowList::all() {
  static List *const list = new List; // windows may die as late as the process
  return *list;
}

ozWindow *ozWindowList::first() {
  return search([](ozWindow const &) { return true; });
}

ozWindow *ozWindowList::firstClosed() {
  return search([](ozWindow const &candidate) { return candidate._deletePending && !ozWindowScope::runs(&candidate); });
}

ozWindow *ozWindowList::find(void const *window) {
  return search([=](ozWindow const &candidate) { return &candidate == window; });
}

ozWindow *ozWindowList::findId(int windowId) {
  return search([=](ozWindow const &candidate) { return candidate._windowId == windowId; });
}

ozWindow *ozWindowList::findHandle(HWND window) {
  return search([=](ozWindow const &candidate) { return candidate._hwnd == window; });
}

ozWindow *ozWindowList::nextOfPass(unsigned long pass) {
  return search([=](ozWindow const &candidate) { return candidate._idlePass < pass; });
}
