#pragma once

#include <cstdint>

#include "svg/rect.h"
#include "svg/text_cursor.h"

namespace quor {

enum class LengthUnit : uint8_t {
    kNone = 0,  ///< a fresh length: resolves to 0
    kEm = 1,
    kEx = 2,
    kUser = 3,  ///< "px" or no suffix
    kPercent = 4,
    kPoint = 5,
    kPica = 6,
    kMillimetre = 7,
    kCentimetre = 8,
    kInch = 9,
};

enum class LengthAxis { kHorizontal = 0, kVertical = 1, kDiagonal = 2 };

/// A number with its unit, as written.
struct SvgLength {
    float value = 0.0F;
    LengthUnit unit = LengthUnit::kNone;

    /// Percent, em, ex and a value that does not parse as a length.
    bool isRelative() const noexcept {
        return unit == LengthUnit::kNone || unit == LengthUnit::kEm || unit == LengthUnit::kEx ||
               unit == LengthUnit::kPercent;
    }
};

/// Reads a length; one whose unit begins like a known one but is not leaves `length` unchanged.
void readLength(TextCursor& cursor, SvgLength& length) noexcept;
SvgLength parseLength(const char* text) noexcept;

/// The length in user units. Without a viewport a percentage is a plain hundredth.
float resolveLength(const SvgLength& length, float dpi, const Rect* viewport,
                    LengthAxis axis) noexcept;

}  // namespace quor
