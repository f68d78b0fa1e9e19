#include "api/document.h"
#include "api/draw_state.h"
#include "svg/engine_error.h"
#include "vg/vg.h"

namespace quor {

namespace {

struct IntegerSetting {
    VGParamType parameter;
    VGint value;
};

// What every draw starts from. The stroke values and the fill rule are those of the style at the
// bottom of the style stack, in the engine's terms.
constexpr IntegerSetting kIntegerSettings[] = {
    {VG_MASKING, VG_FALSE},
    {VG_STROKE_DASH_PHASE_RESET, VG_TRUE},
    {VG_BLEND_MODE, VG_BLEND_SRC_OVER},
    {VG_IMAGE_QUALITY, VG_IMAGE_QUALITY_BETTER},
    {VG_COLOR_TRANSFORM, VG_FALSE},
    {VG_STROKE_CAP_STYLE, VG_CAP_BUTT},
    {VG_STROKE_JOIN_STYLE, VG_JOIN_MITER},
    {VG_FILL_RULE, VG_NON_ZERO},
};

struct FloatSetting {
    VGParamType parameter;
    VGfloat value;
};

constexpr FloatSetting kFloatSettings[] = {
    {VG_STROKE_LINE_WIDTH, 1.0F},
    {VG_STROKE_MITER_LIMIT, 4.0F},
    {VG_STROKE_DASH_PHASE, 0.0F},
};

VGint engineQuality(RenderingQuality quality) noexcept {
    switch (quality) {
        case RenderingQuality::kNonAntialiased:
            return VG_RENDERING_QUALITY_NONANTIALIASED;
        case RenderingQuality::kFaster:
            return VG_RENDERING_QUALITY_FASTER;
        case RenderingQuality::kBetter:
            break;
    }
    return VG_RENDERING_QUALITY_BETTER;
}

}  // namespace

void setDrawState(RenderingQuality quality) noexcept {
    vgSeti(VG_RENDERING_QUALITY, engineQuality(quality));
    for (const IntegerSetting& setting : kIntegerSettings) vgSeti(setting.parameter, setting.value);
    for (const FloatSetting& setting : kFloatSettings) vgSetf(setting.parameter, setting.value);
    vgSetfv(VG_STROKE_DASH_PATTERN, 0, nullptr);
    vgSetPaint(VG_INVALID_HANDLE, VG_STROKE_PATH);
}

SvgMatrix surfaceFlip(uint32_t surfaceHeight) noexcept {
    SvgMatrix matrix;
    matrix.m11 = -1.0F;
    matrix.m12 = static_cast<float>(surfaceHeight);
    matrix.kind = SvgMatrix::kAnglePreserving;
    return matrix;
}

Status Document::draw(const DrawingSurface& surface, RenderingQuality quality) noexcept {
    if (viewport.isDegenerate()) return Status::kOk;
    const SvgMatrix base = surfaceFlip(surface.height()) * surface.transformMatrix();
    if (const Status status = traversal_.begin(base); status != Status::kOk) return status;
    setDrawState(quality);
    root_->setOutermostMapping(viewportMapping(viewport, surface.viewport, alignment));
    const Status status = root_->draw(traversal_);
    const Status pending = takeEngineError();
    return status != Status::kOk ? status : pending;
}

}  // namespace quor
