#pragma once

#include <cstdint>

#include "region.h"

namespace tool {

/// A box around all that a document draws, strokes included, at most about a thousandth of its size
/// too large. Ends the packing that was made before. Throws FileError when nothing is drawn.
Region boxOfDrawing(std::uint32_t document);

}  // namespace tool
