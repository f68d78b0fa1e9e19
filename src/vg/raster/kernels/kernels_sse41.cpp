// The lanes in 128-bit vectors with minima, maxima, products and tests of SSE4.1: compiled with
// -msse4.1, reached only where the processor has it.

#if defined(__SSE4_1__)
#define QUOR_KERNELS kSse41Kernels
#include "vg/raster/kernels/kernel_table.h"
#endif
