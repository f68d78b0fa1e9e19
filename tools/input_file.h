#pragma once

#include <string>

namespace tool {

/// The name that stands for standard input and output.
inline constexpr const char* kStandardStream = "-";

/// How messages call an input.
std::string displayName(const std::string& input);

/// The text of a file or, for "-", of standard input, unpacked when it is gzip: not empty, without
/// a byte order mark and without NUL bytes. Throws FileError for anything that cannot be such a
/// text.
std::string readInputText(const std::string& input);

}  // namespace tool
