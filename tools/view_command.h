#pragma once

#include <string>
#include <vector>

namespace tool {

/// Shows the documents in a window until the user closes it. False, with a message on standard
/// error, when there is no window to be had or the tool was built without.
bool viewFiles(const std::vector<std::string>& inputs);

}  // namespace tool
