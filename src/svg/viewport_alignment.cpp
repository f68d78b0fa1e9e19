// Reads `preserveAspectRatio` and fits one rectangle into another as it says.

#include "svg/viewport_alignment.h"

#include <algorithm>

#include "base/finite.h"
#include "svg/text_cursor.h"

namespace quor {

namespace {

constexpr uint8_t kAlignNone = 0;
constexpr uint8_t kSlice = 1;

/// Where the picture goes along one axis when it is smaller or larger than its place.
enum Position { kMin = 0, kMid = 1, kMax = 2 };

bool takePosition(TextCursor& cursor, int& position) noexcept {
    if (cursor.take("Min")) {
        position = kMin;
    } else if (cursor.take("Mid")) {
        position = kMid;
    } else if (cursor.take("Max")) {
        position = kMax;
    } else {
        return false;
    }
    return true;
}

bool takeAlign(TextCursor& cursor, uint8_t& align) noexcept {
    if (cursor.take("none")) {
        align = kAlignNone;
        return true;
    }
    int column = kMin;
    int row = kMin;
    if (!cursor.take("x") || !takePosition(cursor, column)) return false;
    if (!cursor.take("Y") || !takePosition(cursor, row)) return false;
    align = static_cast<uint8_t>(1 + column + 3 * row);
    return true;
}

float offsetAt(int position, float room) noexcept {
    if (position == kMid) return room * 0.5F;
    return position == kMax ? room : 0.0F;
}

}  // namespace

ViewportAlignment parsePreserveAspectRatio(const char* text) noexcept {
    ViewportAlignment alignment;
    if (text == nullptr) return alignment;
    TextCursor cursor(text);
    cursor.skipSpaces();
    if (cursor.take("defer")) cursor.skipSpaces();
    if (!takeAlign(cursor, alignment.align)) return alignment;
    cursor.skipSpaces();
    if (cursor.beginsWith("slice")) alignment.meetOrSlice = kSlice;
    return alignment;
}

SvgMatrix viewportMapping(const Rect& shown, const Rect& target,
                          ViewportAlignment alignment) noexcept {
    const bool nothingShown = shown.isDegenerate();
    float sx = nothingShown ? 0.0F : target.width / shown.width;
    float sy = nothingShown ? 0.0F : target.height / shown.height;
    const float fitted = alignment.meetOrSlice == kSlice ? std::max(sx, sy) : std::min(sx, sy);

    float tx = 0.0F;
    float ty = 0.0F;
    if (alignment.align != kAlignNone) {
        const int cell = alignment.align - 1;
        tx = offsetAt(cell % 3, target.width - shown.width * fitted);
        ty = offsetAt(cell / 3, target.height - shown.height * fitted);
        sx = sy = fitted;
    }

    SvgMatrix mapping;
    mapping.m00 = base::finite(sx);
    mapping.m02 = base::finite(target.x + tx - shown.x * sx);
    mapping.m11 = base::finite(sy);
    mapping.m12 = base::finite(target.y + ty - shown.y * sy);
    mapping.kind = sx == sy ? SvgMatrix::kAnglePreserving : SvgMatrix::kGeneral;
    return mapping;
}

}  // namespace quor
