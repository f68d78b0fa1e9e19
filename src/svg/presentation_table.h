#pragma once

namespace quor {

/// The initial value of one of the 40 properties of SVG Tiny, by exact name; null when unknown.
const char* initialPropertyValue(const char* name) noexcept;

}  // namespace quor
