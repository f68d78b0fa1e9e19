#pragma once

#include <cstdint>

namespace vg {

/// The engine's settings, read once when a context is created.
struct Configuration {
    float curvesTolerance = 0.0249F;    ///< squared pixels; the value of CURVESQUALITY 90
    int32_t maxCachingBoxWidth = 128;   ///< pixels, 0..4096
    int32_t maxCachingBoxHeight = 128;  ///< pixels, 0..4096
    bool allowVerticalSnapBetter = false;
    bool allowVerticalSnapFaster = true;
    bool allowVerticalSnapNonAntialiased = true;
};

/// The file that every new context reads: "calvanevg.ini" in the system's place for settings.
const char* configurationPath() noexcept;

/// Sets the defaults, then applies the file line by line. A line is a key and a value separated by
/// white space, case-insensitive; anything else is ignored. False, with the defaults in force,
/// when the path is null or the file does not open.
bool readConfiguration(Configuration& configuration, const char* path) noexcept;

}  // namespace vg
