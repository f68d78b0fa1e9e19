#include "vg/stroke/stroke_state.h"

#include <algorithm>

#include "base/finite.h"

namespace vg {

void StrokeState::setLineWidth(float width) noexcept {
    lineWidth = width;
    halfWidth = lineWidth * 0.5F;
    updateMiterLength();
}

void StrokeState::setMiterLimit(float limit) noexcept {
    miterLimit = std::max(limit, 1.0F);
    updateMiterLength();
}

void StrokeState::updateMiterLength() noexcept {
    const float miterLength = base::finite(halfWidth * miterLimit);
    miterLengthSquared = base::finite(miterLength * miterLength);
}

bool StrokeState::setDashPattern(const ParamInput& pattern) noexcept {
    if (!dashPattern.reserve(pattern.count())) return false;
    if (!effectiveDashes.reserve(pattern.count())) return false;
    dashPattern.clear();
    for (VGint i = 0; i < pattern.count(); ++i) dashPattern.pushReserved(pattern.floatAt(i));
    deriveDashes();
    return true;
}

void StrokeState::deriveDashes() noexcept {
    effectiveDashes.clear();
    dashTotal = 0.0F;
    const int count = dashPattern.count() / 2 * 2;
    for (int i = 0; i < count; ++i) {
        const float length = std::max(dashPattern[i], 0.0F);
        effectiveDashes.pushReserved(length);
        dashTotal = base::finite(dashTotal + length);
    }
    if (dashTotal > base::kSmallestExtent) return;
    effectiveDashes.clear();
    dashTotal = 0.0F;
}

}  // namespace vg
