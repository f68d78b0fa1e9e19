#include "vg/path/path_writer.h"

#include "vg/path/path_coordinates.h"

namespace vg {

PathWriter::~PathWriter() {
    if (!isCommitted_) {
        path_.segments.truncate(segmentsBefore_);
        path_.data.truncate(dataBefore_);
        path_.coordinateCount = coordinatesBefore_;
        path_.segments.clearFailure();
        path_.data.clearFailure();
    }
    path_.invalidate();
}

bool PathWriter::append(VGubyte command, const double* values) noexcept {
    const int32_t count = coordinatesOf(command);
    const int32_t bytes = count * coordinateSize(path_.datatype);
    if (!path_.data.reserveMore(bytes) || !path_.segments.push(command)) return false;
    if (!path_.data.resize(path_.data.count() + bytes)) return false;  // there is room
    storeCoordinates(path_, path_.coordinateCount, count, values);
    path_.coordinateCount += count;
    return true;
}

}  // namespace vg
