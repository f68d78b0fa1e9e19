#include "svg/attribute_table.h"

#include <tinyxml2.h>

#include <algorithm>
#include <array>
#include <string_view>

namespace quor {
namespace {

constexpr int kIdCount = static_cast<int>(AttributeId::kCount);
constexpr int kSlotCount = 256;

// clang-format off
constexpr std::array<std::string_view, kIdCount> kNames = {  // in the order of AttributeId
    "display", "visibility", "transform", "fill", "fill-opacity", "fill-rule", "stroke",
    "stroke-opacity", "stroke-width", "stroke-linecap", "stroke-linejoin", "stroke-miterlimit",
    "stroke-dashoffset", "stroke-dasharray", "vector-effect",
    "style", "id", "xml:id", "xlink:href",
    "x", "y", "width", "height", "viewBox", "preserveAspectRatio",
    "x1", "y1", "x2", "y2", "cx", "cy", "fx", "fy", "r",
    "gradientTransform", "gradientUnits", "spreadMethod", "offset",
};
// clang-format on
static_assert(std::find(kNames.begin(), kNames.end(), "") == kNames.end());

/// A perfect hash: the weights were chosen so that no two of the names share a slot.
/// Precondition: the name is not empty.
constexpr size_t slotOf(std::string_view name) noexcept {
    const auto code = [](char c) { return static_cast<size_t>(static_cast<unsigned char>(c)); };
    return (name.size() + code(name.front()) + code(name.back()) * 2 +
            code(name[name.size() / 2]) * 5) %
           kSlotCount;
}

constexpr uint8_t kFreeSlot = kIdCount;

/// The id of the name in each slot.
constexpr std::array<uint8_t, kSlotCount> kSlots = [] {
    std::array<uint8_t, kSlotCount> slots{};
    slots.fill(kFreeSlot);
    for (size_t id = 0; id < kNames.size(); ++id) {
        slots[slotOf(kNames[id])] = static_cast<uint8_t>(id);
    }
    return slots;
}();

static_assert(std::count(kSlots.begin(), kSlots.end(), kFreeSlot) == kSlotCount - kIdCount,
              "two names share a slot");

/// The index of a known attribute, else kIdCount.
int indexOf(std::string_view name) noexcept {
    if (name.empty()) return kIdCount;
    const uint8_t index = kSlots[slotOf(name)];
    return index != kFreeSlot && kNames[index] == name ? index : kIdCount;
}

}  // namespace

void AttributeTable::read(const tinyxml2::XMLElement& element) noexcept {
    std::fill(std::begin(values_), std::end(values_), nullptr);
    for (const tinyxml2::XMLAttribute* attribute = element.FirstAttribute(); attribute != nullptr;
         attribute = attribute->Next()) {
        const int index = indexOf(attribute->Name());
        if (index != kIdCount) values_[index] = attribute->Value();
    }
}

}  // namespace quor
