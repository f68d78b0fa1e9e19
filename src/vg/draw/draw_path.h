#pragma once

#include "vg/vg.h"

namespace vg {

struct Context;
struct Path;
struct Surface;

/// What a draw has done before memory ran out, so that its second try does not do it again.
struct DrawProgress {
    bool filled = false;
    bool stroked = false;
};

/// Draws the path with the context's paints on a surface that need not be the current one. The
/// modes are VG_FILL_PATH, VG_STROKE_PATH or both. False when memory runs out, with the surface
/// drawn on in part.
[[nodiscard]] bool drawPath(Context& context, Surface& surface, Path& path, VGbitfield paintModes,
                            DrawProgress& progress) noexcept;

}  // namespace vg
