#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/config_file.h"
#include "vg/engine.h"
#include "vg/geometry/matrix.h"
#include "vg/geometry/tolerance.h"
#include "vg/object_handles.h"
#include "vg/path/path_pool.h"
#include "vg/raster/geometry/scissor.h"
#include "vg/raster/rasterizer.h"
#include "vg/stroke/stroke_state.h"
#include "vg/stroke/stroker.h"
#include "vg/surface.h"
#include "vg/vg.h"

namespace vg {

struct Image;
struct Paint;
struct Path;

/// Objects shared by a family of contexts.
struct SharedResources {
    uint32_t references = 1;
    ObjectTable objects;
    PathPool sparePaths;
};

/// The four scales and four biases of a colour transform.
struct ColorTransform {
    float values[8] = {1, 1, 1, 1, 0, 0, 0, 0};
};

inline constexpr int kMatrixCount = 5;
inline constexpr int kMaxGaussianStdDeviation = 128;

/// All state of one engine context. Entry points are free functions over the current context; the
/// defaults below are those of a new one.
struct Context {
    // Parameters, as set
    VGint matrixMode = VG_MATRIX_PATH_USER_TO_SURFACE;
    VGint fillRule = VG_EVEN_ODD;
    VGint imageQuality = VG_IMAGE_QUALITY_FASTER;
    VGint renderingQuality = VG_RENDERING_QUALITY_BETTER;
    VGint fillBlendMode = VG_BLEND_SRC_OVER;
    VGint strokeBlendMode = VG_BLEND_SRC_OVER;
    VGint imageMode = VG_DRAW_IMAGE_NORMAL;
    base::Array<VGint> scissorRects;  ///< x, y, width, height each
    bool scissorChanged = true;       ///< the scissor data must be rebuilt before its next use
    bool colorTransformEnabled = false;
    ColorTransform colorTransform;
    StrokeState stroke;
    float tileFillColor[4] = {0, 0, 0, 0};
    float clearColor[4] = {0, 0, 0, 0};
    float glyphOrigin[2] = {0, 0};
    bool masking = false;
    bool scissoring = false;
    VGint pixelLayout = VG_PIXEL_LAYOUT_UNKNOWN;
    VGint screenLayout = VG_PIXEL_LAYOUT_UNKNOWN;
    bool filterFormatLinear = false;
    bool filterFormatPremultiplied = false;
    VGint filterChannelMask = 0xF;
    VGErrorCode error = VG_NO_ERROR;  ///< the first one since vgGetError

    // Matrices, in the order of VGMatrixMode
    Matrix3 matrices[kMatrixCount];

    // Derived
    ColorTransform effectiveColorTransform;  ///< the identity while the transform is disabled
    FlatteningTolerance tolerance;
    raster::Rasterizer rasterizer;
    raster::Scissor scissor;         ///< see scissorFor()
    base::Array<uint8_t> pixelWork;  ///< pixels on their way from an area to one that it overlaps
    Surface coverageWork;            ///< of the path being rendered to a mask
    Stroker stroker;
    Outline strokeOutline;  ///< of the stroke being drawn

    // Objects
    SharedResources* shared = nullptr;
    Context* shareContext = nullptr;
    Paint* fillPaint = nullptr;  ///< null: the default paint, opaque black
    Paint* strokePaint = nullptr;

    // Identity
    Configuration configuration;
    uint32_t contextId = 0;  ///< the high bits of its handles
    uint32_t slot = 0;       ///< index in the context table
    uint32_t typeTag = kLiveTag;
    uint32_t useCount = 1;

    static constexpr uint32_t kLiveTag = 6;

    Matrix3& matrix(VGMatrixMode mode) noexcept {
        return matrices[mode - VG_MATRIX_PATH_USER_TO_SURFACE];
    }
    Matrix3& currentMatrix() noexcept {
        return matrices[matrixMode - VG_MATRIX_PATH_USER_TO_SURFACE];
    }

    /// Stores the error unless one is pending.
    void raise(VGErrorCode code) noexcept {
        if (error == VG_NO_ERROR) error = code;
    }

    Path* findPath(VGPath handle) const noexcept;
    Paint* findPaint(VGPaint handle) const noexcept;
    Image* findImage(VGImage handle) const noexcept;
    Image* findMaskLayer(VGMaskLayer handle) const noexcept;

    /// The scissor for a surface of this size, rebuilt if it or the surface has changed; used only
    /// while `scissoring` is on. Null when memory runs out.
    const raster::Scissor* scissorFor(int32_t width, int32_t height) noexcept;

    /// Shrinks every growable work array to its used size after an allocation failed, and frees
    /// what paints and paths keep for their next draw, so that the work can be tried once more.
    void recoverMemory() noexcept;
};

/// What draws on the surface are masked with: null unless masking is on and the surface has a mask.
inline const uint8_t* activeMask(const Context& context, const Surface& surface) noexcept {
    return context.masking && surface.hasMask ? surface.mask.data() : nullptr;
}

}  // namespace vg
