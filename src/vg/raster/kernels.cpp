#include "vg/raster/kernels.h"

namespace vg::raster {
namespace {

/// Null where the processor lacks the level.
const Kernels* kernelsOf(KernelLevel level) noexcept {
    if (level == KernelLevel::kPortable) return &kPortableKernels;
#if defined(__x86_64__)
    __builtin_cpu_init();  // this may run before the constructors of the runtime
    if (__builtin_cpu_supports("avx2")) return &kAvx2Kernels;
#endif
    return nullptr;
}

const Kernels* bestKernels() noexcept {
    const Kernels* const best = kernelsOf(KernelLevel::kAvx2);
    return best != nullptr ? best : &kPortableKernels;
}

constinit const Kernels* chosen = &kPortableKernels;

[[maybe_unused]] const bool kIsChosen = [] {
    chosen = bestKernels();
    return true;
}();

}  // namespace

const Kernels& kernels() noexcept { return *chosen; }

bool useKernelLevel(KernelLevel level) noexcept {
    const Kernels* const forced = kernelsOf(level);
    if (forced == nullptr) return false;
    chosen = forced;
    return true;
}

}  // namespace vg::raster
