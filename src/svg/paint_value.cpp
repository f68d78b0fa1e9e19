#include "svg/paint_value.h"

namespace quor {
namespace {

/// Reads a paint that is no reference.
PaintType readPlainPaint(const TextCursor& cursor, SvgColor& color) noexcept {
    if (cursor.beginsWith("currentColor")) return PaintType::kCurrentColor;
    if (cursor.beginsWith("none")) return PaintType::kNone;
    color = parseColor(cursor.at);
    return PaintType::kColor;
}

/// The cursor follows "url(". White space and a quote before the name are passed over; what may
/// stand behind it is for findReference() to cut off.
void readReference(TextCursor& cursor, SvgPaint& paint) noexcept {
    cursor.skipSpaces();
    if (!cursor.atEnd() && (*cursor.at == '\'' || *cursor.at == '"')) ++cursor.at;
    paint.type = PaintType::kServer;
    paint.reference = cursor.at;
    while (!cursor.atEnd() && *cursor.at != ')') ++cursor.at;
    if (!cursor.atEnd()) ++cursor.at;
    cursor.skipSpaces();
    if (!cursor.atEnd()) paint.fallback = readPlainPaint(cursor, paint.color);
}

}  // namespace

SvgPaint parsePaint(const char* text) noexcept {
    TextCursor cursor(text);
    cursor.skipSpaces();
    SvgPaint paint;
    if (cursor.take("url(")) {
        readReference(cursor, paint);
    } else {
        paint.type = readPlainPaint(cursor, paint.color);
    }
    return paint;
}

}  // namespace quor
