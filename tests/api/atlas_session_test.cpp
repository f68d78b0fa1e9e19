#include <algorithm>
#include <cmath>
#include <limits>
#include <string>
#include <vector>

#include "library_fixture.h"

namespace {

constexpr float kNan = std::numeric_limits<float>::quiet_NaN();
constexpr float kInfinity = std::numeric_limits<float>::infinity();

uint32_t documentOf(const std::string& content, const std::string& attributes = "") {
    const uint32_t document =
        quorDocCreate(("<svg xmlns:xlink='x' " + attributes + ">" + content + "</svg>").c_str());
    EXPECT_NE(QUOR_INVALID_HANDLE, document);
    return document;
}

struct Counts {
    uint32_t taken;
    uint32_t tooLarge;
};

Counts add(uint32_t document, uint32_t explodeGroups = 0, float scale = 1.0F) {
    uint32_t info[2] = {99, 99};
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingAdd(document, explodeGroups, scale, info));
    return {info[0], info[1]};
}

/// All rectangles of the result, by element.
std::vector<QuorPackedRect> packedRects() {
    std::vector<QuorPackedRect> rects;
    for (uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) {
        uint32_t info[3];
        EXPECT_EQ(QUOR_NO_ERROR, quorPackingBinInfo(bin, info));
        const QuorPackedRect* first = quorPackingBinRects(bin);
        for (uint32_t i = 1; i < info[2]; ++i) EXPECT_LT(first[i - 1].element, first[i].element);
        rects.insert(rects.end(), first, first + info[2]);
    }
    std::sort(rects.begin(), rects.end(),
              [](const auto& a, const auto& b) { return a.element < b.element; });
    return rects;
}

std::vector<QuorPackedRect> pack(uint32_t document, uint32_t explodeGroups = 0,
                                 float scale = 1.0F) {
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingBegin(256, 1, 0, scale));
    add(document, explodeGroups);
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    return packedRects();
}

/// "id:originX,originY widthxheight" of each, separated by "; ".
std::string describe(const std::vector<QuorPackedRect>& rects) {
    std::string text;
    for (const QuorPackedRect& rect : rects) {
        if (!text.empty()) text += "; ";
        text += std::string(rect.id) + ':' + std::to_string(rect.originX) + ',' +
                std::to_string(rect.originY) + ' ' + std::to_string(rect.width) + 'x' +
                std::to_string(rect.height);
    }
    return text;
}

using Packing = LibraryFixture;

constexpr const char* kSquare = "<rect id='a' width='4' height='4'/>";

TEST(PackingUninitialised, RefusesEverything) {
    uint32_t info[3] = {};
    EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, quorPackingBegin(0, 0, 0, 0));
    EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, quorPackingAdd(3, 0, 1, info));
    EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, quorPackingEnd(1));
    EXPECT_EQ(0U, quorPackingBinsCount());
    EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, quorPackingBinInfo(0, info));
    EXPECT_EQ(nullptr, quorPackingBinRects(0));
    EXPECT_EQ(QUOR_NOT_INITIALIZED_ERROR, quorPackingDraw(0, 0, 0, 2, 0));
}

TEST_F(Packing, BeginChecksItsArguments) {
    const struct {
        uint32_t maxDimension, border, pow2Bins;
        float scale;
        uint32_t code;
    } cases[] = {
        {0, 0, 0, 1, 3},   {2049, 0, 0, 1, 3},  {2048, 0, 0, 1, 0},         {64, 32, 0, 1, 3},
        {65, 32, 0, 1, 0}, {1, 0, 1, 1, 0},     {64, 0x80000000U, 0, 1, 3}, {64, 1, 0, 0, 3},
        {64, 1, 0, -1, 3}, {64, 1, 0, kNan, 3}, {64, 1, 0, kInfinity, 0},   {64, 1, 0, 1e-30F, 0},
        {60, 1, 1, 1, 3},  {64, 1, 1, 1, 0},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(c.code, quorPackingBegin(c.maxDimension, c.border, c.pow2Bins, c.scale))
            << c.maxDimension << ' ' << c.border << ' ' << c.pow2Bins << ' ' << c.scale;
        EXPECT_EQ(c.code == 0 ? QUOR_NO_ERROR : QUOR_NOT_PACKING_ERROR, quorPackingEnd(0));
    }
}

TEST_F(Packing, AddChecksItsArgumentsInOrder) {
    const uint32_t document = documentOf(kSquare);
    uint32_t info[3] = {7, 7, 7};
    auto* unaligned = reinterpret_cast<uint32_t*>(reinterpret_cast<char*>(info) + 1);
    EXPECT_EQ(QUOR_NOT_PACKING_ERROR, quorPackingAdd(0, 0, 0, nullptr));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPackingAdd(0, 0, 0, nullptr));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPackingAdd(2, 0, 1, info)) << "a surface";
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingAdd(document, 0, 1, nullptr));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingAdd(document, 0, 1, unaligned));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingAdd(document, 0, kNan, info));
    EXPECT_EQ(7U, info[0]);
    EXPECT_EQ(1U, add(document).taken);
}

TEST_F(Packing, TellsInWhichStateItIs) {
    const uint32_t document = documentOf(kSquare);
    const uint32_t surface = quorSurfaceCreate(8, 8);
    uint32_t info[3] = {};
    EXPECT_EQ(0U, quorPackingBinsCount());
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingBinInfo(0, info));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingDraw(0, 0, 0, surface, 2));

    pack(document);
    EXPECT_EQ(1U, quorPackingBinsCount());
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingBinInfo(1, info));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingBinInfo(0, nullptr));
    EXPECT_EQ(nullptr, quorPackingBinRects(1));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingDraw(0, 0, 2, 0, 3));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingDraw(0, 1, 0xFFFFFFFFU, surface, 2));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPackingDraw(0, 0, 1, document, 3));
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingDraw(0, 0, 1, surface, 3));
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingDraw(0, 1, 0, surface, 2));

    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorPackingBegin(64, 1, 0, 0));
    EXPECT_EQ(1U, quorPackingBinsCount()) << "a refused begin forgets nothing";
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    EXPECT_EQ(QUOR_STILL_PACKING_ERROR, quorPackingBegin(0, 0, 0, 0));
    EXPECT_EQ(0U, quorPackingBinsCount());
    EXPECT_EQ(QUOR_STILL_PACKING_ERROR, quorPackingBinInfo(0, nullptr));
    EXPECT_EQ(nullptr, quorPackingBinRects(0));
    EXPECT_EQ(QUOR_STILL_PACKING_ERROR, quorPackingDraw(9, 0, 0, 0, 9));
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(0));
    EXPECT_EQ(QUOR_NOT_PACKING_ERROR, quorPackingEnd(1));
    EXPECT_EQ(0U, quorPackingBinsCount()) << "dropped";

    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    EXPECT_EQ(0U, quorPackingBinsCount()) << "nothing was collected";
}

TEST_F(Packing, CollectsTheElementsThatDraw) {
    const struct {
        const char* name;
        const char* content;
        const char* whole;
        const char* exploded;
    } cases[] = {
        {"boxes outward", "<rect id='a' x='1.5' y='-.5' width='2' height='2'/>", "a:1,-1 3x3",
         "a:1,-1 3x3"},
        {"a group",
         "<g id='g'><rect id='a' width='2' height='2'/><g><rect xml:id='b' x='8' y='8' width='2'"
         " height='2'/></g></g>",
         "g:0,0 10x10", "a:0,0 2x2; b:8,8 2x2"},
        {"a group's transform",
         "<g transform='translate(5,6)'><rect transform='scale(2)' width='2' height='1'/></g>",
         ":5,6 4x2", ":5,6 4x2"},
        {"a use stays one",
         "<defs><g id='d'><rect width='1' height='1'/><rect x='4' width='1' height='1'/></g></defs>"
         "<use id='u' xlink:href='#d' x='3'/>",
         "u:3,0 5x1", "u:3,0 5x1"},
        {"a nested viewport",
         "<svg id='s' x='4' width='8' height='8' viewBox='0 0 2 2'><rect id='a' width='1'"
         " height='1'/></svg>",
         "s:4,0 4x4", "a:4,0 4x4"},
        {"containers of whatever name",
         "<a id='g'><switch><rect id='a' width='2' height='2'/></switch><z:y xmlns:z='z'>"
         "<rect id='b' x='8' y='8' width='2' height='2'/></z:y></a>",
         "g:0,0 10x10", "a:0,0 2x2; b:8,8 2x2"},
        {"what does not draw",
         "<rect display='none' width='2' height='2'/><linearGradient/>"
         "<g/><path d=''/><g display='none'><rect width='2' height='2'/></g>"
         "<line x1='1' y1='1' x2='5' y2='1' stroke='none'/><rect id='a' width='2' height='2'/>",
         "a:0,0 2x2", "a:0,0 2x2"},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const uint32_t document = documentOf(c.content);
        EXPECT_EQ(c.whole, describe(pack(document, 0)));
        EXPECT_EQ(c.exploded, describe(pack(document, 1)));
    }
}

TEST_F(Packing, MultipliesItsScales) {
    // Neither the viewBox nor the document's viewport count.
    const uint32_t document = documentOf("<rect id='a' x='2' width='4' height='4'/>",
                                         "viewBox='0 0 1000 1' width='3' height='9'");
    const float viewport[4] = {5, 5, 5, 5};
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportSet(document, viewport));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(256, 1, 0, 2));
    add(document, 0, 1.5F);
    add(document, 0, 0.5F);
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    const std::vector<QuorPackedRect> rects = packedRects();
    ASSERT_EQ("a:6,0 12x12; a:2,0 4x4", describe(rects));
    EXPECT_EQ(3.0F, rects[0].scale);
    EXPECT_EQ(1.0F, rects[1].scale);
    EXPECT_EQ(document, rects[1].document);
    EXPECT_EQ(1U, rects[1].element);
}

TEST_F(Packing, CountsWhatIsTooLarge) {
    const uint32_t document = documentOf(
        "<rect width='62' height='62'/><rect width='63' height='1'/><rect width='1' height='63'/>"
        "<rect x='1000000' width='1' height='1'/><rect x='999998' width='1' height='1'/>"
        "<rect x='-2e9' width='4e9' height='1'/>");
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    const Counts counts = add(document);
    EXPECT_EQ(2U, counts.taken);
    EXPECT_EQ(4U, counts.tooLarge);
    EXPECT_EQ(6U, add(document, 0, kInfinity).tooLarge);
    EXPECT_EQ(0U, add(document, 0, 1e-30F).taken) << "nothing is left to paint";
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    EXPECT_EQ(2U, packedRects().size());
}

TEST_F(Packing, TakesNothingOfADocumentThatFails) {
    const uint32_t good = documentOf(kSquare);
    const uint32_t circle =
        documentOf(std::string(kSquare) + "<g id='g'><use xlink:href='#g'/></g>");
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    add(good);
    uint32_t info[2] = {7, 7};
    EXPECT_EQ(QUOR_INVALID_SVG_ERROR, quorPackingAdd(circle, 0, 1, info));
    EXPECT_EQ(7U, info[0]);
    add(good);
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    const std::vector<QuorPackedRect> rects = packedRects();
    ASSERT_EQ(2U, rects.size());
    EXPECT_EQ(1U, rects[1].element);
}

TEST_F(Packing, LosesTheElementsOfDestroyedDocuments) {
    const uint32_t surface = quorSurfaceCreate(64, 64);
    const uint32_t early = documentOf("<rect id='early' width='4' height='4'/>");
    const uint32_t kept = documentOf("<rect id='kept' width='5' height='5' fill='red'/>");
    const uint32_t late = documentOf("<rect id='late' width='6' height='6'/>");
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    for (const uint32_t document : {early, kept, late}) add(document);
    quorDocDestroy(early);
    // Takes over the destroyed one's handle, not its elements.
    const uint32_t successor = documentOf("<rect id='successor' width='7' height='7'/>");
    EXPECT_EQ(early, successor);
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    EXPECT_EQ("kept:0,0 5x5; late:0,0 6x6", describe(packedRects()));
    EXPECT_EQ(2U, packedRects()[1].element);

    quorDocDestroy(late);
    EXPECT_EQ("kept:0,0 5x5; :0,0 6x6", describe(packedRects()));
    const uint32_t another = documentOf("<rect id='another' width='6' height='6'/>");
    EXPECT_EQ(late, another);
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingDraw(0, 0, 1, surface, 2));
    quorSurfacePixels(surface)[0] = 0x12345678;
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorPackingDraw(0, 0, 2, surface, 2));
    EXPECT_EQ(0x12345678U, quorSurfacePixels(surface)[0]) << "not even cleared";
}

TEST_F(Packing, IsNotDisturbedByOtherCalls) {
    const uint32_t document = documentOf("<rect id='a' x='1' width='4' height='4' fill='red'/>");
    const std::string expected = describe(pack(document, 0, 3.0F));
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(256, 1, 0, 3));
    const uint32_t surface = quorSurfaceCreate(30, 30);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, 2));
    add(document);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, 0));
    quorSurfaceDestroy(surface);
    EXPECT_EQ(QUOR_NO_ERROR, quorPackingEnd(1));
    EXPECT_EQ(expected, describe(packedRects()));
}

TEST_F(Packing, MakesItsSurfaceAgain) {
    // The first surface of a session has handle 2.
    const uint32_t document = documentOf(kSquare);
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(2));
    EXPECT_EQ("a:0,0 4x4", describe(pack(document)));
    EXPECT_EQ(1U, quorSurfaceWidth(2));
    EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceDestroy(2));
    EXPECT_EQ(2U, quorSurfaceCreate(9, 9));
    EXPECT_EQ("a:0,0 4x4", describe(pack(document)));
    EXPECT_EQ(9U, quorSurfaceWidth(2)) << "a caller's surface took its handle over";
}

TEST_F(Packing, EndsWithTheLibrary) {
    const uint32_t document = documentOf(kSquare);
    pack(document);
    ASSERT_EQ(QUOR_NO_ERROR, quorPackingBegin(64, 1, 0, 1));
    add(document);
    quorDone();
    ASSERT_EQ(QUOR_NO_ERROR, quorInit(640, 480, 96));
    EXPECT_EQ(QUOR_NOT_PACKING_ERROR, quorPackingEnd(1));
    EXPECT_EQ(nullptr, quorPackingBinRects(0));
}

}  // namespace
