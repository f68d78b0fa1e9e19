#include "frame_names.h"

#include <nlohmann/json.hpp>

namespace tool {

std::string validText(const std::string& text) {
    using Json = nlohmann::json;
    const std::string quoted = Json(text).dump(-1, ' ', false, Json::error_handler_t::replace);
    return Json::parse(quoted).get<std::string>();
}

std::string FrameNames::trimmed(const std::string& name) const {
    const bool isDrawing = name.ends_with(".svg") || name.ends_with(".SVG");
    return validText(trimsEndings_ && isDrawing ? name.substr(0, name.size() - 4) : name);
}

std::string FrameNames::unique(const std::string& name) {
    std::string result = name;
    for (int i = 2; !taken_.insert(result).second; ++i) result = name + '-' + std::to_string(i);
    return result;
}

std::string FrameNames::nameOf(const FoundFile& file) {
    const std::string name = trimmed(file.name);
    return unique(taken_.contains(name) ? trimmed(file.path) : name);
}

std::string FrameNames::nameOf(const std::string& fileName, const std::string& element) {
    return unique(fileName + '/' + validText(element));
}

}  // namespace tool
