#pragma once

#include <cstdint>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/paint/gradient_params.h"
#include "vg/raster/paint/gradient_state.h"
#include "vg/raster/paint/texture_params.h"
#include "vg/raster/paint/texture_state.h"
#include "vg/raster/pixels/pixel_surface.h"

namespace vg::raster {

/// A blend mode on premultiplied pixels.
using BlendOperator = uint32_t (*)(uint32_t s, uint32_t d) noexcept;

/// What the general span function needs besides the paint.
struct GeneralBlend {
    ImageMode imageMode = ImageMode::kNone;  ///< kNone, kMultiply or kStencil
    bool isPremultiplied = false;            ///< the surface is
    bool transformsProduct = false;  ///< whether the image's colour transform is for the product
    BlendOperator blend = nullptr;
    TextureState image;  ///< of an image draw: plain to multiply, premultiplied as a stencil
};

/// What span functions read; filled once per draw.
///
/// Paints come in one of two forms, both in the surface's colour space: premultiplied, for the span
/// functions of premultiplied surfaces, or plain, for all others.
struct SpanContext {
    const uint8_t* mask = nullptr;        ///< of a masked draw: a byte a pixel, the top row first
    PaintKind paint = PaintKind::kColor;  ///< which of the members below is the paint
    uint32_t color = 0;
    GradientState gradient;
    TextureState pattern;  ///< of a pattern paint, or of an image drawn in its place
    DirectTexel direct;    ///< of a pattern that is copied
    GeneralBlend general;  ///< of the general span function

    const uint8_t* maskRow(const PixelSurface& surface, int32_t y) const noexcept {
        return mask + static_cast<int64_t>(surface.height - 1 - y) * surface.width;
    }
};

/// Blends the paint into row y, 0 <= y < surface.height, by the coverage that the touched cells sum
/// to, and leaves the cells and their map zero. Cells past the surface's right edge only close
/// spans: the sums there draw nothing.
using SpanFunction = void (*)(const PixelSurface& surface, const SpanContext& span, int32_t y,
                              const RowCells& row) noexcept;

/// Blends the paint into row y from column `first` to `end` - 1, all of them fully covered.
using RunFunction = void (*)(const PixelSurface& surface, const SpanContext& span, int32_t y,
                             int32_t first, int32_t end) noexcept;

/// A flat colour without a mask that a kernel composites straight from the cells, many rows a call,
/// for sweeps and replays of every quality.
enum class FlatBlend { kNone, kSource, kSourceOver };

struct SpanFunctions {
    SpanFunction span = nullptr;
    RunFunction run = nullptr;
    FlatBlend flat = FlatBlend::kNone;  ///< kNone: `span` is the only way
};

}  // namespace vg::raster
