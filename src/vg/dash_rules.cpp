#include "vg/dash_rules.h"

#include <algorithm>

#include "base/finite.h"

namespace vg {
namespace {

void deriveDashes(StrokeState& stroke) noexcept {
    stroke.effectiveDashes.clear();
    stroke.dashTotal = 0.0F;
    const int count = stroke.dashPattern.count() / 2 * 2;
    for (int i = 0; i < count; ++i) {
        const float length = std::max(stroke.dashPattern[i], 0.0F);
        stroke.effectiveDashes.pushReserved(length);
        stroke.dashTotal = base::finite(stroke.dashTotal + length);
    }
    if (stroke.dashTotal > base::kSmallestExtent) return;
    stroke.effectiveDashes.clear();
    stroke.dashTotal = 0.0F;
}

}  // namespace

bool setDashPattern(StrokeState& stroke, const ParamInput& pattern) noexcept {
    if (!stroke.dashPattern.reserve(pattern.count())) return false;
    if (!stroke.effectiveDashes.reserve(pattern.count())) return false;
    stroke.dashPattern.clear();
    for (VGint i = 0; i < pattern.count(); ++i) stroke.dashPattern.pushReserved(pattern.floatAt(i));
    deriveDashes(stroke);
    return true;
}

}  // namespace vg
