#pragma once

// The process-wide table of contexts and the current pair. engine.h declares what callers of the
// engine use of it: createContext, destroyContext, makeCurrent, currentContext, currentSurface.

#include <cstdint>

#include "vg/context.h"
#include "vg/engine.h"

namespace vg {

/// As many as the 6 high bits of a handle can name.
inline constexpr uint32_t kMaxContexts = 64;

/// Makes nothing current if the surface is the current one.
void unbindSurface(const Surface* surface) noexcept;

}  // namespace vg
