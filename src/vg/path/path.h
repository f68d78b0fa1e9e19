#pragma once

#include <cstddef>

#include "vg/object_handles.h"

namespace vg {

/// What draws of a path leave for the next ones. The path owns it and knows no more of it than
/// this; PathCache is what it is.
struct PathLeftovers {
    PathLeftovers() noexcept = default;
    PathLeftovers(const PathLeftovers&) = delete;
    PathLeftovers& operator=(const PathLeftovers&) = delete;
    virtual ~PathLeftovers() = default;

    virtual void clear() noexcept = 0;  ///< the path has changed
    virtual size_t byteCount() const noexcept = 0;
};

/// A path object: segment commands and their coordinates in the path's own datatype.
struct Path final : Object {
    Path() noexcept : Object(ObjectKind::kPath) {}
    ~Path() override;

    VGint datatype = VG_PATH_DATATYPE_F;
    float scale = 1.0F;
    float bias = 0.0F;
    VGbitfield capabilities = 0;

    base::Array<uint8_t> segments;
    base::Array<uint8_t> data;  ///< coordinates, coordinateCount of them, in the datatype
    int32_t coordinateCount = 0;

    PathLeftovers* leftovers = nullptr;  ///< owned; null before the first draw

    void releaseCaches() noexcept override;

    /// Leaves no segments, keeps the memory.
    void clear() noexcept {
        segments.clear();
        data.clear();
        coordinateCount = 0;
        invalidate();
    }

    size_t byteCount() const noexcept;  ///< of memory, with what its cache keeps

    /// Must follow every change of segments or coordinates.
    void invalidate() noexcept {
        if (leftovers != nullptr) leftovers->clear();
    }
};

/// Bytes of one coordinate of a datatype.
inline int32_t coordinateSize(VGint datatype) noexcept {
    switch (datatype) {
        case VG_PATH_DATATYPE_S_8:
            return 1;
        case VG_PATH_DATATYPE_S_16:
            return 2;
        default:
            return 4;
    }
}

/// Coordinates that a segment command takes: 0 for VG_CLOSE_PATH to 6 for VG_CUBIC_TO.
inline int32_t coordinatesOf(VGubyte command) noexcept {
    // Close, move, line, horizontal, vertical, quadratic, cubic, smooth quadratic and cubic, arcs.
    constexpr uint8_t kCounts[16] = {0, 2, 2, 1, 1, 4, 6, 2, 4, 5, 5, 5, 5, 0, 0, 0};
    return kCounts[(command >> 1) & 0xF];
}

}  // namespace vg
