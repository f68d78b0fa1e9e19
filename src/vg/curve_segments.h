#pragma once

#include <cstdint>

#include "vg/arc.h"
#include "vg/bezier.h"
#include "vg/tolerance.h"

// How many straight segments a curve needs. Every count is safe: with that many segments, at equal
// steps of the curve's parameter, no point of the curve is farther than the tolerance's radius r
// from its chord, and no point of a chord farther than r from the curve. The unit is segments, not
// yet rounded up.
namespace vg {

/// True when one chord will do: a curve lies within 3/4 of the distance of its control points from
/// the chord, since their two weights never add up to more.
bool isFlat(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// sqrt(3 M / r) / 2, where M is the larger second difference: between the ends of a step h a
/// curve leaves its chord by at most h^2 / 8 max |f''|, and |f''| <= 6 M.
double uniformSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// As uniformSegments(), but hardly counting the second differences along the chord, which change
/// the speed and not the shape. Infinite unless the curve stays within 45 degrees of its chord.
double alignedSegments(const Bezier& curve, const FlatteningTolerance& tolerance) noexcept;

/// Rounded up already: the steps are sqrt(8 r / R) and at most a quarter turn. A step a of a circle
/// leaves its chord by R (1 - cos(a/2)) <= R a^2 / 8.
int32_t arcSegments(const CenterArc& arc, const FlatteningTolerance& tolerance) noexcept;

/// The count as an integer from 1 to kMaxCurveSegments, whatever the value.
int32_t roundUpSegments(double segments) noexcept;

}  // namespace vg
