#pragma once

#include <cstdint>

#include "svg/paint_value.h"

namespace quor {

// Keywords of one effect share a value: every `display` but "none" shows the element, and
// "collapse" hides as "hidden" does.
enum class SvgDisplay : uint8_t { kShown, kNone, kInherit };
enum class SvgVisibility : uint8_t { kVisible, kHidden, kInherit };
enum class SvgFillRule : uint8_t { kInherit = 0, kEvenOdd = 1, kNonZero = 2 };
enum class SvgLineCap : uint8_t { kInherit = 0, kButt = 1, kRound = 2, kSquare = 3 };
enum class SvgLineJoin : uint8_t { kInherit = 0, kMiter = 1, kRound = 2, kBevel = 3 };
enum class SvgVectorEffect : uint8_t { kInherit = 0, kNone = 1, kNonScalingStroke = 2 };

/// Bits of SvgStyle::setMask, one a property.
namespace StyleBit {
inline constexpr uint32_t kDisplay = 0x0001;
inline constexpr uint32_t kVisibility = 0x0002;
inline constexpr uint32_t kFill = 0x0004;
inline constexpr uint32_t kFillOpacity = 0x0008;
inline constexpr uint32_t kFillRule = 0x0010;
inline constexpr uint32_t kStroke = 0x0020;
inline constexpr uint32_t kStrokeWidth = 0x0040;
inline constexpr uint32_t kStrokeLineCap = 0x0080;
inline constexpr uint32_t kStrokeLineJoin = 0x0100;
inline constexpr uint32_t kStrokeMiterLimit = 0x0200;
inline constexpr uint32_t kStrokeDashArray = 0x0400;
inline constexpr uint32_t kStrokeDashOffset = 0x0800;
inline constexpr uint32_t kStrokeOpacity = 0x1000;
inline constexpr uint32_t kVectorEffect = 0x2000;
inline constexpr uint32_t kAll = 0x3FFF;
}  // namespace StyleBit

/// A dash list; the node whose attribute it came from owns the values, so that styles can be
/// copied without allocating. Count -1 means inherit.
struct DashList {
    const float* values = nullptr;
    int32_t count = 0;
};

/// Presentation properties: those that a node specifies (bits of setMask tell which), or the
/// computed ones of a node being drawn (all bits set). -1 stands for inherit in the floats.
struct SvgStyle {
    uint32_t setMask = StyleBit::kDisplay;
    SvgDisplay display = SvgDisplay::kShown;
    SvgVisibility visibility = SvgVisibility::kInherit;
    SvgPaint fill;
    float fillOpacity = -1.0F;
    SvgFillRule fillRule = SvgFillRule::kInherit;
    SvgPaint stroke;
    float strokeWidth = -1.0F;
    SvgLineCap strokeLineCap = SvgLineCap::kInherit;
    SvgLineJoin strokeLineJoin = SvgLineJoin::kInherit;
    float strokeMiterLimit = -1.0F;
    DashList strokeDashArray;
    float strokeDashOffset = 0.0F;
    float strokeOpacity = -1.0F;
    SvgVectorEffect vectorEffect = SvgVectorEffect::kInherit;

    /// The initial values of all properties, all bits set.
    static SvgStyle initial() noexcept;
};

/// Overwrites each property of `inherited` that `specified` sets. Returns the mask of those.
uint32_t combine(const SvgStyle& specified, SvgStyle& inherited) noexcept;

}  // namespace quor
