#include "api/packing/least_sizes.h"

#include "rectangles.h"

namespace quor::packing {
namespace {

TEST(LeastSizes, FindsWhatWalkingFinds) {
    std::mt19937 random(1);
    for (const int count : {0, 1, 15, 16, 17, 256, 257, 5000}) {
        Sizes sizes = randomSizes(count, 1, 500, static_cast<uint32_t>(count));
        LeastSizes least;
        ASSERT_TRUE(least.build(count, [&](int i) { return sizes[static_cast<size_t>(i)]; }));
        for (int round = 0; round < 300; ++round) {
            const int changed = count > 0 ? static_cast<int>(random() % sizes.size()) : 0;
            if (count > 0) {
                Size& size = sizes[static_cast<size_t>(changed)];
                size = random() % 4 == 0 ? Size{40, 40} : LeastSizes::kNone;
                least.change(changed, size);
            }
            const Size room = {static_cast<int>(random() % 60), static_cast<int>(random() % 60)};
            const auto fits = [&](const Size& size) { return size.fitsIn(room); };
            const int first = static_cast<int>(random() % static_cast<uint32_t>(count + 1));
            const auto found = std::find_if(sizes.begin() + first, sizes.end(), fits);
            const int expected =
                found != sizes.end() ? static_cast<int>(found - sizes.begin()) : -1;
            ASSERT_EQ(expected, least.next(first, fits)) << count << " from " << first;
        }
    }
}

}  // namespace
}  // namespace quor::packing
