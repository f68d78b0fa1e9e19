#pragma once

#include <cstdint>
#include <initializer_list>

#include "vg/geometry/vector2.h"
#include "vg/path/path.h"

namespace vg {

/// Appends segments given in user coordinates to a path, stored in the path's own datatype, scale
/// and bias.
///
/// What was appended is taken back unless commit() is reached, so that a path is extended in whole
/// or not at all.
class PathWriter {
public:
    explicit PathWriter(Path& path) noexcept
        : path_(path),
          segmentsBefore_(path.segments.count()),
          dataBefore_(path.data.count()),
          coordinatesBefore_(path.coordinateCount) {}
    ~PathWriter();
    PathWriter(const PathWriter&) = delete;
    PathWriter& operator=(const PathWriter&) = delete;

    /// Appends a command with as many coordinates as it takes. False when memory runs out.
    bool append(VGubyte command, const double* values) noexcept;
    bool append(VGubyte command, std::initializer_list<double> values) noexcept {
        return append(command, values.begin());
    }
    bool append(VGubyte command, Vector2 to) noexcept { return append(command, {to.x, to.y}); }

    /// Keeps what was appended.
    void commit() noexcept { isCommitted_ = true; }

private:
    Path& path_;
    int32_t segmentsBefore_, dataBefore_, coordinatesBefore_;
    bool isCommitted_ = false;
};

}  // namespace vg
