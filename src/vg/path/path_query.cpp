#include "vg/path/path_query.h"

#include <algorithm>

#include "vg/path/measured_curve.h"
#include "vg/path/segment_reader.h"

namespace vg {

double lengthOfSegments(const Path& path, VGint first, VGint count) noexcept {
    double length = 0.0;
    for (SegmentReader reader(path); reader.next();) {
        const Segment& segment = reader.segment();
        if (segment.index - first >= count) break;
        if (segment.index < first || segment.kind == Segment::Kind::kMove) continue;
        length += MeasuredCurve(segment).length();
    }
    return length;
}

PathPosition positionAlong(const Path& path, VGint first, VGint count, double distance) noexcept {
    PathPosition position;
    double rest = std::max(0.0, distance);
    for (SegmentReader reader(path); reader.next();) {
        const Segment& segment = reader.segment();
        if (segment.index - first >= count) break;
        if (segment.index < first) continue;
        if (segment.kind == Segment::Kind::kMove) {
            position.point = segment.to;
            continue;
        }
        const MeasuredCurve curve(segment);
        const double length = curve.length();
        if (!(length > 0.0)) continue;
        const double u = rest < length ? curve.parameterAt(rest) : 1.0;
        position = {curve.at(u), curve.tangentAt(u)};
        if (rest <= length) break;
        rest -= length;
    }
    return position;
}

}  // namespace vg
