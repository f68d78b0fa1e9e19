#pragma once

#include <cstdint>

#include "base/array.h"
#include "vg/stroke/stroke_run.h"

namespace vg {

/// A dash pattern as the context derives it.
struct DashPattern {
    const float* lengths = nullptr;  ///< on, off, on, off...; none negative
    int32_t count = 0;               ///< even; 0: no dashes
    float total = 0.0F;              ///< the sum of lengths; not above 0: no dashes
    float phase = 0.0F;              ///< where in the pattern the path starts; may be negative
    bool resetsPhase = false;        ///< every subpath starts there, not only the first
};

/// Cuts the subpaths of one path into dashes, one at a time.
///
/// A dash of length 0 is a dot that keeps the direction of its edge; a gap of length 0 cuts
/// nothing. No dash starts at the very end of a subpath. Where a closed subpath is on at both ends
/// of its seam, one dash runs through it; a closed subpath that is on throughout stays closed.
///
/// Without a pattern every subpath is one dash, and so is a subpath of more than kMaxDashes dashes
/// or one with which the path would come to more than kMaxDashesInPath.
class Dasher {
public:
    static constexpr int32_t kMaxDashes = 1'000'000;
    static constexpr int32_t kMaxDashesInPath = 1 << 22;

    /// Starts a path. False when memory runs out.
    [[nodiscard]] bool setPattern(const DashPattern& pattern) noexcept;

    /// Starts the next subpath, which must live until its last dash is taken. False when memory
    /// runs out.
    [[nodiscard]] bool begin(const StrokeRun& subpath) noexcept;

    /// Fetches a dash, valid until the next call. False when there is none left.
    bool next(StrokeRun& dash) noexcept;

    /// Gives unused memory back.
    void shrinkBuffers() noexcept;

private:
    enum class Mode {
        kDone,
        kWhole,   ///< the subpath is handed out as it is
        kDashes,  ///< the subpath is cut
    };

    /// From and to, as lengths along the subpath.
    struct Interval {
        double from = 0.0;
        double to = 0.0;
    };

    double cycleLength() const noexcept { return starts_.last(); }
    int32_t elementCount() const noexcept { return starts_.count() - 1; }
    int32_t elementAt(double phase) const noexcept;
    double elementsWithin(double phase, double length) const noexcept;
    bool takeDashes(double elements) noexcept;
    Mode modeAt(double phase) noexcept;
    void startPattern(double phase) noexcept;
    bool nextPieces() noexcept;

    double patternPosition(int32_t element) const noexcept;
    void advancePattern() noexcept;
    bool nextInterval(Interval& interval) noexcept;

    void rewindEdges() noexcept;
    double edgeEnd() const noexcept { return edgeStart_ + subpath_.edges[edge_].length; }
    bool advanceEdge() noexcept;
    void addPieces(const Interval& interval) noexcept;
    StrokeEdge endingAt(double position) const noexcept;

    base::Array<double> starts_;      ///< of the pattern's elements, and the cycle's length
    base::Array<StrokeEdge> pieces_;  ///< of the current dash
    double initialPhase_ = 0.0;       ///< in [0, cycle length)
    double phase_ = 0.0;              ///< of the next subpath, likewise
    bool resetsPhase_ = false;
    int32_t dashesLeft_ = 0;  ///< of kMaxDashesInPath

    StrokeRun subpath_;
    double length_ = 0.0;  ///< of the subpath
    Mode mode_ = Mode::kDone;
    bool isFirstPending_ = false;  ///< first_ waits for a dash that ends at the seam
    Interval first_;

    double startPhase_ = 0.0;  ///< of the subpath
    double cycle_ = 0.0;       ///< a whole number
    int32_t element_ = 0;      ///< the next dash: even

    int32_t edge_ = 0;        ///< the edge of the subpath that pieces are cut from
    double edgeStart_ = 0.0;  ///< as a length along the subpath
};

}  // namespace vg
