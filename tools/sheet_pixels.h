#pragma once

#include <cstdint>
#include <string>

#include "atlas.h"

namespace tool {

/// Writes a drawn sheet as PNG. `extrude` pixels around each frame repeat its outermost ones;
/// `dilates` gives transparent pixels the colour of their neighbours. The surface's pixels change.
/// Throws FileError.
void writeSheet(const std::string& path, const AtlasSheet& sheet, std::uint32_t surface,
                std::uint32_t extrude, bool dilates);

}  // namespace tool
