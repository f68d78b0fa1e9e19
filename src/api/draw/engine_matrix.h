#pragma once

#include "svg/matrix.h"
#include "vg/vg.h"

namespace quor {

/// Loads an affine map into one of the engine's matrices and leaves that one selected.
inline void loadEngineMatrix(VGMatrixMode mode, const SvgMatrix& m) noexcept {
    const VGfloat columns[9] = {m.m00, m.m10, 0.0F, m.m01, m.m11, 0.0F, m.m02, m.m12, 1.0F};
    vgSeti(VG_MATRIX_MODE, mode);
    vgLoadMatrix(columns);
}

}  // namespace quor
