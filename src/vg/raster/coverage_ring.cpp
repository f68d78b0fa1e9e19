#include "vg/raster/coverage_ring.h"

#include <bit>
#include <cstring>

namespace vg::raster {
namespace {

/// Cells past the last column: an edge writes four from its left end, and span functions read
/// ahead (see CoverageRow::kSlackCells).
constexpr int32_t kSlackCells = 24;

static_assert(std::endian::native == std::endian::little, "words of the map are read as bytes");

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
           (count / kGroup <= touched_.count() || touched_.resizeZeroed(count / kGroup));
}

bool takeTouchedRange(const CellView& row, int32_t groupCount, int32_t& first,
                      int32_t& last) noexcept {
    constexpr int32_t kWord = sizeof(uint64_t);
    const auto wordAt = [&](int32_t group) {
        uint64_t word;
        std::memcpy(&word, row.touched + group, sizeof word);
        return word;
    };
    int32_t begin = 0, end = groupCount;  // whole words of the map
    while (begin < end && wordAt(begin) == 0) begin += kWord;
    if (begin == end) return false;
    while (wordAt(end - kWord) == 0) end -= kWord;
    first = begin + (std::countr_zero(wordAt(begin)) >> 3);
    last = end - 1 - (std::countl_zero(wordAt(end - kWord)) >> 3);
    std::memset(row.touched + begin, 0, static_cast<size_t>(end - begin));
    return true;
}

}  // namespace vg::raster
