#include "input_list.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "input_file.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

bool isDrawing(const fs::path& path) {
    const std::string extension = path.extension().string();
    return extension == ".svg" || extension == ".SVG" || extension == ".svgz";
}

/// Folders that cannot be read are passed over; links to folders are not followed, so this ends.
std::vector<fs::path> drawingsIn(const fs::path& folder) {
    std::vector<fs::path> found;
    std::error_code error;
    fs::recursive_directory_iterator entry(folder, fs::directory_options::skip_permission_denied,
                                           error);
    for (; !error && entry != fs::recursive_directory_iterator(); entry.increment(error)) {
        std::error_code ignored;
        if (isDrawing(entry->path()) && entry->is_regular_file(ignored))
            found.push_back(entry->path());
    }
    std::sort(found.begin(), found.end());
    return found;
}

}  // namespace

std::vector<InputFile> listInputs(const std::vector<std::string>& named) {
    std::vector<InputFile> inputs;
    for (const std::string& name : named) {
        std::error_code ignored;
        const bool isFolder = name != kStandardStream && fs::is_directory(name, ignored);
        const std::vector<fs::path> found = isFolder ? drawingsIn(name) : std::vector<fs::path>();
        if (found.empty()) inputs.push_back({name, fs::path(name).filename().string()});
        for (const fs::path& path : found)
            inputs.push_back({path.string(), path.lexically_relative(name).string()});
    }
    return inputs;
}

}  // namespace tool
