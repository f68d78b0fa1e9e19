#pragma once

#include <cstdint>

#include "svg/matrix.h"
#include "svg/rect.h"

namespace quor {

/// `preserveAspectRatio`: align 0 "none", 1..9 "xMinYMin" to "xMaxYMax" row by row;
/// meetOrSlice 0 "meet", 1 "slice".
struct ViewportAlignment {
    uint8_t align = 5;
    uint8_t meetOrSlice = 0;
};

/// Absent or unreadable text is xMidYMid meet.
ViewportAlignment parsePreserveAspectRatio(const char* text) noexcept;

/// The map that fits `shown` into `target`. A degenerate `shown` gives scale 0, finite numbers.
SvgMatrix viewportMapping(const Rect& shown, const Rect& target,
                          ViewportAlignment alignment) noexcept;

}  // namespace quor
