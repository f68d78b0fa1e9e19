// Density on sets of rectangles from real drawings. Built where the folder of the sets is at hand.

#include <filesystem>
#include <fstream>
#include <string>

#include "rectangles.h"

namespace quor::packing {
namespace {

constexpr const char* kFolder = QUOR_PACKING_SETS;

/// What other packers reach at best: bins of 2048 and of 1024 pixels; 0: not known.
struct RectangleSet {
    const char* name;
    int bins2048;
    int bins1024;
};

constexpr RectangleSet kSets[] = {
    {"loguni_100", 1, 0},    {"loguni_1000", 4, 16},       {"loguni_10000", 35, 141},
    {"aspect_1000", 2, 8},   {"perfect_400", 2, 5},        {"emoji_400_72", 1, 0},
    {"emoji_all_72", 5, 17}, {"bsicons_64", 2, 0},         {"flags_160", 2, 0},
    {"uimix_600", 1, 4},     {"elements_emoji_256", 2, 8}, {"elements_flags_320", 5, 19},
    {"bsicons_16", 0, 0},    {"bsicons_32", 0, 0},         {"elements_emoji_72", 0, 0},
    {"emoji_all_128", 0, 0}, {"emoji_all_32", 0, 0},       {"flags_64", 0, 0},
};

Sizes readSet(const std::string& name) {
    std::ifstream stream(std::filesystem::path(kFolder) / (name + ".txt"));
    std::string heading;
    std::getline(stream, heading);
    Sizes sizes;
    for (Size size; stream >> size.width >> size.height;) sizes.push_back(size);
    return sizes;
}

/// The part of the bins' area that rectangles and their borders take, in percent.
double occupancyOf(const BinPacker& packer, const Sizes& sizes, const BinRules& rules) {
    int64_t used = 0;
    int64_t all = 0;
    for (const Size& size : sizes) used += rules.footprint(size).area();
    for (const Size& bin : packer.bins()) all += rules.freeArea(bin).area();
    return 100.0 * static_cast<double>(used) / static_cast<double>(all);
}

void packBest(const Sizes& sizes, const BinRules& rules, BinPacker (&packers)[kHeuristicCount],
              const BinPacker*& best) {
    best = nullptr;
    for (int i = 0; i < kHeuristicCount; ++i) {
        ASSERT_TRUE(
            packers[i].pack(sizes.data(), countOf(sizes), rules, static_cast<Heuristic>(i)));
        if (best == nullptr || packers[i].isBetterThan(*best)) best = &packers[i];
    }
}

class RectangleSets : public testing::TestWithParam<int> {};

TEST_P(RectangleSets, ArePackedAtLeastAsDenselyAsByOtherPackers) {
    const int side = GetParam();
    const BinRules rules = {side, 1, false};
    double sum = 0.0;
    for (const RectangleSet& set : kSets) {
        SCOPED_TRACE(set.name);
        const Sizes sizes = readSet(set.name);
        ASSERT_FALSE(sizes.empty());
        BinPacker packers[kHeuristicCount];
        const BinPacker* best = nullptr;
        packBest(sizes, rules, packers, best);
        expectValid(*best, sizes, rules);
        const int known = side == 2048 ? set.bins2048 : set.bins1024;
        EXPECT_LE(best->bins().count(), known != 0 ? known : countOf(sizes));
        const double occupancy = occupancyOf(*best, sizes, rules);
        const bool isEqualSizes = std::string(set.name) == "flags_160";
        EXPECT_GE(occupancy, isEqualSizes ? 99.6 : 96.5);
        sum += occupancy;
    }
    EXPECT_GE(sum / static_cast<double>(std::size(kSets)), 98.6);
}

TEST(RectangleSetsPowerOfTwo, HaveLastBinsNoLargerThanKnown) {
    if (!std::filesystem::is_directory(kFolder)) {
        GTEST_SKIP() << "there is no folder " << kFolder;
    }
    const BinRules rules = {1024, 1, true};
    const struct {
        const char* name;
        double occupancy;
    } cases[] = {{"elements_emoji_72", 99.8}, {"emoji_all_72", 99.4}, {"elements_flags_320", 97.7}};
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const Sizes sizes = readSet(c.name);
        BinPacker packers[kHeuristicCount];
        const BinPacker* best = nullptr;
        packBest(sizes, rules, packers, best);
        expectValid(*best, sizes, rules);
        EXPECT_GE(occupancyOf(*best, sizes, rules), c.occupancy);
    }
}

INSTANTIATE_TEST_SUITE_P(BinsOf, RectangleSets, testing::Values(1024, 2048),
                         testing::PrintToStringParamName());

}  // namespace
}  // namespace quor::packing
