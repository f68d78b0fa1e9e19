#include "svg/length.h"

#include "svg/number.h"

namespace quor {
namespace {

constexpr int pairOf(char first, char second) noexcept {
    return static_cast<unsigned char>(first) << 8 | static_cast<unsigned char>(second);
}

constexpr bool beginsUnit(char c) noexcept {
    return c == 'c' || c == 'e' || c == 'i' || c == 'm' || c == 'p';
}

/// kNone for two letters that are no unit.
LengthUnit unitOf(char first, char second) noexcept {
    switch (pairOf(first, second)) {
        case pairOf('p', 'x'):
            return LengthUnit::kUser;
        case pairOf('p', 't'):
            return LengthUnit::kPoint;
        case pairOf('p', 'c'):
            return LengthUnit::kPica;
        case pairOf('m', 'm'):
            return LengthUnit::kMillimetre;
        case pairOf('c', 'm'):
            return LengthUnit::kCentimetre;
        case pairOf('i', 'n'):
            return LengthUnit::kInch;
        case pairOf('e', 'm'):
            return LengthUnit::kEm;
        case pairOf('e', 'x'):
            return LengthUnit::kEx;
        default:
            return LengthUnit::kNone;
    }
}

/// Consumes the suffix. kNone, nothing consumed, for one that only begins like a unit.
LengthUnit readUnit(TextCursor& cursor) noexcept {
    if (cursor.take("%")) return LengthUnit::kPercent;
    if (!beginsUnit(*cursor.at)) return LengthUnit::kUser;
    const LengthUnit unit = unitOf(cursor.at[0], cursor.at[1]);
    if (unit != LengthUnit::kNone) cursor.at += 2;
    return unit;
}

float extentOf(const Rect& viewport, LengthAxis axis) noexcept {
    switch (axis) {
        case LengthAxis::kHorizontal:
            return viewport.width;
        case LengthAxis::kVertical:
            return viewport.height;
        case LengthAxis::kDiagonal:
            break;
    }
    return viewport.diagonal;
}

float resolvePercent(float value, const Rect* viewport, LengthAxis axis) noexcept {
    const float fraction = value * 0.01F;
    if (viewport == nullptr || !viewport->isSet()) return fraction;
    return fraction * extentOf(*viewport, axis);
}

float resolveUnit(const SvgLength& length, float dpi, const Rect* viewport,
                  LengthAxis axis) noexcept {
    switch (length.unit) {
        case LengthUnit::kUser:
            return length.value;
        case LengthUnit::kPercent:
            return resolvePercent(length.value, viewport, axis);
        case LengthUnit::kPoint:
            return dpi * length.value * 0.013888889F;
        case LengthUnit::kPica:
            return length.value * 12.0F * dpi * 0.013888889F;
        case LengthUnit::kMillimetre:
            return dpi * length.value * 0.03937008F;
        case LengthUnit::kCentimetre:
            return dpi * length.value * 0.39370078F;
        case LengthUnit::kInch:
            return dpi * length.value;
        case LengthUnit::kEm:
        case LengthUnit::kEx:
        case LengthUnit::kNone:
            break;
    }
    return 0.0F;
}

}  // namespace

void readLength(TextCursor& cursor, SvgLength& length) noexcept {
    const float value = readNumber(cursor);
    cursor.skipSpaces();
    const LengthUnit unit = readUnit(cursor);
    if (unit != LengthUnit::kNone) length = {value, unit};
}

SvgLength parseLength(const char* text) noexcept {
    TextCursor cursor(text);
    SvgLength length;
    readLength(cursor, length);
    return length;
}

float resolveLength(const SvgLength& length, float dpi, const Rect* viewport,
                    LengthAxis axis) noexcept {
    return base::finite(resolveUnit(length, dpi, viewport, axis));
}

}  // namespace quor
