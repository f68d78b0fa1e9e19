#include "vg/raster/pixels/blend_modes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

#include "vg/raster/blend_oracle.h"

namespace vg::raster {
namespace {

using Operator = uint32_t (*)(uint32_t s, uint32_t d);

template <class Mode>
constexpr bool hasOperator = requires {
    Mode::apply(0U, 0U);
};

template <class... Modes>
std::vector<Operator> operatorsOf(BlendList<Modes...>) {
    std::vector<Operator> operators;
    const auto add = [&]<class Mode>(Mode) {
        if constexpr (hasOperator<Mode>) {
            operators.push_back(Mode::apply);
        } else {
            operators.push_back(nullptr);
        }
    };
    (add(Modes{}), ...);
    return operators;
}

/// The modes that have an operator, with the one in the column of their number.
struct ModeCase {
    const oracle::Mode& mode;
    Operator apply;
};

std::vector<ModeCase> modeCases() {
    const std::vector<Operator> columns = operatorsOf(BlendColumns{});
    std::vector<ModeCase> cases;
    for (const oracle::Mode& mode : oracle::kModes) {
        if (mode.number == kBlendClear || mode.number == 0x2091) continue;
        cases.push_back({mode, columns[static_cast<size_t>(blendColumnOf(mode.number))]});
    }
    return cases;
}

/// In levels of 255.
double exactChannel(const oracle::Mode& mode, double s, double d, double sa, double da) {
    return 255 * oracle::blendChannel(mode, s / 255, d / 255, sa / 255, da / 255);
}

/// 0 to `last` in steps, with both ends and their neighbours.
std::vector<uint32_t> ladder(uint32_t last, uint32_t step) {
    std::vector<uint32_t> values;
    for (uint32_t v = 0; v <= last; ++v) {
        if (v % step == 0 || v == 1 || v + 1 >= last) values.push_back(v);
    }
    return values;
}

TEST(BlendModes, StayWithinOneLevelOfTheRealFormulas) {
    for (const auto& [mode, apply] : modeCases()) {
        double worst = 0;
        for (const uint32_t alphaS : ladder(255, 15)) {
            for (const uint32_t alphaD : ladder(255, 15)) {
                for (const uint32_t s : ladder(alphaS, 6)) {
                    for (const uint32_t d : ladder(alphaD, 6)) {
                        // Each channel sees other neighbours in its word.
                        const uint32_t otherS = alphaS - s, otherD = alphaD - d;
                        const uint32_t pixel = apply(alphaS << 24 | s << 16 | otherS << 8 | s,
                                                     alphaD << 24 | d << 16 | otherD << 8 | d);
                        const double exact = exactChannel(mode, s, d, alphaS, alphaD);
                        const double other = exactChannel(mode, otherS, otherD, alphaS, alphaD);
                        worst = std::max({worst, std::fabs((pixel >> 16 & 0xFF) - exact),
                                          std::fabs((pixel & 0xFF) - exact),
                                          std::fabs((pixel >> 8 & 0xFF) - other),
                                          std::fabs((pixel >> 24) -
                                                    255 * oracle::blendAlpha(mode, alphaS / 255.0,
                                                                             alphaD / 255.0))});
                        ASSERT_LE(worst, 1.0 + 1e-9)
                            << mode.name << ": s " << s << "/" << alphaS << ", d " << d << "/"
                            << alphaD << " gives " << std::hex << pixel;
                    }
                }
            }
        }
    }
}

TEST(BlendModes, GiveChannelsWithinAlpha) {
    for (const auto& [mode, apply] : modeCases()) {
        for (const uint32_t alphaS : ladder(255, 5)) {
            for (const uint32_t alphaD : ladder(255, 5)) {
                const uint32_t pixel =
                    apply(alphaS << 24 | alphaS << 16 | alphaS << 8 | alphaS / 2,
                          alphaD << 24 | alphaD << 16 | alphaD / 2 << 8 | alphaD);
                for (int shift = 0; shift < 24; shift += 8) {
                    ASSERT_LE(pixel >> shift & 0xFF, pixel >> 24) << mode.name;
                }
            }
        }
    }
}

TEST(BlendModes, NumbersWithoutAModeHaveNoColumn) {
    for (const int32_t mode : {0x1FFF, 0x200A, 0x208F, 0x2091, 0x209E, 0, -1, INT32_MAX}) {
        EXPECT_EQ(blendColumnOf(mode), kNoBlendColumn) << std::hex << mode;
    }
    EXPECT_EQ(blendColumnOf(kBlendClear), 0);
}

}  // namespace
}  // namespace vg::raster
