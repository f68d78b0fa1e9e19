#pragma once

#include "svg/style.h"

namespace quor {

// Each reads the keyword that the text begins with, white space before it excepted. Case counts.
// Another text gives false and leaves `value` as it is.
bool parseKeyword(const char* text, SvgDisplay& value) noexcept;
bool parseKeyword(const char* text, SvgVisibility& value) noexcept;
bool parseKeyword(const char* text, SvgFillRule& value) noexcept;
bool parseKeyword(const char* text, SvgLineCap& value) noexcept;
bool parseKeyword(const char* text, SvgLineJoin& value) noexcept;
bool parseKeyword(const char* text, SvgVectorEffect& value) noexcept;

}  // namespace quor
