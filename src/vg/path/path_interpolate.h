#pragma once

#include "vg/path/path.h"

namespace vg {

enum class Interpolation {
    kDone,
    kIncompatible,  ///< the two paths differ in their kinds of segments
    kOutOfMemory,
};

/// Appends the path in between two others: the first at amount 0, the second at 1, beyond them
/// elsewhere. Unless it is done the destination is as it was.
Interpolation interpolate(Path& destination, const Path& startPath, const Path& endPath,
                          double amount) noexcept;

}  // namespace vg
