#pragma once

#include "api/packing/fill.h"
#include "api/packing/geometry.h"
#include "api/packing/least_sizes.h"
#include "api/packing/size_index.h"
#include "base/array.h"

namespace quor::packing {

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
    /// The first class from `first` on that has some left and fits; see LeastSizes.
    template <class Fits>
    int nextClass(int first, Fits fits) const noexcept {
        return least_.next(first, fits);
    }
    /// By width, or by height with the sides exchanged. Whoever takes something puts it back.
    SizeIndex& index(bool isTransposed) noexcept { return isTransposed ? transposed_ : upright_; }
    int remaining() const noexcept { return remaining_; }
    int64_t remainingArea() const noexcept { return remainingArea_; }
    /// The largest width and the largest height of those that remain.
    Size largestSides() const noexcept;

    /// Takes what a fill placed out of the counts, or puts it back.
    void remove(const Fill& fill) noexcept { change(fill, -1); }
    void putBack(const Fill& fill) noexcept { change(fill, +1); }

    /// Forgets in the indices what is used up once that is most of it. False when memory runs out.
    [[nodiscard]] bool tidy() noexcept;

    /// The index in the input of the next item of the class to get its place.
    int nextItem(int sizeClass) noexcept { return items_[classes_[sizeClass].nextItem++]; }

private:
    void group(const Size* footprints) noexcept;
    void change(const Fill& fill, int sign) noexcept;

    base::Array<int> items_;
    base::Array<SizeClass> classes_;
    LeastSizes least_;  ///< of the classes
    SizeIndex upright_{false};
    SizeIndex transposed_{true};
    int remaining_ = 0;
    int64_t remainingArea_ = 0;
};

}  // namespace quor::packing
