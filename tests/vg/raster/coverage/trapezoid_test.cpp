#include "vg/raster/coverage/trapezoid.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <vector>

#include "vg/raster/geometry/fixed.h"

namespace vg::raster {
namespace {

constexpr size_t kColumns = 2064;

std::vector<uint32_t> cellsOf(int xTop, int xBottom, uint32_t height) {
    std::vector<uint32_t> cells(kColumns, 0);
    addTrapezoid(cells.data(), xTop, xBottom, height);
    return cells;
}

/// The area right of the edge in a column, in units of 2^30 a pixel, by integrating in double.
double areaRightOf(int xTop, int xBottom, double height, int column) {
    const double left = column, right = column + 1;
    constexpr int kSteps = 4000;
    double area = 0.0;
    for (int i = 0; i < kSteps; ++i) {
        const double x = (xTop + (xBottom - xTop) * (i + 0.5) / kSteps) / 32.0;
        area += right - std::min(std::max(x, left), right);
    }
    return area / kSteps * height / 32.0 * 0x1p30;
}

struct EdgeCase {
    const char* name;
    int xTop, xBottom;
    uint32_t height;
};

constexpr EdgeCase kEdges[] = {
    {"vertical, on a column border", 64, 64, 32},
    {"vertical, inside a column", 81, 81, 13},
    {"inside one column", 65, 90, 7},
    {"ends on the next border", 65, 96, 9},
    {"into the next column", 90, 100, 31},
    {"three columns", 90, 140, 32},
    {"four columns", 90, 172, 32},
    {"leaning left over ten columns", 400, 75, 5},
    {"many columns, one subpixel high", 0, 2000, 1},
    {"past the table of reciprocals", 5, 2053, 32},
    {"past the table, odd remainder", 31, 4098, 17},
    {"the whole width", 0, kMaxCoordinate, 32},
    {"the whole width leaning left", kMaxCoordinate, 3, 1},
};

TEST(Trapezoid, AmountsSumToTheHeightAtAnySlope) {
    for (const EdgeCase& c : kEdges) {
        const auto cells = cellsOf(c.xTop, c.xBottom, c.height);
        EXPECT_EQ(std::accumulate(cells.begin(), cells.end(), 0U), c.height << 25) << c.name;
    }
    for (int width = 0; width < 2300; ++width) {
        for (int start : {0, 1, 17, 31}) {
            const auto cells = cellsOf(start, start + width, 32);
            ASSERT_EQ(std::accumulate(cells.begin(), cells.end(), 0U), 1U << 30)
                << start << " + " << width;
        }
    }
}

TEST(Trapezoid, EachColumnHoldsTheAreaRightOfTheEdge) {
    for (const EdgeCase& c : kEdges) {
        const auto cells = cellsOf(c.xTop, c.xBottom, c.height);
        // s is truncated: the error grows with the columns passed, and stays below 1/256 pixel
        // times the height.
        const double tolerance = 0x1p22 + 4.0 * std::abs(c.xBottom - c.xTop) * 64;
        uint32_t sum = 0;
        const int lastColumn = std::max(c.xTop, c.xBottom) / 32 + 2;
        const int step = lastColumn > 100 ? 37 : 1;
        for (int column = 0; column < lastColumn; ++column) {
            sum += cells[static_cast<size_t>(column)];
            if (column % step != 0) continue;
            const double expected = areaRightOf(c.xTop, c.xBottom, c.height, column);
            ASSERT_NEAR(static_cast<int32_t>(sum), expected, tolerance) << c.name << ' ' << column;
        }
    }
}

TEST(Trapezoid, SubtractingUndoesAdding) {
    for (const EdgeCase& c : kEdges) {
        auto cells = cellsOf(c.xTop, c.xBottom, c.height);
        subtractTrapezoid(cells.data(), c.xBottom, c.xTop, c.height);
        EXPECT_EQ(cells, std::vector<uint32_t>(kColumns, 0)) << c.name;
    }
}

}  // namespace
}  // namespace vg::raster
