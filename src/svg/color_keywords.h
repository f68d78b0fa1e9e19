#pragma once

#include <array>

#include "svg/color.h"

namespace quor {

inline constexpr int kNamedColorCount = 147;

/// The colour keywords in alphabetical order.
extern const std::array<NamedColor, kNamedColorCount> kNamedColors;

}  // namespace quor
