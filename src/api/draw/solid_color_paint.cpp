#include "api/draw/solid_color_paint.h"

#include <cassert>

#include "svg/engine_error.h"

namespace quor {

Status prepareSolidColorPaint(SvgSolidColor& server, EnginePaint& paint) noexcept {
    assert(paint.handle == VG_INVALID_HANDLE);
    VGPaint& enginePaint = server.enginePaint;
    if (enginePaint == VG_INVALID_HANDLE) enginePaint = vgCreatePaint();
    if (enginePaint == VG_INVALID_HANDLE) return takeEngineError();
    const SvgColor& color = server.resolvedColor().color;
    const VGfloat rgba[4] = {color.red, color.green, color.blue, color.alpha};
    vgSetParameterfv(enginePaint, VG_PAINT_COLOR, 4, rgba);
    paint.handle = enginePaint;
    return Status::kOk;
}

}  // namespace quor
