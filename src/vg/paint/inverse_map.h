#pragma once

#include "vg/geometry/affine_map.h"
#include "vg/raster/paint/gradient_params.h"
#include "vg/raster/paint/texture_params.h"

// Maps from the surface back to what is drawn on it. A determinant that is nothing but the rounding
// of the products it is made of counts as 0.
namespace vg {

/// a * b: b applies first.
AffineMap multiply(const AffineMap& a, const AffineMap& b) noexcept;

bool isAffine(const Matrix3& matrix) noexcept;

/// False without an inverse, or with one beyond the entries that a SurfaceToPaint may have.
bool invert(const AffineMap& map, raster::SurfaceToPaint& inverse) noexcept;

/// The same for an image or a pattern.
bool invert(const AffineMap& map, raster::SurfaceToTexture& inverse) noexcept;

/// The inverse times a positive factor, which leaves u / w and v / w what they are; w is positive
/// where it is so in the matrix's own space. False without an inverse.
bool invertProjective(const Matrix3& matrix, raster::SurfaceToTexture& inverse) noexcept;

}  // namespace vg
