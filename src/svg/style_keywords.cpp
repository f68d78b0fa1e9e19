// The keywords of enumerated properties, searched in order.

#include "svg/style_keywords.h"

#include <string_view>

#include "svg/text_cursor.h"

namespace quor {
namespace {

template <class Enum>
struct Keyword {
    std::string_view text;
    Enum value;
};

// Only as much of a text is compared as the keyword is long, so a keyword comes before its own
// beginnings: "inline" stands for "inline-table" and "table" for "table-row" as well.
// clang-format off
constexpr Keyword<SvgDisplay> kDisplays[] = {
    {"none", SvgDisplay::kNone},
    {"inline", SvgDisplay::kShown},
    {"inherit", SvgDisplay::kInherit},
    {"block", SvgDisplay::kShown},
    {"list-item", SvgDisplay::kShown},
    {"run-in", SvgDisplay::kShown},
    {"compact", SvgDisplay::kShown},
    {"marker", SvgDisplay::kShown},
    {"table", SvgDisplay::kShown},
};

constexpr Keyword<SvgVisibility> kVisibilities[] = {
    {"visibl", SvgVisibility::kVisible},  // on purpose: for drawings with other endings
    {"hidden", SvgVisibility::kHidden},
    {"collapse", SvgVisibility::kHidden},
    {"inherit", SvgVisibility::kInherit},
};

constexpr Keyword<SvgFillRule> kFillRules[] = {
    {"evenodd", SvgFillRule::kEvenOdd},
    {"nonzero", SvgFillRule::kNonZero},
    {"inherit", SvgFillRule::kInherit},
};

constexpr Keyword<SvgLineCap> kLineCaps[] = {
    {"butt", SvgLineCap::kButt},
    {"round", SvgLineCap::kRound},
    {"square", SvgLineCap::kSquare},
    {"inherit", SvgLineCap::kInherit},
};

constexpr Keyword<SvgLineJoin> kLineJoins[] = {
    {"miter", SvgLineJoin::kMiter},
    {"round", SvgLineJoin::kRound},
    {"bevel", SvgLineJoin::kBevel},
    {"inherit", SvgLineJoin::kInherit},
};

constexpr Keyword<SvgVectorEffect> kVectorEffects[] = {
    {"none", SvgVectorEffect::kNone},
    {"non-scaling-stroke", SvgVectorEffect::kNonScalingStroke},
    {"inherit", SvgVectorEffect::kInherit},
};
// clang-format on

template <class Enum, size_t N>
bool findKeyword(const Keyword<Enum> (&keywords)[N], const char* text, Enum& value) noexcept {
    TextCursor cursor(text);
    cursor.skipSpaces();
    for (const Keyword<Enum>& keyword : keywords) {
        if (!cursor.beginsWith(keyword.text)) continue;
        value = keyword.value;
        return true;
    }
    return false;
}

}  // namespace

bool parseKeyword(const char* text, SvgDisplay& value) noexcept {
    return findKeyword(kDisplays, text, value);
}
bool parseKeyword(const char* text, SvgVisibility& value) noexcept {
    return findKeyword(kVisibilities, text, value);
}
bool parseKeyword(const char* text, SvgFillRule& value) noexcept {
    return findKeyword(kFillRules, text, value);
}
bool parseKeyword(const char* text, SvgLineCap& value) noexcept {
    return findKeyword(kLineCaps, text, value);
}
bool parseKeyword(const char* text, SvgLineJoin& value) noexcept {
    return findKeyword(kLineJoins, text, value);
}
bool parseKeyword(const char* text, SvgVectorEffect& value) noexcept {
    return findKeyword(kVectorEffects, text, value);
}

}  // namespace quor
