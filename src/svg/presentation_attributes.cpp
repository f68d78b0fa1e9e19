// Reads presentation attributes into a style, a method for each kind of value. A value that does
// not parse leaves field and bit as they were.

#include "svg/presentation_attributes.h"

#include <algorithm>

#include "svg/length.h"
#include "svg/number.h"
#include "svg/style_keywords.h"
#include "svg/transform_list.h"

namespace quor {
namespace {

constexpr int kFirstDashCapacity = 16;

bool isInherit(const char* text) noexcept {
    TextCursor cursor(text);
    cursor.skipSpaces();
    return cursor.beginsWith("inherit");
}

/// Reads presentation attributes of one element into its style, a method a kind of value.
class StyleReader {
public:
    StyleReader(const AttributeTable& attributes, const LengthContext& lengths,
                SvgStyle& style) noexcept
        : attributes_(attributes), lengths_(lengths), style_(style) {}

    /// The attribute's text; null when it is absent or empty.
    const char* textOf(AttributeId id) const noexcept {
        const char* text = attributes_[id];
        return text != nullptr && *text != '\0' ? text : nullptr;
    }

    template <class Enum>
    void keyword(AttributeId id, uint32_t bit, Enum& field) noexcept {
        const char* text = textOf(id);
        if (text == nullptr || !parseKeyword(text, field)) return;
        mark(bit, field != Enum::kInherit);
    }

    void paint(AttributeId id, uint32_t bit, SvgPaint& field) noexcept {
        const char* text = textOf(id);
        if (text == nullptr) return;
        field = parsePaint(text);
        mark(bit, true);
    }

    /// Clamped to 0..1.
    void opacity(AttributeId id, uint32_t bit, float& field) noexcept {
        const char* text = textOf(id);
        if (text == nullptr) return;
        if (isInherit(text)) {
            field = -1.0F;
            mark(bit, false);
        } else if (float number = 0.0F; parseNumber(text, number)) {
            field = std::clamp(number, 0.0F, 1.0F);
            mark(bit, true);
        }
    }

    void strokeWidth() noexcept {
        const char* text = textOf(AttributeId::kStrokeWidth);
        if (text == nullptr) return;
        if (isInherit(text)) {
            style_.strokeWidth = -1.0F;
            mark(StyleBit::kStrokeWidth, false);
        } else if (parseDiagonal(text, style_.strokeWidth)) {
            mark(StyleBit::kStrokeWidth, true);
        }
    }

    void strokeMiterLimit() noexcept {
        const char* text = textOf(AttributeId::kStrokeMiterLimit);
        float limit = 0.0F;
        if (text == nullptr) return;
        if (isInherit(text)) {
            mark(StyleBit::kStrokeMiterLimit, false);
        } else if (parseNumber(text, limit) && limit >= 1.0F) {
            style_.strokeMiterLimit = limit;
            mark(StyleBit::kStrokeMiterLimit, true);
        }
    }

    void strokeDashOffset() noexcept {
        const char* text = textOf(AttributeId::kStrokeDashOffset);
        if (text == nullptr) return;
        const bool inherits = isInherit(text);
        if (inherits) style_.strokeDashOffset = 0.0F;
        if (!inherits && !parseDiagonal(text, style_.strokeDashOffset)) return;
        mark(StyleBit::kStrokeDashOffset, !inherits);
    }

    Status strokeDashArray(base::Array<float>& dashes) noexcept {
        const char* text = textOf(AttributeId::kStrokeDashArray);
        if (text == nullptr) return Status::kOk;
        if (isInherit(text)) {
            setDashes(nullptr, -1);
            return Status::kOk;
        }
        TextCursor cursor(text);
        cursor.skipSpaces();
        if (cursor.beginsWith("none")) {
            setDashes(nullptr, 0);
            return Status::kOk;
        }
        if (!readDashes(cursor, dashes)) {
            dashes.clearFailure();
            return Status::kOutOfMemory;
        }
        if (!dashes.isEmpty()) setDashes(dashes.data(), dashes.count());
        return Status::kOk;
    }

private:
    void mark(uint32_t bit, bool isSet) noexcept {
        style_.setMask = isSet ? style_.setMask | bit : style_.setMask & ~bit;
    }

    void setDashes(const float* values, int count) noexcept {
        style_.strokeDashArray = {values, count};
        mark(StyleBit::kStrokeDashArray, count >= 0);
    }

    static bool parseNumber(const char* text, float& number) noexcept {
        TextCursor cursor(text);
        float read = 0.0F;
        if (!readListNumber(cursor, read)) return false;
        number = read;
        return true;
    }

    /// Reads a length along the diagonal; false, `value` unchanged, where none begins.
    bool readDiagonal(TextCursor& cursor, float& value) const noexcept {
        cursor.skipSpaces();
        const char* first = cursor.at;
        SvgLength length;
        readLength(cursor, length);
        if (cursor.at == first || length.unit == LengthUnit::kNone) return false;
        value = resolveLength(length, lengths_.dpi, lengths_.viewport, LengthAxis::kDiagonal);
        return true;
    }

    bool parseDiagonal(const char* text, float& value) const noexcept {
        TextCursor cursor(text);
        return readDiagonal(cursor, value);
    }

    /// Reads lengths until none begins and doubles an odd list. False when memory runs out.
    bool readDashes(TextCursor& cursor, base::Array<float>& dashes) const noexcept {
        dashes.clear();
        if (!dashes.reserve(kFirstDashCapacity)) return false;
        float dash = 0.0F;
        for (cursor.skipCommasAndSpaces(); readDiagonal(cursor, dash);
             cursor.skipCommasAndSpaces()) {
            if (!dashes.push(dash)) return false;
        }
        const int count = dashes.count();
        if (count % 2 == 0) return true;
        if (!dashes.reserveMore(count)) return false;
        for (int i = 0; i < count; ++i) dashes.pushReserved(dashes[i]);
        return true;
    }

    const AttributeTable& attributes_;
    const LengthContext& lengths_;
    SvgStyle& style_;
};

}  // namespace

Status readPresentationAttributes(const AttributeTable& attributes, const LengthContext& lengths,
                                  SvgStyle& style, base::Array<float>& dashes,
                                  SvgMatrix& transform) noexcept {
    using Id = AttributeId;
    StyleReader reader(attributes, lengths, style);
    reader.keyword(Id::kDisplay, StyleBit::kDisplay, style.display);
    reader.keyword(Id::kVisibility, StyleBit::kVisibility, style.visibility);
    if (const char* text = reader.textOf(Id::kTransform)) transform = parseTransformList(text);
    reader.paint(Id::kFill, StyleBit::kFill, style.fill);
    reader.opacity(Id::kFillOpacity, StyleBit::kFillOpacity, style.fillOpacity);
    reader.keyword(Id::kFillRule, StyleBit::kFillRule, style.fillRule);
    reader.paint(Id::kStroke, StyleBit::kStroke, style.stroke);
    reader.opacity(Id::kStrokeOpacity, StyleBit::kStrokeOpacity, style.strokeOpacity);
    reader.strokeWidth();
    reader.keyword(Id::kStrokeLineCap, StyleBit::kStrokeLineCap, style.strokeLineCap);
    reader.keyword(Id::kStrokeLineJoin, StyleBit::kStrokeLineJoin, style.strokeLineJoin);
    reader.strokeMiterLimit();
    reader.strokeDashOffset();
    const Status status = reader.strokeDashArray(dashes);
    reader.keyword(Id::kVectorEffect, StyleBit::kVectorEffect, style.vectorEffect);
    return status;
}

}  // namespace quor
