#include "vg/paint/ramp_cache.h"

#include <algorithm>
#include <iterator>
#include <new>

#include "vg/paint/ramp_stops.h"

namespace vg {
namespace {

raster::RampOptions optionsOf(const RampKey& key) noexcept {
    static constexpr RampKey kPlain;
    const bool isTransformed = !std::equal(std::begin(key.colorTransform),
                                           std::end(key.colorTransform), kPlain.colorTransform);
    return {.isMirrored = key.isMirrored,
            .isSmooth = key.isSmooth,
            .interpolatesPremultiplied = key.interpolatesPremultiplied,
            .isLinearSpace = key.isLinearSpace,
            .isPremultiplied = key.isPremultiplied,
            .colorTransform = isTransformed ? key.colorTransform : nullptr};
}

}  // namespace

RampCache::~RampCache() { release(); }

void RampCache::release() noexcept {
    for (Entry& entry : entries_) {
        delete entry.ramp;
        entry = Entry();
    }
}

const raster::ColorRamp* RampCache::find(const RampStops& stops, const RampKey& key) noexcept {
    Entry* const found =
        std::find_if(std::begin(entries_), std::end(entries_) - 1, [&](const Entry& entry) {
            return entry.isBuilt && entry.stopsVersion == stops.version() && entry.key == key;
        });  // else the last one
    std::rotate(entries_, found, found + 1);
    Entry& entry = entries_[0];
    const bool fits = entry.isBuilt && entry.stopsVersion == stops.version() && entry.key == key;
    if (!fits && !build(stops, key, entry)) return nullptr;
    return entry.ramp;
}

bool RampCache::build(const RampStops& stops, const RampKey& key, Entry& entry) noexcept {
    entry.isBuilt = false;
    if (entry.ramp == nullptr) entry.ramp = new (std::nothrow) raster::ColorRamp;
    if (entry.ramp == nullptr) return false;
    if (!raster::buildColorRamp(stops.used().data(), stops.used().count(), optionsOf(key),
                                *entry.ramp)) {
        return false;
    }
    entry.key = key;
    entry.stopsVersion = stops.version();
    entry.isBuilt = true;
    ++buildCount_;
    return true;
}

}  // namespace vg
