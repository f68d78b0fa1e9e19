// An open-addressing hash table: linear probing for a few slots, then double hashing. It doubles
// when half full or when an id finds no slot near its own, but stops growing for ids that were made
// to collide, so that hostile texts cost neither memory nor quadratic time.

#include "svg/id_registry.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <limits>

namespace quor {

namespace {

/// An id is at most this many slots from its own while the table may still grow.
constexpr int kLinearProbes = 8;

/// A table larger than this, with more than kSparsest slots an id, does not grow: its ids collide
/// by intent, and doubling would not part them.
constexpr int kAlwaysGrowUpTo = 65536;
constexpr int kSparsest = 64;

constexpr int probeLimit(int capacity, int count) noexcept {
    const bool mayGrow = capacity <= kAlwaysGrowUpTo || capacity / kSparsest <= count;
    return mayGrow ? kLinearProbes : std::numeric_limits<int>::max();
}

/// Reflected CRC-32, polynomial 0xEDB88320: kCrcTable[b] is b shifted out through eight steps.
constexpr auto kCrcTable = [] {
    std::array<uint32_t, 256> table{};
    for (uint32_t i = 0; i < table.size(); ++i) {
        uint32_t rest = i;
        for (int bit = 0; bit < 8; ++bit) rest = (rest >> 1) ^ ((rest & 1) * 0xEDB88320U);
        table[i] = rest;
    }
    return table;
}();

uint64_t hashOf(const char* id, size_t length) noexcept {
    uint64_t h = 0;
    for (size_t i = 0; i < length; ++i) {
        h = kCrcTable[(h ^ static_cast<uint8_t>(id[i])) & 0xFF] ^ (h >> 8);
    }
    h *= 4097;
    h ^= h >> 22;
    h *= 17;
    h ^= h >> 9;
    h *= 1025;
    h ^= h >> 2;
    h *= 129;
    h ^= h >> 12;
    return (h >> 3) * 0x9E3779B1U;
}

/// A second, unrelated hash (FNV-1a); odd, so that steps of it reach every slot.
uint32_t strideOf(const char* id, size_t length) noexcept {
    uint32_t h = 2166136261U;
    for (size_t i = 0; i < length; ++i) h = (h ^ static_cast<uint8_t>(id[i])) * 16777619U;
    return h | 1;
}

/// The slots at which an id may be, in the order in which they are tried: its own slot and those
/// after it, then, in a table that stopped growing, steps of a stride of its own, so that many
/// ids of one hash do not queue up in one row.
class ProbeSequence {
public:
    ProbeSequence(const char* id, size_t length, int capacity) noexcept
        : id_(id),
          length_(length),
          mask_(static_cast<uint32_t>(capacity) - 1),
          slot_(static_cast<uint32_t>(hashOf(id, length)) & mask_) {}

    int slot() const noexcept { return static_cast<int>(slot_); }
    int probes() const noexcept { return probes_; }

    void next() noexcept {
        if (++probes_ == kLinearProbes) stride_ = strideOf(id_, length_);
        slot_ = (slot_ + stride_) & mask_;
    }

private:
    const char* id_;
    size_t length_;
    uint32_t mask_;  // capacities are powers of two: the remainder is a mask
    uint32_t slot_;
    uint32_t stride_ = 1;
    int probes_ = 0;
};

bool isSameId(const char* stored, const char* id, size_t length) noexcept {
    return std::strncmp(stored, id, length) == 0 && stored[length] == '\0';
}

}  // namespace

bool IdRegistry::initialize() noexcept { return entries_.resizeZeroed(kInitialCapacity); }

Status IdRegistry::insert(const char* id, SvgNode* node) noexcept {
    while (!place(id, node, probeLimit(entries_.count(), count_))) {
        if (!grow()) return Status::kOutOfMemory;
    }
    return Status::kOk;
}

/// False when the table is half full or all slots within the limit hold other ids.
bool IdRegistry::place(const char* id, SvgNode* node, int limit) noexcept {
    if (count_ >= entries_.count() / 2) return false;
    const size_t length = std::strlen(id);
    ProbeSequence probe(id, length, entries_.count());
    for (; probe.probes() < limit; probe.next()) {
        Entry& entry = entries_[probe.slot()];
        const bool isFree = entry.id == nullptr;
        if (!isFree && !isSameId(entry.id, id, length)) continue;
        if (isFree) ++count_;
        entry = {id, node};
        return true;
    }
    return false;
}

/// Doubles the capacity, and again while an id finds no slot in the larger table. False, with
/// nothing changed, when memory runs out.
bool IdRegistry::grow() noexcept {
    IdRegistry larger;
    int capacity = entries_.count();
    do {
        capacity *= 2;  // no overflow: the array refuses long before
        larger.entries_.clear();
        larger.count_ = 0;
        if (!larger.entries_.resizeZeroed(capacity)) return false;
    } while (!larger.placeAll(*this));
    entries_.swap(larger.entries_);
    return true;
}

bool IdRegistry::placeAll(const IdRegistry& other) noexcept {
    const int limit = probeLimit(entries_.count(), other.count_);
    for (const Entry& entry : other.entries_) {
        if (entry.id != nullptr && !place(entry.id, entry.node, limit)) return false;
    }
    return true;
}

SvgNode* IdRegistry::find(const char* id, size_t length) const noexcept {
    // At least half of the slots are free, so an unknown id meets one.
    ProbeSequence probe(id, length, entries_.count());
    for (;; probe.next()) {
        const Entry& entry = entries_[probe.slot()];
        if (entry.id == nullptr) return nullptr;
        if (isSameId(entry.id, id, length)) return entry.node;
    }
}

void IdRegistry::clear() noexcept {
    if (count_ == 0) return;
    const int capacity = entries_.count();
    entries_.clear();
    (void)entries_.resizeZeroed(capacity);  // within the capacity: does not fail
    count_ = 0;
}

}  // namespace quor
