#pragma once

#include <cstring>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace quor {

/// A NUL-terminated copy on the heap with not a byte more, so that AddressSanitizer sees any read
/// past its end.
class ExactText {
public:
    explicit ExactText(std::string_view text) : copy_(new char[text.size() + 1]) {
        std::memcpy(copy_.get(), text.data(), text.size());
        copy_[text.size()] = '\0';
    }
    operator const char*() const { return copy_.get(); }

private:
    std::unique_ptr<char[]> copy_;
};

/// Calls `check` with texts that no author would write: random words of a vocabulary glued
/// together, stray bytes between them. The same on every run.
template <size_t N, class Check>
void forHostileTexts(const std::string_view (&words)[N], const Check& check) {
    constexpr int kTexts = 4000;
    std::mt19937 random(20261122);
    for (int i = 0; i < kTexts; ++i) {
        std::string text;
        for (size_t length = random() % 24; length > 0; --length) {
            const bool isStray = random() % 8 == 0;
            if (isStray) text += static_cast<char>(1 + random() % 255);
            text += words[random() % N];
        }
        check(ExactText(text));
    }
}

}  // namespace quor
