#ifndef OZ_CONSTANTS_H
#define OZ_CONSTANTS_H

/// @file
/// The numbers that run through the value classes.

/// Below this a component of an axis, an extent or the like counts as nothing.
inline constexpr float OZ_EPSILON = 1e-5f;

/// The square of OZ_EPSILON.
inline constexpr float OZ_EPSILON_SQUARED = OZ_EPSILON * OZ_EPSILON;

/// Below this a length or a determinant counts as zero.
inline constexpr float OZ_TINY_EPSILON = 1e-15f;

/// The working value for infinity, a tenth of the largest float.
inline constexpr float OZ_INFINITY = 3.4028235e37f;

/// Angles in radians times this are degrees.
inline constexpr float OZ_TO_DEGREES = 57.295776f;

/// Angles in degrees times this are radians.
inline constexpr float OZ_TO_RADIANS = 0.017453292f;

#endif
