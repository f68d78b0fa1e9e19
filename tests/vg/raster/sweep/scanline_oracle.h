#pragma once

#include <algorithm>
#include <cmath>
#include <vector>

#include "vg/raster/raster_fixture.h"

namespace vg::raster {

/// What an ideal fill covers: crossings in double along scanlines of each pixel row, exact
/// horizontal coverage between them. Shares nothing with the rasterizer.
class ScanlineOracle {
public:
    ScanlineOracle(const Shape& shape, FillRule rule) : shape_(shape), rule_(rule) {}

    /// Coverage 0..1 of each pixel of row y, from scanlines at the given fractions of the row.
    std::vector<double> row(int y, int width, const std::vector<double>& fractions) const {
        std::vector<double> coverage(static_cast<size_t>(width), 0.0);
        const double weight = 1.0 / static_cast<double>(fractions.size());
        for (double fraction : fractions) addLine(y + fraction, weight, coverage);
        return coverage;
    }

    static std::vector<double> evenFractions(int count) {
        std::vector<double> fractions;
        for (int i = 0; i < count; ++i) fractions.push_back((i + 0.5) / count);
        return fractions;
    }

private:
    struct Crossing {
        double x;
        int direction;
    };

    void addLine(double y, double weight, std::vector<double>& coverage) const {
        std::vector<Crossing> crossings = crossingsAt(y);
        std::sort(crossings.begin(), crossings.end(),
                  [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
        int winding = 0;
        for (size_t i = 0; i + 1 < crossings.size(); ++i) {
            winding += crossings[i].direction;
            const bool inside = rule_ == FillRule::kEvenOdd ? i % 2 == 0 : winding != 0;
            if (inside) addInterval(crossings[i].x, crossings[i + 1].x, weight, coverage);
        }
    }

    std::vector<Crossing> crossingsAt(double y) const {
        std::vector<Crossing> crossings;
        size_t start = 0;
        for (int32_t size : shape_.sizes) {
            for (int32_t i = 0; i < size; ++i) {
                const Point& a = shape_.points[start + static_cast<size_t>(i)];
                const Point& b = shape_.points[start + static_cast<size_t>((i + 1) % size)];
                const double ay = static_cast<double>(a.y), by = static_cast<double>(b.y);
                if ((ay <= y) == (by <= y)) continue;
                const double t = (y - ay) / (by - ay);
                crossings.push_back({a.x + t * (static_cast<double>(b.x) - a.x), ay < by ? 1 : -1});
            }
            start += static_cast<size_t>(size);
        }
        return crossings;
    }

    static void addInterval(double x0, double x1, double weight, std::vector<double>& coverage) {
        for (size_t x = 0; x < coverage.size(); ++x) {
            const double left = std::max(x0, static_cast<double>(x));
            const double right = std::min(x1, static_cast<double>(x + 1));
            if (right > left) coverage[x] += weight * (right - left);
        }
    }

    const Shape& shape_;
    FillRule rule_;
};

}  // namespace vg::raster
