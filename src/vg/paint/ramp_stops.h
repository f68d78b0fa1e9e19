#pragma once

#include "base/array.h"
#include "vg/raster/paint/color_ramp.h"

namespace vg {

class ParamInput;

/// The stops of a colour ramp: as they were given, and as they are used.
///
/// Used stops have offsets that run from 0 to 1 without falling and components in 0..1: stops
/// outside 0..1 are left out, of more than two at one offset the first and the last stay, and where
/// an end is missing the nearest stop is repeated there. A list in which an offset falls, like one
/// of which nothing stays, counts as none.
class RampStops {
public:
    /// Takes five numbers a stop: offset, red, green, blue, alpha. False, with nothing changed,
    /// when memory runs out.
    [[nodiscard]] bool set(const ParamInput& input) noexcept;

    const base::Array<float>& given() const noexcept { return given_; }
    const base::Array<raster::ColorStop>& used() const noexcept { return used_; }

    /// Different after each change.
    uint32_t version() const noexcept { return version_; }

private:
    base::Array<float> given_;
    base::Array<raster::ColorStop> used_;
    uint32_t version_ = 0;
};

}  // namespace vg
