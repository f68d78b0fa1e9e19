// Sorts out which of the given stops are used, in one pass, and adds the missing ends.

#include "vg/paint/ramp_stops.h"

#include <algorithm>

#include "vg/param_values.h"

namespace vg {
namespace {

using Stops = base::Array<raster::ColorStop>;

constexpr VGint kFloatsOfStop = 5;

raster::ColorStop stopAt(const float* values) noexcept {
    raster::ColorStop stop = {values[0], {}};
    for (int i = 0; i < 4; ++i) stop.color[i] = std::clamp(values[1 + i], 0.0F, 1.0F);
    return stop;
}

/// Appends a stop that is not before the last one; a third at one offset replaces the second.
void appendStop(const raster::ColorStop& stop, Stops& stops) noexcept {
    const int count = stops.count();
    const bool isThird = count >= 2 && stops[count - 2].offset == stop.offset;
    if (isThird) {
        stops.last() = stop;
    } else {
        stops.pushReserved(stop);
    }
}

/// The stops between 0 and 1; none when an offset falls. Precondition: there is room for all.
void collectStops(const base::Array<float>& values, Stops& stops) noexcept {
    for (int i = 0; i < values.count(); i += kFloatsOfStop) {
        const raster::ColorStop stop = stopAt(values.data() + i);
        if (!(stop.offset >= 0.0F && stop.offset <= 1.0F)) continue;
        if (!stops.isEmpty() && stop.offset < stops.last().offset) return stops.clear();
        appendStop(stop, stops);
    }
}

/// Precondition: there is room for two more.
void addMissingEnds(Stops& stops) noexcept {
    if (stops.isEmpty()) return;
    if (stops[0].offset > 0.0F) {
        stops.pushReserved({});
        std::copy_backward(stops.begin(), stops.end() - 1, stops.end());
        stops[0].offset = 0.0F;
    }
    if (stops.last().offset < 1.0F) {
        stops.pushReserved(stops.last());
        stops.last().offset = 1.0F;
    }
}

bool readValues(const ParamInput& input, base::Array<float>& values) noexcept {
    if (!values.reserve(input.count())) return false;
    for (VGint i = 0; i < input.count(); ++i) values.pushReserved(input.floatAt(i));
    return true;
}

bool areEqual(const ParamInput& input, const base::Array<float>& values) noexcept {
    if (input.count() != values.count()) return false;
    for (VGint i = 0; i < input.count(); ++i) {
        if (input.floatAt(i) != values[i]) return false;
    }
    return true;
}

}  // namespace

bool RampStops::set(const ParamInput& input) noexcept {
    // Gradients whose colours depend on where they are used send their stops at every use.
    if (areEqual(input, given_)) return true;
    base::Array<float> given;
    Stops used;
    if (!readValues(input, given) || !used.reserve(given.count() / kFloatsOfStop + 2)) return false;
    collectStops(given, used);
    addMissingEnds(used);
    given_.swap(given);
    used_.swap(used);
    ++version_;
    return true;
}

}  // namespace vg
