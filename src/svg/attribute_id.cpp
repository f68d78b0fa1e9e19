// Finds an attribute by its name with one probe of a perfect hash table that the compiler builds.

#include "svg/attribute_id.h"

#include <algorithm>
#include <array>
#include <cassert>

namespace quor {
namespace {

constexpr int kSlotCount = 256;

// clang-format off
constexpr std::array<std::string_view, kAttributeCount> kNames = {  // in the order of AttributeId
    "display", "visibility", "transform", "fill", "fill-opacity", "fill-rule", "stroke",
    "stroke-opacity", "stroke-width", "stroke-linecap", "stroke-linejoin", "stroke-miterlimit",
    "stroke-dashoffset", "stroke-dasharray", "vector-effect",
    "color", "stop-color", "stop-opacity", "solid-color", "solid-opacity",
    "style", "id", "xml:id", "xlink:href",
    "x", "y", "width", "height", "viewBox", "preserveAspectRatio",
    "x1", "y1", "x2", "y2", "cx", "cy", "fx", "fy", "r", "rx", "ry", "points", "d", "pathLength",
    "gradientTransform", "gradientUnits", "spreadMethod", "offset",
};
// clang-format on
static_assert(std::find(kNames.begin(), kNames.end(), "") == kNames.end());  // one for each id

/// A perfect hash: the weights were chosen so that no two of the names share a slot.
/// Precondition: the name is not empty.
constexpr size_t slotOf(std::string_view name) noexcept {
    assert(!name.empty());
    const auto code = [](char c) { return static_cast<size_t>(static_cast<unsigned char>(c)); };
    return (name.size() + code(name.front()) + code(name.back()) * 3 +
            code(name[name.size() / 2]) * 19) %
           kSlotCount;
}

constexpr uint8_t kFreeSlot = kAttributeCount;

/// The id of the name in each slot.
constexpr std::array<uint8_t, kSlotCount> kSlots = [] {
    std::array<uint8_t, kSlotCount> slots{};
    slots.fill(kFreeSlot);
    for (size_t id = 0; id < kNames.size(); ++id) {
        slots[slotOf(kNames[id])] = static_cast<uint8_t>(id);
    }
    return slots;
}();

static_assert(std::count(kSlots.begin(), kSlots.end(), kFreeSlot) == kSlotCount - kAttributeCount,
              "two names share a slot");

}  // namespace

AttributeId findAttributeId(std::string_view name) noexcept {
    if (name.empty()) return AttributeId::kCount;
    const uint8_t index = kSlots[slotOf(name)];
    const bool isFound = index != kFreeSlot && kNames[index] == name;
    return isFound ? static_cast<AttributeId>(index) : AttributeId::kCount;
}

}  // namespace quor
