#include "vg/stroke_run.h"

#include <cmath>

#include "vg/flattened_path.h"

namespace vg {

namespace {

bool coincide(Vector2 a, Vector2 b, double noise) noexcept {
    return std::fabs(a.x - b.x) <= noise && std::fabs(a.y - b.y) <= noise;
}

/// Stores the points that edges start at and returns how many. Points that fall together are
/// smooth only when all of them are.
int32_t keepDistinctPoints(const ContourView& contour, double noise, StrokeEdge* edges) noexcept {
    int32_t kept = 0;
    for (int32_t i = 0; i < contour.count; ++i) {
        const Vector2 point = {contour.points[i].x, contour.points[i].y};
        const bool isSmooth = (contour.pointFlags[i] & FlattenedPath::kInsideCurve) != 0;
        if (kept > 0 && coincide(point, edges[kept - 1].start, noise)) {
            edges[kept - 1].isSmoothStart &= isSmooth;
        } else {
            edges[kept++] = {point, {1.0, 0.0}, 0.0, isSmooth};
        }
    }
    if (!contour.isClosed) return kept;
    for (; kept > 1 && coincide(edges[kept - 1].start, edges[0].start, noise); --kept) {
        edges[0].isSmoothStart &= edges[kept - 1].isSmoothStart;
    }
    return kept;
}

}  // namespace

bool makeRun(const ContourView& contour, double noise, base::Array<StrokeEdge>& edges,
             StrokeRun& run) noexcept {
    edges.clear();
    if (!edges.resize(contour.count + 1)) return false;
    const int32_t kept = keepDistinctPoints(contour, noise, edges.data());
    const bool isClosed = contour.isClosed && kept > 1;
    if (isClosed) edges[kept] = edges[0];
    run = {edges.data(), isClosed ? kept : kept - 1, isClosed};
    for (int32_t i = 0; i < run.count; ++i) {
        StrokeEdge& edge = edges[i];
        const Vector2 step = edges[i + 1].start - edge.start;
        edge.length = lengthOf(step);
        edge.direction = step * (1.0 / edge.length);
    }
    return true;
}

}  // namespace vg
