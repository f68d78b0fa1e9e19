#include "svg/path_data.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "hostile_text.h"

namespace quor {
namespace {

/// The coordinates that each segment command takes, by code / 2.
int coordinatesOf(uint8_t segment) {
    constexpr int kCounts[] = {0, 2, 2, 1, 1, 4, 6, 2, 4, 5, 5, 5, 5};
    return kCounts[segment / 2];
}

TEST(PathData, ReadsCommandsAndCoordinates) {
    using Bytes = std::vector<uint8_t>;
    using Floats = std::vector<float>;
    const struct {
        std::string text;
        Bytes segments;
        Floats coordinates;
    } cases[] = {
        // Repetition.
        {"M10 10 20 20 30 30", {2, 4, 4}, {10, 10, 20, 20, 30, 30}},
        {"m10 10 20 20", {3, 5}, {10, 10, 20, 20}},
        {"M1 2H3 4", {2, 6, 6}, {1, 2, 3, 4}},
        {"v1 2", {9, 9}, {1, 2}},
        {"M0 0Zz", {2, 0, 0}, {0, 0}},
        // Every segment.
        {"q1 2 3 4Q1 2 3 4", {11, 10}, {1, 2, 3, 4, 1, 2, 3, 4}},
        {"C1 2 3 4 5 6", {12}, {1, 2, 3, 4, 5, 6}},
        {"s1 2 3 4S3 4 5 6", {17, 16}, {1, 2, 3, 4, 3, 4, 5, 6}},
        {"L1 2S3 4 5 6T7 8t9 10", {4, 16, 10, 15}, {1, 2, 3, 4, 5, 6, 5, 6, 7, 8, 9, 10}},
        // Smooth segments after curves of the other degree have their control point spelled out.
        {"M30 30T40 170S170 170 170 30",
         {2, 14, 12},
         {30, 30, 40, 170, 40, 170, 170, 170, 170, 30}},
        {"m1 1h2v3a9 9 0 0 1 4 4q1 1 2 2S3 4 5 6",
         {3, 7, 9, 19, 11, 12},
         {1, 1, 2, 3, 9, 9, 0, 4, 4, 1, 1, 2, 2, 9, 10, 3, 4, 5, 6}},
        {"m5 6l1 1zc1 1 1 1 1 1t1 2s1 2 3 4",
         {3, 5, 0, 13, 11, 13},
         {5, 6, 1, 1, 1, 1, 1, 1, 1, 1, 0, 0, 1, 2, 0, 0, 1, 2, 3, 4}},
        {"Q1 2 3 4zS1 2 3 4", {10, 0, 16}, {1, 2, 3, 4, 1, 2, 3, 4}},
        {"L1 2V3h4", {4, 8, 7}, {1, 2, 3, 4}},
        // Numbers.
        {"M-1-2", {2}, {-1, -2}},
        {"M1.5.5", {2}, {1.5F, 0.5F}},
        {"M1e2 0", {2}, {100, 0}},
        {"M1e-5+2.E1", {2}, {0.00001F, 20}},
        {"M1e 2", {2}, {0, 2}},
        {"M+-5", {2}, {0, -5}},
        {"M\t\n\r,,1,,2", {2}, {1, 2}},
        {"M1e99 -1e99", {2}, {3.40282347e+38F, -3.40282347e+38F}},
        {"M" + std::string(61, '0') + "57 3", {2, 4}, {5, 7, 3, 0}},  // 62 characters a number
        // Arcs: absolute radii; flags need no separators.
        {"a25,-25 -30 0150,50", {19}, {25, 25, -30, 50, 50}},
        {"A-1 2 3 0 0 4 5", {20}, {1, 2, 3, 4, 5}},
        {"A1 2 3 1,1 4 5 6 7 8 10 9 9", {22, 24}, {1, 2, 3, 4, 5, 6, 7, 8, 9, 9}},
        {"A1 2 3 +1 -0 4 5", {24}, {1, 2, 3, 4, 5}},
        {"M1 1A1 2 3 2 0 4 5L1 1", {2}, {1, 1}},
        {"M1 1A1 2 3 -1 0 4 5", {2}, {1, 1}},
        {"M1 1A1 2 3 0 x", {2}, {1, 1}},
        {"M1 1A1 2 3 0", {2}, {1, 1}},
        {"A1 2 3 0 1 4", {18}, {1, 2, 3, 4, 0}},
        // Missing coordinates are 0.
        {"M0 0L10", {2, 4}, {0, 0, 10, 0}},
        {"M0 0L", {2, 4}, {0, 0, 0, 0}},
        {"M10 L20 20", {2, 4}, {10, 0, 20, 20}},
        {"C1 2 L3 4 5 6 7", {12, 4}, {1, 2, 0, 3, 4, 5, 6, 7}},
        // What has no segment is skipped; what is unknown ends the data.
        {"M0 0 F 1 2 L3 4", {2, 4}, {0, 0, 3, 4}},
        {"p1 2 M3 4", {2}, {3, 4}},
        {"1 2 3 M4 5", {2}, {4, 5}},
        {"M0 0 L10,10 # L20,20", {2, 4}, {0, 0, 10, 10}},
        {"M0 0 B 1 2 L3 4", {2}, {0, 0}},
        {"M0 0\fL3 4", {2}, {0, 0}},
        {"M0 0\xE9L3 4", {2}, {0, 0}},
        {"\xFF", {}, {}},
        {"", {}, {}},
        {" ,\n", {}, {}},
    };
    PathData data;  // reused: nothing of one path may reach the next
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_EQ(parsePathData(ExactText(c.text), data), Status::kOk);
        EXPECT_EQ(Bytes(data.segments.begin(), data.segments.end()), c.segments);
        EXPECT_EQ(Floats(data.coordinates.begin(), data.coordinates.end()), c.coordinates);
    }
}

void expectConsistent(const PathData& data, size_t textLength) {
    int expected = 0;
    for (const uint8_t segment : data.segments) expected += coordinatesOf(segment);
    ASSERT_EQ(data.coordinates.count(), expected);
    ASSERT_LE(static_cast<size_t>(data.segments.count()), textLength);
    for (const float coordinate : data.coordinates) ASSERT_TRUE(std::isfinite(coordinate));
}

TEST(PathData, SegmentsAndCoordinatesAlwaysAgree) {
    const std::string_view words[] = {"M",  "l", "H",     "v",   "C",         "s",  "Q",  "t",
                                      "A",  "z", "F",     "p",   "0",         "1",  "-1", ".",
                                      "e",  "+", "1e999", ",",   " ",         "25", "-",  "--",
                                      "\n", "1", "0.25",  "1e-", "a1 1 0 0 1"};
    PathData data;
    forHostileTexts(words, [&](const ExactText& text) {
        ASSERT_EQ(parsePathData(text, data), Status::kOk);
        expectConsistent(data, std::strlen(text));
    });
}

TEST(PathData, LongRunsTakeLinearTime) {
    PathData data;
    for (const char* run : {"9", "-", "e", ".", "M", "C", "0 ", "a1 1 0 --------"}) {
        std::string text = "M";
        while (text.size() < 1000000) text += run;
        ASSERT_EQ(parsePathData(ExactText(text), data), Status::kOk);
        expectConsistent(data, text.size());
    }
}

}  // namespace
}  // namespace quor
