#include "vg/draw/recent_cache.h"

#include <gtest/gtest.h>

namespace vg {
namespace {

struct Value {
    uint64_t serial = 0;
    int key = -1;
    size_t bytes = 0;

    size_t byteCount() const { return bytes; }
};

using Cache = RecentCache<Value>;

Value* find(Cache& cache, int key) {
    return cache.find([=](const Value& value) { return value.key == key; });
}

uint64_t make(Cache& cache, int key, size_t bytes = 1) {
    Value* const value = cache.add();
    value->key = key;
    value->bytes = bytes;
    const uint64_t serial = value->serial;
    cache.trim();
    return serial;
}

TEST(RecentCache, DropsWhatWasNotUsedForLongest) {
    Cache cache;
    for (int key = 0; key < Cache::kMaxEntries; ++key) make(cache, key);
    EXPECT_NE(find(cache, 0), nullptr);  // now the last used
    make(cache, 1000);
    EXPECT_NE(find(cache, 0), nullptr);
    EXPECT_EQ(find(cache, 1), nullptr);
    for (int key = 2; key < Cache::kMaxEntries; ++key) EXPECT_NE(find(cache, key), nullptr);
}

TEST(RecentCache, KeepsToItsMemoryButKeepsTheFirst) {
    Cache cache;
    make(cache, 1, Cache::kMaxBytes / 2);
    make(cache, 2, Cache::kMaxBytes / 2);
    EXPECT_NE(find(cache, 1), nullptr);
    make(cache, 3, 1);
    EXPECT_EQ(find(cache, 2), nullptr);
    EXPECT_NE(find(cache, 1), nullptr);
    make(cache, 4, Cache::kMaxBytes * 2);
    EXPECT_EQ(find(cache, 1), nullptr);
    EXPECT_NE(find(cache, 4), nullptr);
}

TEST(RecentCache, ForgottenValuesAreNotFoundAndSerialsNeverComeAgain) {
    Cache cache;
    const uint64_t first = make(cache, 1);
    make(cache, 2);
    cache.dropFirst();
    EXPECT_EQ(find(cache, 2), nullptr);
    EXPECT_EQ(find(cache, 1)->serial, first);
    cache.clear();
    EXPECT_EQ(find(cache, 1), nullptr);
    EXPECT_GT(make(cache, 1), first + 1);
    EXPECT_EQ(cache.makeCount(), 3U);
}

}  // namespace
}  // namespace vg
