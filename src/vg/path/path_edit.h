#pragma once

#include <cstdint>

#include "vg/path/path.h"

// Appending to paths and changing them in place. Appending is done in whole or not at all: false,
// with the path as it was, when memory runs out.
namespace vg {

/// Coordinates that the commands take; -1 when one of them is no segment.
int64_t countCoordinates(const VGubyte* segments, VGint count) noexcept;

/// Appends commands with `coordinates` coordinates in the path's own datatype.
[[nodiscard]] bool appendRaw(Path& path, const VGubyte* segments, VGint count, const void* data,
                             int64_t coordinates) noexcept;

/// Appends the commands as they are; relative coordinates stay relative. Both may be one path.
[[nodiscard]] bool appendPath(Path& destination, const Path& source) noexcept;

/// Replaces the coordinates of `count` commands from command `start` on, which the path has.
void modifyCoordinates(Path& path, VGint start, VGint count, const void* data) noexcept;

}  // namespace vg
