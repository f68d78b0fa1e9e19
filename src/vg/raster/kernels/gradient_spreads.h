#pragma once

#include <cstdint>

namespace vg::raster {

/// What lies beyond the ends of a gradient; the values of VGColorRampSpreadMode.
enum class Spread : int32_t { kPad = 0x1C00, kRepeat = 0x1C01, kReflect = 0x1C02 };

// Spread modes: from a parameter to an entry of a colour ramp.
//
// All inline, since files of different vector levels use them.
//
// entry<kOneBits>() takes a fixed-point parameter, 1.0 being 2^kOneBits, and conicalEntry() a count
// of entries that goes on rising from repeat to repeat. kIsPeriodic: the entry depends on the low
// kOneBits + 1 bits of the parameter alone.

struct SpreadPad {
    static constexpr bool kIsPeriodic = false;

    template <int kOneBits, class Integer>
    [[gnu::always_inline]] static uint32_t entry(Integer parameter) noexcept {
        constexpr Integer kLast = (Integer{1} << kOneBits) - 1;
        const Integer raised = parameter > 0 ? parameter : 0;
        return static_cast<uint32_t>(raised < kLast ? raised : kLast) >> (kOneBits - 10);
    }

    [[gnu::always_inline]] static uint32_t conicalEntry(int64_t value) noexcept {
        return entry<10>(value);
    }
};

struct SpreadRepeat {
    static constexpr bool kIsPeriodic = true;

    template <int kOneBits, class Integer>
    [[gnu::always_inline]] static uint32_t entry(Integer parameter) noexcept {
        constexpr uint32_t kMask = (1U << kOneBits) - 1;
        return (static_cast<uint32_t>(parameter) & kMask) >> (kOneBits - 10);
    }

    [[gnu::always_inline]] static uint32_t conicalEntry(int64_t value) noexcept {
        return entry<10>(value);
    }
};

struct SpreadReflect {
    static constexpr bool kIsPeriodic = true;

    /// Of a mirrored ramp, which goes there and back.
    template <int kOneBits, class Integer>
    [[gnu::always_inline]] static uint32_t entry(Integer parameter) noexcept {
        return SpreadRepeat::entry<kOneBits>(parameter >> 1);
    }

    /// Of a normal ramp.
    [[gnu::always_inline]] static uint32_t conicalEntry(int64_t value) noexcept {
        const uint32_t low = SpreadRepeat::conicalEntry(value);
        return (value & 0x400) != 0 ? 1023 - low : low;
    }
};

/// Calls visit with the policy of a spread mode.
template <class Visitor>
[[gnu::always_inline]] inline void withSpread(Spread spread, Visitor&& visit) noexcept {
    switch (spread) {
        case Spread::kPad:
            return visit(SpreadPad());
        case Spread::kRepeat:
            return visit(SpreadRepeat());
        case Spread::kReflect:
            return visit(SpreadReflect());
    }
}

}  // namespace vg::raster
