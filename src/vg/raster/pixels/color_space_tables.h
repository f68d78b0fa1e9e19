#pragma once

#include <cstdint>

namespace vg::raster {

// 8-bit channels from one colour space to the other, rounded to the nearest byte. The curves, for
// v in 0..1, are
//
//   linear to sRGB   12.92 v                    where v <= 0.00304, else 1.0556 v^(1/2.4) - 0.0556
//   sRGB to linear   v / 12.92                  where v <= 0.03928, else ((v + 0.0556)
//   / 1.0556)^2.4
//
// They are tables, not calls of pow, so that pixels do not depend on the mathematics library.

extern const uint32_t kLinearToStandard[256];
extern const uint32_t kStandardToLinear[256];

}  // namespace vg::raster
