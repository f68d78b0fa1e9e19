// Appending to paths and changing them in place.

#include <cstring>

#include "vg/context.h"
#include "vg/path_access.h"
#include "vg/path_coordinates.h"
#include "vg/path_writer.h"

namespace vg {

namespace {

constexpr uint8_t kCommandBits = 0x1F;
constexpr uint8_t kSegmentBits = 0x1E;
constexpr int64_t kMaxDataBytes = 0x7FFFFFFF;

/// Coordinates that the commands take; -1 when one of them is no segment.
int64_t countCoordinates(const VGubyte* segments, VGint count) noexcept {
    int64_t coordinates = 0;
    for (VGint i = 0; i < count; ++i) {
        if ((segments[i] & kSegmentBits) > VG_LCWARC_TO) return -1;
        coordinates += coordinatesOf(segments[i]);
    }
    return coordinates;
}

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

bool sameStorage(const Path& a, const Path& b) noexcept {
    return a.datatype == b.datatype && a.scale == b.scale && a.bias == b.bias;
}

/// Appends the commands as they are; relative coordinates stay relative.
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

}  // namespace

}  // namespace vg

using vg::Context;
using vg::Path;

void vgAppendPath(VGPath destinationHandle, VGPath sourceHandle) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    const vg::PathPair pair =
        vg::findPair(*context, destinationHandle, VG_PATH_CAPABILITY_APPEND_TO, sourceHandle,
                     VG_PATH_CAPABILITY_APPEND_FROM);
    if (pair.destination == nullptr) return;
    vg::doOrRaise(*context, [&] { return vg::appendPath(*pair.destination, *pair.source); });
}

void vgAppendPathData(VGPath handle, VGint segmentCount, const VGubyte* segments,
                      const void* data) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    Path* path = vg::findAllowing(*context, handle, VG_PATH_CAPABILITY_APPEND_TO);
    if (path == nullptr) return;
    const auto alignment = static_cast<uintptr_t>(vg::coordinateSize(path->datatype));
    if (segments == nullptr || segmentCount < 1 || !vg::isUsableArray(data, alignment)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    const int64_t coordinates = vg::countCoordinates(segments, segmentCount);
    if (coordinates < 0) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    vg::doOrRaise(*context,
                  [&] { return vg::appendRaw(*path, segments, segmentCount, data, coordinates); });
}

void vgModifyPathCoords(VGPath handle, VGint startIndex, VGint segmentCount, const void* data) {
    Context* context = vg::currentPair();
    if (context == nullptr) return;
    Path* path = vg::findAllowing(*context, handle, VG_PATH_CAPABILITY_MODIFY);
    if (path == nullptr) return;
    const int32_t size = vg::coordinateSize(path->datatype);
    if (!vg::isUsableArray(data, static_cast<uintptr_t>(size)) ||
        !vg::hasSegments(*path, startIndex, segmentCount)) {
        return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    }
    const VGubyte* segments = path->segments.data();
    const int64_t first = vg::countCoordinates(segments, startIndex) * size;
    const int64_t bytes = vg::countCoordinates(segments + startIndex, segmentCount) * size;
    if (bytes > 0) std::memcpy(path->data.data() + first, data, static_cast<size_t>(bytes));
    path->invalidate();
}
