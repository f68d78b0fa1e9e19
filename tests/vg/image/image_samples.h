#pragma once

#include <cstdint>
#include <random>
#include <vector>

#include "vg/vg.h"
#include "vg/vgu.h"

namespace vg {

inline constexpr VGbitfield kAllQualities =
    VG_IMAGE_QUALITY_NONANTIALIASED | VG_IMAGE_QUALITY_FASTER | VG_IMAGE_QUALITY_BETTER;

/// Opaque colours, 0xAARRGGBB, no two of a small number alike.
inline std::vector<uint32_t> opaqueColors(int count, uint32_t seed) {
    std::mt19937 random(seed);
    std::vector<uint32_t> colors(static_cast<size_t>(count));
    for (uint32_t& color : colors) color = static_cast<uint32_t>(random()) | 0xFF000000;
    return colors;
}

/// Rows from the lowest up, without padding.
inline VGImage imageOf(const std::vector<uint32_t>& colors, VGint width, VGint height,
                       VGint format = VG_sARGB_8888) {
    const VGImage image = vgCreateImage(format, width, height, kAllQualities);
    vgImageSubData(image, colors.data(), width * 4, VG_sARGB_8888, 0, 0, width, height);
    return image;
}

inline std::vector<uint32_t> contentsOf(VGImage image) {
    const VGint width = vgGetParameteri(image, VG_IMAGE_WIDTH);
    const VGint height = vgGetParameteri(image, VG_IMAGE_HEIGHT);
    std::vector<uint32_t> colors(static_cast<size_t>(width * height));
    vgGetImageSubData(image, colors.data(), width * 4, VG_sARGB_8888, 0, 0, width, height);
    return colors;
}

/// Makes the matrix of a mode (m00 m01 m02; m10 m11 m12; m20 m21 m22).
inline void loadMatrix(VGint mode, const VGfloat (&rows)[3][3]) {
    VGfloat columns[9];
    for (int i = 0; i < 9; ++i) columns[i] = rows[i % 3][i / 3];
    vgSeti(VG_MATRIX_MODE, mode);
    vgLoadMatrix(columns);
}

inline VGPath rectanglePath(VGfloat x, VGfloat y, VGfloat width, VGfloat height) {
    const VGPath path = vgCreatePath(VG_PATH_FORMAT_STANDARD, VG_PATH_DATATYPE_F, 1.0F, 0.0F, 0, 0,
                                     VG_PATH_CAPABILITY_ALL);
    vguRect(path, x, y, width, height);
    return path;
}

}  // namespace vg
