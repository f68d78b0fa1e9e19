#include "base/array.h"

#include <gtest/gtest.h>

#include <limits>

#include "base/finite.h"

namespace base {
namespace {

TEST(Array, KeepsItsElementsAsItGrows) {
    Array<int> array;
    for (int i = 0; i < 1000; ++i) ASSERT_TRUE(array.push(i));
    ASSERT_EQ(array.count(), 1000);
    for (int i = 0; i < 1000; ++i) ASSERT_EQ(array[i], i);
    EXPECT_GE(array.capacity(), 1000);
}

TEST(Array, PushesACopyOfItsOwnElement) {
    Array<int> array;
    ASSERT_TRUE(array.reserve(1));
    array.push(42);
    array.push(array[0]);  // grows while the argument lies inside
    EXPECT_EQ(array[1], 42);
}

TEST(Array, AnImpossibleSizeFailsAndChangesNothing) {
    Array<double> array;
    ASSERT_TRUE(array.push(1.5));
    EXPECT_FALSE(array.reserve(std::numeric_limits<int>::max()));
    EXPECT_TRUE(array.failed());
    EXPECT_FALSE(array.resize(std::numeric_limits<int>::max()));
    EXPECT_EQ(array.count(), 1);
    EXPECT_EQ(array[0], 1.5);
    array.clearFailure();
    EXPECT_TRUE(array.push(2.5));
    EXPECT_FALSE(array.failed());
}

TEST(Array, ShrinksToOneElementAtLeast) {
    Array<int> array;
    ASSERT_TRUE(array.resizeZeroed(100));
    array.truncate(3);
    array.shrinkToFit();
    EXPECT_EQ(array.capacity(), 3);
    array.clear();
    array.shrinkToFit();
    EXPECT_EQ(array.capacity(), 1);
    EXPECT_FALSE(array.failed());
}

TEST(Finite, OnlyNaNAndInfinitiesChange) {
    using Limits = std::numeric_limits<float>;
    EXPECT_EQ(finite(Limits::quiet_NaN()), 0.0F);
    EXPECT_EQ(finite(Limits::infinity()), 3.4028235e38F);
    EXPECT_EQ(finite(-Limits::infinity()), -3.4028235e38F);
    EXPECT_EQ(finite(Limits::denorm_min()), Limits::denorm_min());
    EXPECT_EQ(finite(-1.5F), -1.5F);
}

}  // namespace
}  // namespace base
