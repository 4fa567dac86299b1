#ifndef VL_READ_STATE_H
#define VL_READ_STATE_H

#include "oz/ozPtrArray.h"

class ozContainer;
class ozField;

/// What one read of a file keeps beside its input. Nested reads have their own and stand on the outer one.
struct vlReadState {
  explicit vlReadState(vlReadState *outerState);
  ~vlReadState();

  static int const MaxDepth = 1000;
  static int const MaxInlineDepth = 16;
  static int const MaxInlines = 1000;

  /// Holds an object until the end of the read; see release().
  void keep(ozContainer *obj);
  /// Lets go of all objects: those that found no place in the graph, and that no route reaches, go.
  void release(ozContainer *root);
  /// Makes the routes between reference fields, which have to wait for the whole graph: one that would make a node
  /// contain itself is refused.
  void connectReferences();

  struct Route {
    ozField *from, *to;
  };

  vlReadState *outer;
  int depth;       // of nodes
  int inlineDepth; // of files
  int *inlines;    // Inlines of the outermost read so far
  ozPtrArray made;
  ozPtrArray open; // the nodes whose fields are being read, outermost first
  ozPtrArray referenceRoutes;

private:
  int _ownInlines;
};

#endif
