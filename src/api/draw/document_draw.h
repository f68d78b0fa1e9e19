#pragma once

#include <cstdint>

#include "api/draw/traversal.h"
#include "svg/containers.h"
#include "svg/matrix.h"

namespace quor {

/// The order of the exported quality values.
enum class RenderingQuality : uint32_t { kNonAntialiased = 0, kFaster = 1, kBetter = 2 };

/// Sets the engine state that every draw starts from.
void setDrawState(RenderingQuality quality) noexcept;

/// From y downward and the top left corner of a surface of this height to the engine's y upward and
/// the bottom left corner.
SvgMatrix surfaceFlip(uint32_t height) noexcept;

/// Draws a tree, whose outermost element has its mapping, on the engine's current surface. `base`
/// maps what that mapping gives to the engine's pixels.
Status drawDocument(SvgSvg& root, Traversal& traversal, const SvgMatrix& base,
                    RenderingQuality quality) noexcept;

}  // namespace quor
