// Decides at each draw whether a polygon is filled, recorded or replayed: a cache of one entry, the
// bands at the place where the polygon was first drawn.

#include "vg/raster/band_cache.h"

#include <new>

namespace vg::raster {
namespace {

/// Draws at the origin before a list is recorded, which takes longer than filling the polygon.
constexpr int32_t kDrawsBeforeRecording = 2;

}  // namespace

bool BandCache::draw(Rasterizer& rasterizer, const FillParams& params, uint64_t shape,
                     const BandCacheRules& rules) noexcept {
    if (rules.maxWidth == 0 || rules.maxHeight == 0) return rasterizer.fill(params);
    const Key key = keyOf(params, shape);
    const bool isKnown = state_ != State::kEmpty && key == key_;
    const float deltaY = params.userToSurface.m12 - originY_;
    if (!isKnown || !allowsVerticalMove(params.quality, rules.allowSnapToPixel, deltaY)) {
        startAt(key, params);
        return rasterizer.fill(params);
    }
    if (isReady(rasterizer, params, rules)) {
        const BandShift shift = list_->shiftTo(params.userToSurface.m02, params.userToSurface.m12);
        if (list_->fits(shift, params.clip)) return rasterizer.replay(params, *list_, shift);
    }
    return rasterizer.fill(params);
}

BandCache::Key BandCache::keyOf(const FillParams& params, uint64_t shape) noexcept {
    const Affine& m = params.userToSurface;
    return {shape, params.quality, params.fillRule, m.m00, m.m01, m.m10, m.m11};
}

void BandCache::startAt(const Key& key, const FillParams& params) noexcept {
    state_ = State::kSeen;
    drawCount_ = 1;
    key_ = key;
    originX_ = params.userToSurface.m02;
    originY_ = params.userToSurface.m12;
    originClip_ = params.clip;
}

bool BandCache::isStill(const FillParams& params) const noexcept {
    return params.userToSurface.m02 == originX_ && params.userToSurface.m12 == originY_;
}

/// True when there is a list to replay; makes it if it is time to.
bool BandCache::isReady(Rasterizer& rasterizer, const FillParams& params,
                        const BandCacheRules& rules) noexcept {
    if (state_ != State::kSeen) return state_ == State::kRecorded;
    if (isStill(params) && drawCount_++ < kDrawsBeforeRecording) return false;
    record(rasterizer, params, rules);
    return state_ == State::kRecorded;
}

void BandCache::record(Rasterizer& rasterizer, const FillParams& params,
                       const BandCacheRules& rules) noexcept {
    if (list_ == nullptr) list_ = new (std::nothrow) BandList;
    if (list_ == nullptr) {
        state_ = State::kUnfit;
        return;
    }
    FillParams atOrigin = params;
    atOrigin.userToSurface.m02 = originX_;
    atOrigin.userToSurface.m12 = originY_;
    atOrigin.clip = originClip_;
    switch (rasterizer.record(atOrigin, rules, *list_)) {
        case RecordResult::kRecorded:
            state_ = State::kRecorded;
            return;
        case RecordResult::kClipped:
            return startAt(key_, params);
        default:
            state_ = State::kUnfit;
    }
}

void BandCache::release() noexcept {
    state_ = State::kEmpty;
    delete list_;
    list_ = nullptr;
}

}  // namespace vg::raster
