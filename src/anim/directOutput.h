#ifndef OZ_DIRECT_OUTPUT_H
#define OZ_DIRECT_OUTPUT_H

#include <stdlib.h>

#include "oz/ozEngine.h"
#include "oz/ozMFByte.h"

/// @file
/// Engines whose result goes straight into the fields connected to their output, to spare a copy of a large array. The
/// output's own array stays unwritten; a connected field that is read asks the engine, see ozField::getDelivers().

/// The elements of a target, with its own stride. Taken after every call that may move them.
template <class Field> struct ozTargetView {
  typedef typename Field::Value Value;

  /// Gives the target a length, and opens what it has then: a listener may have changed it again.
  ozTargetView(Field *field, unsigned int length) {
    field->setCount(length);
    open(field, length);
  }
  explicit ozTargetView(Field *field) { open(field, field->getCount()); }

  Value &operator[](unsigned int i) const { return *reinterpret_cast<Value *>(data + static_cast<size_t>(stride) * i); }
  void clear(unsigned int from) const {
    for (unsigned int i = from; i < count; ++i) (*this)[i] = Value();
  }

  char *data;
  unsigned int stride;
  unsigned int count;

private:
  void open(Field *field, unsigned int length) {
    data = reinterpret_cast<char *>(field->edit());
    stride = field->get().getStride();
    count = length < field->get().getCount() ? length : field->get().getCount();
  }
};

/// The i-th connected field that can take the result; null if it cannot, or is gone.
template <class Field> Field *ozDirectTarget(ozField *output, unsigned int i) {
  ozField *const target = output->getOutputEnds().find(i);
  return target && target->getType()->isDerivedFrom(Field::getClassType()) ? static_cast<Field *>(target) : nullptr;
}

template <class Field> void ozCopyTarget(Field *from, Field *to) {
  unsigned int const length = from->getCount();
  ozTargetView<Field> const copy(to, length);
  ozTargetView<Field> const source(from); // behind setCount, which may have moved it
  for (unsigned int i = 0; i < copy.count && i < source.count; ++i) copy[i] = source[i];
  to->fieldChanged();
}

/// Computes a result of `length` elements into the first target that can take it, and hands it to the others.
template <class Field, class Compute> void ozDeliver(ozField *output, unsigned int length, Compute compute) {
  unsigned int const count = output->getOutputEnds().getCount();
  unsigned int at = 0;
  while (at < count && !ozDirectTarget<Field>(output, at)) ++at;
  Field *const first = ozDirectTarget<Field>(output, at);
  if (!first) return;
  compute(ozTargetView<Field>(first, length));
  first->fieldChanged();
  for (unsigned int i = at + 1; i < output->getOutputEnds().getCount(); ++i) {
    if (ozDirectTarget<Field>(output, at) != first) return; // a listener took it away
    if (Field *const target = ozDirectTarget<Field>(output, i)) ozCopyTarget(first, target);
  }
}

/// Serves a connected field that is read while the engine has nothing new: it was connected after the evaluation, and
/// takes what another connected field was given. Returns whether there was one.
template <class Field> bool ozServeLate(ozField *output, ozField *late) {
  if (!late->getType()->isDerivedFrom(Field::getClassType())) return false;
  for (unsigned int i = 0; i < output->getOutputEnds().getCount(); ++i) {
    Field *const target = ozDirectTarget<Field>(output, i);
    if (!target || target == late || target->isDirty()) continue;
    ozCopyTarget(target, static_cast<Field *>(late));
    return true;
  }
  return false;
}

/// The sets of an engine's input: how many, how long each, and how long the result is.
class ozInputSets {
public:
  /// `controls` is the number of weights or matrices.
  ozInputSets(ozIntArray const &count, unsigned int controls, unsigned int inputs)
      : _count(count), _perSet(controls ? static_cast<int>(inputs / controls) : 0), _controls(controls),
        _sets(count.getCount() ? count.getCount() : controls), _length(count.getCount() ? 0 : _perSet) {
    for (unsigned int s = 0; s < count.getCount(); ++s) {
      int const n = count[s] < 0 ? static_cast<int>(0u - static_cast<unsigned int>(count[s])) : count[s];
      if (n < 0 || n > _length) _length = n;
      if (n < 0) break; // no length has this magnitude
    }
    // Far more than there is input for is no result but an attack on the memory.
    if (_length > static_cast<int>(MostLength) && static_cast<unsigned int>(_length) > inputs) _length = -1;
  }

  bool any() const { return _controls > 0 && _sets > 0 && _length >= 0; }
  unsigned int length() const { return static_cast<unsigned int>(_length); }
  /// Sets that have a control.
  unsigned int count() const { return _sets < _controls ? _sets : _controls; }
  /// The length of a set; negative for an indexed one.
  int operator[](unsigned int s) const { return _count.getCount() ? _count[s] : _perSet; }

private:
  static unsigned int const MostLength = 1u << 24;

  ozIntArray const &_count;
  int _perSet;
  unsigned int _controls, _sets;
  int _length;
};

/// A place in an array that moves on set by set, and says how much is left.
struct ozArrayCursor {
  explicit ozArrayCursor(unsigned int size) : count(size), at(0) {}
  unsigned int left(unsigned int n) const { return n < count - at ? n : count - at; }
  void skip(unsigned int n) { at += left(n); }

  unsigned int count, at;
};

#endif
