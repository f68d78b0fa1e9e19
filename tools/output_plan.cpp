#include "output_plan.h"

#include <unistd.h>

#include <filesystem>
#include <system_error>

#include "file_error.h"
#include "input_file.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

void requireFolder(const fs::path& folder) {
    if (isFolder(folder)) return;
    throw FileError(folder.string() + ": there is no such folder; create it with: mkdir -p " +
                    folder.string());
}

/// "drawing.svg" gives "drawing.png"; any other ending is kept: "a.b" gives "a.b.png".
fs::path pictureName(const FoundFile& input, const std::string& ending) {
    fs::path name = input.name;
    const fs::path extension = name.extension();
    if (extension == ".svg" || extension == ".SVG" || extension == ".svgz")
        name.replace_extension();
    return name += ending;
}

void createFolders(const fs::path& folder) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error) {
        throw FileError("cannot create the folder " + folder.string() + ": " + error.message() +
                        "; choose another place with -o");
    }
}

bool isSameFile(const std::string& first, const std::string& second) {
    std::error_code ignored;
    return fs::equivalent(first, second, ignored);
}

}  // namespace

OutputPlan::OutputPlan(const std::string& output, std::size_t inputCount, const std::string& ending)
    : output_(output),
      ending_(ending),
      isFolder_(!output.empty() && (output.back() == '/' || isFolder(output))) {
    if (output.empty()) return;
    if (isFolder_) {
        requireFolder(output);
    } else if (inputCount > 1) {
        throw FileError(output + ": one file cannot hold " + std::to_string(inputCount) +
                        " pictures; name a folder instead: -o DIR/");
    } else if (output != kStandardStream && fs::path(output).has_parent_path()) {
        requireFolder(fs::path(output).parent_path());
    }
}

std::string OutputPlan::choosePath(const FoundFile& input) const {
    const fs::path name = pictureName(input, ending_);
    if (isFolder_) return (fs::path(output_) / name).string();
    if (!output_.empty()) return output_;
    if (input.path == kStandardStream) return kStandardStream;
    return fs::path(input.path).replace_filename(name.filename()).string();
}

std::string OutputPlan::pathFor(const FoundFile& input) {
    std::string path = choosePath(input);
    if (path == kStandardStream) {
        if (isatty(STDOUT_FILENO) != 0)
            throw FileError("a picture is not for a terminal; name a file with -o OUT.png");
        return path;
    }
    if (input.path != kStandardStream && isSameFile(path, input.path))
        throw FileError("the picture would overwrite its own document; choose another -o");
    if (!taken_.insert(fs::path(path).lexically_normal().string()).second)
        throw FileError("its picture would overwrite " + path +
                        ", just written for another input; render them into separate folders");
    if (isFolder_) createFolders(fs::path(path).parent_path());
    return path;
}

}  // namespace tool
