#include <bit>
#include <numeric>
#include <tuple>

#include "rectangles.h"

namespace quor::packing {
namespace {

constexpr Heuristic kHeuristics[] = {Heuristic::kWidth, Heuristic::kHeight, Heuristic::kLongerSide};

TEST(BinPacker, PlacesEveryRectangleOnceApartAndInside) {
    const struct {
        const char* name;
        Sizes sizes;
        BinRules rules;
    } cases[] = {
        {"nothing", {}, {64, 1, false}},
        {"one pixel", {{1, 1}}, {1, 0, false}},
        {"one that fills its bin", {{62, 62}}, {64, 1, false}},
        {"strips both ways", {{62, 1}, {1, 62}, {62, 1}, {1, 62}, {60, 60}}, {64, 1, false}},
        {"two that need a bin each", {{33, 33}, {33, 33}}, {64, 0, false}},
        {"random, one bin", randomSizes(90, 1, 40, 1), {512, 1, false}},
        {"random, many bins", randomSizes(300, 1, 120, 2), {128, 2, false}},
        {"random, no border", randomSizes(300, 1, 50, 3), {256, 0, false}},
        {"a border wider than the rectangles", randomSizes(60, 1, 9, 4), {100, 17, false}},
        {"equal ones", Sizes(200, {13, 7}), {128, 1, false}},
        {"powers of two", randomSizes(300, 1, 60, 5), {256, 1, true}},
    };
    for (const auto& c : cases) {
        for (const Heuristic heuristic : kHeuristics) {
            SCOPED_TRACE(testing::Message() << c.name << ", " << static_cast<int>(heuristic));
            BinPacker packer;
            ASSERT_TRUE(packer.pack(c.sizes.data(), countOf(c.sizes), c.rules, heuristic));
            expectValid(packer, c.sizes, c.rules);
        }
    }
}

TEST(BinPacker, NeedsNoMoreThanASimpleFillDoes) {
    const struct {
        const char* name;
        Sizes sizes;
        BinRules rules;
        int bins;
        int64_t area;
    } cases[] = {
        {"a grid", Sizes(100, {9, 9}), {101, 1, false}, 1, 101 * 101},
        {"full bins of equal ones", Sizes(48, {160, 120}), {1024, 1, false}, 1, 967 * 969},
        {"a small last bin", Sizes(101, {9, 9}), {101, 1, false}, 2, 101 * 101 + 11 * 11},
        {"as long as wide", Sizes(4, {50, 50}), {2048, 0, false}, 1, 100 * 100},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        BinPacker packer;
        ASSERT_TRUE(packer.pack(c.sizes.data(), countOf(c.sizes), c.rules, Heuristic::kWidth));
        expectValid(packer, c.sizes, c.rules);
        EXPECT_EQ(c.bins, packer.bins().count());
        EXPECT_LE(packer.binArea(), c.area);
    }
}

TEST(BinPacker, AsksForPowersOfTwoInsteadOfRoundingUp) {
    // 60 of 15 x 15 with their borders are 960 x 16 pixels: 61 % of 256 x 128, however they are
    // arranged in a bin of free sides.
    const Sizes sizes(120, {15, 15});
    const BinRules rules = {2048, 1, true};
    BinPacker packer;
    ASSERT_TRUE(packer.pack(sizes.data(), countOf(sizes), rules, Heuristic::kLongerSide));
    expectValid(packer, sizes, rules);
    ASSERT_EQ(1, packer.bins().count());
    EXPECT_EQ(256 * 256, packer.binArea());

    // The last bin's size goes by what it holds.
    Sizes rest(30, {30, 30});
    rest.push_back({1022, 1022});
    ASSERT_TRUE(packer.pack(rest.data(), countOf(rest), {1024, 1, true}, Heuristic::kWidth));
    expectValid(packer, rest, {1024, 1, true});
    EXPECT_EQ(1024 * 1024 + 256 * 128, packer.binArea());

    const Sizes mixed = randomSizes(400, 3, 90, 6);
    ASSERT_TRUE(packer.pack(mixed.data(), countOf(mixed), {512, 1, true}, Heuristic::kWidth));
    int64_t footprints = 0;
    for (const Size& size : mixed) footprints += rules.footprint(size).area();
    for (const Size& bin : packer.bins()) {
        EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(bin.width))) << bin.width;
        EXPECT_TRUE(std::has_single_bit(static_cast<unsigned>(bin.height))) << bin.height;
    }
    EXPECT_LT(packer.binArea(), footprints + 512 * 512);
}

/// Everything about a result but which of equal rectangles went where.
using Arrangement = std::vector<std::tuple<int, int, int, int, int>>;

Arrangement arrangementOf(const Sizes& sizes, Heuristic heuristic) {
    BinPacker packer;
    EXPECT_TRUE(packer.pack(sizes.data(), countOf(sizes), {128, 1, false}, heuristic));
    Arrangement arrangement;
    for (int i = 0; i < countOf(sizes); ++i) {
        const PlacedItem& item = packer.items()[i];
        const Size& size = sizes[static_cast<size_t>(i)];
        arrangement.emplace_back(item.bin, item.x, item.y, size.width, size.height);
    }
    std::sort(arrangement.begin(), arrangement.end());
    return arrangement;
}

TEST(BinPacker, DoesNotDependOnTheOrderOfTheInput) {
    Sizes sizes = randomSizes(200, 1, 40, 7);
    for (const Heuristic heuristic : kHeuristics) {
        const Arrangement expected = arrangementOf(sizes, heuristic);
        EXPECT_EQ(expected, arrangementOf(sizes, heuristic)) << "packed again";
        for (const uint32_t seed : {1U, 2U, 3U}) {
            std::shuffle(sizes.begin(), sizes.end(), std::mt19937(seed));
            EXPECT_EQ(expected, arrangementOf(sizes, heuristic)) << "shuffled, seed " << seed;
        }
    }
}

TEST(BinPacker, GivesEqualRectanglesTheirPlacesInInputOrder) {
    const Sizes sizes(30, {10, 10});
    BinPacker packer;
    ASSERT_TRUE(packer.pack(sizes.data(), countOf(sizes), {45, 1, false}, Heuristic::kHeight));
    ASSERT_EQ(2, packer.bins().count());
    for (int i = 1; i < 30; ++i) {
        EXPECT_LE(packer.items()[i - 1].bin, packer.items()[i].bin) << i;
    }
}

}  // namespace
}  // namespace quor::packing
