// Appends coordinates as bytes where the storage is alike, else by way of user coordinates.

#include "vg/path/path_edit.h"

#include <cassert>
#include <cstring>

#include "vg/path/path_coordinates.h"
#include "vg/path/path_writer.h"

namespace vg {

namespace {

constexpr uint8_t kCommandBits = 0x1F;
constexpr int64_t kMaxDataBytes = 0x7FFFFFFF;

/// Makes room for that much more in a path; false, with the contents as they were, when memory
/// runs out.
bool reserveMore(Path& path, int32_t segments, int64_t coordinates) noexcept {
    const int64_t bytes = coordinates * coordinateSize(path.datatype);
    if (bytes <= kMaxDataBytes && path.segments.reserveMore(segments) &&
        path.data.reserveMore(static_cast<int>(bytes))) {
        return true;
    }
    path.segments.clearFailure();
    path.data.clearFailure();
    return false;
}

}  // namespace

int64_t countCoordinates(const VGubyte* segments, VGint count) noexcept {
    constexpr uint8_t kSegmentBits = 0x1E;
    int64_t coordinates = 0;
    for (VGint i = 0; i < count; ++i) {
        if ((segments[i] & kSegmentBits) > VG_LCWARC_TO) return -1;
        coordinates += coordinatesOf(segments[i]);
    }
    return coordinates;
}

bool appendRaw(Path& path, const VGubyte* segments, VGint count, const void* data,
               int64_t coordinates) noexcept {
    if (!reserveMore(path, count, coordinates)) return false;
    for (VGint i = 0; i < count; ++i) {
        path.segments.pushReserved(static_cast<uint8_t>(segments[i] & kCommandBits));
    }
    const auto added = static_cast<int32_t>(coordinates);
    const int32_t before = path.data.count();
    const int32_t bytes = added * coordinateSize(path.datatype);
    if (!path.data.resize(before + bytes)) return false;  // there is room
    if (bytes > 0) std::memcpy(path.data.data() + before, data, static_cast<size_t>(bytes));
    path.coordinateCount += added;
    path.invalidate();
    return true;
}

namespace {

bool sameStorage(const Path& a, const Path& b) noexcept {
    return a.datatype == b.datatype && a.scale == b.scale && a.bias == b.bias;
}

}  // namespace

bool appendPath(Path& destination, const Path& source) noexcept {
    const int32_t segments = source.segments.count();
    const int32_t coordinates = source.coordinateCount;
    // From here on the arrays of a path that is appended to itself stay where they are.
    if (!reserveMore(destination, segments, coordinates)) return false;
    if (sameStorage(destination, source)) {
        return appendRaw(destination, source.segments.data(), segments, source.data.data(),
                         coordinates);
    }
    PathWriter writer(destination);
    int32_t next = 0;
    for (const uint8_t command : source.segments) {
        double values[kMaxSegmentCoordinates];
        const int32_t count = coordinatesOf(command);
        loadCoordinates(source, next, count, values);
        next += count;
        if (!writer.append(command, values)) return false;
    }
    writer.commit();
    return true;
}

void modifyCoordinates(Path& path, VGint start, VGint count, const void* data) noexcept {
    assert(0 <= start && 0 <= count && start + count <= path.segments.count());
    const int32_t size = coordinateSize(path.datatype);
    const VGubyte* segments = path.segments.data();
    const int64_t first = countCoordinates(segments, start) * size;
    const int64_t bytes = countCoordinates(segments + start, count) * size;
    if (bytes > 0) std::memcpy(path.data.data() + first, data, static_cast<size_t>(bytes));
    path.invalidate();
}

}  // namespace vg
