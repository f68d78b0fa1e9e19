#include "vg/raster/coverage_ring.h"

#include <cstring>

namespace vg::raster {
namespace {

/// Cells past the last column: an edge writes four from its left end, and span functions read
/// ahead (see CoverageRow::kSlackCells).
constexpr int32_t kSlackCells = 24;

/// The map of a row is read in words of eight groups.
constexpr int32_t kStrideUnit = 64;

/// Rows a multiple of 4096 bytes apart would all compete for the same few lines of the cache.
constexpr int32_t kCacheAlias = 1024;

}  // namespace

bool CoverageRing::reserve(int32_t columns) noexcept {
    stride_ = (columns + kSlackCells + kStrideUnit - 1) / kStrideUnit * kStrideUnit;
    if (stride_ % kCacheAlias == 0) stride_ += kStrideUnit;
    const int32_t count = kRows * stride_;
    return (count <= cells_.count() || cells_.resizeZeroed(count)) &&
           (count / kGroup <= touched_.count() || touched_.resizeZeroed(count / kGroup));
}

bool takeTouchedRange(const CellView& row, int32_t groupCount, int32_t& first,
                      int32_t& last) noexcept {
    const uint8_t* const end = row.touched + groupCount;
    const auto* const found =
        static_cast<const uint8_t*>(std::memchr(row.touched, 1, static_cast<size_t>(groupCount)));
    if (found == nullptr) return false;
    const uint8_t* back = end - 1;
    while (*back == 0) --back;
    first = static_cast<int32_t>(found - row.touched);
    last = static_cast<int32_t>(back - row.touched);
    std::memset(row.touched + first, 0, static_cast<size_t>(last - first + 1));
    return true;
}

}  // namespace vg::raster
