// Every allocation of a packing fails in turn: it is reported, nothing stays behind, and the next
// packing works.

#include <gtest/gtest.h>

#include "failing_allocator.h"
#include "quor/quor.h"

namespace {

constexpr const char* kDrawing = R"svg(
<svg xmlns:xlink="http://www.w3.org/1999/xlink">
  <g id="pair" transform="rotate(10)"><rect width="9" height="5"/><circle r="4"/></g>
  <path id="leaf" d="M1 1 L9 1 Q9 9 5 9 T1 1 C1 2 3 4 5 6 A3 2 10 0 1 9 9 Z"/>
  <use xlink:href="#pair" x="30" y="40"/><rect id="wide" width="60" height="20"/>
  <rect id="square" width="40" height="40"/><rect id="tall" width="20" height="60"/>
</svg>)svg";

bool isNoneOrOutOfMemory(uint32_t code) {
    return code == QUOR_NO_ERROR || code == QUOR_OUT_OF_MEMORY_ERROR;
}

struct Codes {
    uint32_t begin = 0, add = 0, end = 0, draw = 0;
};

/// A whole packing of a fresh document, its sheet included.
Codes runPacking(uint32_t document, uint32_t surface) {
    Codes codes;
    uint32_t info[2];
    codes.begin = quorPackingBegin(64, 1, 0, 1);
    if (codes.begin != QUOR_NO_ERROR) return codes;
    codes.add = quorPackingAdd(document, 1, 1, info);
    codes.end = quorPackingEnd(1);
    if (quorPackingBinsCount() > 0) codes.draw = quorPackingDraw(0, 0, 1, surface, 2);
    return codes;
}

void failEachAllocation(bool allLater) {
    ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
    long failed = 0;
    for (long index = 0;; ++index) {
        SCOPED_TRACE(testing::Message() << "allocation " << index);
        quorDone();
        const long before = liveAllocations();
        ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96.0F));
        const uint32_t document = quorDocCreate(kDrawing);
        const uint32_t surface = quorSurfaceCreate(64, 64);
        quorSurfaceDestroy(2);  // the packing's own: it must be made again
        failAllocation(index, allLater);
        const Codes codes = runPacking(document, surface);
        const bool wasReached = stopFailingAllocations();
        for (const uint32_t code : {codes.begin, codes.add, codes.end, codes.draw}) {
            EXPECT_TRUE(isNoneOrOutOfMemory(code)) << code;
        }
        EXPECT_TRUE(codes.end == QUOR_NO_ERROR || quorPackingBinsCount() == 0);
        const Codes again = runPacking(document, surface);
        EXPECT_EQ(QUOR_NO_ERROR, again.begin | again.add | again.end | again.draw);
        EXPECT_GT(quorPackingBinsCount(), 1U);
        quorDone();
        ASSERT_EQ(before, liveAllocations());
        if (!wasReached) break;
        ++failed;
    }
    EXPECT_GT(failed, 20) << "the allocations of the packing were not seen";
}

TEST(PackingAllocationFailure, OfOneAllocationIsReportedOrOvercome) { failEachAllocation(false); }

TEST(PackingAllocationFailure, OfAllFromOneOnIsReported) { failEachAllocation(true); }

}  // namespace
