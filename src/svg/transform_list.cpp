// Reads a transform list, step by step, into one product.

#include "svg/transform_list.h"

#include <cmath>

#include "svg/number.h"
#include "svg/text_cursor.h"

namespace quor {
namespace {

/// What stands between the parentheses of one transform; numbers that are missing are 0.
struct Arguments {
    float values[6] = {};
    int count = 0;
    bool reachedEnd = false;  ///< the text ended where a further number or ')' was due
};

void skipPastParenthesis(TextCursor& cursor) noexcept {
    while (!cursor.atEnd() && *cursor.at != ')') ++cursor.at;
    if (!cursor.atEnd()) ++cursor.at;
}

/// Reads up to `most` numbers and skips what follows them up to the parenthesis.
Arguments readArguments(TextCursor& cursor, int most) noexcept {
    Arguments arguments;
    while (arguments.count < most) {
        cursor.skipCommasAndSpaces();
        arguments.reachedEnd = cursor.atEnd();
        if (!readListNumber(cursor, arguments.values[arguments.count])) break;
        ++arguments.count;
    }
    skipPastParenthesis(cursor);
    return arguments;
}

// Each of these reads the arguments of one transform into a step that is the identity so far; false
// when the arguments do not fit. A text that ends too early is no fault: the step stays.
bool readMatrix(TextCursor& cursor, SvgMatrix& step) noexcept {
    const auto [v, count, reachedEnd] = readArguments(cursor, 6);
    if (count == 6) step = {v[0], v[2], v[4], v[1], v[3], v[5], SvgMatrix::kGeneral};
    return count == 6 || reachedEnd;
}

bool readRotation(TextCursor& cursor, SvgMatrix& step) noexcept {
    const auto [v, count, reachedEnd] = readArguments(cursor, 3);
    if (reachedEnd) return true;
    const float radians = v[0] * kRadiansPerDegree;
    step =
        count == 1 ? SvgMatrix::rotation(radians) : SvgMatrix::rotationAbout(radians, v[1], v[2]);
    return count != 0;
}

bool readScaling(TextCursor& cursor, SvgMatrix& step) noexcept {
    const auto [v, count, reachedEnd] = readArguments(cursor, 2);
    if (reachedEnd) return true;
    step = SvgMatrix::scaling(v[0], count == 2 ? v[1] : v[0]);
    return count != 0;
}

bool readTranslation(TextCursor& cursor, SvgMatrix& step) noexcept {
    const auto [v, count, reachedEnd] = readArguments(cursor, 2);
    if (reachedEnd) return true;
    step = SvgMatrix::translation(v[0], v[1]);
    return count != 0;
}

/// The tangent goes where `axis` points, the rest is the identity.
bool readSkew(TextCursor& cursor, SvgMatrix& step, float SvgMatrix::*axis) noexcept {
    const auto [v, count, reachedEnd] = readArguments(cursor, 1);
    if (count == 0) return reachedEnd;
    step.*axis = std::tan(v[0] * kRadiansPerDegree);
    step.kind = v[0] == 0.0F ? SvgMatrix::kIdentity : SvgMatrix::kGeneral;
    return true;
}

/// Reads one transform over an identity `step`. False when the text there is none.
bool readStep(TextCursor& cursor, SvgMatrix& step) noexcept {
    if (cursor.take("translate(")) return readTranslation(cursor, step);
    if (cursor.take("matrix(")) return readMatrix(cursor, step);
    if (cursor.take("scale(")) return readScaling(cursor, step);
    if (cursor.take("rotate(")) return readRotation(cursor, step);
    if (cursor.take("skewX(")) return readSkew(cursor, step, &SvgMatrix::m01);
    if (cursor.take("skewY(")) return readSkew(cursor, step, &SvgMatrix::m10);
    return false;  // also "none": it makes the whole attribute the identity
}

}  // namespace

SvgMatrix parseTransformList(const char* text) noexcept {
    TextCursor cursor(text);
    SvgMatrix product;
    for (cursor.skipCommasAndSpaces(); !cursor.atEnd(); cursor.skipCommasAndSpaces()) {
        SvgMatrix step;
        if (!readStep(cursor, step)) return SvgMatrix{};
        product = product * step;
    }
    return product;
}

}  // namespace quor
