#include "picture.h"

#include <png.h>

#include <algorithm>
#include <array>
#include <cstdlib>

namespace {

constexpr int kEdge = 32;  // channel values this far apart are an edge, or an error
constexpr int kTint = 8;   // a shade that is off

using Channels = std::array<int, 4>;

struct Range {
    Channels least, most;
};

Channels channelsAt(const Picture& picture, int x, int y) {
    const uint32_t pixel = picture.pixels[static_cast<size_t>(y * picture.width + x)];
    return {static_cast<int>(pixel >> 24), static_cast<int>(pixel >> 16 & 0xFF),
            static_cast<int>(pixel >> 8 & 0xFF), static_cast<int>(pixel & 0xFF)};
}

/// Of the 3 x 3 neighbourhood, cut off at the picture's border.
Range rangeAround(const Picture& picture, int x, int y) {
    Range range{{255, 255, 255, 255}, {0, 0, 0, 0}};
    for (int v = std::max(y - 1, 0); v <= std::min(y + 1, picture.height - 1); ++v) {
        for (int u = std::max(x - 1, 0); u <= std::min(x + 1, picture.width - 1); ++u) {
            const Channels channels = channelsAt(picture, u, v);
            for (size_t c = 0; c < 4; ++c) {
                range.least[c] = std::min(range.least[c], channels[c]);
                range.most[c] = std::max(range.most[c], channels[c]);
            }
        }
    }
    return range;
}

/// The largest distance of a channel from the range; 0 inside it.
int distanceFrom(const Range& range, const Channels& channels) {
    int distance = 0;
    for (size_t c = 0; c < 4; ++c) {
        distance = std::max({distance, range.least[c] - channels[c], channels[c] - range.most[c]});
    }
    return distance;
}

bool isPlain(const Range& range) {
    for (size_t c = 0; c < 4; ++c) {
        if (range.most[c] - range.least[c] > kEdge) return false;
    }
    return true;
}

}  // namespace

Picture readPng(const std::string& path) {
    png_image image = {};
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) return {};
    image.format = PNG_FORMAT_BGRA;
    std::vector<uint32_t> pixels(size_t{image.width} * image.height);
    if (png_image_finish_read(&image, nullptr, pixels.data(), 0, nullptr) == 0) return {};
    for (uint32_t& pixel : pixels) {
        const uint32_t alpha = pixel >> 24;
        const auto times = [&](int shift) { return ((pixel >> shift & 0xFF) * alpha + 127) / 255; };
        pixel = alpha << 24 | times(16) << 16 | times(8) << 8 | times(0);
    }
    return {static_cast<int>(image.width), static_cast<int>(image.height), std::move(pixels)};
}

Difference differenceOf(const Picture& a, const Picture& b) {
    int64_t sum = 0;
    int changed = 0;
    int solid = 0;
    int tinted = 0;
    for (int y = 0; y < a.height; ++y) {
        for (int x = 0; x < a.width; ++x) {
            const Channels own = channelsAt(a, x, y);
            const Channels other = channelsAt(b, x, y);
            int largest = 0;
            for (size_t c = 0; c < 4; ++c) {
                const int distance = std::abs(own[c] - other[c]);
                sum += distance;
                largest = std::max(largest, distance);
            }
            if (largest <= kTint) continue;
            const Range ownRange = rangeAround(a, x, y);
            const Range otherRange = rangeAround(b, x, y);
            const int outside =
                std::max(distanceFrom(otherRange, own), distanceFrom(ownRange, other));
            if (largest > kEdge) ++changed;
            if (outside > kEdge) ++solid;
            if (outside > kTint && isPlain(ownRange) && isPlain(otherRange)) ++tinted;
        }
    }
    const int count = a.width * a.height;
    return {double{1} * changed / count, static_cast<double>(sum) / (4.0 * count), solid,
            double{1} * tinted / count, count};
}
