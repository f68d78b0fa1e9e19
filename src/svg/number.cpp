#include "svg/number.h"

#include <array>
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

float saturateToFloat(double value) noexcept {
    constexpr double kMost = std::numeric_limits<float>::max();
    if (value > kMost) return std::numeric_limits<float>::max();
    if (value < -kMost) return std::numeric_limits<float>::lowest();
    return static_cast<float>(value);
}

float readNumber(TextCursor& cursor) noexcept {
    cursor.skipSpaces();
    const char* first = cursor.at;
    if (isSign(*cursor.at)) ++cursor.at;
    if (!isRunCharacter(*cursor.at)) return 0.0F;
    while (isRunCharacter(*cursor.at)) ++cursor.at;
    const bool isTooLong = cursor.at - first > kMaxNumberLength;
    const char* last = isTooLong ? first + kMaxNumberLength : cursor.at;
    skipCutExponent(cursor);
    return saturateToFloat(scanDecimal(first, last));
}

bool readListNumber(TextCursor& cursor, float& number) noexcept {
    cursor.skipSpaces();
    const char* first = cursor.at;
    number = readNumber(cursor);
    return cursor.at != first;
}

}  // namespace quor
