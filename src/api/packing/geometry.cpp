#include "api/packing/geometry.h"

#include <bit>

namespace quor::packing {

Size BinRules::binFor(const Size& extent) const noexcept {
    const Size bin = {extent.width + border, extent.height + border};
    if (!isPowerOfTwo) return bin;
    const auto powerOfTwo = [](int side) {
        return static_cast<int>(std::bit_ceil(static_cast<unsigned>(side)));
    };
    return {powerOfTwo(bin.width), powerOfTwo(bin.height)};
}

}  // namespace quor::packing
