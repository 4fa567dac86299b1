#include "vrml/readState.h"

#include <stdio.h>

#include <initializer_list>

#include "oz/ozContainer.h"
#include "oz/ozSFRef.h"
#include "oz/vlError.h"

static unsigned long keyOf(void const *object) { return reinterpret_cast<unsigned long>(object); }

vlReadState::vlReadState(vlReadState *outerState)
    : outer(outerState), inlineDepth(outerState ? outerState->inlineDepth + 1 : 0),
      inlines(outerState ? outerState->inlines : &_ownInlines),
      _outerDepth(outerState ? outerState->depth() + 1 : 0), _extent{0, 0}, _named(4093), _found{}, _ownInlines(0),
      _visits(outerState ? outerState->_visits : &_ownVisits), _ownVisits(0) {}

vlReadState::~vlReadState() {
  for (unsigned int i = 0; i < _referenceRoutes.getCount(); ++i) delete static_cast<Route *>(_referenceRoutes[i]);
}

ozFieldInfo *vlReadState::findField(ozContainer *container, ozName const &name) {
  ozType *const type = container->getType();
  unsigned long const mixed = (keyOf(type) ^ keyOf(name.getString())) * 0x9e3779b97f4a7c15ul;
  FoundField &found = _found[mixed >> 56];
  if (found.type == type && found.name == name.getString()) return found.info;
  ozFieldInfo *const info = container->findFieldInfo(name.getString());
  if (info) found = {type, name.getString(), info};
  return info;
}

// ---- nesting

void vlReadState::begin(ozContainer *obj) {
  _open.append(obj);
  _extents.append(Extent{1, 1}.pack());
  ++*_visits;
}

void vlReadState::end(bool named) {
  unsigned int const last = _open.getCount() - 1;
  void *const extent = _extents[last];
  if (named) _named.enter(keyOf(_open[last]), extent);
  _open.setCount(last);
  _extents.setCount(last);
  contain(Extent::unpack(extent));
}

void vlReadState::use(ozContainer *obj) {
  Extent const extent = extentOf(obj);
  *_visits += extent.visits;
  contain(extent);
}

vlReadState::Extent vlReadState::extentOf(ozContainer *obj) const {
  void *extent = nullptr;
  return _named.find(keyOf(obj), extent) ? Extent::unpack(extent) : Extent{1, 1};
}

void vlReadState::contain(Extent const &extent) {
  unsigned int const count = _extents.getCount();
  Extent around = count ? Extent::unpack(_extents[count - 1]) : _extent;
  int const height = extent.height + (count ? 1 : 0);
  if (height > around.height) around.height = height;
  around.visits += extent.visits;
  if (count)
    _extents.set(count - 1, around.pack());
  else
    _extent = around;
}

// ---- objects outside of the graph

namespace {

// Calls end(container) for both ends of all connections of an object to others, until that gives true; whether it did.
template <class End> bool anyConnection(ozContainer *obj, End end) {
  for (int id = 0; id < obj->getType()->getFieldInfoCount(); ++id) {
    ozField *const field = obj->findFieldObject(id);
    if (!field) continue;
    for (ozFieldEnds const *ends : {&field->getInputEnds(), &field->getOutputEnds()})
      for (unsigned int i = 0; i < ends->getCount(); ++i)
        if (ends->get(i)->getParent() != obj && end(ends->get(i)->getParent())) return true;
  }
  return false;
}

// The objects that stand in no graph but are connected to something: the reader holds a reference on each. They are as
// long of use as a route leads from one to something else.
class Outsiders {
public:
  void add(ozContainer *obj) { _objects.append(obj); }

  void sweep() {
    ozPtrArray objects(_objects.getCount()), live;
    ozDict waiting(1021);
    for (unsigned int i = 0; i < _objects.getCount(); ++i) {
      objects.append(_objects[i]);
      waiting.enter(keyOf(_objects[i]), _objects[i]);
    }
    auto const isWaiting = [&](ozContainer *c) {
      void *found;
      return waiting.find(keyOf(c), found);
    };
    _objects.setCount(0);
    for (unsigned int i = 0; i < objects.getCount(); ++i)
      if (anyConnection(at(objects, i), [&](ozContainer *c) { return !isWaiting(c); })) live.append(objects[i]);
    for (unsigned int i = 0; i < live.getCount(); ++i) { // grows as it goes
      if (!waiting.remove(keyOf(live[i]))) continue;
      _objects.append(live[i]);
      anyConnection(at(live, i), [&](ozContainer *c) {
        if (isWaiting(c)) live.append(c);
        return false;
      });
    }
    for (unsigned int i = 0; i < objects.getCount(); ++i)
      if (isWaiting(at(objects, i))) at(objects, i)->unref();
  }

private:
  static ozContainer *at(ozPtrArray &objects, unsigned int i) { return static_cast<ozContainer *>(objects[i]); }

  ozPtrArray _objects;
};

// Never destroyed: what is in it may be connected to objects that die while the process exits.
Outsiders &outsiders() {
  static Outsiders *const all = new Outsiders;
  return *all;
}

} // namespace

void vlReadState::keep(ozContainer *obj) {
  obj->ref();
  if (_made.getCount() == _made.getSize()) _made.setExtension(_made.getCount() / 2 + 1024);
  _made.append(obj);
}

void vlReadState::release() {
  for (unsigned int i = 0; i < _made.getCount(); ++i) {
    ozContainer *const obj = static_cast<ozContainer *>(_made[i]);
    if (obj->getRefCount() == 1 && anyConnection(obj, [](ozContainer *) { return true; }))
      outsiders().add(obj);
    else
      obj->unref();
  }
  _made.setCount(0);
  outsiders().sweep();
}

// ---- routes between reference fields

namespace {

// The graph as it will be with one more route: a field holds what it refers to, and what it will take over along
// routes.
class Reach {
public:
  Reach(ozField *source, ozField *target) : _source(source), _target(target), _extents(65521) {}

  typedef vlReadState::Extent Extent;

  // From a container downwards; a height of -1 where a way leads back to itself.
  Extent from(ozContainer *c) {
    Extent below = walk(c, [&](auto const &add) {
      for (int id = 0; id < c->getType()->getFieldInfoCount(); ++id) {
        ozFieldInfo *const info = c->getType()->getFieldInfo(id);
        if (!info->getOffset() || !isReference(info->getFieldType())) continue;
        ozField *const field = c->findFieldObject(id);
        if (field ? !add(from(field)) : !elements(info, c, add)) return;
      }
    });
    if (below.height < 0) return below;
    return {below.height + 1, below.visits + 1};
  }

  static bool isReference(ozType *type) {
    return type->isDerivedFrom(ozSFRef::getClassType()) || type->isDerivedFrom(ozMFRef::getClassType());
  }

private:
  static int const TooFar = 4 * vlReadState::MaxDepth;

  Extent from(ozField *field) {
    return walk(field, [&](auto const &add) {
      if (field == _target && !add(from(_source))) return;
      for (unsigned int i = 0; i < field->getInputEnds().getCount(); ++i)
        if (!add(from(field->getInputEnds().get(i)))) return;
      elements(field->getFieldInfo(), field->getParent(), add);
    });
  }

  // Hands in what a container's field holds.
  template <class Add> bool elements(ozFieldInfo *info, ozContainer *c, Add const &add) {
    if (info->getFieldType()->isDerivedFrom(ozSFRef::getClassType())) {
      ozContainer *const element = static_cast<ozSFRefInfo *>(info)->member(c);
      return !element || add(from(element));
    }
    ozRefArray const &all = static_cast<ozMFRefInfo *>(info)->member(c);
    for (unsigned int i = 0; i < all.getCount(); ++i)
      if (all[i] && !add(from(all[i]))) return false;
    return true;
  }

  // Sums up what visit() hands in, once for each object.
  template <class Visit> Extent walk(void const *object, Visit visit) {
    static long const open = -1;
    void *known = nullptr;
    if (_extents.find(keyOf(object), known))
      return reinterpret_cast<long>(known) == open ? Extent{-1, 0} : Extent::unpack(known);
    if (_level > TooFar) return {-1, 0};
    ++_level;
    _extents.enter(keyOf(object), reinterpret_cast<void *>(open));
    Extent all{0, 0};
    visit([&](Extent const &below) {
      if (below.height < 0 || below.height > all.height) all.height = below.height;
      all.visits += below.visits;
      if (all.visits > 2 * vlReadState::MaxVisits) all.visits = 2 * vlReadState::MaxVisits;
      return below.height >= 0;
    });
    _extents.enter(keyOf(object), all.height < 0 ? reinterpret_cast<void *>(open) : all.pack());
    --_level;
    return all;
  }

  ozField *const _source, *const _target;
  ozDict _extents;
  int _level = 0;
};

} // namespace

bool vlReadState::isReference(ozType *type) { return Reach::isReference(type); }

bool vlReadState::postpone(ozField *from, ozField *to) {
  if (_referenceRoutes.getCount() >= MaxReferenceRoutes) return false;
  _referenceRoutes.append(new Route{from, to});
  return true;
}

static void post(char const *complaint, ozField *from, ozField *to) {
  char text[128];
  snprintf(text, sizeof text, complaint, from->getName(), to->getName());
  vlDebugError::post("vlDB::readRoute", "%s", text);
}

void vlReadState::connectReferences(ozContainer *root) {
  for (unsigned int i = 0; i < _referenceRoutes.getCount(); ++i) {
    Route const *const route = static_cast<Route *>(_referenceRoutes[i]);
    Reach reach(route->from, route->to);
    Reach::Extent const below = reach.from(route->to->getParent()), all = root ? reach.from(root) : below;
    char const *complaint = nullptr;
    if (below.height < 0)
      complaint = "A route from %s to %s would make a node contain itself";
    else if (all.height < 0 || all.height > MaxDepth + 1)
      complaint = "A route from %s to %s would make the graph too deep";
    else if (all.visits > MaxVisits)
      complaint = "A route from %s to %s would make the graph too large";
    if (complaint)
      post(complaint, route->from, route->to);
    else
      route->from->connect(route->to);
  }
}
