// The lanes in whatever vectors the baseline of the target has.

#define QUOR_KERNELS kPortableKernels
#define QUOR_KERNELS_NAME "portable"
#include "vg/raster/kernel_table.h"
