#include "vg/context.h"

#include "vg/image/image.h"
#include "vg/paint/paint.h"
#include "vg/path/path.h"

namespace vg {

Path* Context::findPath(VGPath handle) const noexcept {
    return static_cast<Path*>(shared->objects.find(handle, contextId, ObjectKind::kPath));
}

Paint* Context::findPaint(VGPaint handle) const noexcept {
    return static_cast<Paint*>(shared->objects.find(handle, contextId, ObjectKind::kPaint));
}

Image* Context::findImage(VGImage handle) const noexcept {
    return static_cast<Image*>(shared->objects.find(handle, contextId, ObjectKind::kImage));
}

Image* Context::findMaskLayer(VGMaskLayer handle) const noexcept {
    return static_cast<Image*>(shared->objects.find(handle, contextId, ObjectKind::kMaskLayer));
}

const raster::Scissor* Context::scissorFor(int32_t width, int32_t height) noexcept {
    if (scissorChanged || !scissor.isFor(width, height)) {
        scissorChanged = true;  // until it has been rebuilt
        if (!scissor.rebuild(scissorRects.data(), scissorRects.count(), width, height)) {
            return nullptr;
        }
        scissorChanged = false;
    }
    return &scissor;
}

void Context::recoverMemory() noexcept {
    scissorRects.shrinkToFit();
    stroke.dashPattern.shrinkToFit();
    stroke.effectiveDashes.shrinkToFit();
    stroker.shrinkBuffers();
    strokeOutline.shrinkToFit();
    rasterizer.shrinkBuffers();
    scissor.shrinkToFit();
    pixelWork.release();
    coverageWork.pixels.release();
    shared->sparePaths.release();
    shared->objects.releaseCaches();
    for (Paint* paint : {fillPaint, strokePaint}) {  // which may have lost their handles
        if (paint != nullptr) paint->releaseCaches();
    }
}

}  // namespace vg
