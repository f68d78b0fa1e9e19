#pragma once

#include <cstdint>

namespace vg {

/// The flattening tolerance of one draw and the values that curve flattening derives from it.
///
/// Polylines stay within a third of `radius` of their curves, in user space (see flatten.h).
/// All values start at -1, so that the first draw computes them.
struct FlatteningTolerance {
    float squared = -1.0F;            ///< t: the squared distance allowed
    float radius = -1.0F;             ///< r = sqrt(t)
    float threeOverRadius = -1.0F;    ///< 3 / r: cubics
    float sixtyFourRadius = -1.0F;    ///< 64 r: arcs
    int32_t minimumSubdivisions = 0;  ///< least number of segments of a curve that needs two

    /// Takes over `squaredDistance` and recomputes the rest, unless it is the value kept already.
    void set(float squaredDistance) noexcept;
};

/// What the tolerance of a stroke depends on besides the scale.
struct StrokeTolerance {
    float halfWidth = 0.0F;
    bool isDashed = false;
    int32_t boundsWidth = 0;  ///< of the draw's integer bounding box, in pixels
    int32_t boundsHeight = 0;
};

/// t for a draw whose larger user-to-surface scale is `scale`; `stroke` is null for fills.
float drawTolerance(float curvesTolerance, float scale, const StrokeTolerance* stroke) noexcept;

}  // namespace vg
