#include "vg/raster/sweep/literal_sweep.h"

#include <algorithm>

#include "vg/raster/coverage/trapezoid.h"
#include "vg/raster/replay/span_builder.h"
#include "vg/raster/sweep/crossing_samples.h"

namespace vg::raster {
namespace {

// What an edge adds where it crosses a scanline.

void addCrossing(CentreSample, CoverageRow& row, int32_t x, uint32_t sign) noexcept {
    const int32_t column = CentreSample::columnOf(x);
    row.add(column, kFullCoverage * sign);
    row.touch(column << kSubpixelBits, column << kSubpixelBits);
}

void addCrossing(HalfRowSample, CoverageRow& row, int32_t x, uint32_t sign) noexcept {
    const auto fraction = static_cast<uint32_t>(fractionOf(x));
    row.add(pixelOf(x), (32 - fraction) * (1U << 24) * sign);
    row.add(pixelOf(x) + 1, fraction * (1U << 24) * sign);
    row.touch(x, x);
}

}  // namespace

bool LiteralSweep::run(const FixedPolygon& polygon, FillRule rule, Quality quality,
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
    return sweepBands(polygon, rule, target);
}

bool LiteralSweep::sweepBands(const FixedPolygon& polygon, FillRule rule,
                              SweepTarget& target) noexcept {
    if (!row_.reserve(target.surface.width) || !buildEdges(polygon, edges_) ||
        !lines_.collectVertexHeights(polygon) || !active_.begin(edges_, lines_)) {
        return false;
    }
    for (int32_t line = 0; line + 1 < lines_.count(); ++line) {
        const int32_t top = lines_.height(line);
        const int32_t bottom = lines_.height(line + 1);
        active_.advance(line, top);
        addBand(rule, top, bottom);
        if (fractionOf(bottom) == 0) flushRow(pixelOf(bottom), target);
    }
    if (lines_.count() > 0) flushRow(pixelOf(lines_.height(lines_.count() - 1)), target);
    return true;
}

void LiteralSweep::addBand(FillRule rule, int32_t top, int32_t bottom) noexcept {
    for (ActiveEdge& active : active_) active.xBottom = active.edge->xAt(bottom);
    active_.sort();
    const auto height = static_cast<uint32_t>(top - bottom);
    // Spans never overlap, even where edges cross inside the band: a boundary is moved to the
    // right until it is past the one before it.
    int32_t pastTop = 0;
    int32_t pastBottom = 0;
    const auto addBoundary = [&](const ActiveEdge& edge, auto accumulate) {
        pastTop = std::max(pastTop, edge.xTop);
        pastBottom = std::max(pastBottom, edge.xBottom);
        accumulate(row_.cells(), pastTop, pastBottom, height);
        row_.touch(pastTop, pastBottom);
    };
    forEachSpan(active_.begin(), active_.end(), rule,
                [&](const ActiveEdge& left, const ActiveEdge& right) {
                    addBoundary(left, addTrapezoid);
                    addBoundary(right, subtractTrapezoid);
                });
    for (ActiveEdge& active : active_) active.xTop = active.xBottom;
}

template <class Sample>
bool LiteralSweep::sweepSamples(const FixedPolygon& polygon, FillRule rule,
                                SweepTarget& target) noexcept {
    constexpr uint32_t kLowestBit = Sample::kFractions & (~Sample::kFractions + 1);
    if (!row_.reserve(target.surface.width) || !buildEdges(polygon, edges_) ||
        !lines_.collectSamples(polygon, Sample::kFractions) || !active_.begin(edges_, lines_)) {
        return false;
    }
    for (int32_t line = 0; line < lines_.count(); ++line) {
        const int32_t y = lines_.height(line);
        active_.advance(line, y);
        addSampleLine<Sample>(rule, y);
        if (1U << fractionOf(y) == kLowestBit) flushRow(pixelOf(y), target);
    }
    return true;
}

template <class Sample>
void LiteralSweep::addSampleLine(FillRule rule, int32_t y) noexcept {
    for (ActiveEdge& active : active_) active.xTop = active.xBottom = active.edge->xAt(y);
    active_.sort();
    forEachSpan(active_.begin(), active_.end(), rule,
                [&](const ActiveEdge& left, const ActiveEdge& right) {
                    addCrossing(Sample{}, row_, left.xTop, kPlus);
                    addCrossing(Sample{}, row_, right.xTop, kMinus);
                });
}

void LiteralSweep::flushRow(int32_t row, SweepTarget& target) noexcept {
    if (row >= target.surface.height) return;  // empty: the polygon ends on the upper border
    target.function(target.surface, target.span, row, row_.view());
}

}  // namespace vg::raster
