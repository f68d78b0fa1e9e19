#pragma once

#include <algorithm>
#include <cstdint>

#include "quor/quor.h"

namespace quor::bench {

struct Size {
    uint32_t width, height;
};

/// Pixels that a document's viewport fills when its longer side has so many.
inline Size fittedSize(uint32_t document, uint32_t longerSide) {
    float viewport[4] = {0, 0, 1, 1};
    quorDocViewportGet(document, viewport);
    const float scale = static_cast<float>(longerSide) / std::max(viewport[2], viewport[3]);
    const auto pixels = [&](float side) {
        return std::max(1U, static_cast<uint32_t>(side * scale + 0.5F));
    };
    return {pixels(viewport[2]), pixels(viewport[3])};
}

}  // namespace quor::bench
