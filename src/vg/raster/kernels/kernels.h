#pragma once

#include <cstdint>

#include "vg/raster/coverage/cells.h"
#include "vg/raster/geometry/fixed.h"
#include "vg/raster/geometry/polygon.h"

namespace vg::raster {

struct BandBlock;
struct BoundaryRow;
struct ChainEdge;
struct ContourSteps;
struct LineIndex;
struct LinearRun;
struct LiveChain;
struct RadialRun;
struct RampOptions;
struct RampRun;

/// Rows of a coverage ring to be composited in a flat colour, from the top down.
struct FlatRows {
    CellView ring;        ///< of its row 0; the rows taken are left all zero
    int32_t stride;       ///< cells of a row; a multiple of 64
    int32_t ringMask;     ///< the ring has one row more
    int32_t top, bottom;  ///< pixel rows, both included; row y is row y & ringMask of the ring
    uint32_t* pixels;     ///< of the top row's cell 0
    int32_t width;        ///< pixels from there to the surface's right edge
    int32_t pitch;        ///< pixels from a row to the one below
    uint32_t color;
};

/// The hot loops of sweeps and spans in SIMD. Every level computes the same bits; which one runs is
/// chosen once by what the processor has (dispatch through this table).
struct Kernels {
    /// The box of one point or more.
    FixedBox (*boxOf)(const FixedPoint* points, int32_t count) noexcept;

    /// Edge i of a contour joins points i - 1 and i (0: the last and the first). Fills `steps`,
    /// which has to have room for the contour, and up to ChainEdge::kSlack edges more.
    void (*makeEdges)(const FixedPoint* points, int32_t count, const LineIndex& lines,
                      int32_t originX, const ContourSteps& steps, ChainEdge* edges) noexcept;

    /// Fills the lanes of chains from their lane `first`, and sets `last`.
    void (*evaluate)(LiveChain* const* chains, int32_t count, const BandBlock& block) noexcept;

    /// Makes the edges of all lanes vertical at the x of their tops; `onColumns`: rounded to a
    /// column border.
    void (*makeVertical)(LiveChain* const* chains, int32_t count, bool onColumns) noexcept;

    /// True when in every band the chains are in order of top and of bottom; their signs are then
    /// set by the fill rule. On false the signs are unspecified.
    bool (*proveOrder)(LiveChain* const* chains, int32_t count, FillRule rule) noexcept;

    /// Sorts the edges of each band by (top, bottom, direction) into `count` rows. False when that
    /// takes too many exchanges; the rows are then unspecified.
    bool (*orderLanes)(LiveChain* const* chains, int32_t count, BoundaryRow* rows) noexcept;

    /// Gives ordered rows their signs and moves boundaries past the ones before them.
    void (*resolveLanes)(BoundaryRow* rows, int32_t count, FillRule rule) noexcept;

    /// Adds the trapezoids of chains, or of rows, to the cells of their bands.
    void (*addChains)(LiveChain* const* chains, int32_t count, const BandBlock& block,
                      const CellView& cells) noexcept;
    void (*addRows)(const BoundaryRow* rows, int32_t count, const BandBlock& block,
                    const CellView& cells) noexcept;

    void (*compositeSource)(const FlatRows& rows) noexcept;
    void (*compositeSourceOver)(const FlatRows& rows) noexcept;

    /// Fully covered pixels side by side (RunFunction in span_function.h).
    void (*runSource)(uint32_t* pixels, int32_t count, uint32_t color) noexcept;
    void (*runSourceOver)(uint32_t* pixels, int32_t count, uint32_t color) noexcept;

    /// `count` pixels of a gradient.
    void (*linearPixels)(const LinearRun& run, int32_t count, uint32_t* pixels) noexcept;
    void (*radialPixels)(const RadialRun& run, int32_t count, uint32_t* pixels) noexcept;

    /// Turns `count` cells, a multiple of 8, into coverage of 0..256 by a prefix sum that begins at
    /// `sum`, and zeroes them; returns the sum at the end.
    uint32_t (*takeCoverage)(uint32_t* cells, int32_t count, uint32_t sum,
                             uint32_t* coverage) noexcept;

    /// Porter and Duff's over, of premultiplied pixels. The arrays do not overlap.
    void (*sourceOver)(const uint32_t* source, uint32_t* pixels, int32_t count) noexcept;

    /// The entries of a run, one at least, from `pixels` on.
    void (*rampPixels)(const RampRun& run, const RampOptions& options, uint32_t* pixels) noexcept;

    /// Premultiplied pixels copied, or by Porter and Duff's over, mixed in by a coverage of 0..256
    /// each.
    void (*mixSource)(const uint32_t* source, const uint32_t* coverage, uint32_t* pixels,
                      int32_t count) noexcept;
    void (*mixSourceOver)(const uint32_t* source, const uint32_t* coverage, uint32_t* pixels,
                          int32_t count) noexcept;
};

/// Rising; a processor that has one has those before it.
enum class KernelLevel { kPortable, kSse41, kAvx2 };
inline constexpr KernelLevel kKernelLevels[] = {KernelLevel::kPortable, KernelLevel::kSse41,
                                                KernelLevel::kAvx2};

constexpr const char* nameOf(KernelLevel level) noexcept {
    constexpr const char* kNames[] = {"Portable", "Sse41", "Avx2"};
    return kNames[static_cast<int>(level)];
}

/// The highest level of the processor and the build.
KernelLevel bestKernelLevel() noexcept;

/// The kernels in use: those of the best level, unless useKernelLevel() has forced others.
extern constinit const Kernels* kernelsInUse;
inline const Kernels& kernels() noexcept { return *kernelsInUse; }

/// For tests and benchmarks: forces a level. False, with nothing changed, where the processor or
/// the build does not have it. Not to be called while another thread draws.
bool useKernelLevel(KernelLevel level) noexcept;

extern const Kernels kPortableKernels;
#if defined(__x86_64__)
extern const Kernels kSse41Kernels;
extern const Kernels kAvx2Kernels;
#endif

}  // namespace vg::raster
