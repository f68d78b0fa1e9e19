#include "folder_walk.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

#include "file_error.h"
#include "input_file.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

void walk(const fs::path& folder, std::vector<FoundFile>& files) {
    std::error_code error;
    const auto first = static_cast<std::ptrdiff_t>(files.size());
    for (fs::recursive_directory_iterator entry(folder, error), end; !error && entry != end;
         entry.increment(error)) {
        const fs::path& path = entry->path();
        const bool isDrawing = path.extension() == ".svg" || path.extension() == ".SVG";
        std::error_code ignored;
        if (isDrawing && entry->is_regular_file(ignored)) {
            files.push_back({path.string(), path.lexically_relative(folder).generic_string()});
        }
    }
    if (error) throw FileError("cannot read the folder: " + error.message());
    std::sort(files.begin() + first, files.end(),
              [](const FoundFile& a, const FoundFile& b) { return a.name < b.name; });
}

}  // namespace

std::vector<FoundFile> findDrawings(const std::vector<std::string>& inputs) {
    std::vector<FoundFile> files;
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (input == kStandardStream) {
            files.push_back({input, "stdin.svg"});
        } else if (fs::is_directory(input, ignored)) {
            walk(input, files);
        } else {
            files.push_back({input, fs::path(input).filename().string()});
        }
    }
    return files;
}

}  // namespace tool
