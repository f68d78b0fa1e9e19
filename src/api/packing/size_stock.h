#pragma once

#include "api/packing/fill.h"
#include "api/packing/geometry.h"
#include "base/array.h"

namespace quor::packing {

/// Footprints of one size.
struct SizeClass {
    Size size;
    int count;     ///< how many are still to be placed
    int nextItem;  ///< the first without a place, an index into the stock's item order
};

/// The footprints that are still to be placed, grouped by size: what fits one fits all of them.
///
/// Classes come in the heuristic's order, descending; ties by the other side. Items of a class come
/// in the order of the input, so nothing depends on how the input was shuffled but which of several
/// equal rectangles goes where.
class SizeStock {
public:
    /// Takes the footprints of `count` items. False when memory runs out.
    [[nodiscard]] bool fill(const Size* footprints, int count, Heuristic heuristic) noexcept;

    const base::Array<SizeClass>& classes() const noexcept { return classes_; }
    int remaining() const noexcept { return remaining_; }
    int64_t remainingArea() const noexcept { return remainingArea_; }
    /// The largest width and the largest height of those that remain.
    Size largestSides() const noexcept;

    /// Takes what a fill placed out of the counts, or puts it back.
    void remove(const Fill& fill) noexcept { change(fill, -1); }
    void putBack(const Fill& fill) noexcept { change(fill, +1); }

    /// The index in the input of the next item of the class to get its place.
    int nextItem(int sizeClass) noexcept { return items_[classes_[sizeClass].nextItem++]; }

private:
    void group(const Size* footprints) noexcept;
    void change(const Fill& fill, int sign) noexcept;

    base::Array<int> items_;
    base::Array<SizeClass> classes_;
    int remaining_ = 0;
    int64_t remainingArea_ = 0;
};

}  // namespace quor::packing
