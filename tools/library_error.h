#pragma once

#include <cstdint>
#include <string>

#include "file_error.h"

namespace tool {

[[noreturn]] void throwOutOfMemory();

/// Library calls whose arguments the options have checked fail for want of memory or for a
/// document that cannot be drawn: a FileError that says which.
void requireSuccess(std::uint32_t error);

/// "FILE:LINE: MESSAGE" or "FILE: MESSAGE", and a line end.
std::string reportText(const std::string& input, const FileError& error);

/// Prints that on standard error.
void report(const std::string& input, const FileError& error);

}  // namespace tool
