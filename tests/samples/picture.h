#pragma once

#include <cstdint>
#include <string>
#include <vector>

/// A picture: premultiplied 0xAARRGGBB, rows from the top. Empty when a file could not be read.
struct Picture {
    int width = 0;
    int height = 0;
    std::vector<uint32_t> pixels;
};

Picture readPng(const std::string& path);

/// How two pictures of one size differ. Independent renderers smooth edges differently, so a
/// picture is not compared with the other's pixel but with the range of its 3 x 3 neighbourhood.
struct Difference {
    double changed;  ///< share of pixels with a channel more than 32 apart
    double mean;     ///< of all channels, 0..255
    int solid;       ///< pixels more than 32 outside the other's neighbourhood: no edge explains it
    double tint;     ///< share of pixels more than 8 outside it where both are nearly plain: shades
    int count;       ///< of pixels

    /// Whether both show the same drawing. Pictures full of edges or ramps need wider limits.
    bool isWithin(double changedLimit, double meanLimit, double tintLimit) const {
        const int solidLimit = count / 5000 > 4 ? count / 5000 : 4;
        return changed <= changedLimit && mean <= meanLimit && solid <= solidLimit &&
               tint <= tintLimit;
    }
};

/// Precondition: the sizes are equal.
Difference differenceOf(const Picture& a, const Picture& b);
