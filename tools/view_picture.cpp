#include "view_picture.h"

#include <algorithm>

#include "library_error.h"

namespace tool {

namespace {

constexpr int kLargestSurface = 2047;  // pixels a side; coordinates end there

std::uint32_t groundPixel(Ground ground, int x, int y) {
    constexpr int kSquare = 8;  // pixels
    switch (ground) {
        case Ground::kChecker:
            return (x / kSquare + y / kSquare) % 2 == 0 ? 0xFFFFFFFF : 0xFFD8D8D8;
        case Ground::kWhite:
            return 0xFFFFFFFF;
        case Ground::kBlack:
            return 0xFF000000;
        case Ground::kNone:
            break;
    }
    return 0;
}

/// A part of the window that has a surface of its own.
struct Part {
    int x, y, width, height;
};

void placeOn(const Surface& surface, const Document& document, const Camera& camera,
             const Part& part) {
    float shown[4];  // x, y, width, height
    requireSuccess(quorDocViewportGet(document.get(), shown));
    const auto x = static_cast<float>(camera.origin().x);
    const auto y = static_cast<float>(camera.origin().y);
    const auto scale = static_cast<float>(camera.scale());
    const float viewport[4] = {x, y, shown[2] * scale, shown[3] * scale};
    const float transform[5] = {x, y, static_cast<float>(camera.rotation()),
                                static_cast<float>(-part.x), static_cast<float>(-part.y)};
    const std::uint32_t alignment[2] = {QUOR_ALIGN_XMIN_YMIN, QUOR_MEET};
    requireSuccess(quorDocViewportAlignmentSet(document.get(), alignment));
    requireSuccess(quorSurfaceViewportSet(surface.get(), viewport));
    requireSuccess(quorSurfaceViewportTransformSet(surface.get(), transform));
}

void drawPart(const Document* document, const Camera& camera, Ground ground, std::uint32_t quality,
              const Part& part, ViewPicture& picture) {
    const Surface surface(quorSurfaceCreate(static_cast<std::uint32_t>(part.width),
                                            static_cast<std::uint32_t>(part.height)));
    if (!surface.isValid()) throwOutOfMemory();
    std::uint32_t* pixel = quorSurfacePixels(surface.get());
    for (int y = 0; y < part.height; ++y)
        for (int x = 0; x < part.width; ++x) *pixel++ = groundPixel(ground, part.x + x, part.y + y);
    if (document != nullptr) {
        placeOn(surface, *document, camera, part);
        quorClearPerform(0);  // the ground stays
        requireSuccess(quorDocDraw(document->get(), surface.get(), quality));
    }
    const std::uint32_t* row = quorSurfacePixels(surface.get());
    for (int y = 0; y < part.height; ++y, row += part.width) {
        const auto place =
            static_cast<std::size_t>(part.y + y) * static_cast<std::size_t>(picture.size.width) +
            static_cast<std::size_t>(part.x);
        std::copy_n(row, part.width, &picture.pixels[place]);
    }
}

}  // namespace

ViewPicture drawView(const Document* document, const Camera& camera, const WindowSize& window,
                     Ground ground, std::uint32_t quality) {
    ViewPicture picture{window, {}};
    picture.pixels.resize(static_cast<std::size_t>(window.width) *
                          static_cast<std::size_t>(window.height));
    for (int y = 0; y < window.height; y += kLargestSurface) {
        for (int x = 0; x < window.width; x += kLargestSurface) {
            const Part part{x, y, std::min(window.width - x, kLargestSurface),
                            std::min(window.height - y, kLargestSurface)};
            drawPart(document, camera, ground, quality, part, picture);
        }
    }
    return picture;
}

}  // namespace tool
