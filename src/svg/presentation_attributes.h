#pragma once

#include "base/array.h"
#include "svg/attribute_table.h"
#include "svg/matrix.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/style.h"

namespace quor {

/// What lengths in presentation attributes are resolved against.
struct LengthContext {
    float dpi;
    const Rect* viewport;
};

/// Reads the presentation attributes and `transform` over a fresh style, in the fixed order. A
/// value that is absent, empty or does not parse leaves its field and bit as they are.
/// `dashes` receives the values of stroke-dasharray and must outlive the style.
/// The only failure is kOutOfMemory.
Status readPresentationAttributes(const AttributeTable& attributes, const LengthContext& lengths,
                                  SvgStyle& style, base::Array<float>& dashes,
                                  SvgMatrix& transform) noexcept;

}  // namespace quor
