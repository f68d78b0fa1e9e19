// The engine paint of a solidColor element.

#include "svg/engine_error.h"
#include "svg/gradient.h"

namespace quor {

Status SvgSolidColor::buildPaint(Traversal& /*traversal*/, SvgShape& /*shape*/, bool forFill,
                                 bool& isUsable) noexcept {
    isUsable = false;
    if (paint_ == VG_INVALID_HANDLE) paint_ = vgCreatePaint();
    if (paint_ == VG_INVALID_HANDLE) return takeEngineError();
    const SvgColor& color = resolvedColor().color;
    const VGfloat rgba[4] = {color.red, color.green, color.blue, color.alpha};
    vgSetParameterfv(paint_, VG_PAINT_COLOR, 4, rgba);
    vgSetPaint(paint_, forFill ? VG_FILL_PATH : VG_STROKE_PATH);
    isUsable = true;
    return Status::kOk;
}

}  // namespace quor
