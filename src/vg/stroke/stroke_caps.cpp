#include "vg/stroke/stroke_caps.h"

namespace vg {

void addCap(VGint style, Vector2 center, Vector2 from, RoundFan& fan,
            base::Array<raster::Point>& points) noexcept {
    if (style == VG_CAP_ROUND) {
        fan.addHalfTurn(center, from, points);
    } else if (style == VG_CAP_SQUARE) {
        const Vector2 outwards = perpendicular(from) * -1.0;
        points.push(toPoint(center + from + outwards));
        points.push(toPoint(center - from + outwards));
    }
}

}  // namespace vg
