#pragma once

#include <cstdint>

#include "vg/raster/geometry/polygon.h"
#include "vg/vg.h"

namespace vg {

struct Context;
struct Path;
struct Surface;

/// The segments of a path or of its stroke, in user space.
struct DrawOutline {
    raster::Polygon polygon;
    uint64_t serial = 0;  ///< stands for the polygon while it is kept; 0: it is not kept
};

/// Finds what drawPath() with these modes fills for one of them, under the context's stroke and
/// path matrix; makes it unless it is kept. Valid until the next call. False when memory runs out.
[[nodiscard]] bool findOutline(Context& context, Surface& surface, Path& path,
                               VGbitfield paintModes, VGPaintMode mode,
                               DrawOutline& outline) noexcept;

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
