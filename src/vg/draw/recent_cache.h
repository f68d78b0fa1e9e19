#pragma once

#include <cstddef>
#include <cstdint>
#include <new>

namespace vg {

/// A least-recently-used (LRU) cache: values that were made for different keys, in a list with the
/// last used first.
///
/// A value has `uint64_t serial`, another number each time it is made (0: none was), and
/// `size_t byteCount() const`. There are at most kMaxEntries, and kMaxBytes in all; the first is
/// always kept. Memory of a value that is no longer wanted serves the next one.
template <class Value>
class RecentCache {
public:
    static constexpr int kMaxEntries = 32;
    static constexpr size_t kMaxBytes = size_t{64} * 1024;

    RecentCache() noexcept = default;
    RecentCache(const RecentCache&) = delete;
    RecentCache& operator=(const RecentCache&) = delete;
    ~RecentCache() {
        while (first_ != nullptr) delete take(first_);
    }

    /// The value for which `matches` is true, or null. Valid until the next call of add().
    template <class Matches>
    Value* find(const Matches& matches) noexcept {
        for (Entry** link = &first_; *link != nullptr; link = &(*link)->next) {
            if ((*link)->value.serial == 0 || !matches((*link)->value)) continue;
            if (link != &first_) putFirst(take(*link));
            return &first_->value;
        }
        return nullptr;
    }

    /// A value to be made, with a new serial number and old contents, if any. Null when memory runs
    /// out.
    Value* add() noexcept {
        Entry* entry = takeUnwanted();
        if (entry == nullptr) entry = new (std::nothrow) Entry;
        if (entry == nullptr) return nullptr;
        putFirst(entry);
        entry->value.serial = ++serialCount_;
        return &entry->value;
    }

    /// Must follow the making of a value: keeps to the limits.
    void trim() noexcept {
        size_t bytes = 0;
        for (Entry** link = &first_; *link != nullptr;) {
            bytes += (*link)->value.byteCount();
            if (bytes > kMaxBytes && link != &first_) {
                delete take(*link);
            } else {
                link = &(*link)->next;
            }
        }
    }

    /// Forgets the value that find() or add() gave last.
    void dropFirst() noexcept { first_->value.serial = 0; }

    /// Forgets all values, keeps their memory.
    void clear() noexcept {
        for (Entry* entry = first_; entry != nullptr; entry = entry->next) entry->value.serial = 0;
    }

    size_t byteCount() const noexcept {
        size_t bytes = 0;
        for (Entry* entry = first_; entry != nullptr; entry = entry->next) {
            bytes += entry->value.byteCount();
        }
        return bytes;
    }

    /// How often a value was made.
    uint64_t makeCount() const noexcept { return serialCount_; }

private:
    struct Entry {
        Value value;
        Entry* next = nullptr;
    };

    Entry* take(Entry*& link) noexcept {
        Entry* const entry = link;
        link = entry->next;
        return entry;
    }

    void putFirst(Entry* entry) noexcept {
        entry->next = first_;
        first_ = entry;
    }

    /// The last entry if it holds nothing or there are enough; else null.
    Entry* takeUnwanted() noexcept {
        if (first_ == nullptr) return nullptr;
        int count = 1;
        Entry** link = &first_;
        for (; (*link)->next != nullptr; link = &(*link)->next) ++count;
        return (*link)->value.serial == 0 || count == kMaxEntries ? take(*link) : nullptr;
    }

    Entry* first_ = nullptr;  ///< owned, with those after it
    uint64_t serialCount_ = 0;
};

}  // namespace vg
