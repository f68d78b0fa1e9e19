// Fills the table from atan2, rounded to 2^-18 of a turn: far coarser than the last bits in
// which mathematics libraries differ.

#include "vg/raster/paint/conical_angles.h"

#include <array>
#include <cmath>
#include <numbers>

namespace vg::raster {
namespace {

constexpr int32_t kFullTurn = 1 << 18;

using AngleTable = std::array<int32_t, kAngleSteps * kAngleSteps>;

AngleTable computeAngles() noexcept {
    AngleTable angles{};
    for (int32_t row = 0; row < kAngleSteps; ++row) {
        for (int32_t column = 0; column < kAngleSteps; ++column) {
            const double angle = std::atan2(row / 31.5 - 1.0, column / 31.5 - 1.0);
            const long turns = std::lround(angle / (2.0 * std::numbers::pi) * kFullTurn);
            angles[static_cast<size_t>(row) * kAngleSteps + static_cast<size_t>(column)] =
                static_cast<int32_t>(turns & (kFullTurn - 1));
        }
    }
    return angles;
}

}  // namespace

const int32_t* conicalAngles() noexcept {
    static const AngleTable kAngles = computeAngles();
    return kAngles.data();
}

}  // namespace vg::raster
