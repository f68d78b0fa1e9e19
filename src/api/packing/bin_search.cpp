#include "api/packing/bin_search.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <iterator>

namespace quor::packing {

namespace {

// What did best on sets of icons, flags, single shapes and generated sizes: where a search begins.
// clang-format off
constexpr FitWeights kFirstWeights[] = {
    {.exactWidth = 1000, .pairedWidth = 400, .deadWidth = 25, .wallHeight = 500,
     .towerHeight = 80, .topHeight = 500, .width = 9, .height = 3, .noise = 0, .looks = 32},
    {.exactWidth = 1000, .pairedWidth = 300, .deadWidth = 20, .wallHeight = 500,
     .towerHeight = 50, .topHeight = 450, .width = 11, .height = 9, .noise = 80, .looks = 24,
     .seed = 0, .isTransposed = true},
};
// clang-format on

constexpr int kNearbyWidth = 40;    // pixels
constexpr int kStepsPerTrial = 64;  // of a trial without a placement
// There is little to arrange among few: the most steps are this times their number squared.
constexpr int kStepsPerPair = 1000;

}  // namespace

FitWeights BinSearch::nextWeights() noexcept {
    const int trial = trials_++;
    if (trial < static_cast<int>(std::size(kFirstWeights))) return kFirstWeights[trial];
    return random_.below(4) == 0 ? FitWeights::random(random_) : bestWeights_.varied(random_);
}

bool BinSearch::tryMaximalRectangles(const Size& area, const SizeStock& stock,
                                     int64_t& steps) noexcept {
    if (!maximalRectangles_.run(area, stock, trial_, steps)) return false;
    if (trial_.filledArea > best_.filledArea) best_.swap(trial_);
    return true;
}

/// The area is upright. `isBetter`: the trial stayed within the loss.
bool BinSearch::trySkyline(const Size& area, SizeStock& stock, int64_t allowedLoss, int64_t& steps,
                           bool& isBetter) noexcept {
    const bool isTransposed = weights_.isTransposed;
    const SkylineFill::Task task = {isTransposed ? area.transposed() : area, allowedLoss};
    const SkylineFill::Result result =
        skylineFill_.run(task, weights_, stock.index(isTransposed), trial_, steps);
    isBetter = result == SkylineFill::Result::kComplete;
    if (isBetter && isTransposed) trial_.transpose();
    if (isBetter) bestWeights_ = weights_;
    return result != SkylineFill::Result::kOutOfMemory;
}

bool BinSearch::findFullest(const Size& area, SizeStock& stock, int64_t steps) noexcept {
    best_.clear();
    trials_ = 0;
    if (!tryMaximalRectangles(area, stock, steps)) return false;
    if (stock.classes().count() == 1) return true;  // nothing beats rows and columns
    const int64_t placed = best_.placements.count();
    steps = std::min(steps, placed * placed * kStepsPerPair);
    while (steps > 0 && best_.filledArea < std::min(area.area(), stock.remainingArea())) {
        weights_ = nextWeights();
        bool isBetter = false;
        const int64_t allowedLoss = area.area() - best_.filledArea - 1;
        if (!trySkyline(area, stock, allowedLoss, steps, isBetter)) return false;
        if (isBetter) best_.swap(trial_);
    }
    return true;
}

/// A width to try, in the orientation of the weights: not too far from square; now and then close
/// to the best so far, or whole columns of some width.
int BinSearch::chooseWidth(const SizeStock& stock, int least, int most) noexcept {
    const double side = std::sqrt(static_cast<double>(stock.remainingArea()));
    const int first = std::clamp(static_cast<int>(side * 0.6), least, most);
    const int last = std::clamp(static_cast<int>(side * 1.7), first, most);
    const auto widthOf = [&](const Size& size) {
        return weights_.isTransposed ? size.height : size.width;
    };
    const int width = first + random_.below(last - first + 1);
    switch (random_.below(4)) {
        case 0: {
            const int column =
                widthOf(stock.classes()[random_.below(stock.classes().count())].size);
            return std::max(width - width % column, least);
        }
        case 1: {
            const int change = random_.below(2 * kNearbyWidth + 1) - kNearbyWidth;
            return std::clamp(widthOf(best_.extent) + change, least, most);
        }
        default:
            return width;
    }
}

bool BinSearch::findSmallest(SizeStock& stock, int64_t steps) noexcept {
    if (rules_.isPowerOfTwo) return findSmallestPowersOfTwo(stock, steps);
    const int border = rules_.border;
    const int most = rules_.maxDimension - border;
    const Size uprightSides = stock.largestSides();
    int64_t bestArea = rules_.binFor(best_.extent).area();
    trials_ = 0;
    while (steps > 0 &&
           rules_.freeArea(rules_.binFor(best_.extent)).area() > stock.remainingArea()) {
        steps -= kStepsPerTrial;
        weights_ = nextWeights();
        const Size largest = weights_.isTransposed ? uprightSides.transposed() : uprightSides;
        Size area = {chooseWidth(stock, largest.width, most), 0};
        area.height = static_cast<int>(
            std::min<int64_t>((bestArea - 1) / (area.width + border) - border, most));
        const int64_t allowedLoss = area.area() - stock.remainingArea();
        if (area.height < largest.height || allowedLoss < 0) continue;
        bool isBetter = false;
        const Size upright = weights_.isTransposed ? area.transposed() : area;
        if (!trySkyline(upright, stock, allowedLoss, steps, isBetter)) return false;
        if (!isBetter) continue;
        best_.swap(trial_);
        bestArea = rules_.binFor(best_.extent).area();
    }
    return true;
}

/// Asks for each size below the present one, by area and then from square to narrow: the first
/// that takes everything is the smallest.
bool BinSearch::findSmallestPowersOfTwo(SizeStock& stock, int64_t steps) noexcept {
    const int64_t bestArea = rules_.binFor(best_.extent).area();
    const Size largest = stock.largestSides();
    const int most = std::countr_zero(static_cast<unsigned>(rules_.maxDimension));
    for (int exponents = 0; int64_t{1} << exponents < bestArea; ++exponents) {
        for (int i = 0; i <= exponents; ++i) {
            // exponents/2, then alternately one less and one more ...
            const int x = (exponents + (i % 2 != 0 ? i + 1 : -i)) / 2;
            const int y = exponents - x;
            if (x < 0 || y < 0 || x > most || y > most) continue;
            const Size area = rules_.freeArea({1 << x, 1 << y});
            if (!largest.fitsIn(area) || area.area() < stock.remainingArea()) continue;
            bool isFound = false;
            if (!takeEverything(area, stock, steps / 4, isFound)) return false;
            if (isFound) return true;
            steps -= steps / 4;
        }
    }
    return true;
}

/// Fills the area with all there is, if it can.
bool BinSearch::takeEverything(const Size& area, SizeStock& stock, int64_t steps,
                               bool& isFound) noexcept {
    const int64_t allowedLoss = area.area() - stock.remainingArea();
    trials_ = 0;
    if (!maximalRectangles_.run(area, stock, trial_, steps)) return false;
    isFound = trial_.filledArea == stock.remainingArea();
    while (!isFound && steps > 0) {
        weights_ = nextWeights();
        if (!trySkyline(area, stock, allowedLoss, steps, isFound)) return false;
    }
    if (isFound) best_.swap(trial_);
    return true;
}

}  // namespace quor::packing
