#pragma once

#include <cstdint>

#include "api/packing/fill.h"
#include "api/packing/maximal_rectangles.h"
#include "api/packing/random_sequence.h"
#include "api/packing/size_stock.h"
#include "api/packing/skyline_fill.h"

namespace quor::packing {

/// Looks for a good fill of one bin: maximal rectangles once, then skylines under varied weights
/// for as long as the steps suffice. Budgets are counted in steps (a look at a rectangle), never in
/// time, so the answer is the same on every machine.
class BinSearch {
public:
    BinSearch(const BinRules& rules, uint64_t seed) noexcept : rules_(rules), random_(seed) {}

    /// The fill of the area that leaves the least free, or that takes everything.
    [[nodiscard]] bool findFullest(const Size& area, SizeStock& stock, int64_t steps) noexcept;

    /// Given a fill that takes everything: one whose bin is smaller, if there is.
    [[nodiscard]] bool findSmallest(SizeStock& stock, int64_t steps) noexcept;

    Fill& best() noexcept { return best_; }

private:
    bool tryMaximalRectangles(const Size& area, const SizeStock& stock, int64_t& steps) noexcept;
    bool trySkyline(const Size& area, SizeStock& stock, int64_t allowedLoss, int64_t& steps,
                    bool& isBetter) noexcept;
    bool findSmallestPowersOfTwo(SizeStock& stock, int64_t steps) noexcept;
    bool takeEverything(const Size& area, SizeStock& stock, int64_t steps, bool& isFound) noexcept;
    FitWeights nextWeights() noexcept;
    int chooseWidth(const SizeStock& stock, int least, int most) noexcept;

    BinRules rules_;
    RandomSequence random_;
    MaximalRectangles maximalRectangles_;
    SkylineFill skylineFill_;
    FitWeights weights_;      ///< of the trial
    FitWeights bestWeights_;  ///< of the last success
    int trials_ = 0;
    Fill trial_;
    Fill best_;
};

}  // namespace quor::packing
