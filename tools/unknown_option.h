#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

/// What to say of arguments that a command does not know: the first of them, and the option or
/// command whose name is nearest.
std::string explainUnknown(const CLI::App& command, const std::vector<std::string>& arguments);

}  // namespace tool
