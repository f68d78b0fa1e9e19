#pragma once

#include "svg/matrix.h"
#include "vg/vg.h"

namespace quor {

/// What a paint server gives for one shape: an engine paint, ready for vgSetPaint.
struct EnginePaint {
    VGPaint handle = VG_INVALID_HANDLE;  ///< invalid: the server has no paint for this shape
    SvgMatrix paintToUser;
};

}  // namespace quor
