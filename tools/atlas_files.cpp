// What a run wrote is listed in its descriptions, for the next run to remove what is stale.

#include <nlohmann/json.hpp>
#include <sstream>

#include "atlas.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

constexpr const char* kCssList = "/* quor: ";

std::vector<std::string> listedInJson(const std::string& text) {
    const Json json = Json::parse(text, nullptr, false);
    if (!json.is_object() || !json.contains("meta") || json["meta"].value("app", "") != "quor")
        return {};
    std::vector<std::string> files;
    for (const Json& file : json["meta"].value("files", Json::array()))
        if (file.is_string()) files.push_back(file.get<std::string>());
    return files;
}

/// Its pages: the lines behind empty ones.
std::vector<std::string> listedInText(const std::string& text) {
    std::vector<std::string> files;
    std::istringstream lines(text);
    bool isPage = false;
    for (std::string line; std::getline(lines, line); isPage = line.empty())
        if (isPage && line.ends_with(".png")) files.push_back(line);
    return files;
}

}  // namespace

std::vector<std::string> filesListedIn(const std::string& description) {
    if (description.starts_with('{')) return listedInJson(description);
    if (!description.starts_with(kCssList)) return listedInText(description);
    const std::size_t start = std::string(kCssList).size();
    const Json files =
        Json::parse(description.substr(start, description.find(" */") - start), nullptr, false);
    return files.is_array() ? files.get<std::vector<std::string>>() : std::vector<std::string>();
}

void listFiles(std::vector<AtlasDescription>& descriptions, const std::vector<std::string>& files) {
    const std::string list = Json(files).dump(-1, ' ', false, Json::error_handler_t::replace);
    for (AtlasDescription& description : descriptions) {
        if (description.suffix.ends_with(".json")) {
            Json json = Json::parse(description.text);
            json["meta"]["files"] = Json::parse(list);
            description.text = json.dump(2) + "\n";
        } else if (description.suffix == ".css") {
            description.text.insert(0, kCssList + list + " */\n");
        }
    }
}

}  // namespace tool
