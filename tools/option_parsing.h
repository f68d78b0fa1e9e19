#pragma once

#include <CLI/CLI.hpp>
#include <algorithm>
#include <charconv>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool {

/// The position of a keyword is its value in the library.
inline const std::vector<std::string> kQualities = {"none", "faster", "best"};

template <class Number>
bool parseWhole(std::string_view text, Number& number) {
    const char* end = text.data() + text.size();
    const auto result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

/// An option whose text `store` turns into a value; false from it means a text it cannot use.
inline void addOption(CLI::App& app, const std::string& name, const std::string& placeholder,
                      const std::string& help, const std::string& expected,
                      const std::function<bool(const std::string&)>& store) {
    app.add_option_function<std::string>(
           name,
           [=](const std::string& text) {
               if (!store(text))
                   throw CLI::ValidationError(name.substr(0, name.find(',')),
                                              "'" + text + "' is not " + expected);
           },
           help)
        ->type_name(placeholder);
}

/// A number in (above, upTo]: NaN and infinities are outside.
template <class Number>
void addNumber(CLI::App& app, const std::string& name, const std::string& placeholder,
               const std::string& help, Number& value, Number above, Number upTo) {
    const auto bound = [](Number number) { return CLI::detail::to_string(number); };
    addOption(app, name, placeholder, help,
              "a number above " + bound(above) + " and up to " + bound(upTo),
              [&value, above, upTo](const std::string& text) {
                  Number number = 0;
                  if (!parseWhole(text, number) || !(number > above && number <= upTo))
                      return false;
                  value = number;
                  return true;
              });
}

template <class Value>
struct KeywordType {
    using Type = Value;
};
template <class Value>
struct KeywordType<std::optional<Value>> {
    using Type = Value;
};
template <class Value>
using KeywordOf = typename KeywordType<Value>::Type;

/// `Value` takes what the keyword's position stands for, itself or as an optional.
template <class Value>
void addKeyword(CLI::App& app, const std::string& name, const std::string& help, Value& value,
                const std::vector<std::string>& keywords) {
    addOption(app, name, "KEYWORD", help, "one of " + CLI::detail::join(keywords, ", "),
              [&value, &keywords](const std::string& text) {
                  const auto found = std::find(keywords.begin(), keywords.end(), text);
                  if (found == keywords.end()) return false;
                  value = static_cast<KeywordOf<Value>>(found - keywords.begin());
                  return true;
              });
}

}  // namespace tool
