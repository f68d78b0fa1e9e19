#pragma once

#include <cstdint>
#include <string_view>

namespace quor {

/// The attributes that have a meaning here; all others are passed over.
enum class AttributeId : uint8_t {
    kDisplay,
    kVisibility,
    kTransform,
    kFill,
    kFillOpacity,
    kFillRule,
    kStroke,
    kStrokeOpacity,
    kStrokeWidth,
    kStrokeLineCap,
    kStrokeLineJoin,
    kStrokeMiterLimit,
    kStrokeDashOffset,
    kStrokeDashArray,
    kVectorEffect,
    kColor,
    kStopColor,
    kStopOpacity,
    kSolidColor,
    kSolidOpacity,
    kStyle,
    kId,
    kXmlId,
    kHref,
    kX,
    kY,
    kWidth,
    kHeight,
    kViewBox,
    kPreserveAspectRatio,
    kX1,
    kY1,
    kX2,
    kY2,
    kCx,
    kCy,
    kFx,
    kFy,
    kR,
    kRx,
    kRy,
    kPoints,
    kPathData,
    kPathLength,
    kGradientTransform,
    kGradientUnits,
    kSpreadMethod,
    kOffset,
    kCount,
};

inline constexpr int kAttributeCount = static_cast<int>(AttributeId::kCount);

/// The attribute of this exact name; kCount when there is none.
AttributeId findAttributeId(std::string_view name) noexcept;

}  // namespace quor
