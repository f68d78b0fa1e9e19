#pragma once

#include <cassert>
#include <cstdint>

#include "vg/context.h"

// The checks and steps that all entry points have in common.
namespace vg {

/// Does work that may run out of memory; when it does, once more after the context gave memory
/// back. `work` returns false when memory runs out, and can then be done again.
template <class Work>
[[nodiscard]] bool doTwice(Context& context, const Work& work) noexcept {
    if (work()) return true;
    context.recoverMemory();
    return work();
}

/// The same; the error is raised when the second try fails, too.
template <class Work>
bool doOrRaise(Context& context, const Work& work) noexcept {
    if (doTwice(context, work)) return true;
    context.raise(VG_OUT_OF_MEMORY_ERROR);
    return false;
}

/// The alignment is a power of two.
inline bool isAligned(const void* array, uintptr_t alignment) noexcept {
    assert(alignment != 0 && (alignment & (alignment - 1)) == 0);
    return (reinterpret_cast<uintptr_t>(array) & (alignment - 1)) == 0;
}

/// True for an array that may be read or written with that alignment.
inline bool isUsableArray(const void* array, uintptr_t alignment) noexcept {
    return array != nullptr && isAligned(array, alignment);
}

}  // namespace vg
