#pragma once

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstdint>
#include <limits>

#include "base/finite.h"
#include "vg/vg.h"

namespace vg {

/// Arrays that cross an entry point lie on addresses divisible by 4.
inline bool isAligned(const void* array) noexcept {
    return (reinterpret_cast<uintptr_t>(array) & 3) == 0;
}

/// Rounds down; beyond the range of an integer the nearest one. Precondition: value is finite.
inline VGint floorToInteger(float value) noexcept {
    assert(std::isfinite(value));
    const double floored = std::floor(static_cast<double>(value));
    constexpr double kLeast = std::numeric_limits<VGint>::min();
    constexpr double kGreatest = std::numeric_limits<VGint>::max();
    return static_cast<VGint>(std::clamp(floored, kLeast, kGreatest));
}

/// The values that a setter was given, as integers or floats, read as whichever of the two the
/// parameter keeps. Floats are finite when they come out.
class ParamInput {
public:
    /// Of a scalar setter. `value` must outlive the input.
    explicit ParamInput(const VGint& value) noexcept : integers_(&value), isScalarCall_(true) {}
    explicit ParamInput(const VGfloat& value) noexcept : floats_(&value), isScalarCall_(true) {}

    /// Of a vector setter, unchecked: see isReadable().
    ParamInput(VGint count, const VGint* values) noexcept : integers_(values), count_(count) {}
    ParamInput(VGint count, const VGfloat* values) noexcept : floats_(values), count_(count) {}

    /// An aligned array of a possible length; only an empty one may be null.
    bool isReadable() const noexcept {
        const void* const array = integers_ != nullptr ? static_cast<const void*>(integers_)
                                                       : static_cast<const void*>(floats_);
        return count_ >= 0 && isAligned(array) && (array != nullptr || count_ == 0);
    }

    bool isScalarCall() const noexcept { return isScalarCall_; }
    VGint count() const noexcept { return count_; }

    VGint integerAt(VGint i) const noexcept {
        return integers_ != nullptr ? integers_[i] : floorToInteger(base::finite(floats_[i]));
    }
    float floatAt(VGint i) const noexcept {
        return integers_ != nullptr ? static_cast<float>(integers_[i]) : base::finite(floats_[i]);
    }

private:
    const VGint* integers_ = nullptr;
    const VGfloat* floats_ = nullptr;
    VGint count_ = 1;
    bool isScalarCall_ = false;
};

/// Where a getter puts values, as integers or floats; floats become integers by rounding down.
class ParamOutput {
public:
    explicit ParamOutput(VGint& value) noexcept : integers_(&value), isScalarCall_(true) {}
    explicit ParamOutput(VGfloat& value) noexcept : floats_(&value), isScalarCall_(true) {}
    ParamOutput(VGint count, VGint* values) noexcept : integers_(values), capacity_(count) {}
    ParamOutput(VGint count, VGfloat* values) noexcept : floats_(values), capacity_(count) {}

    /// An aligned array for at least one value.
    bool isWritable() const noexcept {
        const void* const array = integers_ != nullptr ? static_cast<const void*>(integers_)
                                                       : static_cast<const void*>(floats_);
        return capacity_ >= 1 && array != nullptr && isAligned(array);
    }

    bool isScalarCall() const noexcept { return isScalarCall_; }
    VGint capacity() const noexcept { return capacity_; }

    /// Writes the first values of an array, as many as are asked for.
    template <class T>
    void put(const T* values, VGint count) noexcept {
        const VGint written = std::min(count, capacity_);
        for (VGint i = 0; i < written; ++i) putAt(i, values[i]);
    }
    void put(VGint value) noexcept { put(&value, 1); }
    void put(float value) noexcept { put(&value, 1); }

private:
    void putAt(VGint i, VGint value) noexcept {
        if (integers_ != nullptr) {
            integers_[i] = value;
        } else {
            floats_[i] = static_cast<float>(value);
        }
    }
    void putAt(VGint i, float value) noexcept {
        if (integers_ != nullptr) {
            integers_[i] = floorToInteger(value);
        } else {
            floats_[i] = value;
        }
    }

    VGint* integers_ = nullptr;
    VGfloat* floats_ = nullptr;
    VGint capacity_ = 1;
    bool isScalarCall_ = false;
};

}  // namespace vg
