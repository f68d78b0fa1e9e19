#include "vg/current_pair.h"

namespace vg {

CurrentPair currentPair;

Context* currentContext() noexcept { return currentPair.context; }

Surface* currentSurface() noexcept { return currentPair.surface; }

}  // namespace vg
