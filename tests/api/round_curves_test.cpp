// Circles beside their exact areas: whoever looks at an icon sees first whether its curves are
// round.

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <sstream>

#include "library_fixture.h"

namespace quor {
namespace {

/// The share of a pixel's unit square that a disc covers, by strips along y.
double coverage(int x, int y, double centre, double radius) {
    constexpr int kStrips = 64;
    double sum = 0.0;
    for (int i = 0; i < kStrips; ++i) {
        const double dx = x + (i + 0.5) / kStrips - centre;
        const double square = radius * radius - dx * dx;
        if (square <= 0.0) continue;
        const double half = std::sqrt(square);
        sum += std::clamp(std::min(centre + half, y + 1.0) - std::max(centre - half, y + 0.0), 0.0,
                          1.0);
    }
    return sum / kStrips;
}

class RoundCurves : public LibraryFixture {
protected:
    /// Draws a circle and compares its edge pixels, in levels of 255.
    void draw(const std::string& shape, double centre, double radius) {
        const auto side = static_cast<uint32_t>(2.0 * std::ceil(radius) + 8.0);
        std::ostringstream text;
        text << "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 " << side << ' ' << side
             << "'>" << shape << "</svg>";
        const uint32_t surface = quorSurfaceCreate(side, side);
        const uint32_t document = quorDocCreate(text.str().c_str());
        ASSERT_EQ(quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER), QUOR_NO_ERROR);
        const uint32_t* pixels = quorSurfacePixels(surface);
        double sum = 0.0;
        int count = 0;
        worst = drawn = exact = 0.0;
        for (uint32_t y = 0; y < side; ++y) {
            for (uint32_t x = 0; x < side; ++x) {
                const double distance = std::hypot(x + 0.5 - centre, y + 0.5 - centre) - radius;
                const double alpha = pixels[y * side + x] >> 24;
                drawn += alpha;
                if (std::fabs(distance) > 1.0) {
                    ASSERT_EQ(alpha, distance > 0.0 ? 0.0 : 255.0) << x << ' ' << y;
                    exact += alpha;
                    continue;
                }
                const double ideal =
                    255.0 * coverage(static_cast<int>(x), static_cast<int>(y), centre, radius);
                exact += ideal;
                worst = std::max(worst, std::fabs(alpha - ideal));
                if (ideal <= 0.0 || ideal >= 255.0) continue;
                sum += std::fabs(alpha - ideal);
                ++count;
            }
        }
        mean = sum / count;
        quorDocDestroy(document);
        quorSurfaceDestroy(surface);
    }

    double mean = 0.0;
    double worst = 0.0;
    double drawn = 0.0;  ///< areas, times 255
    double exact = 0.0;
};

std::string circle(double centre, double radius) {
    std::ostringstream text;
    text << "<circle cx='" << centre << "' cy='" << centre << "' r='" << radius << "'/>";
    return text.str();
}

TEST_F(RoundCurves, CirclesKeepToTheirEdgesAndAreas) {
    for (const double radius : {3.0, 7.3, 20.0, 55.0, 120.0, 300.0}) {
        for (const double offset : {0.0, 0.13, 0.25, 0.5}) {
            SCOPED_TRACE(testing::Message() << "radius " << radius << " offset " << offset);
            const double centre = std::ceil(radius) + 4.0 + offset;
            draw(circle(centre, radius), centre, radius);
            EXPECT_LE(mean, 8.0);
            EXPECT_LE(worst, 20.0);
            EXPECT_NEAR(drawn / exact, 1.0, 0.02);
        }
    }
}

TEST_F(RoundCurves, DotsHaveTheirWeight) {
    for (const double offset : {0.0, 0.13, 0.25, 0.5}) {
        const double centre = 5.0 + offset;
        draw(circle(centre, 1.0), centre, 1.0);
        EXPECT_NEAR(drawn / exact, 1.0, 0.05) << offset;
    }
}

}  // namespace
}  // namespace quor
