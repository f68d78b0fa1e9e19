#include "frame_names.h"

#include <filesystem>

#include "input_file.h"

namespace tool {

std::string FrameNames::fileName(const std::string& input) const {
    if (input == kStandardStream) return "stdin";
    std::filesystem::path name = std::filesystem::path(input).filename();
    if (trimsEndings_ && (name.extension() == ".svg" || name.extension() == ".SVG"))
        name.replace_extension();
    return name.string();
}

std::string FrameNames::nameOf(const std::string& input, const std::string& id, std::size_t index,
                               std::size_t count) {
    std::string name = fileName(input);
    if (count > 1) name += '/' + (id.empty() ? std::to_string(index) : id);
    std::string unique = name;
    for (int i = 2; !taken_.insert(unique).second; ++i) unique = name + '-' + std::to_string(i);
    return unique;
}

}  // namespace tool
