// From the parameters of a fill to its span functions: the source is made ready in the form and
// colour space of the surface, then the functions are selected.

#include "vg/raster/paint_setup.h"

#include "vg/raster/paint/color_ramp.h"
#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/pixels/linear_curve.h"
#include "vg/raster/pixels/pixel_format.h"
#include "vg/raster/pixels/pixel_io.h"
#include "vg/raster/span/general_span.h"
#include "vg/raster/span/span_selection.h"

namespace vg::raster {
namespace {

bool hasFlag(uint32_t surfaceFormat, int32_t flag) noexcept {
    return (findPixelFormat(surfaceFormat)->flags & flag) != 0;
}

bool combinesImage(ImageMode mode) noexcept {
    return mode == ImageMode::kMultiply || mode == ImageMode::kStencil;
}

/// Sets up one draw, choice by choice.
class Setup {
public:
    Setup(const FillParams& params, SpanContext& span) noexcept
        : params_(params),
          span_(span),
          format_(params.surface.format),
          isPremultiplied_(takesPremultipliedPaint(format_, params.imageMode)),
          form_(isPremultiplied_ ? TextureForm::kPremultiplied : TextureForm::kPlain) {
        choice_.blendMode = params.blendMode;
        choice_.isMasked = params.mask != nullptr;
        choice_.isPremultiplied = hasFlag(format_, kPremultiplied);
        span.mask = params.mask;
    }

    SpanFunctions functions() noexcept {
        if (blendColumnOf(params_.blendMode) == kNoBlendColumn) return {};
        setupSource();
        span_.paint = choice_.paint;
        if (!combinesImage(params_.imageMode) && hasOwnSpanFunctions(choice_)) {
            return selectSpanFunctions(choice_);
        }
        setupGeneral();
        return generalSpanFunctions();
    }

private:
    /// What is blended, image modes aside.
    void setupSource() noexcept {
        if (params_.blendMode == kBlendClear) {
            setColor(0);
        } else if (params_.imageMode == ImageMode::kNormal) {
            setPattern(params_.image);
        } else if (params_.paint.kind == PaintKind::kColor) {
            setColor(packPaintColor(params_.paint, hasFlag(format_, kLinear), isPremultiplied_));
        } else if (params_.paint.kind == PaintKind::kPattern) {
            setPattern(params_.paint.pattern);
        } else {
            setGradient();
        }
    }

    void setColor(uint32_t color) noexcept {
        span_.color = choice_.color = color;
        choice_.paint = PaintKind::kColor;
        choice_.isOpaque = alphaOf(color) == 255;
    }

    void setGradient() noexcept {
        const GradientParams& gradient = params_.paint.gradient;
        const PaintKind kind = params_.paint.kind;
        if (setupGradient(kind, gradient, span_.gradient) == GradientForm::kLastColor) {
            return setColor(gradient.ramp->lastColor);
        }
        choice_.paint = kind;
        choice_.isOpaque = gradient.ramp->isOpaque;
    }

    void setPattern(const TextureParams& texture) noexcept {
        choice_.paint = PaintKind::kPattern;
        setupTexture(texture, format_, form_, span_.pattern);
        choice_.isDirectCopy = isDirectCopy(texture, format_);
        if (choice_.isDirectCopy) span_.direct = directTexelOf(texture);
    }

    void setupGeneral() noexcept {
        GeneralBlend& general = span_.general;
        general.isPremultiplied = choice_.isPremultiplied;
        general.blend = blendOperator(blendColumnOf(params_.blendMode));
        if (params_.blendMode == kBlendClear || !combinesImage(params_.imageMode)) return;
        general.imageMode = params_.imageMode;
        const bool isProduct = params_.imageMode == ImageMode::kMultiply;
        setupTexture(params_.image, format_,
                     isProduct ? TextureForm::kPlain : TextureForm::kPremultiplied, general.image);
        general.transformsProduct = isProduct && general.image.isTransformed;
        if (isProduct) general.image.isTransformed = false;
    }

    const FillParams& params_;
    SpanContext& span_;
    uint32_t format_;
    bool isPremultiplied_;
    TextureForm form_;
    SpanChoice choice_;
};

}  // namespace

bool takesPremultipliedPaint(uint32_t surfaceFormat, ImageMode imageMode) noexcept {
    return hasFlag(surfaceFormat, kPremultiplied) && !combinesImage(imageMode);
}

uint32_t packPaintColor(const PaintParams& paint, bool isLinear, bool isPremultiplied) noexcept {
    float rgba[4];
    for (int i = 0; i < 4; ++i) {
        rgba[i] = clampUnit(paint.color[i]);
        if (paint.colorTransformEnabled) {
            rgba[i] = clampUnit(rgba[i] * paint.colorTransform[i] + paint.colorTransform[4 + i]);
        }
        if (isLinear && i < 3) rgba[i] = linearOfSrgb(rgba[i]);
    }
    return isPremultiplied ? packPremultiplied(rgba) : packPlain(rgba);
}

SpanFunctions setupPaint(const FillParams& params, SpanContext& span) noexcept {
    return Setup(params, span).functions();
}

}  // namespace vg::raster
