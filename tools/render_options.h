#pragma once

namespace CLI {
class App;
}

namespace tool {

/// Adds the command `render` to the command line. Parsing the line runs it; `isSuccess` then tells
/// how that went and must outlive `app`.
void addRenderCommand(CLI::App& app, bool& isSuccess);

}  // namespace tool
