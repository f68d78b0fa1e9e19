#pragma once

namespace CLI {
class App;
}

namespace tool {

/// Adds the command `pack` to the command line, as addRenderCommand does with `render`.
void addPackCommand(CLI::App& app, bool& isSuccess);

}  // namespace tool
