#pragma once

#include "vg/raster/band_list.h"
#include "vg/raster/coverage_row.h"
#include "vg/raster/crossing_samples.h"
#include "vg/raster/trapezoid.h"

namespace vg::raster {

/// Both anti-aliased qualities: half rows are recorded as bands with upright edges.
template <class FlushRow>
void replayTrapezoids(const BandList& list, const BandShift& shift, CoverageRow& row,
                      FlushRow flushRow) noexcept {
    const uint16_t* x = list.coords.data();
    int32_t y = shift.startY;
    for (const Band& band : list.bands) {
        for (const uint16_t* const end = x + band.coordCount; x != end; x += 4) {
            const int32_t leftTop = x[0] + shift.dx, leftBottom = x[1] + shift.dx;
            const int32_t rightTop = x[2] + shift.dx, rightBottom = x[3] + shift.dx;
            addTrapezoid(row.cells(), leftTop, leftBottom, band.height);
            subtractTrapezoid(row.cells(), rightTop, rightBottom, band.height);
            row.touch(leftTop, leftBottom);
            row.touch(rightTop, rightBottom);
        }
        const int32_t pixelRow = pixelOf(y - 1);  // of the band, or of its top when it is empty
        y -= band.height;
        if (y <= pixelRow << kSubpixelBits) flushRow(pixelRow);
    }
    flushRow(pixelOf(y));
}

template <class FlushRow>
void replayCentres(const BandList& list, const BandShift& shift, CoverageRow& row,
                   FlushRow flushRow) noexcept {
    const uint16_t* x = list.coords.data();
    int32_t y = (shift.startY & 0xFFF0) | 16;  // the centre of the row
    for (const Band& band : list.bands) {
        for (const uint16_t* const end = x + band.coordCount; x != end; x += 2) {
            CentreSample::add(row, x[0] + shift.dx, kPlus);
            CentreSample::add(row, x[1] + shift.dx, kMinus);
        }
        flushRow(pixelOf(y));
        if (y == 16) return;
        y -= band.height;
    }
}

/// Draws a band list: adds its edges to the coverage row and calls sink(y) for every pixel row y
/// that they touch, from the top down. The sink consumes the cells of the touched range. The row
/// must be as wide as the clip that list.fits(), and zero.
template <class Sink>
void replayBands(const BandList& list, Quality quality, const BandShift& shift, CoverageRow& row,
                 Sink&& sink) noexcept {
    if (!list.nonEmpty) return;
    const auto flushRow = [&](int32_t y) {
        if (row.isTouched()) sink(y);
        row.resetRange();
    };
    row.resetRange();
    if (quality == Quality::kNonAntialiased) {
        replayCentres(list, shift, row, flushRow);
    } else {
        replayTrapezoids(list, shift, row, flushRow);
    }
}

}  // namespace vg::raster
