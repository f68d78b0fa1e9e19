#pragma once

#include <string>
#include <vector>

namespace tool {

/// Prints what each document is and what of it is not drawn. Bad files are reported on standard
/// error. True when there was none.
bool printInfo(const std::vector<std::string>& inputs);

}  // namespace tool
