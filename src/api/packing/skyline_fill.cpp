#include "api/packing/skyline_fill.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <limits>

#include "api/packing/random_sequence.h"

namespace quor::packing {

namespace {

constexpr int kUnfit = std::numeric_limits<int>::min();
constexpr int kStepsPerPlacement = 8;  ///< what a placement costs in looks at a rectangle

/// Scattered numbers below 2^16, looked up rather than computed for each rectangle.
constexpr uint32_t kNoiseCount = 4096;
constexpr auto kNoise = [] {
    std::array<uint16_t, kNoiseCount> noise{};
    for (uint32_t i = 0; i < kNoiseCount; ++i) {
        uint32_t value = (i + 1) * 0x9E3779B1U;
        value = (value ^ (value >> 16)) * 0x7FEB352DU;
        value = (value ^ (value >> 15)) * 0x846CA68BU;
        noise[i] = static_cast<uint16_t>(value >> 16);
    }
    return noise;
}();

int noiseOf(const FitWeights& weights, int sizeClass) noexcept {
    const uint32_t index = weights.seed + static_cast<uint32_t>(sizeClass);
    return kNoise[index % kNoiseCount] * weights.noise >> 16;
}

/// Written without branches: which of the terms apply is as good as random.
int rate(const SizeIndex::Entry& entry, const Skyline::Gap& gap, int room, int narrowest,
         const FitWeights& weights, const SizeIndex& index) noexcept {
    const int rest = gap.width - entry.width;
    const int height = entry.height;
    const bool isExact = rest == 0;
    const bool isPaired = index.countOfWidth(rest) > (rest == entry.width ? 1 : 0);
    const bool isLevel = (height == gap.leftWall) | (height == gap.rightWall);
    const bool isTower = (height > gap.leftWall) & (height > gap.rightWall);
    return weights.width * entry.width + weights.height * height +
           noiseOf(weights, entry.sizeClass) + isExact * weights.exactWidth +
           isPaired * weights.pairedWidth - (rest < narrowest) * rest * weights.deadWidth +
           isLevel * weights.wallHeight - isTower * weights.towerHeight +
           (height == room) * weights.topHeight;
}

/// Beside the wall that it ends level with, else beside the higher one.
bool belongsLeft(const Skyline::Gap& gap, int height) noexcept {
    if (height == gap.leftWall) return true;
    if (height == gap.rightWall) return false;
    return gap.leftWall >= gap.rightWall;
}

}  // namespace

FitWeights FitWeights::random(RandomSequence& random) noexcept {
    FitWeights weights;
    weights.exactWidth = random.below(2000);
    weights.pairedWidth = random.below(1000);
    weights.deadWidth = random.below(60);
    weights.wallHeight = random.below(1000);
    weights.towerHeight = random.below(200);
    weights.topHeight = random.below(1000);
    weights.width = random.below(24);
    weights.height = random.below(16);
    weights.noise = random.below(400);
    weights.looks = 8 + random.below(32);
    weights.seed = random.next();
    weights.isTransposed = (random.next() & 1U) != 0;
    return weights;
}

FitWeights FitWeights::varied(RandomSequence& random) const noexcept {
    FitWeights other = FitWeights::random(random);
    FitWeights weights = *this;
    int* const mine[] = {&weights.exactWidth, &weights.pairedWidth, &weights.deadWidth,
                         &weights.wallHeight, &weights.towerHeight, &weights.topHeight,
                         &weights.width,      &weights.height,      &weights.noise,
                         &weights.looks};
    const int others[] = {other.exactWidth,  other.pairedWidth, other.deadWidth, other.wallHeight,
                          other.towerHeight, other.topHeight,   other.width,     other.height,
                          other.noise,       other.looks};
    const int changes = 1 + random.below(2);
    for (int i = 0; i < changes; ++i) {
        const int which = random.below(static_cast<int>(std::size(others)));
        *mine[which] = others[which];
    }
    if (random.below(4) != 0) weights.seed = other.seed;
    return weights;
}

SkylineFill::Result SkylineFill::run(const Task& task, const FitWeights& weights, SizeIndex& index,
                                     Fill& fill, int64_t& steps) noexcept {
    fill.clear();
    taken_.clear();
    if (!skyline_.reset(task.area)) return Result::kOutOfMemory;
    const Result result = place(task, weights, index, fill, steps);
    for (const int entry : taken_) index.putBack(entry);
    return result;
}

SkylineFill::Result SkylineFill::place(const Task& task, const FitWeights& weights,
                                       SizeIndex& index, Fill& fill, int64_t& steps) noexcept {
    int64_t loss = 0;
    while (true) {
        const Skyline::Gap gap = skyline_.lowest();
        const int room = task.area.height - gap.y;
        if (room == 0) return Result::kComplete;
        steps -= kStepsPerPlacement + skyline_.stepCount() / 2;
        const int chosen = chooseEntry(gap, room, weights, index, steps);
        if (chosen < 0) {
            loss += skyline_.raise(gap);
            if (loss > task.allowedLoss) return Result::kGivenUp;
            continue;
        }
        const SizeIndex::Entry& entry = index.at(chosen);
        const Size size = {entry.width, entry.height};
        const bool atLeft = belongsLeft(gap, size.height);
        const int x = atLeft ? gap.x : gap.x + gap.width - size.width;
        if (!taken_.push(chosen)) return Result::kOutOfMemory;
        index.take(chosen);
        if (!fill.add(entry.sizeClass, x, gap.y, size)) return Result::kOutOfMemory;
        skyline_.cover(gap, size, atLeft);
    }
}

/// -1 when nothing fits.
int SkylineFill::chooseEntry(const Skyline::Gap& gap, int room, const FitWeights& weights,
                             const SizeIndex& index, int64_t& steps) const noexcept {
    const int narrowest = index.narrowest();
    if (gap.width < narrowest) return -1;
    int best = -1;
    int bestRating = kUnfit;
    int looks = weights.looks;
    int i = index.firstUpTo(gap.width);
    while (looks > 0 && (i = index.nextUpTo(i, room)) >= 0) {
        const int first = i;
        const int end = std::min((i / LeastSizes::kRun + 1) * LeastSizes::kRun, index.count());
        for (; i < end && looks > 0; ++i) {
            const SizeIndex::Entry& entry = index.at(i);
            const bool fits = (entry.count > 0) & (entry.height <= room);
            const int rating = fits ? rate(entry, gap, room, narrowest, weights, index) : kUnfit;
            looks -= fits;
            best = rating > bestRating ? i : best;
            bestRating = std::max(rating, bestRating);
        }
        steps -= i - first + 4;
    }
    return best;
}

}  // namespace quor::packing
