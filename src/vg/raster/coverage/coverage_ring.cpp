// Lays out the ring: rows of whole words of dirty flags, not a multiple of 4 KiB apart.

#include "vg/raster/coverage/coverage_ring.h"

namespace vg::raster {
namespace {

/// Cells past the last column: an edge writes four from its left end.
constexpr int32_t kSlackCells = 24;

/// The map of a row is read in words of eight groups.
constexpr int32_t kStrideUnit = 64;

/// Rows a multiple of 4096 bytes apart would all compete for the same few lines of the cache.
constexpr int32_t kCacheAlias = 1024;

}  // namespace

bool CoverageRing::reserve(int32_t columns) noexcept {
    stride_ = (columns + kSlackCells + kStrideUnit - 1) / kStrideUnit * kStrideUnit;
    if (stride_ % kCacheAlias == 0) stride_ += kStrideUnit;
    const int32_t count = kSpareCells + kRows * stride_;
    return (count <= cells_.count() || cells_.resizeZeroed(count)) &&
           (count / kGroupCells <= touched_.count() || touched_.resizeZeroed(count / kGroupCells));
}

}  // namespace vg::raster
