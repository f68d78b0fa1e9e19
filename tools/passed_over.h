#pragma once

#include <string>
#include <vector>

namespace tool {

/// Something in a document that the library does not draw.
struct PassedOver {
    std::string name;  ///< "<text>" or "filter="
    int count = 0;
    int line = 0;  ///< of the first, from 1
    const char* advice = "";
};

/// All of them, by the line of the first; empty for texts that do not parse.
std::vector<PassedOver> findPassedOver(const std::string& text);

}  // namespace tool
