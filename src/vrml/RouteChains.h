#ifndef VL_ROUTE_CHAINS_H
#define VL_ROUTE_CHAINS_H

#include "oz/ozDict.h"

class ozField;

/// How far each field stands from the start of the longest chain of routes that leads to it, engines passed through. A
/// change walks such a chain, and so does a read, one call inside another: a chain must not be of any length.
class RouteChains {
public:
  static long const MaxLength = 1000;

  RouteChains() : _lengths(1021) {}
  /// Takes a connection in, if no chain gets too long by it. A circle counts once round.
  bool add(ozField *from, ozField *to);

private:
  bool raise(ozField *field, long length);

  ozDict _lengths;
};

#endif
