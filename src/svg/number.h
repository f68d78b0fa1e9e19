#pragma once

#include "svg/text_cursor.h"

namespace quor {

/// Reads a number of any attribute but path data: white space, a sign, then digits, '.', 'e' and
/// 'E'. Deliberately, for drawings that are right only so, a sign after the exponent letter is not
/// part of the number: "1e-5" is read as "1e", which is 0, and the "-5" is passed over with it.
/// Path data, read by scanFloat(), does have such exponents. At most 63 characters count.
/// Nothing readable gives 0 and consumes at most white space and a sign.
float readNumber(TextCursor& cursor) noexcept;

/// Reads a number of a list. False, and no more than white space consumed, where none begins:
/// the end of the list, also in the midst of garbage.
bool readListNumber(TextCursor& cursor, float& number) noexcept;

/// The library's own decimal conversion of [first, last): the same bits on every machine.
/// Precondition: at most 300 digits before the exponent, so that nothing overflows.
double decimalValue(const char* first, const char* last) noexcept;

/// The same for a number that begins at `at`, white space excepted; moves `at` past what belongs
/// to it: a sign, digits, '.' with digits, an exponent letter with a sign and digits.
double scanDecimal(const char*& at, const char* last) noexcept;

/// The same for a number of path data, in zero-terminated text: it ends after `mostLength`
/// characters. 0, and nothing consumed, where none begins.
/// Precondition: mostLength >= kPlainLength.
float scanFloat(const char*& at, int mostLength) noexcept;

/// Numbers of common forms have no more characters.
inline constexpr int kPlainLength = 33;

/// The nearest float, but the largest finite one beyond the range.
float saturateToFloat(double value) noexcept;

}  // namespace quor
