#pragma once

#include <string>

namespace tool {

/// The text of the document with an id for every element that has none: '#' and its place, counted
/// from 0 among its parent's children, the parents' places before it: "#3.0". A text that does not
/// parse is returned as it is.
std::string withPlaces(const std::string& text);

inline constexpr char kPlacePrefix = '#';

}  // namespace tool
