#pragma once

// Colours told slowly: one channel after the other, in doubles, from the bits of a format.

#include <cmath>
#include <cstdint>
#include <vector>

#include "vg/raster/pixels/pixel_format.h"

namespace vg::raster::oracle {

/// The codes of all formats that exist.
inline std::vector<uint32_t> allFormats() {
    std::vector<uint32_t> codes;
    for (uint32_t code = 0; code < 0x100; ++code) {
        if (findPixelFormat(code) != nullptr) codes.push_back(code);
    }
    return codes;
}

struct Color {
    int channel[4];  // red, green, blue, alpha
};

/// The bits of a field written again and again until there are eight.
inline int widen(uint32_t packed, int shift, int bits) {
    int value = 0;
    for (int i = 0; i < 8; ++i) {
        const int bit = bits - 1 - i % bits;
        value = value * 2 + static_cast<int>(packed >> (shift + bit) & 1);
    }
    return value;
}

inline Color unpack(uint32_t packed, const PixelFormatDescriptor& f) {
    if (f.redBits == 0 && f.alphaBits == 0) {
        const int value = widen(packed, 0, f.bitsPerPixel);
        return {{value, value, value, 255}};
    }
    if (f.redBits == 0) return {{255, 255, 255, widen(packed, 0, f.alphaBits)}};
    return {{widen(packed, f.redShift, f.redBits), widen(packed, f.greenShift, f.greenBits),
             widen(packed, f.blueShift, f.blueBits),
             (f.flags & 4) != 0 ? widen(packed, f.alphaShift, f.alphaBits) : 255}};
}

inline int nearest(double value) { return static_cast<int>(std::floor(value + 0.5)); }

inline int toLinear(int byte) {
    const double v = byte / 255.0;
    return nearest(255 * (v <= 0.03928 ? v / 12.92 : std::pow((v + 0.0556) / 1.0556, 2.4)));
}

inline int toStandard(int byte) {
    const double v = byte / 255.0;
    return nearest(255 * (v <= 0.00304 ? 12.92 * v : 1.0556 * std::pow(v, 1.0 / 2.4) - 0.0556));
}

/// By the flags of the two formats.
inline Color convert(Color color, int from, int to) {
    const int alpha = color.channel[3];
    const bool changesSpace = ((from ^ to) & 1) != 0;
    const bool isPremultiplied = (from & 2) != 0;
    const bool shallBePremultiplied = (to & 2) != 0;
    for (int i = 0; i < 3; ++i) {
        int& c = color.channel[i];
        const bool passesPlain = changesSpace || isPremultiplied != shallBePremultiplied;
        if (isPremultiplied && passesPlain) {
            c = alpha == 0
                    ? 0
                    : std::min(255, static_cast<int>(std::floor((c * 255.0 + alpha / 2) / alpha)));
        }
        if (changesSpace) c = (to & 1) != 0 ? toLinear(c) : toStandard(c);
        if (shallBePremultiplied && passesPlain) {
            const double factor = std::floor((alpha * 8388608.0 + 127) / 255);
            c = static_cast<int>(std::floor(c * factor / 8388608.0));
        }
    }
    return color;
}

inline uint32_t pack(const Color& color, const PixelFormatDescriptor& f) {
    const auto field = [](int byte, int bits, int shift) {
        const double full = (1 << bits) - 1;
        return static_cast<uint32_t>(nearest(byte * full / 255.0)) << shift;
    };
    const int* c = color.channel;
    if (f.redBits == 0 && f.alphaBits == 0) {
        const int luminance = nearest((2126 * c[0] + 7152 * c[1] + 722 * c[2]) / 10000.0);
        return field(luminance, f.bitsPerPixel, 0);
    }
    if (f.redBits == 0) return field(c[3], f.alphaBits, 0);
    const int alpha = (f.flags & 4) != 0 ? c[3] : 255;
    return field(c[0], f.redBits, f.redShift) | field(c[1], f.greenBits, f.greenShift) |
           field(c[2], f.blueBits, f.blueShift) | field(alpha, f.alphaBits, f.alphaShift);
}

}  // namespace vg::raster::oracle
