#include "svg/point_list.h"

#include "svg/number.h"

namespace quor {

Status parsePointList(const char* text, base::Array<float>& numbers) noexcept {
    numbers.clear();
    TextCursor cursor(text);
    float number = 0.0F;
    while (readListNumber(cursor, number)) {
        if (!numbers.push(number)) {
            numbers.clearFailure();
            return Status::kOutOfMemory;
        }
        cursor.skipSpaces();
        if (*cursor.at == ',') ++cursor.at;
    }
    numbers.truncate(numbers.count() & ~1);
    return Status::kOk;
}

}  // namespace quor
