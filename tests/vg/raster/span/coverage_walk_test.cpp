#include "vg/raster/span/coverage_walk.h"

#include <gtest/gtest.h>

#include "vg/raster/raster_fixture.h"

namespace vg::raster {
namespace {

constexpr int kCells = 400;
constexpr int32_t kOrigin = 64;

/// A random row: changes far apart and close together, groups that were touched for nothing, and a
/// span that closes past a surface of `width` columns.
class RandomRow {
public:
    RandomRow(uint32_t seed, int32_t width) : random_(seed), expected_(static_cast<size_t>(width)) {
        EXPECT_TRUE(row_.reserve(kCells));
        const uint32_t rarity = 1 + below(60);
        uint32_t sum = 0;
        for (int32_t cell = 0; cell < kCells; ++cell) {
            if (below(rarity) == 0) setSum(cell, sum, nextSum());
            if (below(90) == 0) row_.touch(cell * kSubpixels, cell * kSubpixels);
            if (kOrigin + cell < width) {
                expected_[static_cast<size_t>(kOrigin + cell)] = std::min(sum, 1U << 30) >> 22;
            }
        }
        setSum(kCells, sum, 0);
    }

    RowCells view() {
        RowCells view = row_.view();
        view.originColumn = kOrigin;
        return view;
    }
    bool isClean() { return raster::isClean(row_); }
    /// Coverage by column.
    const std::vector<uint32_t>& expected() const { return expected_; }

private:
    uint32_t below(uint32_t bound) { return static_cast<uint32_t>(random_()) % bound; }
    uint32_t nextSum() {
        const uint32_t choice = below(4);
        return choice == 0 ? 0 : choice == 1 ? kFullCoverage + below(9) : below(kFullCoverage);
    }
    void setSum(int32_t cell, uint32_t& sum, uint32_t next) {
        addChange(row_, cell, next - sum);
        sum = next;
    }

    std::mt19937 random_;
    CoverageRow row_;
    std::vector<uint32_t> expected_;
};

CoverageWalk::Coverage coverage;

/// The coverage that a walk tells of each column.
std::vector<uint32_t> columnsOf(CoverageWalk&& walk, size_t width, bool isMasked) {
    std::vector<uint32_t> columns(width);
    int32_t done = 0;
    for (CoverageWalk::Piece piece; walk.next(piece); done = piece.end) {
        EXPECT_GE(piece.begin, done) << "from left to right";
        EXPECT_LT(piece.begin, piece.end);
        EXPECT_LE(piece.end, static_cast<int32_t>(width));
        EXPECT_TRUE(piece.coverage != nullptr || !isMasked);
        if (piece.coverage != nullptr) {
            EXPECT_LE(piece.end - piece.begin, CoverageWalk::kMostMixed);
        }
        for (int32_t x = piece.begin; x < piece.end; ++x) {
            columns[static_cast<size_t>(x)] =
                piece.coverage != nullptr ? piece.coverage[x - piece.begin] : 256;
        }
    }
    return columns;
}

/// Surfaces that end before the row, inside it and after it.
constexpr int32_t kWidths[] = {3, 65, 100, 263, 264, 300, 464, 600};

TEST(CoverageWalk, EveryColumnComesOnceWithItsCoverage) {
    for (uint32_t seed = 0; seed < 400; ++seed) {
        const int32_t width = kWidths[seed % std::size(kWidths)];
        RandomRow row(seed, width);
        ASSERT_EQ(columnsOf(CoverageWalk(row.view(), width, nullptr, coverage),
                            row.expected().size(), false),
                  row.expected())
            << "seed " << seed;
        EXPECT_TRUE(row.isClean()) << "cells and map are left clean";
    }
}

TEST(CoverageWalk, MasksTakeTheirShare) {
    std::vector<uint8_t> mask(600);
    for (size_t x = 0; x < mask.size(); ++x) mask[x] = static_cast<uint8_t>(x * 37);
    const auto masked = [&](std::vector<uint32_t> columns) {
        for (size_t x = 0; x < mask.size(); ++x) columns[x] = columns[x] * mask[x] >> 8;
        return columns;
    };
    for (uint32_t seed = 0; seed < 100; ++seed) {
        RandomRow row(seed, 600);
        ASSERT_EQ(columnsOf(CoverageWalk(row.view(), 600, mask.data(), coverage), 600, true),
                  masked(row.expected()))
            << "seed " << seed;
    }
    std::vector<uint32_t> covered(600);
    std::fill(covered.begin() + 5, covered.begin() + 333, 256U);
    EXPECT_EQ(columnsOf(CoverageWalk(5, 333, nullptr, coverage), 600, false), covered);
    EXPECT_EQ(columnsOf(CoverageWalk(5, 333, mask.data(), coverage), 600, true), masked(covered));
}

}  // namespace
}  // namespace vg::raster
