// The rasterizer's enumerations repeat the numbers of vg.h, which it does not include, and settings
// are cast from the one to the other: here both are in sight.

#include "vg/raster/fill_params.h"
#include "vg/raster/pixels/blend_modes.h"
#include "vg/raster/pixels/pixel_format.h"
#include "vg/vg.h"

namespace vg::raster {
namespace {

template <class Value>
constexpr bool is(Value value, VGint number) noexcept {
    return static_cast<VGint>(value) == number;
}

static_assert(is(FillRule::kEvenOdd, VG_EVEN_ODD) && is(FillRule::kNonZero, VG_NON_ZERO));

static_assert(is(Quality::kNonAntialiased, VG_RENDERING_QUALITY_NONANTIALIASED) &&
              is(Quality::kFaster, VG_RENDERING_QUALITY_FASTER) &&
              is(Quality::kBetter, VG_RENDERING_QUALITY_BETTER));

static_assert(is(Spread::kPad, VG_COLOR_RAMP_SPREAD_PAD) &&
              is(Spread::kRepeat, VG_COLOR_RAMP_SPREAD_REPEAT) &&
              is(Spread::kReflect, VG_COLOR_RAMP_SPREAD_REFLECT));

static_assert(is(TilingMode::kFill, VG_TILE_FILL) && is(TilingMode::kPad, VG_TILE_PAD) &&
              is(TilingMode::kRepeat, VG_TILE_REPEAT) && is(TilingMode::kReflect, VG_TILE_REFLECT));

static_assert(is(TextureQuality::kNearest, VG_IMAGE_QUALITY_NONANTIALIASED) &&
              is(TextureQuality::kBilinear, VG_IMAGE_QUALITY_FASTER) &&
              is(TextureQuality::kBetter, VG_IMAGE_QUALITY_BETTER));

static_assert(is(ImageMode::kNormal, VG_DRAW_IMAGE_NORMAL) &&
              is(ImageMode::kMultiply, VG_DRAW_IMAGE_MULTIPLY) &&
              is(ImageMode::kStencil, VG_DRAW_IMAGE_STENCIL));

static_assert(blendColumnOf(VG_BLEND_SRC) == 0 && blendColumnOf(VG_BLEND_SRC_OVER) == 1 &&
              blendColumnOf(VG_BLEND_LAST_KRN) == kBlendColumnCount - 1);

static_assert(is(PixelSurface{}.format, VG_sARGB_8888_PRE) && VG_sARGB_8888 == 0x41 &&
              VG_lARGB_8888 == 0x48 && VG_lARGB_8888_PRE == 0x49);

}  // namespace
}  // namespace vg::raster
