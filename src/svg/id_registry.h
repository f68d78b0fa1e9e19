#pragma once

#include <cstddef>

#include "base/array.h"
#include "svg/status.h"

namespace quor {

class SvgNode;

/// Maps ids to nodes: an open-addressing hash table. Keys are not copied; they must outlive the
/// registry's use of them.
class IdRegistry {
public:
    static constexpr int kInitialCapacity = 256;

    /// Allocates the first slots; nothing else may be called before. False when memory runs out.
    [[nodiscard]] bool initialize() noexcept;

    /// An id that is there already gets the new node.
    Status insert(const char* id, SvgNode* node) noexcept;

    /// `length` characters of `id`; null when unknown.
    SvgNode* find(const char* id, size_t length) const noexcept;

    /// Forgets all ids, keeps the memory.
    void clear() noexcept;

private:
    struct Entry {
        const char* id;  ///< null: free
        SvgNode* node;
    };

    bool place(const char* id, SvgNode* node, int limit) noexcept;
    bool placeAll(const IdRegistry& other) noexcept;
    bool grow() noexcept;

    base::Array<Entry> entries_;  ///< a power of two of them, at least half of them free
    int count_ = 0;
};

}  // namespace quor
