#include "api/packing/bin_packer.h"

#include <algorithm>
#include <memory>
#include <new>

#include "api/packing/bin_search.h"
#include "api/packing/size_stock.h"

namespace quor::packing {

namespace {

/// How many steps may be searched for that many rectangles: a few milliseconds' worth from a
/// hundred to a thousand, and most of a second's for ten thousand, where fractions of a percent
/// decide how many bins there are. What is above that adds little.
int64_t budgetOf(int count) noexcept {
    const int64_t few = std::min(count, 100);
    const int64_t many = std::min(count, 10000);
    return few * 9000 + many * many * many / 12500 + (count - many) * 1000;
}

// Of the two last bins' area, in bins: up to there sharing it evenly can serve both.
constexpr double kMostToShare = 1.8;

// Powers of two: half of the last bin can depend on the last tenth of a percent, so it is worth
// more attempts, at twice the steps, for up to that many rectangles.
constexpr int kAttempts = 4;
constexpr int kMostToAttempt = 4000;
constexpr double kFullest = 0.9995;  ///< that bins get in the mean
constexpr int kLeastGain = 100;      ///< the half in parts of all bins

}  // namespace

/// One packing: the stock, the search, and the fills of the bins so far.
class BinPacker::Run {
public:
    Run(BinPacker& packer, const BinRules& rules, int attempt) noexcept
        : packer_(packer),
          rules_(rules),
          whole_(rules.freeArea({rules.maxDimension, rules.maxDimension})),
          search_(rules, static_cast<uint64_t>(attempt) + 1),
          effort_(attempt == 0 ? 1 : 2) {}

    bool pack(const Size* sizes, int count, Heuristic heuristic) noexcept;

private:
    /// The two last bins; `last` takes all that `first` leaves if they are complete.
    struct Tail {
        Fill first;
        Fill last;
        bool isComplete = false;
    };

    bool takeStock(const Size* sizes, int count, Heuristic heuristic) noexcept;
    bool packNext() noexcept;
    bool packTwo(int64_t steps) noexcept;
    bool findTail(int64_t steps, Tail& tail) noexcept;
    bool findLast(int64_t steps, bool& isComplete) noexcept;
    bool commit(const Fill& fill) noexcept;

    int64_t takeShare() noexcept;
    int64_t binArea(const Fill& fill) const noexcept { return rules_.binFor(fill.extent).area(); }
    double binsLeft() const noexcept {
        return static_cast<double>(stock_.remainingArea()) / static_cast<double>(whole_.area());
    }

    BinPacker& packer_;
    BinRules rules_;
    Size whole_;
    SizeStock stock_;
    BinSearch search_;
    int effort_;
    int64_t steps_ = 0;
    Tail full_;
    Tail even_;
};

bool BinPacker::pack(const Size* sizes, int count, const BinRules& rules,
                     Heuristic heuristic) noexcept {
    if (!packOnce(sizes, count, rules, heuristic, 0)) return false;
    for (int i = 1; i < kAttempts && mayHaveSmallerLast(sizes, count, rules); ++i) {
        BinPacker other;
        if (!other.packOnce(sizes, count, rules, heuristic, i)) break;
        if (!other.isBetterThan(*this)) continue;
        bins_.swap(other.bins_);
        items_.swap(other.items_);
    }
    return true;
}

bool BinPacker::packOnce(const Size* sizes, int count, const BinRules& rules, Heuristic heuristic,
                         int attempt) noexcept {
    bins_.clear();
    items_.clear();
    const std::unique_ptr<Run> run(new (std::nothrow) Run(*this, rules, attempt));
    if (run != nullptr && run->pack(sizes, count, heuristic)) return true;
    release();
    return false;
}

/// Whether half of the last bin is worth saving and what fills the others is within reach.
bool BinPacker::mayHaveSmallerLast(const Size* sizes, int count,
                                   const BinRules& rules) const noexcept {
    if (!rules.isPowerOfTwo || count > kMostToAttempt || bins_.count() < 2) return false;
    int64_t used = 0;
    for (int i = 0; i < count; ++i) used += rules.footprint(sizes[i]).area();
    int64_t all = 0;
    for (const Size& bin : bins_) all += rules.freeArea(bin).area();
    const int64_t half = rules.freeArea(bins_.last()).area() / 2;
    return half * kLeastGain > all &&
           static_cast<double>(used) < static_cast<double>(all - half) * kFullest;
}

void BinPacker::release() noexcept {
    bins_.release();
    items_.release();
}

int64_t BinPacker::binArea() const noexcept {
    int64_t area = 0;
    for (const Size& bin : bins_) area += bin.area();
    return area;
}

bool BinPacker::isBetterThan(const BinPacker& other) const noexcept {
    if (bins_.count() != other.bins_.count()) return bins_.count() < other.bins_.count();
    return binArea() < other.binArea();
}

bool BinPacker::Run::pack(const Size* sizes, int count, Heuristic heuristic) noexcept {
    if (!takeStock(sizes, count, heuristic)) return false;
    steps_ = budgetOf(count) * effort_;
    while (stock_.remaining() > 0) {
        if (!packNext()) return false;
    }
    return true;
}

bool BinPacker::Run::takeStock(const Size* sizes, int count, Heuristic heuristic) noexcept {
    base::Array<Size> footprints;
    if (!packer_.items_.resize(count) || !footprints.resize(count)) return false;
    for (int i = 0; i < count; ++i) footprints[i] = rules_.footprint(sizes[i]);
    return stock_.fill(footprints.data(), count, heuristic);
}

/// The steps for one of the bins that are left; the last one counts twice, its size being open.
int64_t BinPacker::Run::takeShare() noexcept {
    const auto share = static_cast<int64_t>(static_cast<double>(steps_) / (binsLeft() + 1.0));
    steps_ -= share;
    return share;
}

bool BinPacker::Run::packNext() noexcept {
    if (!stock_.tidy()) return false;
    const bool isEnd = binsLeft() < 2.0;
    const int64_t steps = isEnd ? steps_ / 5 : takeShare();
    if (!search_.findFullest(whole_, stock_, steps)) return false;
    if (!isEnd) return commit(search_.best());
    if (search_.best().filledArea < stock_.remainingArea()) return packTwo(steps_ - steps);
    return search_.findSmallest(stock_, steps_ - steps) && commit(search_.best());
}

/// Fills the largest bin, and makes it as small as possible if that takes all there is.
bool BinPacker::Run::findLast(int64_t steps, bool& isComplete) noexcept {
    if (!search_.findFullest(whole_, stock_, steps / 5)) return false;
    isComplete = search_.best().filledArea == stock_.remainingArea();
    return !isComplete || search_.findSmallest(stock_, steps - steps / 5);
}

/// One bin does not hold what remains, and its fullest is found. A small last bin is hard to fill
/// well, so sharing evenly between two is tried beside filling the first one up.
bool BinPacker::Run::packTwo(int64_t steps) noexcept {
    const double left = binsLeft();
    const bool mayShare = left < kMostToShare && !rules_.isPowerOfTwo;
    const int64_t part = mayShare ? steps / 3 : steps;
    if (!findTail(part, full_)) return false;
    if (mayShare) {
        Size area = whole_;
        area.height =
            std::max(static_cast<int>(whole_.height * left / 2.0), stock_.largestSides().height);
        if (!search_.findFullest(area, stock_, part) || !findTail(part, even_)) return false;
    }
    const auto areaOf = [&](const Tail& tail) { return binArea(tail.first) + binArea(tail.last); };
    const bool isEven =
        mayShare && even_.isComplete && (!full_.isComplete || areaOf(even_) < areaOf(full_));
    Tail& tail = isEven ? even_ : full_;
    if (!commit(tail.first)) return false;
    return !tail.isComplete || commit(tail.last);
}

/// The search has found the first bin's fill.
bool BinPacker::Run::findTail(int64_t steps, Tail& tail) noexcept {
    tail.first.swap(search_.best());
    stock_.remove(tail.first);
    const bool isDone = findLast(steps, tail.isComplete);
    stock_.putBack(tail.first);
    tail.last.swap(search_.best());
    return isDone;
}

bool BinPacker::Run::commit(const Fill& fill) noexcept {
    const int bin = packer_.bins_.count();
    for (const Placement& placement : fill.placements) {
        const int item = stock_.nextItem(placement.sizeClass);
        packer_.items_[item] = {bin, placement.x + rules_.border, placement.y + rules_.border};
    }
    stock_.remove(fill);
    return packer_.bins_.push(rules_.binFor(fill.extent));
}

}  // namespace quor::packing
