#pragma once

#include <cstdint>
#include <vector>

#include "session.h"
#include "view_camera.h"

namespace tool {

enum class Ground { kChecker, kWhite, kBlack, kNone };

/// Premultiplied pixels, rows from the top, alpha in bits 24 to 31.
struct ViewPicture {
    WindowSize size;
    std::vector<std::uint32_t> pixels;
};

/// Draws what the window shows of the document, at the camera's scale, over the ground. A null
/// document leaves the ground. Throws FileError.
ViewPicture drawView(const Document* document, const Camera& camera, const WindowSize& window,
                     Ground ground, std::uint32_t quality);

}  // namespace tool
