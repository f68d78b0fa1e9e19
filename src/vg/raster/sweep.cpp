#include "vg/raster/sweep.h"

#include <algorithm>

#include "vg/raster/crossing_samples.h"
#include "vg/raster/span_builder.h"

namespace vg::raster {

bool Sweep::run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                SweepTarget& target) noexcept {
    if (polygon.points.count() < 3) return true;
    switch (quality) {
        case Quality::kNonAntialiased:
            return sweepSamples<CentreSample>(polygon, rule, target);
        case Quality::kFaster:
            return sweepSamples<HalfRowSample>(polygon, rule, target);
        case Quality::kBetter:
            break;
    }
    return lines_.collectVertexHeights(polygon) && exact_.run(polygon, rule, lines_, target);
}

template <class Sample>
bool Sweep::sweepSamples(const FixedPolygon& polygon, FillRule rule, SweepTarget& target) noexcept {
    constexpr uint32_t kLowestBit = Sample::kFractions & (~Sample::kFractions + 1);
    if (!row_.reserve(target.surface.width) || !buildEdges(polygon, edges_) ||
        !lines_.collectSamples(polygon, Sample::kFractions) || !active_.begin(edges_, lines_)) {
        return false;
    }
    target.span.cells = row_.cells();
    row_.resetRange();
    for (int32_t line = 0; line < lines_.count(); ++line) {
        const int32_t y = lines_.height(line);
        active_.advance(line, y);
        addSampleLine<Sample>(rule, y);
        if (1U << fractionOf(y) == kLowestBit) flushRow(pixelOf(y), target);
    }
    return true;
}

template <class Sample>
void Sweep::addSampleLine(FillRule rule, int32_t y) noexcept {
    for (ActiveEdge& active : active_) active.xTop = active.xBottom = active.edge->xAt(y);
    active_.sort();
    forEachSpan(active_.begin(), active_.end(), rule,
                [&](const ActiveEdge& left, const ActiveEdge& right) {
                    Sample::add(row_, left.xTop, kPlus);
                    Sample::add(row_, right.xTop, kMinus);
                });
}

void Sweep::flushRow(int32_t row, SweepTarget& target) noexcept {
    if (!row_.isTouched()) return;
    const int32_t lastColumn = target.surface.width - 1;
    const int32_t first = std::min(pixelOf(row_.minX()), lastColumn);
    const int32_t last = std::min(pixelOf(row_.maxX()), lastColumn);
    target.function(target.surface, target.span, row, first, last);
    row_.resetRange();
}

void Sweep::shrinkToFit() noexcept {
    exact_.shrinkToFit();
    edges_.shrinkToFit();
    lines_.shrinkToFit();
    active_.shrinkToFit();
}

}  // namespace vg::raster
