#pragma once

#include "vg/object_handles.h"

namespace vg {

/// A paint object. A context holds a reference while the paint is set for filling or stroking, so
/// destroying the handle does not take a paint from under a draw.
struct Paint final : Object {
    Paint() noexcept : Object(ObjectKind::kPaint) {}

    VGint type = VG_PAINT_TYPE_COLOR;
    float color[4] = {0.0F, 0.0F, 0.0F, 1.0F};  ///< red, green, blue, alpha; as set
    VGHandle handle = VG_INVALID_HANDLE;        ///< its own; 0 once the handle is destroyed
};

}  // namespace vg
