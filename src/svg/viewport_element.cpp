// The `svg` element: its size and viewBox, and its map into the coordinates outside it.

#include "base/finite.h"
#include "svg/containers.h"
#include "svg/number.h"
#include "svg/tree_resources.h"

namespace quor {

namespace {

// The misspelling is kept for programs that look for this text.
constexpr char kNoSizeWarning[] =
    "<svg> element didn't define 'viewBox' attribute nor 'widht' and 'height' attributes";

/// Reads over the length; absent or malformed text leaves it. Returns whether there is a text.
bool readLengthAttribute(const char* text, SvgLength& length) noexcept {
    if (text == nullptr) return false;
    TextCursor cursor(text);
    readLength(cursor, length);
    return true;
}

/// Four numbers; anything less, "none" included, is a rectangle of zeros.
Rect parseViewBox(const char* text) noexcept {
    float values[4];
    TextCursor cursor(text);
    cursor.skipSpaces();
    for (float& value : values) {
        const char* before = cursor.at;
        value = base::finite(readNumber(cursor));
        if (cursor.at == before) {
            for (float& each : values) each = 0.0F;
            break;
        }
        cursor.skipCommasAndSpaces();
    }
    Rect viewBox;
    viewBox.set(values[0], values[1], values[2], values[3]);
    return viewBox;
}

}  // namespace

Status SvgSvg::parseAttributes(const AttributeTable& attributes) noexcept {
    readLengthAttribute(attributes[AttributeId::kX], x);
    readLengthAttribute(attributes[AttributeId::kY], y);
    hasWidth = readLengthAttribute(attributes[AttributeId::kWidth], width);
    hasHeight = readLengthAttribute(attributes[AttributeId::kHeight], height);
    const char* viewBox = attributes[AttributeId::kViewBox];
    hasViewBox = viewBox != nullptr;
    alignment = parsePreserveAspectRatio(attributes[AttributeId::kPreserveAspectRatio]);

    if (hasViewBox) {
        viewport_ = parseViewBox(viewBox);
    } else if (hasWidth && hasHeight) {
        viewport_ = placeIn(resources_.initialViewport);
        viewport_.x = viewport_.y = 0.0F;
    } else {
        resources_.screen.log(kNoSizeWarning);
    }
    return SvgNode::parseAttributes(attributes);
}

Rect SvgSvg::placeIn(const Rect& outer) const noexcept {
    const float dpi = resources_.screen.dpi;
    const auto resolve = [&](const SvgLength& length, LengthAxis axis) {
        return base::finite(resolveLength(length, dpi, &outer, axis));
    };
    Rect place;
    place.set(resolve(x, LengthAxis::kHorizontal), resolve(y, LengthAxis::kVertical),
              resolve(width, LengthAxis::kHorizontal), resolve(height, LengthAxis::kVertical));
    return place;
}

bool SvgSvg::ownMapping(SvgMatrix& mapping) const noexcept {
    if (isOutermost_) {
        mapping = outermostMapping_;
        return true;
    }
    const Rect place =
        placeIn(parent_ != nullptr ? parent_->lengthViewport() : resources_.initialViewport);
    if (place.isDegenerate()) return false;
    if (!hasViewBox) {
        mapping = SvgMatrix::translation(place.x, place.y);
        return true;
    }
    if (viewport_.isDegenerate()) return false;
    mapping = viewportMapping(viewport_, place, alignment);
    return true;
}

}  // namespace quor
