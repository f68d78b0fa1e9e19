// Walks the pattern and the edges of a subpath side by side: intervals of the pattern that are on,
// found by a binary search for the phase once a subpath, cut pieces out of the edges they cover.

#include "vg/stroke/dasher.h"

#include <algorithm>
#include <cmath>

namespace vg {

namespace {

bool isOn(int32_t element) noexcept { return element % 2 == 0; }

double totalLength(const StrokeRun& run) noexcept {
    double length = 0.0;
    for (int32_t i = 0; i < run.count; ++i) length += run.edges[i].length;
    return length;
}

}  // namespace

bool Dasher::setPattern(const DashPattern& pattern) noexcept {
    starts_.clear();
    dashesLeft_ = kMaxDashesInPath;
    resetsPhase_ = pattern.resetsPhase;
    const int32_t count = pattern.total > 0.0F ? pattern.count : 0;
    if (!starts_.reserveMore(count + 1)) return false;
    double start = 0.0;
    for (int32_t i = 0; i < count; ++i) {
        starts_.pushReserved(start);
        start += static_cast<double>(pattern.lengths[i]);
    }
    starts_.pushReserved(start);
    if (!(start > 0.0)) return true;
    const double phase = std::fmod(static_cast<double>(pattern.phase), start);
    initialPhase_ = phase < 0.0 ? std::fmod(phase + start, start) : phase;
    phase_ = initialPhase_;
    return true;
}

bool Dasher::begin(const StrokeRun& subpath) noexcept {
    subpath_ = subpath;
    isFirstPending_ = false;
    mode_ = Mode::kWhole;
    if (!(cycleLength() > 0.0)) return true;
    pieces_.clear();
    constexpr int32_t kSpare = 3;  // an edge cut in two at the seam, and the end
    if (!pieces_.reserveMore(subpath.count + kSpare)) return false;
    length_ = totalLength(subpath);
    const double phase = resetsPhase_ ? initialPhase_ : phase_;
    phase_ = std::fmod(phase + length_, cycleLength());
    mode_ = modeAt(phase);
    if (mode_ == Mode::kDashes) startPattern(phase);
    return true;
}

bool Dasher::next(StrokeRun& dash) noexcept {
    if (mode_ == Mode::kWhole) {
        mode_ = Mode::kDone;
        dash = subpath_;
        return true;
    }
    if (mode_ == Mode::kDone || !nextPieces()) return false;
    dash = {pieces_.data(), pieces_.count() - 1, false};
    return true;
}

void Dasher::shrinkBuffers() noexcept {
    starts_.shrinkToFit();
    pieces_.shrinkToFit();
}

/// The element that is under way at a phase, or the first that starts there.
int32_t Dasher::elementAt(double phase) const noexcept {
    const double* found = std::lower_bound(starts_.begin(), starts_.end(), phase);
    const auto element = static_cast<int32_t>(found - starts_.begin());
    return *found == phase ? element : element - 1;
}

/// How many elements end within a length of path that starts at a phase.
double Dasher::elementsWithin(double phase, double length) const noexcept {
    const double endPhase = std::fmod(phase + length, cycleLength());
    const double cycles = std::nearbyint((phase + length - endPhase) / cycleLength());
    return cycles * elementCount() + (elementAt(endPhase) - elementAt(phase));
}

bool Dasher::takeDashes(double elements) noexcept {
    const double dashes = std::ceil(elements / 2.0);
    if (dashes > kMaxDashes || dashes > dashesLeft_) return false;
    dashesLeft_ -= static_cast<int32_t>(dashes);
    return true;
}

Dasher::Mode Dasher::modeAt(double phase) noexcept {
    if (length_ == 0.0) return isOn(elementAt(phase)) ? Mode::kWhole : Mode::kDone;
    return takeDashes(elementsWithin(phase, length_)) ? Mode::kDashes : Mode::kWhole;
}

void Dasher::startPattern(double phase) noexcept {
    rewindEdges();
    startPhase_ = phase;
    cycle_ = 0.0;
    element_ = elementAt(phase);
    const bool startsOn = isOn(element_);
    if (!startsOn) {
        --element_;
        advancePattern();
    }
    if (!startsOn || !subpath_.isClosed) return;
    isFirstPending_ = nextInterval(first_);
    if (first_.to >= length_) mode_ = Mode::kWhole;
}

/// Collects the pieces of the next dash and the entry that ends them.
bool Dasher::nextPieces() noexcept {
    pieces_.clear();
    Interval interval;
    const bool found = nextInterval(interval);
    if (found) addPieces(interval);
    if (isFirstPending_ && (!found || interval.to >= length_)) {
        isFirstPending_ = false;
        interval = first_;
        rewindEdges();
        addPieces(first_);
    } else if (!found) {
        return false;
    }
    pieces_.pushReserved(endingAt(interval.to));
    return true;
}

/// Where an element of the current cycle starts, as a length along the subpath.
double Dasher::patternPosition(int32_t element) const noexcept {
    return cycle_ * cycleLength() + starts_[element] - startPhase_;
}

void Dasher::advancePattern() noexcept {
    element_ += 2;
    if (element_ < elementCount()) return;
    element_ = 0;
    cycle_ += 1.0;
}

/// Finds the next part that is on, within the subpath.
bool Dasher::nextInterval(Interval& interval) noexcept {
    interval.from = std::max(patternPosition(element_), 0.0);
    if (interval.from >= length_) return false;
    bool goesOn = true;
    while (goesOn) {
        interval.to = std::max(patternPosition(element_ + 1), interval.from);
        const bool isGapEmpty = starts_[element_ + 2] == starts_[element_ + 1];
        advancePattern();
        goesOn = isGapEmpty && interval.to < length_;
    }
    interval.to = std::min(interval.to, length_);
    return true;
}

void Dasher::rewindEdges() noexcept {
    edge_ = 0;
    edgeStart_ = 0.0;
}

bool Dasher::advanceEdge() noexcept {
    if (edge_ + 1 >= subpath_.count) return false;
    edgeStart_ = edgeEnd();
    ++edge_;
    return true;
}

/// Appends the parts of the edges within an interval that does not start before the last one.
void Dasher::addPieces(const Interval& interval) noexcept {
    while (edgeEnd() <= interval.from && advanceEdge()) {
    }
    do {
        const StrokeEdge& edge = subpath_.edges[edge_];
        const double from = std::max(interval.from - edgeStart_, 0.0);
        const double to = std::min(interval.to - edgeStart_, edge.length);
        if (!(from < to)) break;
        pieces_.pushReserved({edge.pointAt(from, subpath_.endOf(edge_)), edge.directionAt(from),
                              edge.directionAt(to), to - from, edge.joint, edge.isCurved});
    } while (edgeEnd() < interval.to && advanceEdge());
}

/// The entry behind the last piece of a dash that ends on the current edge.
StrokeEdge Dasher::endingAt(double position) const noexcept {
    const StrokeEdge& edge = subpath_.edges[edge_];
    const Vector2 edgeEnds = subpath_.endOf(edge_);
    const double distance = position - edgeStart_;
    const Vector2 point = position >= edgeEnd() ? edgeEnds : edge.pointAt(distance, edgeEnds);
    const Vector2 direction = edge.directionAt(std::min(distance, edge.length));
    return {point, direction, direction, 0.0, StrokeJoint::kCorner, false};
}

}  // namespace vg
