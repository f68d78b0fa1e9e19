// The matrix of the current matrix mode.

#include "base/finite.h"
#include "vg/context.h"
#include "vg/param_values.h"
#include "vg/vg.h"

namespace {

/// From OpenVG's column order. Only the image matrix may be projective; for the others the third
/// row stays (0, 0, 1).
vg::Matrix3 readMatrix(const VGfloat* m, VGint matrixMode) noexcept {
    const int rows = matrixMode == VG_MATRIX_IMAGE_USER_TO_SURFACE ? 3 : 2;
    vg::Matrix3 matrix;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < 3; ++column) {
            matrix.m[row][column] = base::finite(m[column * 3 + row]);
        }
    }
    return matrix;
}

}  // namespace

void vgLoadIdentity() {
    vg::Context* context = vg::currentContext();
    if (context != nullptr) context->currentMatrix() = vg::Matrix3();
}

void vgLoadMatrix(const VGfloat* m) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    if (m == nullptr || !vg::isAligned(m)) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    context->currentMatrix() = readMatrix(m, context->matrixMode);
}

void vgMultMatrix(const VGfloat* m) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    if (m == nullptr || !vg::isAligned(m)) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    const vg::Matrix3 right = readMatrix(m, context->matrixMode);
    context->currentMatrix() = vg::multiply(context->currentMatrix(), right);
}

void vgGetMatrix(VGfloat* m) {
    vg::Context* context = vg::currentContext();
    if (context == nullptr) return;
    if (m == nullptr || !vg::isAligned(m)) return context->raise(VG_ILLEGAL_ARGUMENT_ERROR);
    const vg::Matrix3& matrix = context->currentMatrix();
    for (int i = 0; i < 9; ++i) m[i] = matrix.m[i % 3][i / 3];
}
