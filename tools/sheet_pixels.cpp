#include "sheet_pixels.h"

#include <algorithm>
#include <vector>

#include "library_error.h"
#include "png_writer.h"
#include "quor/quor.h"

namespace tool {

namespace {

/// Room for the repeated pixels is there: frames lie that far apart and from the edges.
void extrudeFrame(const AtlasFrame& frame, std::uint32_t* pixels, std::uint32_t stride,
                  std::uint32_t extrude) {
    const auto row = [&](std::uint32_t y) { return pixels + std::size_t{y} * stride; };
    for (std::uint32_t y = frame.y; y < frame.y + frame.height; ++y) {
        std::uint32_t* first = row(y) + frame.x;
        std::fill(first - extrude, first, *first);
        std::uint32_t* last = first + frame.width - 1;
        std::fill(last + 1, last + 1 + extrude, *last);
    }
    const std::uint32_t left = frame.x - extrude;
    const std::uint32_t width = frame.width + 2 * extrude;
    const std::uint32_t bottom = frame.y + frame.height;
    for (std::uint32_t i = 1; i <= extrude; ++i) {
        std::copy_n(row(frame.y) + left, width, row(frame.y - i) + left);
        std::copy_n(row(bottom - 1) + left, width, row(bottom - 1 + i) + left);
    }
}

}  // namespace

void writeSheet(const std::string& path, const AtlasSheet& sheet, std::uint32_t surface,
                std::uint32_t extrude, bool dilates) {
    std::uint32_t* drawn = quorSurfacePixels(surface);
    std::vector<std::uint32_t> pixels(std::size_t{sheet.width} * sheet.height);
    // Straight first, for the neighbours' true colours, not their share, are to spread.
    makeStraight(drawn, pixels.size());
    if (extrude > 0)
        for (const AtlasFrame& frame : sheet.frames)
            extrudeFrame(frame, drawn, sheet.width, extrude);
    requireSuccess(quorSurfaceCopy(surface, pixels.data(), dilates ? 1 : 0));
    writePng(path, pixels.data(), sheet.width, sheet.height, AlphaKind::kStraight);
}

}  // namespace tool
