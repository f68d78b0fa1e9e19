#pragma once

#include <cstddef>
#include <string>

namespace tool {

/// Whether bytes begin as gzip does.
bool isGzip(const std::string& bytes);

/// What is compressed in `bytes`. Throws FileError when they are damaged or hold more than `limit`
/// bytes.
std::string gunzip(const std::string& bytes, std::size_t limit);

}  // namespace tool
