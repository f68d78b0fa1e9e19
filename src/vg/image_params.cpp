#include "vg/image_params.h"

#include <algorithm>
#include <iterator>

namespace vg {
namespace {

template <auto kMember>
constexpr ParamAccess<Image> kReadOnly = {nullptr, loadMember<Image, kMember>};

constexpr ParamRule<Image> kImageRules[] = {
    {VG_IMAGE_FORMAT, kAnyValue, kReadOnly<&Image::format>},
    {VG_IMAGE_WIDTH, kAnyValue, kReadOnly<&Image::width>},
    {VG_IMAGE_HEIGHT, kAnyValue, kReadOnly<&Image::height>},
};

}  // namespace

const ParamRule<Image>* findImageRule(VGint type) noexcept {
    const auto* rule = std::find_if(std::begin(kImageRules), std::end(kImageRules),
                                    [type](const auto& r) { return r.type == type; });
    return rule != std::end(kImageRules) ? rule : nullptr;
}

}  // namespace vg
