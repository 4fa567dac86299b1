#ifndef VL_READ_STATE_H
#define VL_READ_STATE_H

#include "oz/ozByteArray.h"
#include "oz/ozDict.h"
#include "oz/ozPtrArray.h"
#include "vrml/RouteChains.h"

class ozContainer;
class ozField;
class ozFieldInfo;
class ozName;
class ozType;

/// What one read of a file keeps beside its input. Nested reads have their own and stand on the outer one.
class vlReadState {
public:
  explicit vlReadState(vlReadState *outerState);
  vlReadState(vlReadState const &) = delete;
  vlReadState &operator=(vlReadState const &) = delete;
  ~vlReadState();

  static int const MaxDepth = 1000;
  static int const MaxInlineDepth = 16;
  static int const MaxInlines = 1000;
  static unsigned int const MaxReferenceRoutes = 100;
  static long const MaxVisits = 10000000;

  /// Holds an object until the end of the read; see release().
  void keep(ozContainer *obj);
  /// Lets go of all objects. Those that found no place in the graph go, but for those that a route reaches: these stay
  /// until nothing is connected to them any more, which is looked at behind each read.
  void release();

  // Nesting. The graph may be deeper than the text, and a walk through it longer, because USE puts a finished object
  // with all that is below it into another: both together are what is counted.

  /// Whether another node may begin inside the open ones.
  bool mayBegin() const { return depth() < MaxDepth; }
  void begin(ozContainer *obj);
  /// Ends the node begun last. One with a name may be used again.
  void end(bool named);
  /// Whether the object is still being read.
  bool isOpen(ozContainer *obj) const { return _open.find(obj) >= 0; }
  /// Whether a finished object may stand inside the open nodes.
  bool mayUse(ozContainer *obj) const { return depth() + extentOf(obj).height <= MaxDepth; }
  /// The same, for a walk through the whole graph.
  bool mayVisit(ozContainer *obj) const { return *_visits + extentOf(obj).visits <= MaxVisits; }
  void use(ozContainer *obj);
  /// What a nested read has made stands below the open node.
  void use(vlReadState const &nested) { contain({nested._extent.height + 1, nested._extent.visits + 1}); }

  // Routes.

  /// Whether a route that connects two fields at once keeps the chains of connections short enough to walk.
  bool mayConnect(ozField *from, ozField *to) { return _chains.add(from, to); }
  /// Whether fields of a class refer to objects.
  static bool isReference(ozType *type);
  /// Keeps a route between reference fields for connectReferences(); not more than MaxReferenceRoutes.
  bool postpone(ozField *from, ozField *to);
  /// Makes the routes between reference fields, which have to wait for the whole graph: one that would make a node
  /// contain itself, or the graph too deep, is refused.
  void connectReferences(ozContainer *root);

  /// As ozContainer::findFieldInfo, which searches: a file asks for few names, many times.
  ozFieldInfo *findField(ozContainer *container, ozName const &name);

  vlReadState *const outer;
  int const inlineDepth; ///< of files
  int *const inlines;    ///< Inlines of the outermost read so far

  /// How many levels stand below and with an object, and how many visits a walk through them makes.
  struct Extent {
    int height;
    long visits;
    void *pack() const { return reinterpret_cast<void *>(visits << 16 | height); }
    static Extent unpack(void *packed) {
      long const bits = reinterpret_cast<long>(packed);
      return {static_cast<int>(bits & 0xffff), bits >> 16};
    }
  };

private:
  struct Route {
    ozField *from, *to;
  };
  struct FoundField {
    ozType *type;
    char const *name;
    ozFieldInfo *info;
  };

  int depth() const { return _outerDepth + static_cast<int>(_open.getCount()); }
  Extent extentOf(ozContainer *obj) const;
  void contain(Extent const &extent);

  int const _outerDepth;
  Extent _extent;      // of what stands at the top
  ozPtrArray _open;    // the nodes whose fields are being read, outermost first
  ozPtrArray _extents; // of each of them so far
  ozDict _named;       // extents of finished objects
  ozPtrArray _made;
  ozPtrArray _referenceRoutes;
  RouteChains _chains;
  FoundField _found[256]; // each at the place that its hash gives
  int _ownInlines;
  long *const _visits; // of the outermost read so far
  long _ownVisits;
};

#endif
