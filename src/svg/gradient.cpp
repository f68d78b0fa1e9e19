// Reads the attributes of gradients, stops and `solidColor`, and resolves their colours through
// "inherit" and currentColor.

#include "svg/gradient.h"

#include <algorithm>
#include <initializer_list>
#include <string_view>

#include "base/finite.h"
#include "svg/number.h"
#include "svg/text_cursor.h"
#include "svg/transform_list.h"

namespace quor {

namespace {

/// A length as written; unit kNone when absent or malformed.
SvgLength lengthOf(const char* text) noexcept {
    return text != nullptr ? parseLength(text) : SvgLength();
}

template <class Value>
struct Keyword {
    std::string_view text;
    Value value;
};

/// Stores the value of the keyword that the text begins with. False, with nothing stored, when
/// there is none.
template <class Value>
bool readKeyword(const char* text, std::initializer_list<Keyword<Value>> keywords,
                 Value& value) noexcept {
    if (text == nullptr) return false;
    for (const Keyword<Value>& keyword : keywords) {
        if (!beginsWith(text, keyword.text)) continue;
        value = keyword.value;
        return true;
    }
    return false;
}

/// A number, or a percentage as hundredths, clamped to 0..1.
float parseOffset(const char* text) noexcept {
    TextCursor cursor(text);
    float offset = base::finite(readNumber(cursor));
    if (cursor.take("%")) offset *= 0.01F;
    return std::clamp(offset, 0.0F, 1.0F);
}

float parseOpacity(const char* text) noexcept {
    TextCursor cursor(text);
    return std::clamp(base::finite(readNumber(cursor)), 0.0F, 1.0F);
}

bool isInherit(const char* text) noexcept { return TextCursor(text).beginsWith("inherit"); }

/// The value of the property at the node, "inherit" replaced by what the parent has; null when
/// absent. Clears `isOwn` when the value came from elsewhere.
const char* specifiedValue(const SvgNode& node, AttributeId property, bool& isOwn) noexcept {
    const char* text = node.attribute(property);
    if (text == nullptr || !isInherit(text)) return text;
    isOwn = false;
    return lookupInherited(node.parent(), property);
}

ResolvedColor resolveColor(const SvgNode& node, AttributeId colorProperty,
                           AttributeId opacityProperty) noexcept {
    ResolvedColor resolved;
    resolved.isFinal = true;
    const char* color = specifiedValue(node, colorProperty, resolved.isFinal);
    if (color != nullptr && TextCursor(color).beginsWith("currentColor")) {
        resolved.isFinal = false;
        color = lookupInherited(&node, AttributeId::kColor);
    }
    if (color != nullptr) resolved.color = parseColor(color);
    const char* opacity = specifiedValue(node, opacityProperty, resolved.isFinal);
    resolved.color.alpha = opacity != nullptr ? parseOpacity(opacity) : 1.0F;
    return resolved;
}

}  // namespace

Status SvgGradient::parseAttributes(const AttributeTable& attributes) noexcept {
    parseGeometry(attributes);
    if (const char* transform = attributes[AttributeId::kGradientTransform]) {
        gradientTransform = parseTransformList(transform);
        hasTransform = true;
    }
    hasUnits = readKeyword(attributes[AttributeId::kGradientUnits],
                           {{"userSpaceOnUse", GradientUnits::kUserSpaceOnUse},
                            {"objectBoundingBox", GradientUnits::kObjectBoundingBox}},
                           gradientUnits);
    hasSpreadMethod = readKeyword(attributes[AttributeId::kSpreadMethod],
                                  {{"pad", SpreadMethod::kPad},
                                   {"reflect", SpreadMethod::kReflect},
                                   {"repeat", SpreadMethod::kRepeat}},
                                  spreadMethod);
    href = attributes[AttributeId::kHref];
    return SvgPaintServer::parseAttributes(attributes);
}

void SvgLinearGradient::parseGeometry(const AttributeTable& attributes) noexcept {
    x1 = lengthOf(attributes[AttributeId::kX1]);
    y1 = lengthOf(attributes[AttributeId::kY1]);
    x2 = lengthOf(attributes[AttributeId::kX2]);
    y2 = lengthOf(attributes[AttributeId::kY2]);
}

void SvgRadialGradient::parseGeometry(const AttributeTable& attributes) noexcept {
    cx = lengthOf(attributes[AttributeId::kCx]);
    cy = lengthOf(attributes[AttributeId::kCy]);
    fx = lengthOf(attributes[AttributeId::kFx]);
    fy = lengthOf(attributes[AttributeId::kFy]);
    r = lengthOf(attributes[AttributeId::kR]);
}

Status SvgStop::parseAttributes(const AttributeTable& attributes) noexcept {
    if (const char* text = attributes[AttributeId::kOffset]) offset = parseOffset(text);
    return SvgNode::parseAttributes(attributes);
}

const ResolvedColor& SvgStop::resolvedColor() noexcept {
    if (!resolved_.isFinal)
        resolved_ = resolveColor(*this, AttributeId::kStopColor, AttributeId::kStopOpacity);
    return resolved_;
}

const ResolvedColor& SvgSolidColor::resolvedColor() noexcept {
    if (!resolved_.isFinal)
        resolved_ = resolveColor(*this, AttributeId::kSolidColor, AttributeId::kSolidOpacity);
    return resolved_;
}

}  // namespace quor
