#pragma once

#include <bit>
#include <cstdint>

#include "base/arena.h"
#include "svg/attribute_id.h"

namespace tinyxml2 {
class XMLAttribute;
class XMLElement;
}  // namespace tinyxml2

namespace quor {

/// The known attributes of an element, found in one pass over its attribute list, and those that
/// its `style` declares, which replace them.
///
/// Shape      an entry for each one present, in the order of their ids, in an arena.
/// Ownership  points into the element and the arena, which outlive the table.
class AttributeTable {
public:
    /// Looks at an element. False, the table then being as it was, when memory runs out.
    [[nodiscard]] bool read(const tinyxml2::XMLElement& element, base::Arena& arena) noexcept;

    bool has(AttributeId id) const noexcept { return (present_ & bitOf(id)) != 0; }

    /// The value, or null when the attribute is absent.
    const char* operator[](AttributeId id) const noexcept {
        return has(id) ? textOf(entries_[std::popcount(present_ & (bitOf(id) - 1))]) : nullptr;
    }

private:
    friend class AttributeCollector;
    static_assert(kAttributeCount <= 64);

    /// Where a value is. The XML library makes an attribute's text when it is first asked for it,
    /// so long texts that nothing draws cost nothing.
    struct Entry {
        const char* declared;  ///< by `style`; else null
        const tinyxml2::XMLAttribute* attribute;
    };

    static constexpr uint64_t bitOf(AttributeId id) noexcept {
        return uint64_t{1} << static_cast<int>(id);
    }
    static const char* textOf(const Entry& entry) noexcept;

    uint64_t present_ = 0;  ///< of bitOf
    const Entry* entries_ = nullptr;
};

}  // namespace quor
