// Reads KEY VALUE lines; what it does not know it ignores.

#include "vg/config_file.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace vg {
namespace {

constexpr int kLineSize = 255;  // the closing zero included
constexpr int32_t kMaxCachingBox = 4096;
constexpr int32_t kFinestQuality = 100;

constexpr int kCachingBoxCharacters = 5;
constexpr int kQualityCharacters = 4;

bool isBlank(char c) noexcept { return c == '\t' || c == '\r' || c == ' '; }
bool endsWord(char c) noexcept { return c == '\0' || c == '\n' || isBlank(c); }
bool isDigit(char c) noexcept { return '0' <= c && c <= '9'; }
char toUpper(char c) noexcept { return 'a' <= c && c <= 'z' ? static_cast<char>(c - 32) : c; }

/// Copies the next word in upper case and moves past it.
void takeWord(const char*& text, char (&word)[kLineSize]) noexcept {
    while (isBlank(*text)) ++text;
    int length = 0;
    while (!endsWord(*text)) word[length++] = toUpper(*text++);
    word[length] = '\0';
}

/// The decimal number in the first `limit` characters (at most 9); 0 without digits.
int32_t readNumber(const char* text, int limit) noexcept {
    const char* const end = text + strnlen(text, static_cast<size_t>(limit));
    while (text != end && (*text == '\v' || *text == '\f')) ++text;
    const bool isNegative = text != end && *text == '-';
    if (text != end && (*text == '-' || *text == '+')) ++text;
    int32_t number = 0;
    for (; text != end && isDigit(*text); ++text) number = number * 10 + (*text - '0');
    return isNegative ? -number : number;
}

template <int32_t Configuration::*kSide>
void setCachingBox(Configuration& configuration, const char* value) noexcept {
    const int32_t number = readNumber(value, kCachingBoxCharacters);
    if (0 <= number && number <= kMaxCachingBox) configuration.*kSide = number;
}

template <bool Configuration::*kFlag>
void setFlag(Configuration& configuration, const char* value) noexcept {
    if (std::strcmp(value, "TRUE") == 0) configuration.*kFlag = true;
    if (std::strcmp(value, "FALSE") == 0) configuration.*kFlag = false;
}

/// From 0.01 for quality 100 to 1.5 for quality 0, quadratic in between.
void setCurvesQuality(Configuration& configuration, const char* value) noexcept {
    const int32_t quality = std::clamp(readNumber(value, kQualityCharacters), 0, kFinestQuality);
    const float coarseness = static_cast<float>(kFinestQuality - quality) * 0.01F;
    configuration.curvesTolerance = coarseness * coarseness * 1.49F + 0.01F;
}

struct Key {
    const char* name;
    void (*apply)(Configuration& configuration, const char* value) noexcept;
};

using C = Configuration;

constexpr Key kKeys[] = {
    {"MAXCACHINGBOXWIDTH", setCachingBox<&C::maxCachingBoxWidth>},
    {"MAXCACHINGBOXHEIGHT", setCachingBox<&C::maxCachingBoxHeight>},
    {"ALLOWVERTICALSNAPTOPIXELBETTER", setFlag<&C::allowVerticalSnapBetter>},
    {"ALLOWVERTICALSNAPTOPIXELFASTER", setFlag<&C::allowVerticalSnapFaster>},
    {"ALLOWVERTICALSNAPTOPIXELNOAA", setFlag<&C::allowVerticalSnapNonAntialiased>},
    {"CURVESQUALITY", setCurvesQuality},
};

void applyLine(Configuration& configuration, const char* line) noexcept {
    char name[kLineSize];
    char value[kLineSize];
    takeWord(line, name);
    takeWord(line, value);
    if (value[0] == '\0') return;
    for (const Key& key : kKeys) {
        if (std::strcmp(name, key.name) == 0) return key.apply(configuration, value);
    }
}

}  // namespace

const char* configurationPath() noexcept { return "/etc/calvanevg.ini"; }

bool readConfiguration(Configuration& configuration, const char* path) noexcept {
    configuration = Configuration();
    std::FILE* const file = path != nullptr ? std::fopen(path, "rt") : nullptr;
    if (file == nullptr) return false;
    char line[kLineSize];
    while (std::fgets(line, kLineSize, file) != nullptr) applyLine(configuration, line);
    std::fclose(file);
    return true;
}

}  // namespace vg
