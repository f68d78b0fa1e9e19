// Moves recorded bands and adds them to the ring sixteen at a time, or copies recorded cells into
// it.

#include "vg/raster/replay/band_replay.h"

#include <algorithm>
#include <cassert>
#include <cstring>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"
#include "vg/raster/kernels/kernels.h"
#include "vg/raster/sweep/crossing_samples.h"
#include "vg/raster/sweep/ring_delivery.h"

namespace vg::raster {
namespace {

/// Buffers sixteen bands, one to a vector lane, and adds them to a ring with one kernel call:
/// boundary i of every band lies in row i.
class BandLanes {
public:
    BandLanes(CoverageRing& ring, BoundaryRow* rows) noexcept : ring_(ring), rows_(rows) {}

    bool areFull() const noexcept { return laneCount_ == kBlockBands; }

    /// `x` holds the edges of a band, each with its x at the top and at the bottom; all are moved
    /// by dx.
    void push(const Band& band, int32_t pixelRow, const uint16_t* x, int32_t dx) noexcept {
        const int32_t boundaries = band.coordCount / 2;
        for (; rowCount_ < boundaries; ++rowCount_) {
            std::memset(rows_[rowCount_].sign, 0, kSignBytes);
        }
        for (int32_t i = 0; i < boundaries; ++i) {
            rows_[i].top[laneCount_] = static_cast<uint16_t>(x[2 * i] + dx);
            rows_[i].bottom[laneCount_] = static_cast<uint16_t>(x[2 * i + 1] + dx);
            rows_[i].sign[laneCount_] = (i & 1) == 0 ? 1 : -1;
        }
        block_.height[laneCount_] = static_cast<int16_t>(band.height);
        block_.rowStart[laneCount_] = ring_.rowStart(pixelRow);
        ++laneCount_;
    }

    /// Adds the bands pushed so far to the ring.
    void flush() noexcept {
        kernels().addRows(rows_, rowCount_, block_, ring_.view());
        laneCount_ = rowCount_ = 0;
    }

private:
    static constexpr size_t kSignBytes = sizeof(BoundaryRow::sign);

    CoverageRing& ring_;
    BoundaryRow* rows_;
    BandBlock block_ = {};
    int32_t laneCount_ = 0;
    int32_t rowCount_ = 0;  ///< rows that hold a boundary in some lane
};

void addCentre(const CellView& row, int32_t x, uint32_t sign) noexcept {
    const int32_t column = CentreSample::columnOf(x);
    row.cells[column] += kFullCoverage * sign;
    row.touch(column, column);
}

/// The row of the first band.
int32_t topRowOf(Quality quality, const BandShift& shift) noexcept {
    return pixelOf(quality == Quality::kNonAntialiased ? shift.startY : shift.startY - 1);
}

/// Rows of a ring from the top down. What was added is given to `take(top, bottom)`, a range of at
/// most kRows rows, before its rows of the ring come round again.
template <class Take>
class RowWindow {
public:
    RowWindow(CoverageRing& ring, Take take) noexcept : ring_(ring), take_(take) {}

    /// The cells of a row, which lies no higher than the one asked for before.
    CellView row(int32_t y) noexcept {
        if (y != bottom_) moveDownTo(y);
        return ring_.row(y);
    }
    /// Whether the row can be added before any row has to be taken.
    bool reaches(int32_t y) const noexcept { return top_ - y < CoverageRing::kRows; }

    /// Must follow the last row.
    void finish() noexcept {
        if (top_ >= bottom_) take_(top_, bottom_);
    }

private:
    void moveDownTo(int32_t y) noexcept {
        const bool isFull = !reaches(y);
        if (isFull) finish();
        if (isFull || top_ < bottom_) top_ = y;
        bottom_ = y;
    }

    CoverageRing& ring_;
    Take take_;
    int32_t top_ = -1;  // empty while it is less than bottom_
    int32_t bottom_ = kRowCount;
};

/// Both anti-aliased qualities: half rows are recorded as bands with vertical edges.
template <class Window>
void addTrapezoids(const BandList& list, const BandShift& shift, Window& window,
                   BandLanes&& lanes) noexcept {
    const uint16_t* x = list.coords.data();
    int32_t y = shift.startY;
    for (const Band& band : list.bands) {
        if (band.coordCount != 0) {
            const int32_t row = pixelOf(y - 1);
            if (lanes.areFull() || !window.reaches(row)) lanes.flush();
            window.row(row);
            lanes.push(band, row, x, shift.dx);
            x += band.coordCount;
        }
        y -= band.height;
    }
    lanes.flush();
}

template <class Window>
void addCentres(const BandList& list, const BandShift& shift, Window& window) noexcept {
    const uint16_t* x = list.coords.data();
    int32_t y = (shift.startY & 0xFFF0) | 16;  // the centre of the row
    for (const Band& band : list.bands) {
        if (band.coordCount != 0) {
            const CellView row = window.row(pixelOf(y));
            for (const uint16_t* const end = x + band.coordCount; x != end; x += 2) {
                addCentre(row, x[0] + shift.dx, kPlus);
                addCentre(row, x[1] + shift.dx, kMinus);
            }
        }
        if (y == 16) return;
        y -= band.height;
    }
}

/// Puts the cells of a list into an empty ring, their column 0 at `column`.
template <class Window>
void addCells(const RecordedCells& kept, int32_t topRow, int32_t column, Window& window) noexcept {
    const uint32_t* cells = kept.cells.data();
    for (const RecordedCells::Group& group : kept.groups) {
        const CellView row = window.row(topRow - group.row);
        const int32_t first = column + group.column;
        std::memcpy(row.cells + first, cells, kGroupCells * sizeof(uint32_t));
        row.touch(first, first + kGroupCells - 1);
        cells += kGroupCells;
    }
    window.finish();
}

int32_t leftColumnOf(const BandList& list, int32_t dx) noexcept { return pixelOf(list.minX + dx); }

/// Columns from the leftmost of a list to that of its closing cell.
int32_t columnCountOf(const BandList& list, int32_t dx) noexcept {
    return pixelOf(list.maxX + dx) + 2 - leftColumnOf(list, dx);
}

}  // namespace

/// Adds a whole list; `originColumn` is the column of the ring's cell 0.
template <class Window>
void BandReplayer::addBands(const BandList& list, Quality quality, const BandShift& shift,
                            int32_t originColumn, Window&& window) noexcept {
    const BandShift inRing = {shift.dx - originColumn * kSubpixels, shift.startY};
    if (quality == Quality::kNonAntialiased) {
        addCentres(list, inRing, window);
    } else {
        addTrapezoids(list, inRing, window, BandLanes(ring_, rows_.data()));
    }
    window.finish();
}

bool BandReplayer::replayBands(BandList& list, Quality quality, const BandShift& shift,
                               SweepTarget& target) noexcept {
    if (!list.nonEmpty) return true;
    assert(list.fits(shift, {0, 0, target.surface.width, target.surface.height}));
    const int32_t left = leftColumnOf(list, shift.dx);
    const int32_t origin = originFor(target, left);
    if (!ring_.reserve(left - origin + columnCountOf(list, shift.dx)) ||
        !rows_.resize(list.largestBand / 2)) {
        return false;
    }
    RowWindow window(ring_, [&](int32_t top, int32_t bottom) noexcept {
        deliverRows(ring_, origin, top, bottom, target);
    });
    if (hasCells(list, quality, fractionOf(shift.dx))) {
        addCells(list.cells, topRowOf(quality, shift), left - origin, window);
    } else {
        addBands(list, quality, shift, origin, window);
    }
    return true;
}

/// Makes the cells for a place within the pixel that comes a second time in a row.
bool BandReplayer::hasCells(BandList& list, Quality quality, int32_t phase) noexcept {
    RecordedCells& cells = list.cells;
    if (cells.phase == phase) return true;
    const bool isRepeated = cells.lastPhase == phase;
    cells.lastPhase = phase;
    return isRepeated && !cells.areTooMany && makeCells(list, quality, phase);
}

bool BandReplayer::makeCells(BandList& list, Quality quality, int32_t phase) noexcept {
    RecordedCells& cells = list.cells;
    cells.clear();
    cells.lastPhase = phase;
    bool isKept = true;
    const BandShift shift = {phase, list.startY};
    const int32_t topRow = topRowOf(quality, shift);
    // The ring is wide enough: the list is about to be drawn at this place within the pixel.
    addBands(list, quality, shift, leftColumnOf(list, phase),
             RowWindow(ring_, [&](int32_t top, int32_t bottom) noexcept {
                 for (int32_t y = top; y >= bottom; --y) {
                     isKept = cells.takeRow(ring_.row(y), ring_.groupCount(), topRow - y) && isKept;
                 }
             }));
    if (isKept) {
        cells.phase = phase;
    } else {
        cells.clear();
        cells.areTooMany = true;
    }
    return isKept;
}

}  // namespace vg::raster
