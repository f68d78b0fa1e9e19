#pragma once

#include "vg/image.h"
#include "vg/param_rule.h"

namespace vg {

/// The rule of an image's parameter, or null.
const ParamRule<Image>* findImageRule(VGint type) noexcept;

}  // namespace vg
