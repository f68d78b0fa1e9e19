#include "base/arena.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <vector>

namespace base {
namespace {

TEST(Arena, PiecesAreAlignedAndApart) {
    Arena arena;
    struct Piece {
        unsigned char* bytes;
        size_t size;
    };
    for (int round = 0; round < 2; ++round) {
        std::vector<Piece> pieces;
        for (size_t i = 0; i < 2000; ++i) {
            const size_t size = i % 100 == 99 ? 3 * Arena::kLargestBlock : 1 + i * 7 % 300;
            auto* bytes = static_cast<unsigned char*>(arena.allocate(size));
            ASSERT_NE(bytes, nullptr);
            EXPECT_EQ(reinterpret_cast<uintptr_t>(bytes) % alignof(std::max_align_t), 0U);
            std::memset(bytes, static_cast<int>(i % 251), size);
            pieces.push_back({bytes, size});
        }
        for (size_t i = 0; i < pieces.size(); ++i) {
            for (size_t k = 0; k < pieces[i].size; ++k) ASSERT_EQ(pieces[i].bytes[k], i % 251);
        }
        arena.clear();
    }
}

TEST(Arena, AbsurdSizesFailAndChangeNothing) {
    Arena arena;
    auto* before = static_cast<char*>(arena.allocate(16));
    for (const size_t size : {~size_t{0}, ~size_t{0} - 15, ~size_t{0} / 2 + 1}) {
        EXPECT_EQ(arena.allocate(size), nullptr);
    }
    EXPECT_EQ(arena.allocate(16), before + 16);
}

}  // namespace
}  // namespace base
