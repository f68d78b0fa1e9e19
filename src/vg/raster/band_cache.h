#pragma once

#include <cstdint>

#include "vg/raster/geometry/polygon.h"
#include "vg/raster/rasterizer.h"
#include "vg/raster/replay/band_list.h"

namespace vg::raster {

/// Draws a polygon again and again, from its recorded bands where that is allowed.
///
/// The band list stands for the polygon at its origin: the place of the first draw with the present
/// key. Draws elsewhere replay it, moved as the rules say. The list itself is made when it is
/// needed, from the polygon carried to the origin, so that a polygon drawn once costs nothing: at
/// the first draw elsewhere, or at the third at the origin. When it cannot be made, the polygon is
/// filled afresh at each draw, and no second attempt follows.
///
/// An origin where the polygon was clipped gives way to the next draw; a draw that has to be
/// clipped fills the polygon and leaves the list alone.
class BandCache {
public:
    BandCache() noexcept = default;
    BandCache(const BandCache&) = delete;
    BandCache& operator=(const BandCache&) = delete;
    ~BandCache() { delete list_; }

    /// Fills the polygon, which `shape` stands for: equal numbers, equal polygons. params.clip is
    /// the surface. False when memory runs out: the surface may then be drawn on in part.
    [[nodiscard]] bool draw(Rasterizer& rasterizer, const FillParams& params, uint64_t shape,
                            const BandCacheRules& rules) noexcept;

    /// Forgets everything and gives the memory back.
    void release() noexcept;

    /// The recorded bands; null without any.
    const BandList* list() const noexcept { return state_ == State::kRecorded ? list_ : nullptr; }

private:
    enum class State { kEmpty, kSeen, kRecorded, kUnfit };

    struct Key {
        uint64_t shape = 0;
        Quality quality = Quality::kBetter;
        FillRule fillRule = FillRule::kEvenOdd;
        float m00 = 0.0F, m01 = 0.0F, m10 = 0.0F, m11 = 0.0F;

        bool operator==(const Key&) const noexcept = default;
    };

    static Key keyOf(const FillParams& params, uint64_t shape) noexcept;
    void startAt(const Key& key, const FillParams& params) noexcept;
    bool isStill(const FillParams& params) const noexcept;
    [[nodiscard]] bool isReady(Rasterizer& rasterizer, const FillParams& params,
                               const BandCacheRules& rules) noexcept;
    void record(Rasterizer& rasterizer, const FillParams& params,
                const BandCacheRules& rules) noexcept;

    State state_ = State::kEmpty;
    int32_t drawCount_ = 0;  ///< at the origin, before the list was recorded
    Key key_;
    float originX_ = 0.0F;
    float originY_ = 0.0F;
    PixelRect originClip_;
    BandList* list_ = nullptr;  ///< owned; null before the first recording
};

}  // namespace vg::raster
