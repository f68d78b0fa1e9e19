#pragma once

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

#include "vg/raster/coverage/coverage_row.h"
#include "vg/raster/rasterizer.h"

namespace vg::raster {

/// A picture of `width` x `height` pixels in memory order, top row first.
struct Picture {
    Picture(int pictureWidth, int pictureHeight, uint32_t background = 0)
        : width(pictureWidth),
          height(pictureHeight),
          pixels(static_cast<size_t>(pictureWidth) * static_cast<size_t>(pictureHeight),
                 background) {}

    PixelSurface surface() { return {pixels.data(), width, height}; }
    /// Pixel (x, y) with y upwards.
    uint32_t at(int x, int y) const {
        return pixels[static_cast<size_t>((height - 1 - y) * width + x)];
    }
    int alphaAt(int x, int y) const { return static_cast<int>(at(x, y) >> 24); }

    int width, height;
    std::vector<uint32_t> pixels;
};

/// Changes the coverage at a column.
inline void addChange(CoverageRow& row, int32_t column, uint32_t change) {
    if (change == 0) return;
    row.add(column, change);
    row.touch(column * kSubpixels, column * kSubpixels);
}

inline bool isClean(CoverageRow& row) {
    const RowCells all = row.view();
    return std::all_of(all.view.cells, all.view.cells + 8 * all.groupCount,
                       [](uint32_t cell) { return cell == 0; }) &&
           std::all_of(all.view.touched, all.view.touched + all.groupCount,
                       [](uint8_t entry) { return entry == 0; });
}

/// Contours of points, in the order the rasterizer takes them.
struct Shape {
    std::vector<Point> points;
    std::vector<int32_t> sizes;

    void add(const std::vector<Point>& contour) {
        points.insert(points.end(), contour.begin(), contour.end());
        sizes.push_back(static_cast<int32_t>(contour.size()));
    }
    Polygon view() const {
        return {points.data(), static_cast<int32_t>(points.size()), sizes.data(),
                static_cast<int32_t>(sizes.size())};
    }
};

inline Shape rectangle(float x0, float y0, float x1, float y1) {
    Shape shape;
    shape.add({{x0, y0}, {x1, y0}, {x1, y1}, {x0, y1}});
    return shape;
}

/// Opaque white, or what the caller makes of it, over the whole picture.
inline FillParams paramsFor(const Shape& shape, Picture& picture,
                            Quality quality = Quality::kBetter,
                            FillRule rule = FillRule::kNonZero) {
    FillParams params;
    params.polygon = shape.view();
    params.fillRule = rule;
    params.quality = quality;
    params.surface = picture.surface();
    params.clip = {0, 0, picture.width, picture.height};
    for (float& component : params.paint.color) component = 1.0F;
    return params;
}

inline bool fill(const Shape& shape, Picture& picture, Quality quality = Quality::kBetter,
                 FillRule rule = FillRule::kNonZero) {
    Rasterizer rasterizer;
    return rasterizer.fill(paramsFor(shape, picture, quality, rule));
}

inline Shape randomShape(std::mt19937& random, int contours, int points, float low, float high) {
    std::uniform_real_distribution<float> coordinate(low, high);
    Shape shape;
    for (int i = 0; i < contours; ++i) {
        std::vector<Point> contour;
        for (int k = 0; k < points; ++k)
            contour.push_back({coordinate(random), coordinate(random)});
        shape.add(contour);
    }
    return shape;
}

/// A polygon that does not cross itself: points at rising angles around the centre.
inline Shape simpleShape(std::mt19937& random, int points, float size) {
    std::uniform_real_distribution<float> radius(0.1F, 0.5F);
    std::vector<Point> contour;
    for (int i = 0; i < points; ++i) {
        const float angle = 6.2831853F * static_cast<float>(i) / static_cast<float>(points);
        const float r = radius(random);
        contour.push_back(
            {size * (0.5F + r * std::cos(angle)), size * (0.5F + r * std::sin(angle))});
    }
    Shape shape;
    shape.add(contour);
    return shape;
}

inline constexpr Quality kQualities[] = {Quality::kNonAntialiased, Quality::kFaster,
                                         Quality::kBetter};
inline constexpr FillRule kFillRules[] = {FillRule::kEvenOdd, FillRule::kNonZero};

}  // namespace vg::raster
