#pragma once

#include <cstdint>

#include "svg/style.h"

namespace quor {

/// Sends to the engine those properties of a computed style that are in the mask (of StyleBit) and
/// that the engine keeps as state. Errors stay pending in the engine.
void applyStyle(const SvgStyle& style, uint32_t mask) noexcept;

}  // namespace quor
