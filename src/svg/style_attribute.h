#pragma once

#include "base/array.h"
#include "svg/attribute_table.h"
#include "svg/matrix.h"
#include "svg/rect.h"
#include "svg/status.h"
#include "svg/style.h"

namespace tinyxml2 {
class XMLElement;
}

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

/// Writes each declaration of a `style` text as an attribute of the element, replacing one of the
/// same name. Malformed declarations are skipped, and so are those after the first 1024. `scratch`
/// is reused from element to element.
Status expandStyleAttribute(tinyxml2::XMLElement& element, const char* style,
                            base::Array<char>& scratch) noexcept;

}  // namespace quor
