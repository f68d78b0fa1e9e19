#pragma once

#include "vg/entry/param_rule.h"

namespace vg {

/// The rule of a context parameter (a VGParamType), or null.
const ParamRule<Context>* findContextRule(VGint type) noexcept;

}  // namespace vg
