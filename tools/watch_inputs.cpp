#include "watch_inputs.h"

#include <filesystem>
#include <map>
#include <memory>
#include <system_error>

#include "file_watch.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

/// Where a file was when it was worked on last: a document that is being saved may be cut off, so
/// size counts too.
struct Version {
    fs::file_time_type time;
    std::uintmax_t size = 0;

    bool operator==(const Version&) const = default;
};

Version versionOf(const std::string& path) {
    std::error_code ignored;
    return {fs::last_write_time(path, ignored), fs::file_size(path, ignored)};
}

/// The files, and the folders that new ones may appear in.
std::vector<std::string> watchedPaths(const std::vector<std::string>& named,
                                      const std::vector<InputFile>& inputs) {
    std::vector<std::string> paths = named;
    for (const InputFile& input : inputs) {
        paths.push_back(input.path);
        paths.push_back(fs::absolute(input.path).parent_path().string());
    }
    return paths;
}

}  // namespace

void watchInputs(const std::vector<std::string>& named,
                 const std::function<void(const std::vector<InputFile>&)>& work) {
    constexpr int kPatience = 1000;  // milliseconds until looking for what the watch cannot know of
    std::map<std::string, Version> versions;
    for (;;) {
        const std::vector<InputFile> inputs = listInputs(named);
        FileWatch watch(watchedPaths(named, inputs));
        std::vector<InputFile> changed;
        for (const InputFile& input : inputs) {
            const Version version = versionOf(input.path);
            const auto [known, isNew] = versions.emplace(input.path, version);
            if (isNew || known->second != version) changed.push_back(input);
            known->second = version;
        }
        if (!changed.empty()) work(changed);
        watch.wait(kPatience);
    }
}

}  // namespace tool
