#include "file_watch.h"

#include <chrono>
#include <system_error>
#include <thread>

namespace tool {

FileWatch::States FileWatch::look(const std::vector<std::string>& paths) {
    States states;
    for (const std::string& path : paths) {
        std::error_code error;
        const auto time = std::filesystem::last_write_time(path, error);
        if (error) continue;
        const auto size = std::filesystem::file_size(path, error);
        if (!error) states[path] = {time, size};
    }
    return states;
}

std::vector<std::string> FileWatch::changesSince(const std::vector<std::string>& paths) {
    States now = look(paths);
    std::vector<std::string> changes;
    for (const auto& [path, state] : now) {
        const auto before = states_.find(path);
        if (before == states_.end() || before->second != state) changes.push_back(path);
    }
    for (const auto& [path, state] : states_) {
        if (!now.contains(path)) changes.push_back(path);
    }
    states_.swap(now);
    return changes;
}

void FileWatch::pause() { std::this_thread::sleep_for(std::chrono::milliseconds(200)); }

}  // namespace tool
