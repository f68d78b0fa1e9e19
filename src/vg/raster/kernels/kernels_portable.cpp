// The lanes in whatever vectors the baseline of the target has.

#define QUOR_KERNELS kPortableKernels
#include "vg/raster/kernels/kernel_table.h"
