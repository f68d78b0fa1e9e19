#pragma once

#include <cstdint>

#include "vg/geometry/arc.h"
#include "vg/geometry/bezier.h"
#include "vg/geometry/tolerance.h"

// How many straight segments a curve needs for a polyline within a third of the tolerance's radius
// r. Where a chord would leave the curve by g, points inside lie 2/3 g outside (flatten.h): g may
// be r / 2, but a curve's first chord starts on the curve and leaves it by 25/36 g, which makes it
// g = 12/25 r; a chord without points inside may leave it by r / 3. Every count is safe: with that
// many segments, at equal steps of the curve's parameter, chords leave it by no more. The unit is
// segments, not yet rounded up.
namespace vg {

/// Most straight segments of one curve.
inline constexpr int32_t kMaxCurveSegments = 4096;

/// True when one chord will do: a curve lies within 3/4 of the distance of its control points from
/// the chord, since their two weights never add up to more.
bool isFlat(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// Wang's bound, sqrt(3 M / g) / 2, where M is the larger second difference: between the ends of a
/// step h a curve leaves its chord by at most h^2 / 8 max |f''|, and |f''| <= 6 M.
double uniformSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// As uniformSegments(), but hardly counting the second differences along the chord, which change
/// the speed and not the shape. Infinite unless the curve stays within 45 degrees of its chord.
double alignedSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// Rounded up already: the steps are sqrt(8 g / 1.1 R) and at most a quarter turn. A step a of a
/// circle leaves its chord by R (1 - cos(a/2)) <= R a^2 / 8.
int32_t arcSegments(const CenterArc& arc, const FlatteningTolerance& tolerance) noexcept;

/// The count as an integer from 1 to kMaxCurveSegments, whatever the value.
int32_t roundUpSegments(double segments) noexcept;

}  // namespace vg
