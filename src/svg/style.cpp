#include "svg/style.h"

namespace quor {

SvgStyle SvgStyle::initial() noexcept {
    SvgStyle style;
    style.setMask = StyleBit::kAll;
    style.visibility = SvgVisibility::kVisible;
    style.fill.type = PaintType::kColor;  // opaque black
    style.fillOpacity = 1.0F;
    style.fillRule = SvgFillRule::kNonZero;
    style.stroke.type = PaintType::kNone;
    style.strokeWidth = 1.0F;
    style.strokeLineCap = SvgLineCap::kButt;
    style.strokeLineJoin = SvgLineJoin::kMiter;
    style.strokeMiterLimit = 4.0F;
    style.strokeOpacity = 1.0F;
    style.vectorEffect = SvgVectorEffect::kNone;
    return style;
}

uint32_t combine(const SvgStyle& specified, SvgStyle& inherited) noexcept {
    const auto overwrite = [&](uint32_t bit, auto SvgStyle::*property) {
        if ((specified.setMask & bit) != 0) inherited.*property = specified.*property;
    };
    overwrite(StyleBit::kDisplay, &SvgStyle::display);
    overwrite(StyleBit::kVisibility, &SvgStyle::visibility);
    overwrite(StyleBit::kFill, &SvgStyle::fill);
    overwrite(StyleBit::kFillOpacity, &SvgStyle::fillOpacity);
    overwrite(StyleBit::kFillRule, &SvgStyle::fillRule);
    overwrite(StyleBit::kStroke, &SvgStyle::stroke);
    overwrite(StyleBit::kStrokeWidth, &SvgStyle::strokeWidth);
    overwrite(StyleBit::kStrokeLineCap, &SvgStyle::strokeLineCap);
    overwrite(StyleBit::kStrokeLineJoin, &SvgStyle::strokeLineJoin);
    overwrite(StyleBit::kStrokeMiterLimit, &SvgStyle::strokeMiterLimit);
    overwrite(StyleBit::kStrokeDashArray, &SvgStyle::strokeDashArray);
    overwrite(StyleBit::kStrokeDashOffset, &SvgStyle::strokeDashOffset);
    overwrite(StyleBit::kStrokeOpacity, &SvgStyle::strokeOpacity);
    overwrite(StyleBit::kVectorEffect, &SvgStyle::vectorEffect);
    return specified.setMask & StyleBit::kAll;
}

}  // namespace quor
