#pragma once

#include "base/array.h"
#include "svg/matrix.h"
#include "svg/status.h"
#include "vg/vg.h"

namespace quor {

/// Copies of one outline as the transforms that it was used under last carry it to the surface.
/// An outline that stays where it is, or is used at a few places, is carried there once.
class TransformedOutlines {
public:
    static constexpr int kMaxPaths = 8;

    TransformedOutlines() noexcept = default;
    TransformedOutlines(const TransformedOutlines&) = delete;
    TransformedOutlines& operator=(const TransformedOutlines&) = delete;
    ~TransformedOutlines();

    /// The copy of `outline`, the same path each time, under `transform`, which the engine's path
    /// matrix is equal to. Owned here, valid until the next call.
    Status find(VGPath outline, const SvgMatrix& transform, VGPath& copy) noexcept;

private:
    struct Copy {
        VGPath path;
        SvgMatrix transform;
    };

    Status make(VGPath outline, const SvgMatrix& transform) noexcept;
    Status add() noexcept;
    void putFirst(int index) noexcept;

    base::Array<Copy> copies_;  ///< the last used first
};

}  // namespace quor
