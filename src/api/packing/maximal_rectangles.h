#pragma once

#include "api/packing/fill.h"
#include "api/packing/size_stock.h"

namespace quor::packing {

/// Fills one bin with the classes of a stock in their order: each rectangle goes to the corner of
/// the maximal free rectangle whose shorter leftover side is the smallest (then the longer one,
/// then the earlier rectangle). The best way for many equal rectangles.
class MaximalRectangles {
public:
    /// False when memory runs out. `steps` sinks by the work done.
    [[nodiscard]] bool run(const Size& area, const SizeStock& stock, Fill& fill,
                           int64_t& steps) noexcept;

private:
    struct Free {
        int x, y;
        int width, height;

        int right() const noexcept { return x + width; }
        int bottom() const noexcept { return y + height; }
        bool overlaps(const Free& other) const noexcept {
            return x < other.right() && other.x < right() && y < other.bottom() &&
                   other.y < bottom();
        }
        bool touches(const Free& other) const noexcept {
            return x <= other.right() && other.x <= right() && y <= other.bottom() &&
                   other.y <= bottom();
        }
        bool contains(const Free& other) const noexcept {
            return x <= other.x && y <= other.y && right() >= other.right() &&
                   bottom() >= other.bottom();
        }
    };

    bool canHold(const Size& size) const noexcept;
    int choose(const Size& size) const noexcept;
    bool occupy(const Free& used) noexcept;
    /// Adds what of `free` lies beside `used`.
    bool split(const Free& free, const Free& used) noexcept;
    void dropContained(int firstNew) noexcept;
    bool isContained(const Free& candidate, int self, int firstNew, int kept) const noexcept;

    base::Array<Free> free_;
    base::Array<int> touching_;  ///< those of the kept ones that touch the rectangle just placed
};

}  // namespace quor::packing
