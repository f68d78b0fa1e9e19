// The page that shows an atlas: one file, sheets included, that needs no server.

#include <nlohmann/json.hpp>

#include "atlas.h"

namespace tool {

namespace {

using Json = nlohmann::ordered_json;

std::string base64(const std::string& bytes) {
    constexpr const char* kDigits =
        "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t i = 0; i < bytes.size(); i += 3) {
        std::uint32_t group = 0;
        for (std::size_t k = 0; k < 3; ++k)
            group =
                group << 8 | (i + k < bytes.size() ? static_cast<unsigned char>(bytes[i + k]) : 0U);
        for (std::size_t k = 0; k < 4; ++k)
            text += i + k > bytes.size() ? '=' : kDigits[group >> (18 - 6 * k) & 63];
    }
    return text;
}

/// Inside a script element a "</" would end it.
std::string scriptText(const Json& json) {
    std::string text = json.dump(-1, ' ', false, Json::error_handler_t::replace);
    for (std::size_t at = 0; (at = text.find('<', at)) != std::string::npos;)
        text.replace(at, 1, "\\u003c");
    return text;
}

constexpr const char* kPage = R"page(<!DOCTYPE html>
<html lang="en">
<meta charset="utf-8">
<title>Frames of an atlas</title>
<style>
  body { font: 14px sans-serif; margin: 16px; background: #e6e8ee; color: #111; }
  body.dark { background: #1d2027; color: #eee; }
  .bar > * { margin-right: 16px; }
  figure { display: inline-block; margin: 8px; text-align: center; vertical-align: top; }
  figcaption { max-width: 160px; overflow-wrap: anywhere; }
  canvas { background: repeating-conic-gradient(#fff 0 25%, #d4d6dc 0 50%) 0 0 / 16px 16px; }
  .light canvas { background: #fff; }
  .dark canvas { background: #000; }
</style>
<p class="bar"><input id="filter" type="search" placeholder="part of a name" autofocus>
<select id="ground"><option>checker<option>light<option>dark</select>
<output id="summary"></output></p>
<div id="frames"></div>
<script>
"use strict";
const sheets = ATLAS;

/** A figure with the frame's pixels and name. */
function figureOf(frame, picture) {
  const canvas = document.createElement("canvas");
  canvas.width = frame.w;
  canvas.height = frame.h;
  canvas.getContext("2d").drawImage(picture, frame.x, frame.y, frame.w, frame.h,
                                    0, 0, frame.w, frame.h);
  const caption = document.createElement("figcaption");
  caption.textContent = `${frame.name} (${frame.w} × ${frame.h})`;
  const figure = document.createElement("figure");
  figure.dataset.name = frame.name.toLowerCase();
  figure.append(canvas, caption);
  return figure;
}

function filter() {
  const part = document.getElementById("filter").value.toLowerCase();
  const figures = [...document.querySelectorAll("figure")];
  for (const figure of figures) figure.hidden = !figure.dataset.name.includes(part);
  for (const figure of figures) figure.style.display = figure.hidden ? "none" : "";
  document.getElementById("summary").textContent =
      `${figures.filter(figure => !figure.hidden).length} of ${figures.length} frames`;
}

async function show() {
  for (const sheet of sheets) {
    const picture = new Image();
    picture.src = sheet.source;
    await picture.decode();
    document.getElementById("frames").append(
        ...sheet.frames.map(frame => figureOf(frame, picture)));
  }
  filter();
}

document.getElementById("filter").addEventListener("input", filter);
document.getElementById("ground").addEventListener("change", event => {
  document.body.className = event.target.value;
});
show();
</script>
</html>
)page";

}  // namespace

std::string describeAsPage(const Atlas& atlas, const std::string& title,
                           const std::vector<std::string>& pictures) {
    Json sheets = Json::array();
    for (std::size_t i = 0; i < atlas.sheets.size(); ++i) {
        Json frames = Json::array();
        for (const AtlasFrame& frame : atlas.sheets[i].frames) {
            frames.push_back({{"name", frame.name},
                              {"x", frame.x},
                              {"y", frame.y},
                              {"w", frame.width},
                              {"h", frame.height}});
        }
        sheets.push_back({{"atlas", title},
                          {"source", "data:image/png;base64," + base64(pictures[i])},
                          {"frames", std::move(frames)}});
    }
    std::string page = kPage;
    return page.replace(page.find("ATLAS"), 5, scriptText(sheets));
}

}  // namespace tool
