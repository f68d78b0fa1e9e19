#pragma once

namespace vg {

struct Context;
struct Image;
struct Surface;

/// Draws the image under the image matrix. False when memory runs out, with the surface drawn on in
/// part.
[[nodiscard]] bool drawImage(Context& context, Surface& surface, const Image& image) noexcept;

}  // namespace vg
