#pragma once

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <vector>

#include "api/packing/bin_packer.h"

namespace quor::packing {

using Sizes = std::vector<Size>;

/// Sides between the two, small ones as frequent as large ones.
inline Sizes randomSizes(int count, int least, int most, uint32_t seed) {
    std::mt19937 random(seed);
    const auto side = [&] {
        int limit = most;
        for (auto halvings = random() % 4; halvings > 0 && limit / 2 > least; --halvings) {
            limit /= 2;
        }
        return least + static_cast<int>(random() % static_cast<uint32_t>(limit - least + 1));
    };
    Sizes sizes;
    for (int i = 0; i < count; ++i) {
        const int width = side();
        sizes.push_back({width, side()});
    }
    return sizes;
}

inline int countOf(const Sizes& sizes) { return static_cast<int>(sizes.size()); }

/// Every rectangle lies in one bin, `border` away from its edges and from its neighbours.
inline void expectValid(const BinPacker& packer, const Sizes& sizes, const BinRules& rules) {
    ASSERT_EQ(countOf(sizes), packer.items().count());
    std::vector<std::vector<uint8_t>> pixels;
    for (const Size& bin : packer.bins()) {
        EXPECT_LE(bin.longerSide(), rules.maxDimension);
        pixels.emplace_back(static_cast<size_t>(bin.area()));
    }
    for (int i = 0; i < countOf(sizes); ++i) {
        const PlacedItem& item = packer.items()[i];
        const Size& size = sizes[static_cast<size_t>(i)];
        ASSERT_TRUE(0 <= item.bin && item.bin < packer.bins().count()) << i;
        const Size& bin = packer.bins()[item.bin];
        ASSERT_GE(std::min(item.x, item.y), rules.border) << i;
        ASSERT_LE(item.x + size.width + rules.border, bin.width) << i;
        ASSERT_LE(item.y + size.height + rules.border, bin.height) << i;
        // Each marks its pixels and the border after it; meeting a mark is an overlap.
        const Size footprint = rules.footprint(size);
        for (int y = item.y; y < item.y + footprint.height; ++y) {
            auto* row = &pixels[static_cast<size_t>(item.bin)][static_cast<size_t>(y * bin.width)];
            ASSERT_EQ(row + item.x + footprint.width,
                      std::find(row + item.x, row + item.x + footprint.width, 1))
                << "rectangle " << i << " meets another one";
            std::fill_n(row + item.x, footprint.width, uint8_t{1});
        }
    }
}

}  // namespace quor::packing
