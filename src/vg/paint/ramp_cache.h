#pragma once

#include <cstdint>

#include "vg/raster/paint/color_ramp.h"

namespace vg {

class RampStops;

/// What a ramp of given stops depends on.
struct RampKey {
    bool isMirrored = false;
    bool isSmooth = false;
    bool interpolatesPremultiplied = false;
    bool isLinearSpace = false;
    bool isPremultiplied = true;
    float colorTransform[8] = {1, 1, 1, 1, 0, 0, 0, 0};  ///< scales, biases

    bool operator==(const RampKey&) const noexcept = default;
};

/// The colour ramps of one paint that were used last. Opacities, among other things, come and go in
/// turn from draw to draw; none of them shall build a ramp each time.
class RampCache {
public:
    static constexpr int kEntries = 6;

    RampCache() noexcept = default;
    RampCache(const RampCache&) = delete;
    RampCache& operator=(const RampCache&) = delete;
    ~RampCache();

    /// The ramp of the key, built unless it is there; the one not used for longest makes room for
    /// it. Valid until the next call. Null when memory runs out.
    const raster::ColorRamp* find(const RampStops& stops, const RampKey& key) noexcept;

    /// Frees the ramps; find() builds them anew.
    void release() noexcept;

    /// How often a ramp was built.
    uint32_t buildCount() const noexcept { return buildCount_; }

private:
    struct Entry {
        RampKey key;
        uint32_t stopsVersion = 0;
        bool isBuilt = false;
        raster::ColorRamp* ramp = nullptr;  ///< owned; its memory is kept for the next key
    };

    bool build(const RampStops& stops, const RampKey& key, Entry& entry) noexcept;

    Entry entries_[kEntries];  ///< the last used first
    uint32_t buildCount_ = 0;
};

}  // namespace vg
