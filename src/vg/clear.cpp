#include <algorithm>
#include <cstdint>
#include <limits>

#include "vg/context.h"
#include "vg/raster/rasterizer.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace {

int32_t saturatingSum(int32_t a, int32_t b) noexcept {
    const int64_t sum = int64_t{a} + b;
    return static_cast<int32_t>(std::clamp<int64_t>(sum, std::numeric_limits<int32_t>::min(),
                                                    std::numeric_limits<int32_t>::max()));
}

}  // namespace

void vgClear(VGint x, VGint y, VGint width, VGint height) {
    vg::Context* context = vg::currentPair();
    if (context == nullptr) return;
    if (width < 1 || height < 1) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    const vg::raster::PixelRect rect{x, y, saturatingSum(x, width), saturatingSum(y, height)};
    vg::raster::clearRect(vg::currentSurface()->view(), rect,
                          vg::raster::packPremultiplied(context->clearColor));
}
