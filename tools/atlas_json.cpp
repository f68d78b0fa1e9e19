#include <nlohmann/json.hpp>

#include "atlas.h"
#include "quor/quor.h"

namespace tool {

namespace {

// Keys in the order in which they are written.
using Json = nlohmann::ordered_json;

std::string scaleText(double scale) { return Json(scale).dump(); }

Json frameObject(const AtlasFrame& frame) {
    const Json middle = {{"x", 0.5}, {"y", 0.5}};
    return {
        {"frame", {{"x", frame.x}, {"y", frame.y}, {"w", frame.width}, {"h", frame.height}}},
        {"rotated", false},
        {"trimmed", frame.isTrimmed()},
        {"spriteSourceSize",
         {{"x", frame.offsetX}, {"y", frame.offsetY}, {"w", frame.width}, {"h", frame.height}}},
        {"sourceSize", {{"w", frame.sourceWidth}, {"h", frame.sourceHeight}}},
        {"pivot", middle},
        {"anchor", middle},
        {"origin", {{"x", frame.originX}, {"y", frame.originY}}},
    };
}

Json framesArray(const AtlasSheet& sheet) {
    Json frames = Json::array();
    for (const AtlasFrame& frame : sheet.frames) {
        Json object = {{"filename", frame.name}};
        object.update(frameObject(frame));
        frames.push_back(std::move(object));
    }
    return frames;
}

Json pictureObject(const AtlasSheet& sheet, double scale) {
    return {{"image", sheet.image},
            {"format", "RGBA8888"},
            {"size", {{"w", sheet.width}, {"h", sheet.height}}},
            {"scale", scaleText(scale)}};
}

Json metaObject() { return {{"app", "quor"}, {"version", quorGetString(QUOR_VERSION)}}; }

Json metaObject(const AtlasSheet& sheet, double scale) {
    Json meta = metaObject();
    meta.update(pictureObject(sheet, scale));
    return meta;
}

/// Names come from files and documents: bytes that are no UTF-8 become U+FFFD.
std::string textOf(const Json& json) {
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

}  // namespace

std::vector<AtlasDescription> describeAsJsonHash(const Atlas& atlas, const std::string& baseName) {
    const auto suffixOf = [&](std::size_t sheet) {
        return sheet == 0 ? ".json" : "-" + std::to_string(sheet) + ".json";
    };
    std::vector<AtlasDescription> descriptions;
    for (std::size_t i = 0; i < atlas.sheets.size(); ++i) {
        Json json = {{"frames", Json::object()},
                     {"meta", metaObject(atlas.sheets[i], atlas.scale)}};
        for (const AtlasFrame& frame : atlas.sheets[i].frames)
            json["frames"][frame.name] = frameObject(frame);
        for (std::size_t other = 0; other < atlas.sheets.size(); ++other)
            if (other != i)
                json["meta"]["related_multi_packs"].push_back(baseName + suffixOf(other));
        descriptions.push_back({suffixOf(i), textOf(json)});
    }
    return descriptions;
}

std::vector<AtlasDescription> describeAsJsonArray(const Atlas& atlas,
                                                  const std::string& /*baseName*/) {
    Json json;
    if (atlas.sheets.size() == 1) {
        json["frames"] = framesArray(atlas.sheets[0]);
        json["meta"] = metaObject(atlas.sheets[0], atlas.scale);
    } else {
        json["textures"] = Json::array();
        for (const AtlasSheet& sheet : atlas.sheets) {
            Json texture = pictureObject(sheet, atlas.scale);
            texture["frames"] = framesArray(sheet);
            json["textures"].push_back(std::move(texture));
        }
        json["meta"] = metaObject();
    }
    return {{".json", textOf(json)}};
}

}  // namespace tool
