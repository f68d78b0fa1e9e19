// The sweep one band at a time, with an active edge list; boundaries go to a list instead of cells.

#include "vg/raster/replay/band_recorder.h"

#include <algorithm>

#include "vg/raster/replay/span_builder.h"
#include "vg/raster/sweep/crossing_samples.h"

namespace vg::raster {
/// Appends bands to a list from the top down.
class BandRecorder::BandWriter {
public:
    explicit BandWriter(BandList& list) noexcept : list_(list) {}

    /// False when memory or the values of a list run out.
    bool push(int32_t x) noexcept {
        return list_.coords.count() < BandList::kMaxCoords &&
               list_.coords.push(static_cast<uint16_t>(x));
    }

    /// Ends the band with the values pushed since the one before. `top` is its top, or its
    /// centre where startY lies on centres.
    bool endBand(int32_t top, int32_t height) noexcept {
        const int32_t count = list_.coords.count() - ended_;
        ended_ = list_.coords.count();
        if (count == 0 && list_.bands.isEmpty()) return true;  // nothing above counts
        if (list_.bands.isEmpty()) list_.startY = static_cast<uint16_t>(top);
        return list_.bands.push({static_cast<uint16_t>(height), static_cast<uint16_t>(count)});
    }

    /// As endBand; but an empty band after an empty one makes that one longer.
    bool endMergedBand(int32_t top, int32_t height) noexcept {
        const bool isEmpty = list_.coords.count() == ended_;
        if (isEmpty && !list_.bands.isEmpty() && list_.bands.last().coordCount == 0) {
            Band& above = list_.bands.last();
            above.height = static_cast<uint16_t>(above.height + height);
            return true;
        }
        return endBand(top, height);
    }

    /// Completes the list. `raise` is how far startY lies below the first band's top.
    void finish(int32_t raise) noexcept {
        while (!list_.bands.isEmpty() && list_.bands.last().coordCount == 0) list_.bands.pop();
        list_.nonEmpty = !list_.bands.isEmpty();
        if (!list_.nonEmpty) return;
        int32_t height = 0;
        for (const Band& band : list_.bands) {
            height += band.height;
            list_.largestBand = std::max(list_.largestBand, band.coordCount);
        }
        list_.depth = static_cast<uint16_t>(height - raise);
        const auto [least, greatest] =
            std::minmax_element(list_.coords.begin(), list_.coords.end());
        list_.minX = *least;
        list_.maxX = *greatest;
    }

private:
    BandList& list_;
    int32_t ended_ = 0;  ///< values of finished bands
};

RecordResult BandRecorder::record(const FixedPolygon& polygon, FillRule rule, Quality quality,
                                  BandList& list) noexcept {
    list.clear();
    list.coords.clearFailure();
    list.bands.clearFailure();
    if (polygon.points.count() < 3) return RecordResult::kRecorded;
    if (!prepare(polygon, quality)) return RecordResult::kOutOfMemory;
    BandWriter writer(list);
    const bool isDone = quality == Quality::kBetter   ? recordExact(rule, writer)
                        : quality == Quality::kFaster ? recordHalfRows(rule, writer)
                                                      : recordCentres(rule, writer);
    if (isDone) return RecordResult::kRecorded;
    list.clear();
    return list.coords.failed() || list.bands.failed() ? RecordResult::kOutOfMemory
                                                       : RecordResult::kTooManyCoords;
}

bool BandRecorder::prepare(const FixedPolygon& polygon, Quality quality) noexcept {
    if (!buildEdges(polygon, edges_)) return false;
    const bool hasLines = quality == Quality::kBetter ? lines_.collectVertexHeights(polygon)
                          : quality == Quality::kFaster
                              ? lines_.collectSamples(polygon, HalfRowSample::kFractions)
                              : lines_.collectSamples(polygon, CentreSample::kFractions);
    return hasLines && active_.begin(edges_, lines_);
}

bool BandRecorder::recordExact(FillRule rule, BandWriter& writer) noexcept {
    bool isDone = true;
    for (int32_t line = 0; isDone && line + 1 < lines_.count(); ++line) {
        const int32_t top = lines_.height(line);
        const int32_t bottom = lines_.height(line + 1);
        active_.advance(line, top);
        isDone = pushTrapezoids(rule, bottom, writer) && writer.endMergedBand(top, top - bottom);
    }
    writer.finish(0);
    return isDone;
}

bool BandRecorder::pushTrapezoids(FillRule rule, int32_t bottom, BandWriter& writer) noexcept {
    for (ActiveEdge& active : active_) active.xBottom = active.edge->xAt(bottom);
    active_.sort();
    // Running maxima keep spans from overlapping where edges cross, as in the sweep.
    bool isDone = true;
    int32_t pastTop = 0;
    int32_t pastBottom = 0;
    const auto push = [&](const ActiveEdge& edge) {
        pastTop = std::max(pastTop, edge.xTop);
        pastBottom = std::max(pastBottom, edge.xBottom);
        isDone = isDone && writer.push(pastTop) && writer.push(pastBottom);
    };
    forEachSpan(active_.begin(), active_.end(), rule,
                [&](const ActiveEdge& left, const ActiveEdge& right) {
                    push(left);
                    push(right);
                });
    for (ActiveEdge& active : active_) active.xTop = active.xBottom;
    return isDone;
}

template <int32_t kCopies, class EndBand>
bool BandRecorder::recordSamples(FillRule rule, BandWriter& writer, EndBand endBand) noexcept {
    bool isDone = true;
    const auto push = [&](int32_t x) {
        for (int32_t i = 0; i < kCopies; ++i) isDone = isDone && writer.push(x);
    };
    for (int32_t line = 0; isDone && line < lines_.count(); ++line) {
        const int32_t y = lines_.height(line);
        active_.advance(line, y);
        for (ActiveEdge& active : active_) active.xTop = active.xBottom = active.edge->xAt(y);
        active_.sort();
        forEachSpan(active_.begin(), active_.end(), rule,
                    [&](const ActiveEdge& left, const ActiveEdge& right) {
                        push(left.xTop);
                        push(right.xTop);
                    });
        isDone = isDone && endBand(y);
    }
    return isDone;
}

bool BandRecorder::recordHalfRows(FillRule rule, BandWriter& writer) noexcept {
    // A vertical edge over the half row around a scanline has the coverage of the sample.
    constexpr int32_t kHalfRow = kSubpixels / 2;
    const bool isDone = recordSamples<2>(
        rule, writer, [&](int32_t y) { return writer.endMergedBand(y + kHalfRow / 2, kHalfRow); });
    writer.finish(0);
    return isDone;
}

bool BandRecorder::recordCentres(FillRule rule, BandWriter& writer) noexcept {
    const bool isDone =
        recordSamples<1>(rule, writer, [&](int32_t y) { return writer.endBand(y, kSubpixels); });
    writer.finish(kSubpixels / 2);
    return isDone;
}

void BandRecorder::shrinkToFit() noexcept {
    edges_.shrinkToFit();
    lines_.shrinkToFit();
    active_.shrinkToFit();
}

}  // namespace vg::raster
