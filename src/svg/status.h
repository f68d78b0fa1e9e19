#pragma once

#include <cstdint>

namespace quor {

/// The library's error codes, as the exported functions return them.
enum class [[nodiscard]] Status : uint32_t{
    kOk = 0,     kNotInitialized = 1, kBadHandle = 2,    kIllegalArgument = 3, kOutOfMemory = 4,
    kParser = 5, kInvalidSvg = 6,     kStillPacking = 7, kNotPacking = 8,      kUnknown = 9,
};

}  // namespace quor
