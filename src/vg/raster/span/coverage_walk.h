#pragma once

#include <algorithm>
#include <bit>
#include <cstdint>
#include <cstring>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/kernels/kernels.h"

namespace vg::raster {

/// Group i of eight as bit i, from their entries in the map, which are 0 or 1; clears those.
inline uint32_t takeTouched(uint8_t* touched) noexcept {
    static_assert(std::endian::native == std::endian::little, "words of the map are read as bytes");
    constexpr uint64_t kGather = 0x0102040810204080;  // moves bit 8 i to bit 56 + i
    uint64_t entries;
    std::memcpy(&entries, touched, sizeof entries);
    if (entries != 0) std::memset(touched, 0, sizeof entries);
    return static_cast<uint32_t>(entries * kGather >> 56);
}

/// From the touched cells of a pixel row to the coverage of its columns: an iterator over the runs
/// of the prefix sum.
///
///   touched   0   1   1   0   0   0   1   0      a group is eight columns
///   coverage  0  stretch     run    stretch 0
///
/// Between touched groups coverage cannot change: columns there are a run. Touched groups that
/// adjoin are a stretch, in which it may be another in every column.
class CoverageWalk {
public:
    static constexpr int32_t kMostMixed = 64;
    using Coverage = uint32_t[kMostMixed];

    /// Columns `begin` to `end` - 1: fully covered ones, as many as there are, or at most
    /// kMostMixed with a coverage of 0..256 each.
    struct Piece {
        int32_t begin, end;
        const uint32_t* coverage;  ///< null when whole; valid until the next piece
    };

    /// A row on a surface of `width` columns; `memory` is for the coverage of pieces. Under a mask,
    /// which has a byte for every column, no piece is whole.
    CoverageWalk(const RowCells& row, int32_t width, const uint8_t* mask, Coverage& memory) noexcept
        : row_(row),
          width_(width),
          mask_(mask),
          done_(row.originColumn),
          runEnd_(done_),
          coverage_(memory) {}

    /// Columns that are fully covered but for the mask.
    CoverageWalk(int32_t begin, int32_t end, const uint8_t* mask, Coverage& memory) noexcept
        : row_(),
          width_(end),
          mask_(mask),
          sum_(kFullCoverage),
          done_(begin),
          runEnd_(end),
          coverage_(memory) {}

    /// Gives the pieces from left to right, leaving out what nothing covers. False after the last:
    /// the row and its map are zero then.
    bool next(Piece& piece) noexcept;
    /// next() force-inlined, for the loops of frequent span functions.
    bool advance(Piece& piece) noexcept;

private:
    bool findGroups() noexcept;
    void takeRun(Piece& piece) noexcept;
    void takeGroups(Piece& piece) noexcept;
    void mix(Piece& piece) noexcept;

    RowCells row_;
    int32_t width_;
    const uint8_t* mask_;
    uint32_t sum_ = 0;
    int32_t done_;            ///< the surface's columns to the left are
    int32_t runEnd_;          ///< of a run that begins at done_
    int32_t nextWord_ = 0;    ///< the first group of the map's next word
    uint32_t groups_ = 0;     ///< of the word before that: bit i is set when group i is touched
    int32_t groupCount_ = 0;  ///< touched groups that adjoin and come after the run
    int32_t cell_ = 0;        ///< the first of theirs
    uint32_t* coverage_;
};

[[gnu::always_inline]] inline bool CoverageWalk::advance(Piece& piece) noexcept {
    for (;;) {
        if (done_ < runEnd_) return takeRun(piece), true;
        if (groupCount_ == 0 && !findGroups()) return false;
        if (done_ < runEnd_) continue;
        takeGroups(piece);
        if (piece.begin < piece.end) return true;
    }
}

/// Goes to the next touched groups, and to the end of the run before them.
[[gnu::always_inline]] inline bool CoverageWalk::findGroups() noexcept {
    while (groups_ == 0) {
        if (nextWord_ >= row_.groupCount) return false;
        groups_ = takeTouched(row_.view.touched + nextWord_);
        nextWord_ += 8;
    }
    const int32_t first = std::countr_zero(groups_);
    groupCount_ = std::countr_one(groups_ >> first);
    groups_ &= ~0U << (first + groupCount_);
    cell_ = (nextWord_ - 8 + first) * kGroupCells;
    runEnd_ = std::min(row_.originColumn + cell_, width_);
    if (coverageOf(sum_) == 0) done_ = runEnd_;
    return true;
}

/// Runs of partial coverage come in pieces that end where those of paints do (gradient_paints.h).
[[gnu::always_inline]] inline void CoverageWalk::takeRun(Piece& piece) noexcept {
    const uint32_t coverage = coverageOf(sum_);
    piece = {done_, runEnd_, nullptr};
    if (coverage != 256 || mask_ != nullptr) {
        piece.end = std::min(runEnd_, (done_ | (kMostMixed - 1)) + 1);
        std::fill_n(coverage_, piece.end - piece.begin, coverage);
        mix(piece);
    }
    done_ = piece.end;
}

[[gnu::always_inline]] inline void CoverageWalk::takeGroups(Piece& piece) noexcept {
    const int32_t count = groupCount_ * kGroupCells;
    sum_ = kernels().takeCoverage(row_.view.cells + cell_, count, sum_, coverage_);
    groupCount_ = 0;
    piece = {done_, std::min(done_ + count, width_), nullptr};
    mix(piece);
    done_ = runEnd_ = piece.end;
}

[[gnu::always_inline]] inline void CoverageWalk::mix(Piece& piece) noexcept {
    piece.coverage = coverage_;
    if (mask_ == nullptr) return;
    const uint8_t* const mask = mask_ + piece.begin;
    for (int32_t i = 0; i < piece.end - piece.begin; ++i) {
        coverage_[i] = coverage_[i] * mask[i] >> 8;
    }
}

}  // namespace vg::raster
