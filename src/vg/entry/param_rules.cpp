// One row a context parameter, which setters and getters share, and an index by type.

#include "vg/entry/param_rules.h"

#include <array>
#include <iterator>
#include <limits>

#include "vg/image/image.h"

namespace vg {
namespace {

template <auto... kMembers>
constexpr ParamAccess<Context> kField = {storeMember<Context, kMembers...>,
                                         loadMember<Context, kMembers...>};

template <auto... kMembers>
constexpr ParamAccess<Context> kReadOnly = {nullptr, loadMember<Context, kMembers...>};

/// Two fields that are set together; the first one speaks for both.
template <auto kFirst, auto kSecond>
bool storeBoth(Context& context, const ParamInput& input) noexcept {
    return storeMember<Context, kFirst>(context, input) &&
           storeMember<Context, kSecond>(context, input);
}

template <auto kFirst, auto kSecond>
constexpr ParamAccess<Context> kBoth = {storeBoth<kFirst, kSecond>, loadMember<Context, kFirst>};

template <auto kMember>
constexpr ParamAccess<Context> kStroke = kField<&Context::stroke, kMember>;

constexpr ParamAccess<Context> kBothCaps = {
    [](Context& context, const ParamInput& input) noexcept {
        context.stroke.startCap = context.stroke.endCap = input.integerAt(0);
        return true;
    },
    loadMember<Context, &Context::stroke, &StrokeState::startCap>};

VGint bestQuality(VGint mask) noexcept {
    if ((mask & VG_IMAGE_QUALITY_BETTER) != 0) return VG_IMAGE_QUALITY_BETTER;
    if ((mask & VG_IMAGE_QUALITY_FASTER) != 0) return VG_IMAGE_QUALITY_FASTER;
    return VG_IMAGE_QUALITY_NONANTIALIASED;
}

constexpr ParamAccess<Context> kImageQuality = {
    [](Context& context, const ParamInput& input) noexcept {
        context.imageQuality = bestQuality(input.integerAt(0));
        return true;
    },
    loadMember<Context, &Context::imageQuality>};

constexpr ParamAccess<Context> kLineWidth = {
    [](Context& context, const ParamInput& input) noexcept {
        context.stroke.setLineWidth(input.floatAt(0));
        return true;
    },
    loadMember<Context, &Context::stroke, &StrokeState::lineWidth>};

constexpr ParamAccess<Context> kMiterLimit = {
    [](Context& context, const ParamInput& input) noexcept {
        context.stroke.setMiterLimit(input.floatAt(0));
        return true;
    },
    loadMember<Context, &Context::stroke, &StrokeState::miterLimit>};

constexpr ParamAccess<Context> kDashPattern = {
    [](Context& context, const ParamInput& input) noexcept {
        return context.stroke.setDashPattern(input);
    },
    [](const Context& context, ParamOutput& output) noexcept {
        output.put(context.stroke.dashPattern.data(), context.stroke.dashPattern.count());
    },
    [](const Context& context) noexcept { return context.stroke.dashPattern.count(); }};

constexpr ParamAccess<Context> kScissorRects = {
    [](Context& context, const ParamInput& input) noexcept {
        if (!context.scissorRects.reserve(input.count())) return false;
        context.scissorRects.clear();
        for (VGint i = 0; i < input.count(); ++i) {
            context.scissorRects.pushReserved(input.integerAt(i));
        }
        context.scissorChanged = true;
        return true;
    },
    [](const Context& context, ParamOutput& output) noexcept {
        output.put(context.scissorRects.data(), context.scissorRects.count());
    },
    [](const Context& context) noexcept { return context.scissorRects.count(); }};

void reloadColorTransform(Context& context) noexcept {
    context.effectiveColorTransform =
        context.colorTransformEnabled ? context.colorTransform : ColorTransform();
}

constexpr ParamAccess<Context> kColorTransform = {
    [](Context& context, const ParamInput& input) noexcept {
        context.colorTransformEnabled = input.integerAt(0) != 0;
        reloadColorTransform(context);
        return true;
    },
    loadMember<Context, &Context::colorTransformEnabled>};

constexpr ParamAccess<Context> kColorTransformValues = {
    [](Context& context, const ParamInput& input) noexcept {
        storeMember<Context, &Context::colorTransform, &ColorTransform::values>(context, input);
        reloadColorTransform(context);
        return true;
    },
    loadMember<Context, &Context::colorTransform, &ColorTransform::values>};

template <VGint kValue>
constexpr ParamAccess<Context> kLimit = {
    nullptr, [](const Context&, ParamOutput& output) noexcept { output.put(kValue); }};

constexpr ParamAccess<Context> kLargestFloat = {nullptr,
                                                [](const Context&, ParamOutput& output) noexcept {
                                                    output.put(std::numeric_limits<float>::max());
                                                }};

constexpr VGint kUnlimited = 0x7FFFFFFF;
constexpr VGint kMaxKernelSize = 255;
constexpr VGint kMaxImagePixels = kMaxImageSide * kMaxImageSide;

using C = Context;
using S = StrokeState;

// clang-format off
/// Sorted by type. The type of a field tells how a value is converted on its way in and out.
constexpr ParamRule<Context> kContextRules[] = {
    // Parameter                      Accepts                                     Kept in
    {VG_MATRIX_MODE,                  between(VG_MATRIX_PATH_USER_TO_SURFACE,
                                              VG_MATRIX_GLYPH_USER_TO_SURFACE),   kField<&C::matrixMode>},
    {VG_FILL_RULE,                    between(VG_EVEN_ODD, VG_NON_ZERO),          kField<&C::fillRule>},
    {VG_IMAGE_QUALITY,                between(1, 7),                              kImageQuality},
    {VG_RENDERING_QUALITY,            between(VG_RENDERING_QUALITY_NONANTIALIASED,
                                              VG_RENDERING_QUALITY_BETTER),       kField<&C::renderingQuality>},
    {VG_BLEND_MODE,                   between(VG_BLEND_SRC, VG_BLEND_LAST_KRN),   kBoth<&C::fillBlendMode, &C::strokeBlendMode>},
    {VG_IMAGE_MODE,                   between(VG_DRAW_IMAGE_NORMAL,
                                              VG_DRAW_IMAGE_STENCIL),             kField<&C::imageMode>},
    {VG_SCISSOR_RECTS,                kVectorOfFours,                             kScissorRects},

    {VG_STROKE_LINE_WIDTH,            kAnyValue,                                  kLineWidth},
    {VG_STROKE_CAP_STYLE,             between(VG_CAP_BUTT, VG_CAP_SQUARE),        kBothCaps},
    {VG_STROKE_JOIN_STYLE,            between(VG_JOIN_MITER, VG_JOIN_BEVEL),      kStroke<&S::join>},
    {VG_STROKE_MITER_LIMIT,           kAnyValue,                                  kMiterLimit},
    {VG_STROKE_DASH_PATTERN,          kAnyVector,                                 kDashPattern},
    {VG_STROKE_DASH_PHASE,            kAnyValue,                                  kStroke<&S::dashPhase>},
    {VG_STROKE_DASH_PHASE_RESET,      kAnyValue,                                  kStroke<&S::dashPhaseReset>},

    {VG_TILE_FILL_COLOR,              vectorOf(4),                                kField<&C::tileFillColor>},
    {VG_CLEAR_COLOR,                  vectorOf(4),                                kField<&C::clearColor>},
    {VG_GLYPH_ORIGIN,                 vectorOf(2),                                kField<&C::glyphOrigin>},
    {VG_MASKING,                      kAnyValue,                                  kField<&C::masking>},
    {VG_SCISSORING,                   kAnyValue,                                  kField<&C::scissoring>},
    {VG_PIXEL_LAYOUT,                 between(VG_PIXEL_LAYOUT_UNKNOWN,
                                              VG_PIXEL_LAYOUT_BGR_HORIZONTAL),    kField<&C::pixelLayout>},
    {VG_SCREEN_LAYOUT,                kAnyValue,                                  kReadOnly<&C::screenLayout>},
    {VG_FILTER_FORMAT_LINEAR,         kAnyValue,                                  kField<&C::filterFormatLinear>},
    {VG_FILTER_FORMAT_PREMULTIPLIED,  kAnyValue,                                  kField<&C::filterFormatPremultiplied>},
    {VG_FILTER_CHANNEL_MASK,          kAnyValue,                                  kField<&C::filterChannelMask>},

    {VG_MAX_SCISSOR_RECTS,            kAnyValue,                                  kLimit<kUnlimited>},
    {VG_MAX_DASH_COUNT,               kAnyValue,                                  kLimit<kUnlimited>},
    {VG_MAX_KERNEL_SIZE,              kAnyValue,                                  kLimit<kMaxKernelSize>},
    {VG_MAX_SEPARABLE_KERNEL_SIZE,    kAnyValue,                                  kLimit<kMaxKernelSize>},
    {VG_MAX_COLOR_RAMP_STOPS,         kAnyValue,                                  kLimit<kUnlimited>},
    {VG_MAX_IMAGE_WIDTH,              kAnyValue,                                  kLimit<kMaxImageSide>},
    {VG_MAX_IMAGE_HEIGHT,             kAnyValue,                                  kLimit<kMaxImageSide>},
    {VG_MAX_IMAGE_PIXELS,             kAnyValue,                                  kLimit<kMaxImagePixels>},
    {VG_MAX_IMAGE_BYTES,              kAnyValue,                                  kLimit<kMaxImagePixels * 4>},
    {VG_MAX_FLOAT,                    kAnyValue,                                  kLargestFloat},
    {VG_MAX_GAUSSIAN_STD_DEVIATION,   kAnyValue,                                  kLimit<kMaxGaussianStdDeviation>},

    {VG_COLOR_TRANSFORM,              kAnyValue,                                  kColorTransform},
    {VG_COLOR_TRANSFORM_VALUES,       vectorOf(8),                                kColorTransformValues},
    {VG_FILL_BLEND_MODE_KRN,          between(VG_BLEND_SRC, VG_BLEND_LAST_KRN),   kField<&C::fillBlendMode>},
    {VG_STROKE_BLEND_MODE_KRN,        between(VG_BLEND_SRC, VG_BLEND_LAST_KRN),   kField<&C::strokeBlendMode>},
    {VG_STROKE_START_CAP_STYLE_KRN,   between(VG_CAP_BUTT, VG_CAP_SQUARE),        kStroke<&S::startCap>},
    {VG_STROKE_END_CAP_STYLE_KRN,     between(VG_CAP_BUTT, VG_CAP_SQUARE),        kStroke<&S::endCap>},
};
// clang-format on

constexpr VGint kFirstType = VG_MATRIX_MODE;
constexpr VGint kTypeCount = VG_STROKE_END_CAP_STYLE_KRN - kFirstType + 1;
constexpr uint8_t kNoRule = 0xFF;

constexpr bool isStrictlySorted() {
    for (size_t i = 1; i < std::size(kContextRules); ++i) {
        if (kContextRules[i - 1].type >= kContextRules[i].type) return false;
    }
    return true;
}
static_assert(isStrictlySorted() && std::size(kContextRules) < kNoRule);

/// Type - kFirstType to index in kContextRules.
constexpr auto kRuleOfType = [] {
    std::array<uint8_t, kTypeCount> rules{};
    rules.fill(kNoRule);
    for (size_t i = 0; i < std::size(kContextRules); ++i) {
        rules[static_cast<size_t>(kContextRules[i].type - kFirstType)] = static_cast<uint8_t>(i);
    }
    return rules;
}();

}  // namespace

const ParamRule<Context>* findContextRule(VGint type) noexcept {
    if (type < kFirstType || type >= kFirstType + kTypeCount) return nullptr;
    const uint8_t index = kRuleOfType[static_cast<size_t>(type - kFirstType)];
    return index != kNoRule ? &kContextRules[index] : nullptr;
}

}  // namespace vg
