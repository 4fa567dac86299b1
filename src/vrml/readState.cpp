#include "vrml/readState.h"

#include <initializer_list>

#include "oz/ozContainer.h"
#include "oz/ozSFRef.h"
#include "oz/vlError.h"

static unsigned long keyOf(void const *object) { return reinterpret_cast<unsigned long>(object); }

vlReadState::vlReadState(vlReadState *outerState)
    : outer(outerState), inlineDepth(outerState ? outerState->inlineDepth + 1 : 0),
      inlines(outerState ? outerState->inlines : &_ownInlines), _outerDepth(outerState ? outerState->depth() + 1 : 0),
      _height(0), _namedHeights(4093), _ownInlines(0) {
  _made.setExtension(1024);
}

vlReadState::~vlReadState() {
  for (unsigned int i = 0; i < _referenceRoutes.getCount(); ++i) delete static_cast<Route *>(_referenceRoutes[i]);
}

// ---- nesting

void vlReadState::begin(ozContainer *obj) {
  _open.append(obj);
  _heights.append(1);
}

void vlReadState::end(bool named) {
  unsigned int const last = _open.getCount() - 1;
  int const height = _heights[last];
  if (named) _namedHeights.enter(keyOf(_open[last]), reinterpret_cast<void *>(static_cast<long>(height)));
  _open.setCount(last);
  _heights.setCount(last);
  contain(height);
}

int vlReadState::heightOf(ozContainer *obj) const {
  void *height = nullptr;
  return _namedHeights.find(keyOf(obj), height) ? static_cast<int>(reinterpret_cast<long>(height)) : 1;
}

void vlReadState::contain(int height) {
  unsigned int const count = _heights.getCount();
  if (!count) {
    if (height > _height) _height = height;
  } else if (height + 1 > _heights[count - 1]) {
    _heights.set(count - 1, height + 1);
  }
}

// ---- objects outside of the graph

namespace {

// Calls end(container) for both ends of all connections of an object to others, until that gives true; whether it did.
template <class End> bool anyConnection(ozContainer *obj, End end) {
  for (int id = 0; id < obj->getType()->getFieldInfoCount(); ++id) {
    ozField *const field = obj->findFieldObject(id);
    if (!field) continue;
    for (ozFieldArray *ends : {field->getInputs(), field->getOutputs()})
      for (unsigned int i = 0; ends && i < ends->getCount(); ++i)
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
  Reach(ozField *source, ozField *target) : _source(source), _target(target), _heights(65521) {}

  // The number of levels from a container downwards; -1 where a way leads back to itself.
  long from(ozContainer *c) {
    long const below = walk(c, [&](auto const &longest) {
      for (int id = 0; id < c->getType()->getFieldInfoCount(); ++id) {
        ozFieldInfo *const info = c->getType()->getFieldInfo(id);
        if (!info->getOffset() || !isReference(info->getFieldType())) continue;
        ozField *const field = c->findFieldObject(id);
        if (field ? !longest(from(field)) : !elements(info, c, longest)) return;
      }
    });
    return below < 0 ? below : below + 1;
  }

  static bool isReference(ozType *type) {
    return type->isDerivedFrom(ozSFRef::getClassType()) || type->isDerivedFrom(ozMFRef::getClassType());
  }

private:
  enum { OPEN = -2, TOO_FAR = 4 * vlReadState::MaxDepth };

  long from(ozField *field) {
    return walk(field, [&](auto const &longest) {
      if (field == _target && !longest(from(_source))) return;
      for (unsigned int i = 0; field->getInputs() && i < field->getInputs()->getCount(); ++i)
        if (!longest(from(field->getInputs()->get(i)))) return;
      elements(field->getFieldInfo(), field->getParent(), longest);
    });
  }

  // Hands in what a container's field holds.
  template <class Longest> bool elements(ozFieldInfo *info, ozContainer *c, Longest const &longest) {
    if (info->getFieldType()->isDerivedFrom(ozSFRef::getClassType())) {
      ozContainer *const element = static_cast<ozSFRefInfo *>(info)->member(c);
      return !element || longest(from(element));
    }
    ozRefArray const &all = static_cast<ozMFRefInfo *>(info)->member(c);
    for (unsigned int i = 0; i < all.getCount(); ++i)
      if (all[i] && !longest(from(all[i]))) return false;
    return true;
  }

  // Takes the longest of what visit() hands in, once for each object.
  template <class Visit> long walk(void const *object, Visit visit) {
    void *known = nullptr;
    if (_heights.find(keyOf(object), known)) {
      long const height = reinterpret_cast<long>(known);
      return height == OPEN ? -1 : height;
    }
    if (_level > TOO_FAR) return -1;
    ++_level;
    _heights.enter(keyOf(object), reinterpret_cast<void *>(static_cast<long>(OPEN)));
    long height = 0;
    visit([&](long below) {
      height = below < 0 ? below : below > height ? below : height;
      return below >= 0;
    });
    _heights.enter(keyOf(object), reinterpret_cast<void *>(height));
    --_level;
    return height;
  }

  ozField *const _source, *const _target;
  ozDict _heights;
  int _level = 0;
};

} // namespace

bool vlReadState::isReference(ozType *type) { return Reach::isReference(type); }

bool vlReadState::postpone(ozField *from, ozField *to) {
  if (_referenceRoutes.getCount() >= MaxReferenceRoutes) return false;
  _referenceRoutes.append(new Route{from, to});
  return true;
}

void vlReadState::connectReferences(ozContainer *root) {
  for (unsigned int i = 0; i < _referenceRoutes.getCount(); ++i) {
    Route const *const route = static_cast<Route *>(_referenceRoutes[i]);
    Reach reach(route->from, route->to);
    long const below = reach.from(route->to->getParent());
    long const all = root ? reach.from(root) : below;
    if (below >= 0 && all >= 0 && all <= MaxDepth + 1) {
      route->from->connect(route->to);
      continue;
    }
    vlDebugError::post("vlDB::readRoute",
                       below < 0 ? "A route from %s to %s would make a node contain itself"
                                 : "A route from %s to %s would make the graph too deep",
                       route->from->getName(), route->to->getName());
  }
}
