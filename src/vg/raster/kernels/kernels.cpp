// Run-time dispatch by what the processor has, done once before main().

#include "vg/raster/kernels/kernels.h"

namespace vg::raster {
namespace {

/// Null where the processor lacks the level.
const Kernels* kernelsOf(KernelLevel level) noexcept {
#if defined(__x86_64__)
    __builtin_cpu_init();  // this may run before the constructors of the runtime
    switch (level) {
        case KernelLevel::kPortable:
            break;
        case KernelLevel::kSse41:
            return __builtin_cpu_supports("sse4.1") ? &kSse41Kernels : nullptr;
        case KernelLevel::kAvx2:
            return __builtin_cpu_supports("avx2") ? &kAvx2Kernels : nullptr;
    }
#endif
    return level == KernelLevel::kPortable ? &kPortableKernels : nullptr;
}

}  // namespace

constinit const Kernels* kernelsInUse = &kPortableKernels;

namespace {

[[maybe_unused]] const bool kIsChosen = [] {
    kernelsInUse = kernelsOf(bestKernelLevel());
    return true;
}();

}  // namespace

KernelLevel bestKernelLevel() noexcept {
    KernelLevel best = KernelLevel::kPortable;
    for (const KernelLevel level : kKernelLevels) {
        if (kernelsOf(level) != nullptr) best = level;
    }
    return best;
}

bool useKernelLevel(KernelLevel level) noexcept {
    const Kernels* const forced = kernelsOf(level);
    if (forced == nullptr) return false;
    kernelsInUse = forced;
    return true;
}

}  // namespace vg::raster
