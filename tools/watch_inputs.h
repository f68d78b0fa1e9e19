#pragma once

#include <functional>
#include <string>
#include <vector>

#include "folder_walk.h"

namespace tool {

/// Calls `work` with all inputs, and then, whenever some of them change or appear, with those; for
/// ever.
[[noreturn]] void watchInputs(const std::vector<std::string>& named,
                              const std::function<void(const std::vector<FoundFile>&)>& work);

}  // namespace tool
