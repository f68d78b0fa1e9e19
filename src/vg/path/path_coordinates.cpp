// Converts coordinates between the four datatypes and user space, by memcpy: data has no
// alignment.

#include "vg/path/path_coordinates.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>
#include <limits>
#include <type_traits>

namespace vg {

namespace {

int64_t offsetOf(const Path& path, int32_t coordinate) noexcept {
    return static_cast<int64_t>(coordinate) * coordinateSize(path.datatype);
}

template <class T>
void loadAs(const Path& path, int32_t first, int32_t count, double* values) noexcept {
    const auto scale = static_cast<double>(path.scale);
    const auto bias = static_cast<double>(path.bias);
    const uint8_t* data = path.data.data() + offsetOf(path, first);
    for (int32_t i = 0; i < count; ++i, data += sizeof(T)) {
        T stored;
        std::memcpy(&stored, data, sizeof(T));
        values[i] = static_cast<double>(stored) * scale + bias;
    }
}

template <class T>
T storedValue(double value) noexcept {
    if constexpr (std::is_floating_point_v<T>) {
        return static_cast<T>(value);
    } else {
        if (std::isnan(value)) return 0;
        constexpr double kLowest = std::numeric_limits<T>::lowest();
        constexpr double kHighest = std::numeric_limits<T>::max();
        return static_cast<T>(std::clamp(std::floor(value + 0.5), kLowest, kHighest));
    }
}

template <class T>
void storeAs(Path& path, int32_t first, int32_t count, const double* values) noexcept {
    const auto scale = static_cast<double>(path.scale);
    const auto bias = static_cast<double>(path.bias);
    uint8_t* data = path.data.data() + offsetOf(path, first);
    for (int32_t i = 0; i < count; ++i, data += sizeof(T)) {
        const T stored = storedValue<T>((values[i] - bias) / scale);
        std::memcpy(data, &stored, sizeof(T));
    }
}

}  // namespace

void loadCoordinates(const Path& path, int32_t first, int32_t count, double* values) noexcept {
    switch (path.datatype) {
        case VG_PATH_DATATYPE_S_8:
            return loadAs<int8_t>(path, first, count, values);
        case VG_PATH_DATATYPE_S_16:
            return loadAs<int16_t>(path, first, count, values);
        case VG_PATH_DATATYPE_S_32:
            return loadAs<int32_t>(path, first, count, values);
        default:
            return loadAs<float>(path, first, count, values);
    }
}

void storeCoordinates(Path& path, int32_t first, int32_t count, const double* values) noexcept {
    assert(offsetOf(path, first + count) <= path.data.count());
    switch (path.datatype) {
        case VG_PATH_DATATYPE_S_8:
            return storeAs<int8_t>(path, first, count, values);
        case VG_PATH_DATATYPE_S_16:
            return storeAs<int16_t>(path, first, count, values);
        case VG_PATH_DATATYPE_S_32:
            return storeAs<int32_t>(path, first, count, values);
        default:
            return storeAs<float>(path, first, count, values);
    }
}

}  // namespace vg
