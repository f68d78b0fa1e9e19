#pragma once

#include <functional>
#include <string>
#include <vector>

namespace tool {

/// Calls `work` with the path of each input and goes on after those that it throws FileError for,
/// which are reported. True when there was none.
bool forEachInput(const std::vector<std::string>& named,
                  const std::function<void(const std::string& path)>& work);

}  // namespace tool
