#pragma once

#include "base/array.h"
#include "vg/param_values.h"
#include "vg/vg.h"

namespace vg {

/// Stroke parameters as set, and the values derived from them.
struct StrokeState {
    float lineWidth = 1.0F;
    VGint startCap = VG_CAP_BUTT;
    VGint endCap = VG_CAP_BUTT;
    VGint join = VG_JOIN_MITER;
    float miterLimit = 4.0F;         ///< never below 1
    base::Array<float> dashPattern;  ///< as given
    float dashPhase = 0.0F;
    bool dashPhaseReset = false;

    float halfWidth = 0.5F;
    float miterLengthSquared = 4.0F;     ///< (halfWidth * miterLimit)^2, finite
    base::Array<float> effectiveDashes;  ///< even count, none negative
    float dashTotal = 0.0F;              ///< sum of effectiveDashes; 0 means no dashing

    void setLineWidth(float width) noexcept;
    void setMiterLimit(float limit) noexcept;

    /// Keeps the dash pattern as given and derives the dashes in effect: an odd last value is left
    /// out, negative values become 0, and a total length of next to nothing switches dashing off.
    /// False, with nothing changed, when memory runs out.
    [[nodiscard]] bool setDashPattern(const ParamInput& pattern) noexcept;

private:
    void updateMiterLength() noexcept;
    void deriveDashes() noexcept;
};

}  // namespace vg
