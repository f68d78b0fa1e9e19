#pragma once

#include <string_view>

namespace quor {

/// The initial value of one of the 40 properties of SVG Tiny, by exact name; null when unknown.
const char* initialPropertyValue(std::string_view name) noexcept;

}  // namespace quor
