#pragma once

#include <cstdint>

#include "api/packing/geometry.h"
#include "base/array.h"

namespace quor::packing {

struct Fill;

/// Where a rectangle went: its top left corner in pixels of its bin.
struct PlacedItem {
    int bin;
    int x;
    int y;
};

/// Packs rectangles into bins, in the order of one heuristic, and holds the result. It depends on
/// the arguments alone.
class BinPacker {
public:
    /// Precondition: no side is below 1 or above the usable dimension. False when memory runs out;
    /// the result is then empty.
    [[nodiscard]] bool pack(const Size* sizes, int count, const BinRules& rules,
                            Heuristic heuristic) noexcept;

    void release() noexcept;

    const base::Array<Size>& bins() const noexcept { return bins_; }
    const base::Array<PlacedItem>& items() const noexcept { return items_; }  ///< one a rectangle

    int64_t binArea() const noexcept;

    /// Fewer bins, else less area.
    bool isBetterThan(const BinPacker& other) const noexcept;

private:
    class Run;

    bool packOnce(const Size* sizes, int count, const BinRules& rules, Heuristic heuristic,
                  int attempt) noexcept;
    bool mayHaveSmallerLast(const Size* sizes, int count, const BinRules& rules) const noexcept;

    base::Array<Size> bins_;
    base::Array<PlacedItem> items_;
};

}  // namespace quor::packing
