#include "svg/initial_values.h"

#include <algorithm>
#include <array>
#include <string_view>

namespace quor {
namespace {

struct Property {
    std::string_view name;
    const char* initialValue;
};

constexpr bool isBefore(const Property& property, std::string_view name) noexcept {
    return property.name < name;
}

// clang-format off
constexpr std::array<Property, 40> kProperties = {{
    {"audio-level", "1"},
    {"buffered-rendering", "auto"},
    {"color", "#000"},
    {"color-rendering", "auto"},
    {"direction", "ltr"},
    {"display", "inline"},
    {"display-align", "auto"},
    {"fill", "#000"},
    {"fill-opacity", "1"},
    {"fill-rule", "nonzero"},
    {"font-family", "sans-serif"},
    {"font-size", "medium"},
    {"font-style", "normal"},
    {"font-variant", "normal"},
    {"font-weight", "normal"},
    {"image-rendering", "auto"},
    {"line-increment", "auto"},
    {"opacity", "1"},
    {"pointer-events", "visiblePainted"},
    {"shape-rendering", "auto"},
    {"solid-color", "#000"},
    {"solid-opacity", "1"},
    {"stop-color", "#000"},
    {"stop-opacity", "1"},
    {"stroke", "none"},
    {"stroke-dasharray", "none"},
    {"stroke-dashoffset", "0"},
    {"stroke-linecap", "butt"},
    {"stroke-linejoin", "miter"},
    {"stroke-miterlimit", "4"},
    {"stroke-opacity", "1"},
    {"stroke-width", "1"},
    {"text-align", "start"},
    {"text-anchor", "start"},
    {"text-rendering", "auto"},
    {"unicode-bidi", "normal"},
    {"vector-effect", "none"},
    {"viewport-fill", "none"},
    {"viewport-fill-opacity", "1"},
    {"visibility", "visible"},
}};
// clang-format on

static_assert(std::is_sorted(kProperties.begin(), kProperties.end(),
                             [](const Property& a, const Property& b) {
                                 return isBefore(a, b.name);
                             }));

}  // namespace

const char* initialPropertyValue(std::string_view name) noexcept {
    const auto found = std::lower_bound(kProperties.begin(), kProperties.end(), name, isBefore);
    return found != kProperties.end() && found->name == name ? found->initialValue : nullptr;
}

}  // namespace quor
