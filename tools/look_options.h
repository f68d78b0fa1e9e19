#pragma once

namespace CLI {
class App;
}

namespace tool {

/// Adds the commands that look at documents without writing pictures: `info`, `bench` and `view`.
/// Parsing the line runs them; `isSuccess` then tells how that went and must outlive `app`.
void addLookCommands(CLI::App& app, bool& isSuccess);

}  // namespace tool
