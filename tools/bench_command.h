#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "quor/quor.h"

namespace tool {

struct BenchOptions {
    std::vector<std::string> inputs;
    std::uint32_t side = 512;  // pixels of the picture's longer side, up to 2047
    std::uint32_t quality = QUOR_RENDERING_QUALITY_BETTER;
    double seconds = 0.3;  // for each figure
};

/// Prints for each document how long loading, the first draw and a later draw take. True when all
/// could be drawn.
bool benchFiles(const BenchOptions& options);

}  // namespace tool
