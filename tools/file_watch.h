#pragma once

#include <cstdint>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

namespace tool {

/// Notices that files were changed, added or removed, by looking at their times a few times a
/// second.
class FileWatch {
public:
    /// Remembers the files as they are now.
    explicit FileWatch(const std::vector<std::string>& paths) : states_(look(paths)) {}

    /// Those of `paths` that are not as they were at the last call, and those that are gone.
    std::vector<std::string> changesSince(const std::vector<std::string>& paths);

    /// To be called between looks.
    static void pause();

private:
    struct State {
        std::filesystem::file_time_type time;
        std::uintmax_t size;

        bool operator==(const State&) const = default;
    };
    using States = std::map<std::string, State>;

    static States look(const std::vector<std::string>& paths);

    States states_;
};

}  // namespace tool
