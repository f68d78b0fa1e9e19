// Decimal text to floating point, by additions and multiplications in a fixed order: the same bits
// on every machine, though not always the nearest value. Numbers without an exponent and with few
// digits take a shorter way to the same result.

#include "svg/number.h"

#include <array>
#include <cassert>
#include <cstdint>
#include <cstring>
#include <limits>

namespace quor {
namespace {

/// The longest run of characters that counts in a number.
constexpr int kMaxNumberLength = 63;

/// Beyond 10^308 every value has long left the range of float, in either direction.
constexpr int kMaxExponent = 308;

/// Weights of fraction digits: 0.1 multiplied up, rounding included, as the conversion demands.
constexpr int kTabledWeights = 32;
constexpr std::array<double, kTabledWeights> kFractionWeights = [] {
    std::array<double, kTabledWeights> weights{};
    double weight = 1.0;
    for (double& entry : weights) entry = weight *= 0.1;
    return weights;
}();

constexpr bool isExponentLetter(char c) noexcept { return c == 'e' || c == 'E'; }
constexpr bool isSign(char c) noexcept { return c == '+' || c == '-'; }
constexpr bool isRunCharacter(char c) noexcept {
    return isAsciiDigit(c) || c == '.' || isExponentLetter(c);
}

/// White space of the conversion: more than that of attributes.
constexpr bool isDecimalSpace(char c) noexcept { return (c >= 9 && c <= 14) || c == ' '; }

bool takeSign(const char*& at, const char* last) noexcept {
    if (at == last || !isSign(*at)) return false;
    return *at++ == '-';
}

double scanInteger(const char*& at, const char* last) noexcept {
    double value = 0.0;
    for (; at != last && isAsciiDigit(*at); ++at) value = value * 10.0 + (*at - '0');
    return value;
}

/// Digits of a number of the common form. As many before the point are exact in a double, whatever
/// the order of computing.
constexpr int kPlainIntegerDigits = 15;
constexpr int kPlainFractionDigits = 16;
static_assert(1 + kPlainIntegerDigits + 1 + kPlainFractionDigits == kPlainLength);
static_assert(kPlainFractionDigits <= kTabledWeights);

/// kFractionDigits[place][digit]: what a digit after the point adds.
constexpr auto kFractionDigits = [] {
    std::array<std::array<double, 10>, kPlainFractionDigits> values{};
    for (size_t place = 0; place < values.size(); ++place) {
        for (int digit = 0; digit < 10; ++digit) {
            values[place][static_cast<size_t>(digit)] = digit * kFractionWeights[place];
        }
    }
    return values;
}();

constexpr uint32_t digitOf(char c) noexcept { return static_cast<uint32_t>(c) - '0'; }

/// Reads a number of the common form from zero-terminated text: a sign, few digits, a point, few
/// digits. Returns where it ends; null when it goes on with further digits or an exponent.
/// Does the additions of scanDecimal() in the same order.
inline const char* scanPlain(const char* c, double& value) noexcept {
    const bool isNegative = *c == '-';
    if (isSign(*c)) ++c;
    uint64_t whole = 0;
    for (int digits = 0; digits < kPlainIntegerDigits && digitOf(*c) < 10; ++digits) {
        whole = whole * 10 + digitOf(*c++);
    }
    auto magnitude = static_cast<double>(whole);
    if (*c == '.') {
        ++c;
        for (const auto& place : kFractionDigits) {
            const uint32_t digit = digitOf(*c);
            if (digit >= 10) break;
            magnitude += place[digit];
            ++c;
        }
    }
    if (isAsciiDigit(*c) || isExponentLetter(*c)) return nullptr;
    value = isNegative ? -magnitude : magnitude;
    return c;
}

double addFraction(double value, const char*& at, const char* last) noexcept {
    int place = 0;
    for (; at != last && isAsciiDigit(*at) && place < kTabledWeights; ++at, ++place) {
        value += (*at - '0') * kFractionWeights[static_cast<size_t>(place)];
    }
    double weight = kFractionWeights.back();
    for (; at != last && isAsciiDigit(*at); ++at) {
        weight *= 0.1;
        value += (*at - '0') * weight;
    }
    return value;
}

int scanExponentDigits(const char*& at, const char* last) noexcept {
    int exponent = 0;
    for (; at != last && isAsciiDigit(*at); ++at) {
        if (exponent < kMaxExponent) exponent = exponent * 10 + (*at - '0');
    }
    return exponent < kMaxExponent ? exponent : kMaxExponent;
}

double powerOf(double base, int exponent) noexcept {
    double power = 1.0;
    for (; exponent != 0; exponent >>= 1, base *= base) {
        if ((exponent & 1) != 0) power *= base;
    }
    return power;
}

/// The factor of an exponent, `at` being past its letter: 0 when neither a sign nor a digit
/// follows, which makes the whole number 0.
double scanExponent(const char*& at, const char* last) noexcept {
    if (at == last || !(isSign(*at) || isAsciiDigit(*at))) return 0.0;
    const bool isNegative = takeSign(at, last);
    return powerOf(isNegative ? 0.1 : 10.0, scanExponentDigits(at, last));
}

/// Passes over the rest of a number that was cut at the sign of its exponent.
void skipCutExponent(TextCursor& cursor) noexcept {
    if (!isExponentLetter(cursor.at[-1]) || !isSign(cursor.at[0])) return;
    if (!isAsciiDigit(cursor.at[1])) return;
    ++cursor.at;
    while (isAsciiDigit(*cursor.at)) ++cursor.at;
}

/// A number of any form that begins at the cursor.
float readRun(TextCursor& cursor) noexcept {
    const char* first = cursor.at;
    if (isSign(*cursor.at)) ++cursor.at;
    while (isRunCharacter(*cursor.at)) ++cursor.at;
    const bool isTooLong = cursor.at - first > kMaxNumberLength;
    const char* last = isTooLong ? first + kMaxNumberLength : cursor.at;
    skipCutExponent(cursor);
    return saturateToFloat(scanDecimal(first, last));
}

}  // namespace

double scanDecimal(const char*& at, const char* last) noexcept {
    const bool isNegative = takeSign(at, last);
    double value = scanInteger(at, last);
    if (at != last && *at == '.') value = addFraction(value, ++at, last);
    if (at != last && isExponentLetter(*at)) value *= scanExponent(++at, last);
    return isNegative ? -value : value;
}

double decimalValue(const char* first, const char* last) noexcept {
    while (first != last && isDecimalSpace(*first)) ++first;
    return scanDecimal(first, last);
}

float scanFloat(const char*& at, int mostLength) noexcept {
    assert(mostLength >= kPlainLength);
    double value = 0.0;
    if (const char* end = scanPlain(at, value)) {
        at = end;
        return static_cast<float>(value);
    }
    const auto* end =
        static_cast<const char*>(std::memchr(at, '\0', static_cast<size_t>(mostLength)));
    return saturateToFloat(scanDecimal(at, end != nullptr ? end : at + mostLength));
}

float saturateToFloat(double value) noexcept {
    constexpr double kMost = std::numeric_limits<float>::max();
    if (value > kMost) return std::numeric_limits<float>::max();
    if (value < -kMost) return std::numeric_limits<float>::lowest();
    return static_cast<float>(value);
}

float readNumber(TextCursor& cursor) noexcept {
    cursor.skipSpaces();
    const char* first = cursor.at;
    const char* unsignedPart = first + (isSign(*first) ? 1 : 0);
    if (!isRunCharacter(*unsignedPart)) {
        cursor.at = unsignedPart;
        return 0.0F;
    }
    double value = 0.0;
    const char* end = scanPlain(first, value);
    if (end == nullptr || isRunCharacter(*end)) return readRun(cursor);
    cursor.at = end;
    return static_cast<float>(value);
}

bool readListNumber(TextCursor& cursor, float& number) noexcept {
    cursor.skipSpaces();
    const char* first = cursor.at;
    number = readNumber(cursor);
    return cursor.at != first;
}

}  // namespace quor
