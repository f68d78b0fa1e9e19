#pragma once

#include <cstdint>
#include <filesystem>
#include <string>
#include <vector>

namespace tool {

/// Tells when files or folders change, by their modification times.
class FileWatch {
public:
    explicit FileWatch(const std::vector<std::string>& paths);

    /// Waits until something changed since the last call, or the construction, but no longer than
    /// this. True: something changed.
    bool wait(int milliseconds);

private:
    struct Stamp {
        std::filesystem::file_time_type time;  ///< the least value for what is not there
        std::uintmax_t size;

        bool operator==(const Stamp&) const = default;
    };

    static Stamp stampOf(const std::string& path);
    bool update();

    std::vector<std::string> paths_;
    std::vector<Stamp> stamps_;  ///< parallel to paths_
};

}  // namespace tool
