#include "svg/point_list.h"

#include <gtest/gtest.h>

#include <vector>

#include "hostile_text.h"

namespace quor {
namespace {

TEST(PointList, ReadsWholePairs) {
    const struct {
        const char* text;
        std::vector<float> numbers;
    } cases[] = {
        {"0,0 10,10 20", {0, 0, 10, 10}},
        {"1-2+3 4", {1, -2, 3, 4}},
        {" 1 ,\f2 , 3,4,", {1, 2, 3, 4}},
        {"1,2,,3,4", {1, 2}},
        {"1e-5 2", {0, 2}},
        {"1.5.5 2", {1.5F, 2}},
        {"1 2 x 3 4", {1, 2}},
        {"1 2\xE9 3 4", {1, 2}},
        {",1 2", {}},
        {"5", {}},
        {"", {}},
    };
    base::Array<float> numbers;
    for (const auto& c : cases) {
        SCOPED_TRACE(c.text);
        ASSERT_EQ(parsePointList(ExactText(c.text), numbers), Status::kOk);
        EXPECT_EQ(std::vector<float>(numbers.begin(), numbers.end()), c.numbers);
    }
}

TEST(PointList, AnyTextEndsInBounds) {
    const std::string_view words[] = {"1", "-", ".", "e", ",", " ", "1e9", "+", "12345678", "%"};
    base::Array<float> numbers;
    forHostileTexts(words, [&](const ExactText& text) {
        ASSERT_EQ(parsePointList(text, numbers), Status::kOk);
        ASSERT_EQ(numbers.count() % 2, 0) << text;
        ASSERT_LE(numbers.count(), static_cast<int>(std::strlen(text)));
    });
}

}  // namespace
}  // namespace quor
