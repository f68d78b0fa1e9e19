#include "vg/raster/geometry/scissor.h"

#include <gtest/gtest.h>

#include <climits>
#include <random>
#include <vector>

namespace vg::raster {
namespace {

/// How often each pixel is covered, bottom row first.
std::vector<int> paint(const Scissor& scissor, int32_t width, int32_t height) {
    std::vector<int> pixels(static_cast<size_t>(width) * static_cast<size_t>(height));
    for (const ScissorRect& rect : scissor) {
        EXPECT_LT(rect.x0, rect.x1);
        EXPECT_LT(rect.y0, rect.y1);
        for (int32_t y = rect.y0; y < rect.y1; ++y) {
            for (int32_t x = rect.x0; x < rect.x1; ++x)
                ++pixels.at(static_cast<size_t>(y * width + x));
        }
    }
    return pixels;
}

bool isInside(const std::vector<int32_t>& values, int64_t x, int64_t y) {
    for (size_t i = 0; i + 3 < values.size(); i += 4) {
        if (values[i] <= x && x < int64_t{values[i]} + values[i + 2] && values[i + 1] <= y &&
            y < int64_t{values[i + 1]} + values[i + 3]) {
            return true;
        }
    }
    return false;
}

void expectUnion(const std::vector<int32_t>& values, int32_t width, int32_t height) {
    Scissor scissor;
    ASSERT_TRUE(scissor.rebuild(values.data(), static_cast<int32_t>(values.size()), width, height));
    const std::vector<int> pixels = paint(scissor, width, height);
    for (int32_t y = 0; y < height; ++y) {
        for (int32_t x = 0; x < width; ++x) {
            ASSERT_EQ(pixels[static_cast<size_t>(y * width + x)], isInside(values, x, y) ? 1 : 0)
                << x << ", " << y;
        }
    }
}

TEST(Scissor, CoversTheUnionOnce) {
    const std::vector<int32_t> cases[] = {
        {},
        {2, 3, 4, 5},
        {-5, -5, 100, 100},
        {1, 1, 0, 5, 1, 1, 5, -1},
        {0, 0, 4, 4, 2, 2, 4, 4},
        {0, 0, 4, 4, 4, 0, 4, 4},
        {INT_MIN, INT_MIN, INT_MAX, INT_MAX, 3, 3, INT_MAX, INT_MAX, INT_MAX, INT_MAX, INT_MAX, 1},
    };
    for (const auto& values : cases) expectUnion(values, 13, 11);
    std::mt19937 random(11);
    std::uniform_int_distribution<int32_t> place(-4, 20), size(-1, 12);
    for (int i = 0; i < 300; ++i) {
        std::vector<int32_t> values;
        for (int k = i % 12; k >= 0; --k) {
            values.insert(values.end(), {place(random), place(random), size(random), size(random)});
        }
        expectUnion(values, 17, 16);
    }
}

TEST(Scissor, MergesWhatTouches) {
    const struct {
        const char* name;
        std::vector<int32_t> values;
        int count;
    } cases[] = {
        {"side by side", {0, 0, 4, 4, 4, 0, 4, 4}, 1},
        {"one on the other", {0, 0, 4, 4, 0, 4, 4, 4}, 1},
        {"twice the same", {0, 0, 4, 4, 0, 0, 4, 4}, 1},
        {"one inside the other", {0, 0, 9, 9, 3, 3, 2, 2}, 1},
        {"columns the same, a row between them", {0, 0, 4, 4, 0, 5, 4, 4}, 2},
        {"a cross", {3, 0, 3, 9, 0, 3, 9, 3}, 3},
        {"two towers", {0, 0, 2, 9, 5, 0, 2, 4, 5, 4, 2, 5}, 2},
    };
    for (const auto& c : cases) {
        Scissor scissor;
        ASSERT_TRUE(
            scissor.rebuild(c.values.data(), static_cast<int32_t>(c.values.size()), 16, 16));
        EXPECT_EQ(scissor.end() - scissor.begin(), c.count) << c.name;
    }
}

TEST(Scissor, ManyRectanglesTakeBoundedTime) {
    // A million rectangles on the largest surface, all different.
    std::mt19937 random(12);
    std::vector<int32_t> values;
    for (int i = 0; i < 1000000; ++i) {
        values.insert(values.end(), {static_cast<int32_t>(random() % 2048),
                                     static_cast<int32_t>(random() % 2048), 1 + i % 3, 1 + i % 5});
    }
    Scissor scissor;
    ASSERT_TRUE(scissor.rebuild(values.data(), static_cast<int32_t>(values.size()), 2048, 2048));
    EXPECT_LE(scissor.end() - scissor.begin(), 2048 * 1024);
}

}  // namespace
}  // namespace vg::raster
