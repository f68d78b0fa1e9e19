#pragma once

#include <string>

#include "folder_walk.h"
#include "picture_writer.h"
#include "render_command.h"

namespace tool {

/// One picture to make.
struct RenderJob {
    FoundFile input;
    std::string output;  ///< path, or "-"
    PictureFormat format;
};

/// Makes it, in a session of the library. Throws FileError, and std::bad_alloc when memory runs
/// out; nothing half-written is left then.
void renderPicture(const RenderJob& job, const RenderOptions& options);

/// The words for --warn about what the drawing has and the library passes over; empty when there is
/// none.
std::string warningFor(const RenderJob& job);

}  // namespace tool
