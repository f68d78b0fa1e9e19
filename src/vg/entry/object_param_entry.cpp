// vgSetParameter and vgGetParameter: one table of rules for each kind of object.

#include <algorithm>
#include <iterator>

#include "vg/entry/param_rule.h"
#include "vg/image/image.h"
#include "vg/paint/paint.h"
#include "vg/path/path.h"

namespace vg {
namespace {

template <auto kMember>
constexpr ParamAccess<Paint> kPaintField = {storeMember<Paint, kMember>,
                                            loadMember<Paint, kMember>};

constexpr ParamAccess<Paint> kRampStops = {
    [](Paint& paint, const ParamInput& input) noexcept { return paint.stops.set(input); },
    [](const Paint& paint, ParamOutput& output) noexcept {
        output.put(paint.stops.given().data(), paint.stops.given().count());
    },
    [](const Paint& paint) noexcept { return VGint{paint.stops.given().count()}; }};

template <class Object, auto kMember>
constexpr ParamAccess<Object> kReadOnly = {nullptr, loadMember<Object, kMember>};

constexpr ParamAccess<Path> kPathFormat = {nullptr, [](const Path&, ParamOutput& output) noexcept {
                                               output.put(VG_PATH_FORMAT_STANDARD);
                                           }};

constexpr ParamAccess<Path> kSegmentCount = {
    nullptr,
    [](const Path& path, ParamOutput& output) noexcept { output.put(path.segments.count()); }};

// clang-format off
constexpr ParamRule<Paint> kPaintRules[] = {
    // Parameter                                Accepts                                          Kept in
    {VG_PAINT_TYPE,                             between(VG_PAINT_TYPE_COLOR,
                                                        VG_PAINT_TYPE_CONICAL_GRADIENT_KRN),     kPaintField<&Paint::type>},
    {VG_PAINT_COLOR,                            vectorOf(4),                                     kPaintField<&Paint::color>},
    {VG_PAINT_COLOR_RAMP_SPREAD_MODE,           between(VG_COLOR_RAMP_SPREAD_PAD,
                                                        VG_COLOR_RAMP_SPREAD_REFLECT),           kPaintField<&Paint::spreadMode>},
    {VG_PAINT_COLOR_RAMP_STOPS,                 kVectorOfFives,                                  kRampStops},
    {VG_PAINT_LINEAR_GRADIENT,                  vectorOf(4),                                     kPaintField<&Paint::linearGradient>},
    {VG_PAINT_RADIAL_GRADIENT,                  vectorOf(5),                                     kPaintField<&Paint::radialGradient>},
    {VG_PAINT_PATTERN_TILING_MODE,              between(VG_TILE_FILL, VG_TILE_REFLECT),          kPaintField<&Paint::tilingMode>},
    {VG_PAINT_COLOR_RAMP_PREMULTIPLIED,         kAnyValue,                                       kPaintField<&Paint::interpolatesPremultiplied>},
    {VG_PAINT_CONICAL_GRADIENT_KRN,             vectorOf(5),                                     kPaintField<&Paint::conicalGradient>},
    {VG_PAINT_COLOR_RAMP_INTERPOLATION_TYPE_KRN,
                                                between(VG_COLOR_RAMP_INTERPOLATION_LINEAR_KRN,
                                                        VG_COLOR_RAMP_INTERPOLATION_SMOOTH_KRN), kPaintField<&Paint::interpolation>},
};

constexpr ParamRule<Path> kPathRules[] = {
    {VG_PATH_FORMAT,        kAnyValue,                                         kPathFormat},
    {VG_PATH_DATATYPE,      kAnyValue,                                         kReadOnly<Path, &Path::datatype>},
    {VG_PATH_SCALE,         kAnyValue,                                         kReadOnly<Path, &Path::scale>},
    {VG_PATH_BIAS,          kAnyValue,                                         kReadOnly<Path, &Path::bias>},
    {VG_PATH_NUM_SEGMENTS,  kAnyValue,                                         kSegmentCount},
    {VG_PATH_NUM_COORDS,    kAnyValue,                                         kReadOnly<Path, &Path::coordinateCount>},
};

constexpr ParamRule<Image> kImageRules[] = {
    {VG_IMAGE_FORMAT,       kAnyValue,                                         kReadOnly<Image, &Image::format>},
    {VG_IMAGE_WIDTH,        kAnyValue,                                         kReadOnly<Image, &Image::width>},
    {VG_IMAGE_HEIGHT,       kAnyValue,                                         kReadOnly<Image, &Image::height>},
};
// clang-format on

template <class Rules>
auto findRule(const Rules& rules, VGint type) noexcept {
    const auto* rule = std::find_if(std::begin(rules), std::end(rules),
                                    [type](const auto& r) { return r.type == type; });
    return rule != std::end(rules) ? rule : nullptr;
}

/// Calls visit(context, object, rule) with the paint, path or image behind the handle and its rule
/// for the parameter (null without one); raises an error for any other handle.
template <class Visitor>
void visitParam(VGHandle handle, VGint type, Visitor visit) noexcept {
    Context* context = currentContext();
    if (context == nullptr) return;
    if (Paint* paint = context->findPaint(handle)) {
        visit(*context, *paint, findRule(kPaintRules, type));
    } else if (Path* path = context->findPath(handle)) {
        visit(*context, *path, findRule(kPathRules, type));
    } else if (Image* image = context->findImage(handle)) {
        visit(*context, *image, findRule(kImageRules, type));
    } else if (context->findMaskLayer(handle) != nullptr) {
        context->raise(VG_ILLEGAL_ARGUMENT_ERROR);  // it has no parameters
    } else {
        context->raise(VG_BAD_HANDLE_ERROR);
    }
}

void set(VGHandle handle, VGint type, const ParamInput& input) noexcept {
    visitParam(handle, type, [&](Context& context, auto& object, const auto* rule) {
        setParam(context, object, rule, input);
    });
}

void get(VGHandle handle, VGint type, const ParamOutput& output) noexcept {
    visitParam(handle, type, [&](Context& context, auto& object, const auto* rule) {
        getParam(context, object, rule, output);
    });
}

template <class T>
T getScalar(VGHandle handle, VGint type) noexcept {
    T value = 0;
    get(handle, type, ParamOutput(value));
    return value;
}

}  // namespace
}  // namespace vg

void vgSetParameterf(VGHandle object, VGint type, VGfloat value) {
    vg::set(object, type, vg::ParamInput(value));
}

void vgSetParameteri(VGHandle object, VGint type, VGint value) {
    vg::set(object, type, vg::ParamInput(value));
}

void vgSetParameterfv(VGHandle object, VGint type, VGint count, const VGfloat* values) {
    vg::set(object, type, vg::ParamInput(count, values));
}

void vgSetParameteriv(VGHandle object, VGint type, VGint count, const VGint* values) {
    vg::set(object, type, vg::ParamInput(count, values));
}

VGfloat vgGetParameterf(VGHandle object, VGint type) {
    return vg::getScalar<VGfloat>(object, type);
}

VGint vgGetParameteri(VGHandle object, VGint type) { return vg::getScalar<VGint>(object, type); }

VGint vgGetParameterVectorSize(VGHandle object, VGint type) {
    VGint size = 0;
    vg::visitParam(object, type, [&](vg::Context& context, auto& owner, const auto* rule) {
        size = vg::paramSize(context, owner, rule);
    });
    return size;
}

void vgGetParameterfv(VGHandle object, VGint type, VGint count, VGfloat* values) {
    vg::get(object, type, vg::ParamOutput(count, values));
}

void vgGetParameteriv(VGHandle object, VGint type, VGint count, VGint* values) {
    vg::get(object, type, vg::ParamOutput(count, values));
}
