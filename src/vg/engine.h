#pragma once

// Contexts, surfaces and the current pair: what OpenVG leaves to a window-system binding.
// Process-wide and without locks; one thread at a time may use the engine.

#include <cstdint>

namespace vg {

struct Context;
struct Surface;

/// Sides of surfaces are clamped to this many pixels.
///
/// Surface coordinates hold 5 fractional bits in 16 unsigned bits, so paths reach x and y up to
/// 2047 pixels: on a side of 2048 the outermost column and the top row take clears only.
inline constexpr int32_t kMaxSurfaceDimension = 2048;

/// Creates a context that owns its objects, or shares those of `share`. Null when 64 contexts
/// live, when `share` is no live context, or when memory runs out.
Context* createContext(Context* share) noexcept;

/// Drops one use of the context; the last use frees it with its share of the objects. A null,
/// unknown or already destroyed context is ignored. A current context stops being current.
void destroyContext(Context* context) noexcept;

struct SurfaceFlags {
    bool linear = false;         ///< linear colour space instead of sRGB
    bool alphaMask = false;      ///< with a mask, one byte a pixel
    bool premultiplied = false;  ///< colour channels multiplied by alpha
};

/// Creates a surface of zero pixels in an ARGB format; null when a side is below 1 or memory runs
/// out. Sides above kMaxSurfaceDimension are clamped. A mask starts out full.
Surface* createSurface(int32_t width, int32_t height, const SurfaceFlags& flags) noexcept;

/// Frees the surface; a current surface stops being current. Null is ignored.
void destroySurface(Surface* surface) noexcept;

/// Changes the size (clamped as above), zeroes the pixels and fills the mask. False, with nothing
/// changed, when a side is below 1 or memory runs out.
bool resizeSurface(Surface* surface, int32_t width, int32_t height) noexcept;

int32_t surfaceWidth(const Surface* surface) noexcept;
int32_t surfaceHeight(const Surface* surface) noexcept;
uint32_t surfaceFormat(const Surface* surface) noexcept;  ///< the VGImageFormat code

/// The pixels, top row first, without padding; owned by the surface, valid until it is resized or
/// destroyed. What is drawn later shows after finishSurface().
uint32_t* surfacePixels(Surface* surface) noexcept;

/// Does what clears and draws have put off.
void finishSurface(Surface* surface) noexcept;

/// Makes the pair current. Both null: nothing is current. True on success; false, with the pair
/// unchanged, when only one is null or the context is not live.
bool makeCurrent(Context* context, Surface* surface) noexcept;

/// A box in pixels of a surface, y upward as the path matrix has it, on whole 1/32 pixels. Empty
/// when a maximum does not exceed its minimum.
struct PaintedBounds {
    float minX = 0.0F;
    float minY = 0.0F;
    float maxX = 0.0F;
    float maxY = 0.0F;
};

/// The tight box of what vgDrawPath would paint on a surface without end: the path's segments for
/// VG_FILL_PATH, the stroke's outline with its caps, joins and dashes as drawn for VG_STROKE_PATH,
/// where their paints show something. Raises the errors of vgDrawPath.
PaintedBounds paintedBounds(uint32_t path, uint32_t paintModes) noexcept;

Context* currentContext() noexcept;
Surface* currentSurface() noexcept;

}  // namespace vg
