#pragma once

#include "vg/engine.h"

namespace vg {

/// What entry points work on: both set or both null. engine.h declares the getters.
struct CurrentPair {
    Context* context = nullptr;
    Surface* surface = nullptr;
};

extern CurrentPair currentPair;

}  // namespace vg
