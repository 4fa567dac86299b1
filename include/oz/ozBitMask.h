#ifndef OZ_BITMASK_H
#define OZ_BITMASK_H

#include "oz/ozPlatform.h"

class ozOutput;

/// A set of 64 bits. Bit numbers below 0 or above 63 change nothing and read as off.
class OZ_API ozBitMask {
public:
  /// All bits off.
  ozBitMask() = default;
  /// All bits on if the argument is not 0, otherwise all off.
  ozBitMask(int allOn) { set(allOn); }
  void set(int allOn) { _bits = allOn ? -1 : 0; }
  void set(ozBitMask const &other) { _bits = other._bits; }

  void on() { _bits = -1; }
  void off() { _bits = 0; }

  void onBit(int bit) { _bits |= single(bit); }
  void offBit(int bit) { andNotBit(bit); }
  void andNotBit(int bit) { _bits &= ~single(bit); }
  /// 1 if the bit is on, otherwise 0.
  int getBit(int bit) const { return (_bits & single(bit)) != 0; }

  void andEqual(ozBitMask const &other) { _bits &= other._bits; }
  void andNotEqual(ozBitMask const &other) { _bits &= ~other._bits; }
  void orEqual(ozBitMask const &other) { _bits |= other._bits; }
  void orNotEqual(ozBitMask const &other) { _bits |= ~other._bits; }
  void xorEqual(ozBitMask const &other) { _bits ^= other._bits; }
  /// No comparison, whatever the name says: this becomes the complement of the other. Meant.
  void notEqual(ozBitMask const &other) { _bits = ~other._bits; }

  /// 1 if any bit is on, otherwise 0.
  int notZero() const { return _bits != 0; }
  long long getMask() const { return _bits; }
  void setMask(long long mask) { _bits = mask; }

  bool operator==(ozBitMask const &other) const { return _bits == other._bits; }
  bool operator!=(ozBitMask const &other) const { return _bits != other._bits; }

  /// Writes "0x%x%x", the high word first; the low word is not padded.
  void write(ozOutput *output) const;

private:
  static long long single(int bit) {
    return static_cast<unsigned>(bit) < 64u ? static_cast<long long>(1ull << bit) : 0;
  }

  long long _bits = 0;
};

#endif
