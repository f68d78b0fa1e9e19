#pragma once

#include <cstdint>

#include "base/finite.h"
#include "quor/quor.h"
#include "svg/rect.h"
#include "svg/status.h"

namespace quor {

/// Whether an array argument may be used: not null, aligned to 4 bytes.
inline bool isUsableArray(const void* array) noexcept {
    return array != nullptr && (reinterpret_cast<uintptr_t>(array) & 3U) == 0;
}

/// x, y, width, height.
inline void storeRect(const Rect& rect, float* values) noexcept {
    values[0] = rect.x;
    values[1] = rect.y;
    values[2] = rect.width;
    values[3] = rect.height;
}

/// False, with `rect` unchanged, when the values make a rectangle without area.
[[nodiscard]] inline bool loadRect(const float* values, Rect& rect) noexcept {
    Rect loaded;
    loaded.set(base::finite(values[0]), base::finite(values[1]), base::finite(values[2]),
               base::finite(values[3]));
    if (loaded.isDegenerate()) return false;
    rect = loaded;
    return true;
}

inline uint32_t codeOf(Status status) noexcept { return static_cast<uint32_t>(status); }

}  // namespace quor
