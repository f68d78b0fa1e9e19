#pragma once

#include <string>

namespace tool {

/// The document with `color` set to "#rrggbb" at its root, which is what currentColor stands for,
/// and `fill` too where no attribute of the drawing names a colour: such drawings are meant to be
/// coloured as a whole. Texts that do not parse come back as they are.
std::string recolored(const std::string& text, const std::string& color);

/// The document with nothing drawn but the element with this id, in the style and place it has in
/// the whole. The others stay where references find them. Throws FileError when there is no such
/// element or it is never drawn.
std::string isolated(const std::string& text, const std::string& id);

}  // namespace tool
