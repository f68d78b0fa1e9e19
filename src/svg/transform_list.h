#pragma once

#include "svg/matrix.h"

namespace quor {

/// The product of a transform list, leftmost outermost. A list with any fault is the identity.
SvgMatrix parseTransformList(const char* text) noexcept;

}  // namespace quor
