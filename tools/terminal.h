#pragma once

#include <cstdio>
#include <string>

namespace tool {

enum class Style { kBold, kDim, kGreen, kYellow };

/// The text with its style where `stream` is a terminal and the variable NO_COLOR is not set to
/// anything; else the bare text.
std::string styled(std::FILE* stream, Style style, const std::string& text);

}  // namespace tool
