#include "vg/raster/paint_setup.h"

#include <algorithm>

#include "vg/raster/rasterizer.h"

namespace vg::raster {
namespace {

float clampUnit(float value) noexcept { return std::clamp(value, 0.0F, 1.0F); }

uint32_t toByte(float value) noexcept { return static_cast<uint32_t>(value * 255.0F + 0.5F); }

}  // namespace

uint32_t packPremultiplied(const float rgba[4]) noexcept {
    const float alpha = clampUnit(rgba[3]);
    const auto channel = [&](int i) { return toByte(clampUnit(rgba[i]) * alpha); };
    return toByte(alpha) << 24 | channel(0) << 16 | channel(1) << 8 | channel(2);
}

uint32_t packPaintColor(const PaintParams& paint) noexcept {
    float rgba[4];
    for (int i = 0; i < 4; ++i) {
        rgba[i] = clampUnit(paint.color[i]);
        if (paint.colorTransformEnabled) {
            rgba[i] = clampUnit(rgba[i] * paint.colorTransform[i] + paint.colorTransform[4 + i]);
        }
    }
    return packPremultiplied(rgba);
}

SpanFunctions setupPaint(const PaintParams& paint, int32_t blendMode, SpanContext& span) noexcept {
    if (paint.kind == PaintKind::kColor) {
        span.color = packPaintColor(paint);
        return selectSpanFunctions(blendMode, span.color);
    }
    const GradientParams& gradient = paint.gradient;
    if (setupGradient(paint.kind, gradient, span.gradient) == GradientForm::kLastColor) {
        span.color = gradient.ramp->lastColor;
        return selectSpanFunctions(blendMode, span.color);
    }
    return selectGradientFunctions(blendMode, paint.kind, gradient.spread, gradient.ramp->isOpaque);
}

}  // namespace vg::raster
