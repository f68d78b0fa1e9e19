#pragma once

#include <cstdint>

namespace tinyxml2 {
class XMLElement;
}

namespace quor {

/// The attributes that are read while the tree is built.
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
    kGradientTransform,
    kGradientUnits,
    kSpreadMethod,
    kOffset,
    kCount,
};

/// The values of an element's known attributes, found in one pass over its attribute list.
/// Points into the element's texts; valid until an attribute of the element changes.
class AttributeTable {
public:
    /// Looks at the element anew.
    void read(const tinyxml2::XMLElement& element) noexcept;

    /// The value, or null when the attribute is absent.
    const char* operator[](AttributeId id) const noexcept { return values_[static_cast<int>(id)]; }

private:
    const char* values_[static_cast<int>(AttributeId::kCount)] = {};
};

}  // namespace quor
