// Walks along a row in texel space and samples: once a pixel, or, where the image is reduced, by a
// supersampled square whose mean is the pixel (a box filter).

#include "vg/raster/paint/texture_state.h"

#include <algorithm>
#include <cassert>
#include <cmath>

#include "vg/raster/pixels/pixel_format.h"
#include "vg/raster/pixels/pixel_io.h"

namespace vg::raster {
namespace {

/// The descriptor index of a surface format in one form or the other.
int32_t formatIndex(uint32_t surfaceFormat, TextureForm form) noexcept {
    const bool isLinear = (findPixelFormat(surfaceFormat)->flags & kLinear) != 0;
    const uint32_t plain = isLinear ? 0x48 : 0x41;
    return pixelFormatIndex(form == TextureForm::kPlain ? plain : plain + 1);
}

/// Texels a pixel, along the surface's axis with more of them.
double reductionOf(const SurfaceToTexture& map) noexcept {
    // Under a projection it changes from place to place; the affine part stands for all of them.
    const double w = map.m[2][2] != 0.0 ? std::fabs(map.m[2][2]) : 1.0;
    const auto lengthAlong = [&](int axis) {
        return std::sqrt(map.m[0][axis] * map.m[0][axis] + map.m[1][axis] * map.m[1][axis]) / w;
    };
    return std::max(lengthAlong(0), lengthAlong(1));
}

int32_t samplesPerSideOf(const TextureParams& params) noexcept {
    if (params.quality != TextureQuality::kBetter) return 1;
    constexpr double kMost = TextureState::kMaxSamplesPerSide;
    const double reduction = reductionOf(params.surfaceToTexture);
    return static_cast<int32_t>(std::ceil(std::clamp(reduction, 1.0, kMost)));
}

/// Moves the map's origin to the centre of pixel (0, 0).
SurfaceToTexture mapOfCentres(SurfaceToTexture map) noexcept {
    for (auto& row : map.m) row[2] += (row[0] + row[1]) * 0.5;
    return map;
}

void setupTransform(const float (&transform)[8], uint8_t (&tables)[4][256]) noexcept {
    constexpr int kFromLowest[4] = {2, 1, 0, 3};  // the channel of each byte
    for (int byte = 0; byte < 4; ++byte) {
        const int channel = kFromLowest[byte];
        for (int value = 0; value < 256; ++value) {
            const float c =
                static_cast<float>(value) / 255.0F * transform[channel] + transform[4 + channel];
            tables[byte][value] = static_cast<uint8_t>(std::clamp(c, 0.0F, 1.0F) * 255.0F + 0.5F);
        }
    }
}

uint32_t transformed(uint32_t color, const uint8_t (&tables)[4][256]) noexcept {
    uint32_t result = 0;
    for (int byte = 0; byte < 4; ++byte) {
        result |= uint32_t{tables[byte][color >> (8 * byte) & 0xFF]} << (8 * byte);
    }
    return result;
}

uint32_t changeForm(uint32_t color, TextureForm from, TextureForm to) noexcept {
    if (from == to) return color;
    return to == TextureForm::kPremultiplied ? premultiply(color) : unpremultiply(color);
}

/// Range reduction: an equivalent texel coordinate that fits 16.16. Repeated images are reduced to
/// one period; others are clamped a little outside their borders. NaN gives 0 or a border.
double reducedCoordinate(double c, int32_t size, TilingMode tiling) noexcept {
    constexpr double kFarthest = 1e15;  // beyond it there are no fractions left
    constexpr double kOutside = 2.0;    // farther than what filtering reads
    if (tiling == TilingMode::kFill || tiling == TilingMode::kPad) {
        const double raised = c > -kOutside ? c : -kOutside;
        return raised < size + kOutside ? raised : size + kOutside;
    }
    if (!(std::fabs(c) < kFarthest)) return 0.0;
    const double period = tiling == TilingMode::kReflect ? 2.0 * size : size;
    const double inPeriod = c - std::floor(c / period) * period;
    return inPeriod < size ? inPeriod : inPeriod - period;
}

/// Coordinates along a row.
class TexelWalk {
public:
    TexelWalk(const TextureState& state, double x, double y) noexcept
        : state_(state), x_(x), y_(y) {}

    /// Sets the request's place to that of the point (x + dx, y).
    void placeAt(double dx, SampleRequest& request) const noexcept {
        const auto& m = state_.map.m;
        const double x = x_ + dx;
        double u = m[0][0] * x + m[0][1] * y_ + m[0][2];
        double v = m[1][0] * x + m[1][1] * y_ + m[1][2];
        if (!state_.isAffine) {
            const double w = m[2][0] * x + m[2][1] * y_ + m[2][2];
            u /= w;  // by 0: infinite or NaN, which the reduction takes
            v /= w;
        }
        request.x = toFixed(reducedCoordinate(u, state_.image.width, request.tiling));
        request.y = toFixed(reducedCoordinate(v, state_.image.height, request.tiling));
    }

private:
    /// To 16.16. Samplers subtract half a texel, for filtering; without filtering it is added back.
    int32_t toFixed(double c) const noexcept {
        const auto fixed = static_cast<int32_t>(std::floor(c * 0x1p16 + 0.5));
        return state_.request.isBilinear ? fixed : fixed + 0x8000;
    }

    const TextureState& state_;
    double x_, y_;
};

/// The mean of the samples of a square one pixel wide around each centre.
void sampleSquares(const TextureState& state, SampleRequest request, int32_t x, int32_t y,
                   int32_t count, uint32_t* pixels) noexcept {
    const int32_t n = state.samplesPerSide;
    const uint32_t total = static_cast<uint32_t>(n * n);
    const auto offset = [n](int32_t i) { return (i + 0.5) / n - 0.5; };
    for (int32_t i = 0; i < count; ++i) {
        uint32_t sums[4] = {};
        for (int32_t row = 0; row < n; ++row) {
            const TexelWalk walk(state, x + i, y + offset(row));
            for (int32_t column = 0; column < n; ++column) {
                walk.placeAt(offset(column), request);
                const uint32_t sample = state.sampler(request);
                for (int byte = 0; byte < 4; ++byte) sums[byte] += sample >> (8 * byte) & 0xFF;
            }
        }
        pixels[i] = 0;
        for (int byte = 0; byte < 4; ++byte) {
            pixels[i] |= (sums[byte] + total / 2) / total << (8 * byte);
        }
    }
}

void sampleCentres(const TextureState& state, SampleRequest request, int32_t x, int32_t y,
                   int32_t count, uint32_t* pixels) noexcept {
    const TexelWalk walk(state, x, y);
    for (int32_t i = 0; i < count; ++i) {
        walk.placeAt(i, request);
        pixels[i] = state.sampler(request);
    }
}

bool isIdentity(const SurfaceToTexture& map) noexcept {
    constexpr double kTolerance = 1.1920929e-7;
    const auto& m = map.m;
    const auto isNear = [](double value, double target) {
        return std::fabs(value - target) <= kTolerance;
    };
    return isNear(m[0][0], 1) && isNear(m[0][1], 0) && isNear(m[1][0], 0) && isNear(m[1][1], 1) &&
           m[2][0] == 0 && m[2][1] == 0 && m[2][2] == 1;
}

/// The texel of pixel 0 along one axis, within the image.
int32_t directTexel(double translation, int32_t size) noexcept {
    const double nearest =
        std::floor(reducedCoordinate(translation + 0.5, size, TilingMode::kRepeat));
    return std::clamp(static_cast<int32_t>(nearest), 0, size - 1);
}

}  // namespace

void setupTexture(const TextureParams& params, uint32_t surfaceFormat, TextureForm form,
                  TextureState& state) noexcept {
    state.image = params.image;
    state.sampler = selectImageSampler(params.image.format);
    state.map = mapOfCentres(params.surfaceToTexture);
    const auto& last = params.surfaceToTexture.m[2];
    state.isAffine = last[0] == 0 && last[1] == 0 && last[2] == 1;
    state.samplesPerSide = samplesPerSideOf(params);
    state.isTransformed = params.colorTransformEnabled;
    if (state.isTransformed) setupTransform(params.colorTransform, state.transform);
    state.form = form;
    // Means are taken of premultiplied colours, transforms of plain ones.
    state.sampledForm = state.samplesPerSide > 1 ? TextureForm::kPremultiplied
                        : state.isTransformed    ? TextureForm::kPlain
                                                 : form;
    SampleRequest& request = state.request;
    request.sourceIndex = pixelFormatIndex(params.image.format);
    request.workingIndex = formatIndex(surfaceFormat, state.sampledForm);
    request.tiling = params.tiling;
    request.tileFill = packFloatColor(params.tileFill, *findPixelFormat(params.image.format));
    request.isBilinear = params.quality != TextureQuality::kNearest;
}

void sampleTexture(const TextureState& state, int32_t x, int32_t y, int32_t count,
                   uint32_t* pixels) noexcept {
    SampleRequest request = state.request;
    request.image = &state.image;
    if (state.samplesPerSide > 1) {
        sampleSquares(state, request, x, y, count, pixels);
    } else {
        sampleCentres(state, request, x, y, count, pixels);
    }
    if (state.isTransformed) {
        for (int32_t i = 0; i < count; ++i) {
            const uint32_t color = changeForm(pixels[i], state.sampledForm, TextureForm::kPlain);
            pixels[i] =
                changeForm(transformed(color, state.transform), TextureForm::kPlain, state.form);
        }
    } else if (state.sampledForm != state.form) {
        for (int32_t i = 0; i < count; ++i) {
            pixels[i] = changeForm(pixels[i], state.sampledForm, state.form);
        }
    }
}

void transformColors(const TextureState& state, uint32_t* pixels, int32_t count) noexcept {
    for (int32_t i = 0; i < count; ++i) pixels[i] = transformed(pixels[i], state.transform);
}

bool isDirectCopy(const TextureParams& params, uint32_t surfaceFormat) noexcept {
    return params.tiling == TilingMode::kRepeat && params.image.format == surfaceFormat &&
           !params.colorTransformEnabled && isIdentity(params.surfaceToTexture);
}

DirectTexel directTexelOf(const TextureParams& params) noexcept {
    assert(isDirectCopy(params, params.image.format));
    const auto& m = params.surfaceToTexture.m;
    return {directTexel(m[0][2], params.image.width), directTexel(m[1][2], params.image.height)};
}

}  // namespace vg::raster
