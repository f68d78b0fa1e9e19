#pragma once

#include "svg/matrix.h"
#include "svg/status.h"
#include "vg/vg.h"

namespace quor {

class SvgShape;

/// sqrt(|determinant|): how many times longer an angle-preserving transform makes lengths. One at
/// or below base::kSmallestExtent leaves nothing to stroke.
float lengthScale(const SvgMatrix& transform) noexcept;

/// Whether anything is left to stroke under the transform.
bool leavesStroke(const SvgMatrix& transform) noexcept;

/// The engine's stroke made to measure its width on the surface, whatever the current transform.
///
/// Under a transform that preserves angles the line width is divided by the transform's scale (the
/// dashes are not). Under any other the outline is carried to the surface first and stroked there,
/// the path matrix being the identity.
class NonScalingStroke {
public:
    NonScalingStroke() noexcept = default;
    NonScalingStroke(const NonScalingStroke&) = delete;
    NonScalingStroke& operator=(const NonScalingStroke&) = delete;

    /// Changes the engine's state until restore(). Preconditions: the transform is the one that the
    /// engine has, and leaves something to stroke.
    Status setup(const SvgMatrix& transform, SvgShape& shape) noexcept;

    /// Puts back what setup() changed and nothing else.
    void restore() noexcept;

    /// The path to draw in place of the shape's; VG_INVALID_HANDLE: the shape's own.
    VGPath path() const noexcept { return path_; }

private:
    Status carryToSurface(const SvgMatrix& transform, SvgShape& shape) noexcept;

    VGPath path_ = VG_INVALID_HANDLE;  ///< the shape's
    bool hasSavedWidth_ = false;
    VGfloat savedWidth_ = 0.0F;
    VGfloat savedPathMatrix_[9] = {};         ///< while path_ is there
    VGfloat savedStrokePaintMatrix_[9] = {};  ///< while path_ is there
};

}  // namespace quor
