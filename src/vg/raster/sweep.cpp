#include "vg/raster/sweep.h"

#include <algorithm>

#include "vg/raster/span_builder.h"
#include "vg/raster/trapezoid.h"

namespace vg::raster {
namespace {

/// One sample line per pixel row, through the centres. A pixel whose centre lies on an edge
/// belongs to what is to the right of the edge.
struct CentreSample {
    static constexpr uint32_t kFractions = 1U << 16;

    static void add(CoverageRow& row, int32_t x, uint32_t sign) noexcept {
        const int32_t column = pixelOf(x) + (fractionOf(x) > 16 ? 1 : 0);
        row.add(column, kFullCoverage * sign);
        row.touch(column << kSubpixelBits, column << kSubpixelBits);
    }
};

/// Two sample lines per pixel row, half a row each, with exact horizontal coverage.
struct HalfRowSample {
    static constexpr uint32_t kFractions = 1U << 24 | 1U << 8;

    static void add(CoverageRow& row, int32_t x, uint32_t sign) noexcept {
        const auto fraction = static_cast<uint32_t>(fractionOf(x));
        row.add(pixelOf(x), (32 - fraction) * (1U << 24) * sign);
        row.add(pixelOf(x) + 1, fraction * (1U << 24) * sign);
        row.touch(x, x);
    }
};

constexpr uint32_t kPlus = 1;
constexpr uint32_t kMinus = 0xFFFFFFFF;  // -1, modulo 2^32

}  // namespace

bool Sweep::run(const FixedPolygon& polygon, FillRule rule, Quality quality,
                SweepTarget& target) noexcept {
    if (polygon.points.count() < 3) return true;
    if (!prepare(polygon, quality, target.surface)) return false;
    target.span.cells = row_.cells();
    row_.resetRange();
    switch (quality) {
        case Quality::kNonAntialiased:
            sweepSamples<CentreSample>(rule, target);
            break;
        case Quality::kFaster:
            sweepSamples<HalfRowSample>(rule, target);
            break;
        case Quality::kBetter:
            sweepExact(rule, target);
            break;
    }
    return true;
}

bool Sweep::prepare(const FixedPolygon& polygon, Quality quality,
                    const PixelSurface& surface) noexcept {
    if (!row_.reserve(surface.width) || !buildEdges(polygon, edges_)) return false;
    const bool hasLines = quality == Quality::kBetter ? lines_.collectVertexHeights(polygon)
                          : quality == Quality::kFaster
                              ? lines_.collectSamples(polygon, HalfRowSample::kFractions)
                              : lines_.collectSamples(polygon, CentreSample::kFractions);
    return hasLines && active_.begin(edges_, lines_);
}

void Sweep::sweepExact(FillRule rule, SweepTarget& target) noexcept {
    for (int32_t line = 0; line + 1 < lines_.count(); ++line) {
        const int32_t top = lines_.height(line);
        const int32_t bottom = lines_.height(line + 1);
        active_.advance(line, top);
        addBand(rule, top, bottom);
        if (fractionOf(bottom) == 0) flushRow(pixelOf(bottom), target);
    }
    if (lines_.count() > 0) flushRow(pixelOf(lines_.height(lines_.count() - 1)), target);
}

void Sweep::addBand(FillRule rule, int32_t top, int32_t bottom) noexcept {
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
void Sweep::sweepSamples(FillRule rule, SweepTarget& target) noexcept {
    constexpr uint32_t kLowestBit = Sample::kFractions & (~Sample::kFractions + 1);
    for (int32_t line = 0; line < lines_.count(); ++line) {
        const int32_t y = lines_.height(line);
        active_.advance(line, y);
        addSampleLine<Sample>(rule, y);
        if (1U << fractionOf(y) == kLowestBit) flushRow(pixelOf(y), target);
    }
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
    edges_.shrinkToFit();
    lines_.shrinkToFit();
    active_.shrinkToFit();
}

}  // namespace vg::raster
