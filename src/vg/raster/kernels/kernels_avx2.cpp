// The lanes in 256-bit vectors: compiled with -mavx2, reached only where the processor has it.

#if defined(__AVX2__)
#define QUOR_KERNELS kAvx2Kernels
#include "vg/raster/kernels/kernel_table.h"
#endif
