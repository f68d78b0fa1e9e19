// What draws on the current surface: clears, paths, images.

#include "vg/context.h"
#include "vg/draw/clear.h"
#include "vg/draw/draw_image.h"
#include "vg/draw/draw_path.h"
#include "vg/entry/image_checks.h"
#include "vg/entry/path_checks.h"
#include "vg/vg.h"

void vgClear(VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    if (width < 1 || height < 1) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    if (vg::clear(*context, *vg::currentSurface(), vg::pixelRect(x, y, width, height))) return;
    context->recoverMemory();
    context->raise(VG_OUT_OF_MEMORY_ERROR);
}

void vgDrawPath(VGPath handle, VGbitfield paintModes) {
    vg::Context* context = vg::currentContext();
    vg::Path* path = context != nullptr ? vg::findOrRaise(*context, handle) : nullptr;
    if (path == nullptr) return;
    constexpr VGbitfield kModes = VG_STROKE_PATH | VG_FILL_PATH;
    if (paintModes == 0 || (paintModes & ~kModes) != 0) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    vg::DrawProgress progress;
    vg::doOrRaise(*context, [&] {
        return vg::drawPath(*context, *vg::currentSurface(), *path, paintModes, progress);
    });
}

void vgDrawImage(VGImage handle) {
    vg::Context* context = vg::currentContext();
    vg::Image* image = context != nullptr ? vg::findImageOrRaise(*context, handle) : nullptr;
    if (image == nullptr) return;
    vg::doOrRaise(*context, [&] { return vg::drawImage(*context, *vg::currentSurface(), *image); });
}
