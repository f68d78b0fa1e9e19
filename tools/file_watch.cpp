#include "file_watch.h"

#include <algorithm>
#include <chrono>
#include <system_error>
#include <thread>

namespace tool {

namespace fs = std::filesystem;

FileWatch::FileWatch(const std::vector<std::string>& paths) : paths_(paths) {
    for (const std::string& path : paths_) stamps_.push_back(stampOf(path));
}

FileWatch::Stamp FileWatch::stampOf(const std::string& path) {
    std::error_code error;
    const fs::file_time_type time = fs::last_write_time(path, error);
    if (error) return {fs::file_time_type::min(), 0};
    const std::uintmax_t size = fs::is_regular_file(path, error) ? fs::file_size(path, error) : 0;
    return {time, size};
}

bool FileWatch::update() {
    bool isChanged = false;
    for (std::size_t i = 0; i < paths_.size(); ++i) {
        const Stamp stamp = stampOf(paths_[i]);
        isChanged |= stamp != stamps_[i];
        stamps_[i] = stamp;
    }
    return isChanged;
}

bool FileWatch::wait(int milliseconds) {
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::milliseconds kPause(100);
    const Clock::time_point end = Clock::now() + std::chrono::milliseconds(milliseconds);
    while (!update()) {
        const Clock::time_point now = Clock::now();
        if (now >= end) return false;
        std::this_thread::sleep_for(std::min<Clock::duration>(kPause, end - now));
    }
    return true;
}

}  // namespace tool
