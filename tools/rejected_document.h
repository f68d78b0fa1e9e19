#pragma once

#include <string>

#include "file_error.h"

namespace tool {

/// Why the library takes no document from `text`: the line and the fault of XML that is not
/// well-formed, or a root element that is not `svg`. The library itself tells only that it failed.
FileError explainRejectedDocument(const std::string& text);

}  // namespace tool
