#include "vg/raster/pixels/blend_modes.h"

#include <gtest/gtest.h>

#include <cmath>
#include <vector>

namespace vg::raster {
namespace {

// The modes as compositing is usually defined: colours as fractions, not premultiplied, blended by
// a function B(backdrop, source) and composed by alpha. Porter and Duff's operators by the share
// of each side.

using BlendFunction = double (*)(double b, double s);

double hardLight(double b, double s) { return s <= 0.5 ? b * 2 * s : b + (2 * s - 1) * (1 - b); }

double softLight(double b, double s) {
    if (s <= 0.5) return b - (1 - 2 * s) * b * (1 - b);
    const double d = b <= 0.25 ? ((16 * b - 12) * b + 4) * b : std::sqrt(b);
    return b + (2 * s - 1) * (d - b);
}

double dodge(double b, double s) {
    return b <= 0 ? 0.0 : s >= 1 ? 1.0 : std::min(1.0, b / (1 - s));
}

double burn(double b, double s) {
    return b >= 1 ? 1.0 : s <= 0 ? 0.0 : 1 - std::min(1.0, (1 - b) / s);
}

using Share = double (*)(double otherAlpha);
double none(double) { return 0; }
double all(double) { return 1; }
double inside(double alpha) { return alpha; }
double outside(double alpha) { return 1 - alpha; }

using Operator = uint32_t (*)(uint32_t s, uint32_t d);

struct ModeCase {
    const char* name;
    Operator apply;
    BlendFunction blend;  // or null, and the shares:
    Share ofSource = nullptr, ofDestination = nullptr;
};

const ModeCase kModes[] = {
    {"source", Source::apply, nullptr, all, none},
    {"source over", SourceOver::apply, nullptr, all, outside},
    {"destination over", DestinationOver::apply, nullptr, outside, all},
    {"source in", SourceIn::apply, nullptr, inside, none},
    {"destination in", DestinationIn::apply, nullptr, none, inside},
    {"multiply", Multiply::apply, [](double b, double s) { return b * s; }},
    {"screen", Screen::apply, [](double b, double s) { return b + s - b * s; }},
    {"darken", Darken::apply, [](double b, double s) { return std::min(b, s); }},
    {"lighten", Lighten::apply, [](double b, double s) { return std::max(b, s); }},
    {"additive", Additive::apply, nullptr, all, all},
    {"source out", SourceOut::apply, nullptr, outside, none},
    {"destination out", DestinationOut::apply, nullptr, none, outside},
    {"source atop", SourceAtop::apply, nullptr, inside, outside},
    {"destination atop", DestinationAtop::apply, nullptr, outside, inside},
    {"exclusive or", ExclusiveOr::apply, nullptr, outside, outside},
    {"overlay", Overlay::apply, [](double b, double s) { return hardLight(s, b); }},
    {"colour dodge", ColorDodge::apply, dodge},
    {"colour burn", ColorBurn::apply, burn},
    {"hard light", HardLight::apply, hardLight},
    {"soft light", SoftLight::apply, softLight},
    {"difference", Difference::apply, [](double b, double s) { return std::fabs(b - s); }},
    {"exclusion", Exclusion::apply, [](double b, double s) { return b + s - 2 * b * s; }},
};

/// The channel of premultiplied bytes, as a real number of levels.
double exactChannel(const ModeCase& mode, double s, double d, double alphaS, double alphaD) {
    const double as = alphaS / 255, ad = alphaD / 255;
    if (mode.blend == nullptr) {
        return std::min(255.0, s * mode.ofSource(ad) + d * mode.ofDestination(as));
    }
    const double source = alphaS > 0 ? s / alphaS : 0;
    const double backdrop = alphaD > 0 ? d / alphaD : 0;
    return (1 - ad) * s + (1 - as) * d + 255 * as * ad * mode.blend(backdrop, source);
}

double exactAlpha(const ModeCase& mode, double alphaS, double alphaD) {
    if (mode.blend == nullptr) return exactChannel(mode, alphaS, alphaD, alphaS, alphaD);
    return alphaS + alphaD - alphaS * alphaD / 255;
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
    for (const ModeCase& mode : kModes) {
        double worst = 0;
        for (const uint32_t alphaS : ladder(255, 15)) {
            for (const uint32_t alphaD : ladder(255, 15)) {
                for (const uint32_t s : ladder(alphaS, 6)) {
                    for (const uint32_t d : ladder(alphaD, 6)) {
                        // Each channel sees other neighbours in its word.
                        const uint32_t otherS = alphaS - s, otherD = alphaD - d;
                        const uint32_t pixel = mode.apply(alphaS << 24 | s << 16 | otherS << 8 | s,
                                                          alphaD << 24 | d << 16 | otherD << 8 | d);
                        const double exact = exactChannel(mode, s, d, alphaS, alphaD);
                        const double other = exactChannel(mode, otherS, otherD, alphaS, alphaD);
                        worst =
                            std::max({worst, std::fabs((pixel >> 16 & 0xFF) - exact),
                                      std::fabs((pixel & 0xFF) - exact),
                                      std::fabs((pixel >> 8 & 0xFF) - other),
                                      std::fabs((pixel >> 24) - exactAlpha(mode, alphaS, alphaD))});
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
    for (const ModeCase& mode : kModes) {
        for (const uint32_t alphaS : ladder(255, 5)) {
            for (const uint32_t alphaD : ladder(255, 5)) {
                const uint32_t pixel =
                    mode.apply(alphaS << 24 | alphaS << 16 | alphaS << 8 | alphaS / 2,
                               alphaD << 24 | alphaD << 16 | alphaD / 2 << 8 | alphaD);
                for (int shift = 0; shift < 24; shift += 8) {
                    ASSERT_LE(pixel >> shift & 0xFF, pixel >> 24) << mode.name;
                }
            }
        }
    }
}

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

TEST(BlendModes, ColumnsFollowTheNumbersOfTheModes) {
    const std::vector<Operator> columns = operatorsOf(BlendColumns{});
    for (const int32_t mode : {0x1FFF, 0x200A, 0x208F, 0x2091, 0x209E, 0, -1, INT32_MAX}) {
        EXPECT_EQ(blendColumnOf(mode), kNoBlendColumn) << std::hex << mode;
    }
    EXPECT_EQ(blendColumnOf(0x2090), 0);
    const struct {
        int32_t mode;
        Operator apply;
    } cases[] = {{0x2000, Source::apply},     {0x2001, SourceOver::apply},
                 {0x2005, Multiply::apply},   {0x2009, Additive::apply},
                 {0x2092, SourceOut::apply},  {0x2096, ExclusiveOr::apply},
                 {0x2097, Overlay::apply},    {0x209B, SoftLight::apply},
                 {0x209C, Difference::apply}, {0x209D, Exclusion::apply}};
    for (const auto& c : cases) {
        EXPECT_EQ(columns[static_cast<size_t>(blendColumnOf(c.mode))], c.apply)
            << std::hex << c.mode;
    }
}

}  // namespace
}  // namespace vg::raster
