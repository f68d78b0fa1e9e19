#pragma once

#include <cstdint>
#include <optional>

namespace tool {

/// The longer side of a picture whose size neither the options nor the document give, and the
/// screen that percentages of such a document refer to. Pixels.
inline constexpr std::uint32_t kDefaultSide = 512;

/// The longest side of a picture.
inline constexpr std::uint32_t kLargestSide = 32768;

/// What the user asked for. Sides in pixels, before `scale` multiplies them.
struct SizeRequest {
    std::optional<std::uint32_t> width;
    std::optional<std::uint32_t> height;
    double scale = 1.0;
};

/// What a document says of its size.
struct DocumentSize {
    double width;          // pixels; negative when the document does not tell
    double height;         // likewise
    double viewportWidth;  // in document units; only the aspect counts
    double viewportHeight;
};

struct PictureSize {
    std::uint32_t width;
    std::uint32_t height;
};

/// The sides asked for, a missing one by the aspect; else the document's own; else the aspect of
/// its viewport at kDefaultSide. Each side is in [1, kLargestSide]; FileError when that cannot be.
PictureSize choosePictureSize(const SizeRequest& request, const DocumentSize& document);

}  // namespace tool
