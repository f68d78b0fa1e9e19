#pragma once

#include <cstdint>

namespace quor::packing {

/// A fixed sequence of scattered numbers (splitmix): the same search on every machine.
class RandomSequence {
public:
    explicit RandomSequence(uint64_t seed) noexcept : state_(seed) {}

    uint32_t next() noexcept {
        uint64_t z = state_ += 0x9E3779B97F4A7C15U;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9U;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBU;
        return static_cast<uint32_t>(z >> 32);
    }

    /// A number in [0, count). Precondition: count > 0.
    int below(int count) noexcept {
        return static_cast<int>(uint64_t{next()} * static_cast<uint32_t>(count) >> 32);
    }

private:
    uint64_t state_;
};

}  // namespace quor::packing
