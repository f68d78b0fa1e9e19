// Collects an element's known attributes in one pass, lays the declarations of its `style` over
// them, and stores them packed: a bit mask of what is present, and an array without gaps, which a
// population count of the mask indexes.

#include "svg/attribute_table.h"

#include <tinyxml2.h>

#include <cstring>

#include "svg/style_declarations.h"

namespace quor {

/// A table in the making: an entry for each id, valid where `present` has the bit.
class AttributeCollector {
public:
    void addAttributes(const tinyxml2::XMLElement& element) noexcept {
        for (const auto* attribute = element.FirstAttribute(); attribute != nullptr;
             attribute = attribute->Next()) {
            add(attribute->Name(), {nullptr, attribute});
        }
    }

    /// Adds what the `style` attribute declares. False when memory runs out.
    bool addDeclarations(base::Arena& arena) noexcept {
        const AttributeId style = AttributeId::kStyle;
        if ((present_ & AttributeTable::bitOf(style)) == 0) return true;
        const char* text = AttributeTable::textOf(found_[static_cast<int>(style)]);
        const size_t size = std::strlen(text) + 1;
        auto* copy = static_cast<char*>(arena.allocate(size));
        if (copy == nullptr) return false;
        std::memcpy(copy, text, size);
        StyleDeclarations declarations(copy);
        while (declarations.next()) add(declarations.name(), {declarations.value(), nullptr});
        return true;
    }

    bool store(AttributeTable& table, base::Arena& arena) const noexcept {
        Entry* entries = nullptr;
        if (present_ != 0) {
            const auto count = static_cast<size_t>(std::popcount(present_));
            entries = static_cast<Entry*>(arena.allocate(sizeof(Entry) * count));
            if (entries == nullptr) return false;
        }
        table.present_ = present_;
        table.entries_ = entries;
        for (uint64_t left = present_; left != 0; left &= left - 1) {
            *entries++ = found_[std::countr_zero(left)];
        }
        return true;
    }

private:
    using Entry = AttributeTable::Entry;

    void add(std::string_view name, const Entry& entry) noexcept {
        const AttributeId id = findAttributeId(name);
        if (id == AttributeId::kCount) return;
        present_ |= AttributeTable::bitOf(id);
        found_[static_cast<int>(id)] = entry;
    }

    uint64_t present_ = 0;
    Entry found_[kAttributeCount];
};

bool AttributeTable::read(const tinyxml2::XMLElement& element, base::Arena& arena) noexcept {
    AttributeCollector collector;
    collector.addAttributes(element);
    return collector.addDeclarations(arena) && collector.store(*this, arena);
}

const char* AttributeTable::textOf(const Entry& entry) noexcept {
    return entry.declared != nullptr ? entry.declared : entry.attribute->Value();
}

}  // namespace quor
