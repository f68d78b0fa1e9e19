#include <string>

#include "api/document.h"
#include "api/library.h"
#include "library_fixture.h"

namespace {

using Documents = LibraryFixture;

TEST_F(Documents, NeedWellFormedTextWithAnSvgElementOutermost) {
    const struct {
        const char* name;
        const char* text;
        bool isDocument;
    } cases[] = {
        {"null", nullptr, false},
        {"empty", "", false},
        {"no element", "<!-- nothing -->", false},
        {"not closed", "<svg><g></svg>", false},
        {"another element", "<g/>", false},
        {"an element that is dropped", "<symbol/>", false},
        {"not XML", "\x01\xFF garbage", false},
        {"prolog and comments", "<?xml version='1.0'?><!DOCTYPE svg><!-- x --><svg/>", true},
        {"a name that begins so", "<svgx/>", true},
        {"bad values inside", "<svg><path d='!'/><rect width='x' fill='?'/></svg>", true},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const uint32_t document = quorDocCreate(c.text);
        EXPECT_EQ(c.isDocument, document != QUOR_INVALID_HANDLE);
        if (c.isDocument) {
            EXPECT_EQ(QUOR_NO_ERROR, quorDocDestroy(document));
        }
    }
}

TEST_F(Documents, LoadAsTheFirstOneWhateverWasThereBefore) {
    // The shape refers to an id that only earlier documents have.
    const char* const content = "<rect width='4' height='2' fill='url(#a) lime'/>";
    const std::string gradient =
        "<linearGradient id='a'><stop stop-color='red'/></linearGradient>"
        "<rect width='4' height='2' fill='url(#a)'/>";
    const std::string earlier[] = {
        svgOf(9, 9, gradient),
        svgOf(9, 9, gradient + "<g></svg>"),               // fails half-way
        svgOf(9, 9, gradient + std::string(100000, ' ')),  // long
        svgOf(9, 9, gradient) + "<!-- and no more -->",
        "<svg><g id='a'><g></g></g><rect id='b' transform='!'/></svg>",
    };
    const uint32_t surface = quorSurfaceCreate(4, 2);
    for (const std::string& first : earlier) {
        for (const std::string& second : earlier) {
            for (const std::string& text : {first, second}) {
                const uint32_t document = quorDocCreate(text.c_str());
                quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER);
                quorDocDestroy(document);
            }
            expectLetters({first.c_str(), content, "GGGG/GGGG"});
        }
    }
}

TEST_F(Documents, DeepNestingIsRefusedOrDrawnButNeverOverflows) {
    for (const int depth : {50, 100000}) {
        std::string text = "<svg>";
        for (int i = 0; i < depth; ++i) text += "<g>";
        for (int i = 0; i < depth; ++i) text += "</g>";
        const uint32_t document = quorDocCreate((text + "</svg>").c_str());
        EXPECT_EQ(depth == 50, document != QUOR_INVALID_HANDLE);
        if (depth == 50) {
            EXPECT_EQ(0U, quorDocDraw(document, quorSurfaceCreate(1, 1), 2));
        }
    }
}

TEST_F(Documents, ReportTheirSizeInPixels) {
    const struct {
        const char* width;
        float pixels;
    } cases[] = {
        {"", -1},
        {"width='120'", 120},
        {"width='7px'", 7},
        {"width='2in'", 192},
        {"width='50%'", -1},
        {"width='3 em'", -1},
        {"width='3 ex'", -1},
        {"style='width:5'", 5},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.width);
        const std::string text = std::string("<svg height='9' ") + c.width + "/>";
        const uint32_t document = quorDocCreate(text.c_str());
        EXPECT_EQ(c.pixels, quorDocWidth(document));
        EXPECT_EQ(9.0F, quorDocHeight(document));
    }
}

std::string messages;  ///< what the log has heard

TEST_F(Documents, TellTheLogWhyTheyHaveNoSize) {
    const quor::ScreenParameters screen = {
        640, 480, 96.0F, [](const char* message) { messages += std::string(message) + '\n'; }};
    const auto document = quor::Document::create(screen);
    ASSERT_NE(nullptr, document);
    ASSERT_EQ(quor::Status::kOk, document->load("<svg height='1em'/>"));
    messages.clear();
    EXPECT_EQ(-1.0F, document->width());
    EXPECT_EQ(-1.0F, document->height());
    EXPECT_EQ(
        "Outermost <svg> element doesn't have a 'width' attribute\n"
        "Outermost <svg> element has an 'height' attribute specified in relative coordinates "
        "units\n",
        messages);
    delete document;
}

TEST_F(Documents, ShowTheOutermostViewBoxOrWhatStandsInForIt) {
    const struct {
        const char* attributes;
        float viewport[4];
    } cases[] = {
        {"viewBox='1 2 3 4' width='9' height='9' x='5'", {1, 2, 3, 4}},
        {"width='10' height='25%' x='5' y='5'", {0, 0, 10, 120}},
        {"width='10'", {0, 0, 10, 480}},
        {"height='20'", {0, 0, 640, 20}},
        {"", {0, 0, 640, 480}},
        {"viewBox='none' width='9' height='9'", {0, 0, 0, 0}},
        {"viewBox='1 2 3 -4'", {1, 2, 3, 0}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.attributes);
        const std::string text = std::string("<svg ") + c.attributes + "/>";
        float viewport[4];
        ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportGet(quorDocCreate(text.c_str()), viewport));
        for (int i = 0; i < 4; ++i) EXPECT_EQ(c.viewport[i], viewport[i]);
    }
}

TEST_F(Documents, StoreViewportsWithAreaOnly) {
    const uint32_t document = quorDocCreate("<svg viewBox='0 0 5 5'/>");
    const float flat[4] = {0, 0, 5, 0};
    const float shown[4] = {-1, -2, 3, 4};
    float viewport[4];
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorDocViewportSet(document, flat));
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportGet(document, viewport));
    EXPECT_EQ(5.0F, viewport[3]);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportSet(document, shown));
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportGet(document, viewport));
    for (int i = 0; i < 4; ++i) EXPECT_EQ(shown[i], viewport[i]);
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorDocViewportGet(0, nullptr));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocViewportSet(0, flat));
}

TEST_F(Documents, StoreAlignmentsInRangeOnly) {
    const uint32_t document = quorDocCreate("<svg preserveAspectRatio='xMaxYMin slice'/>");
    uint32_t values[2];
    ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportAlignmentGet(document, values));
    EXPECT_EQ(QUOR_ALIGN_XMAX_YMIN, values[0]);
    EXPECT_EQ(QUOR_SLICE, values[1]);

    const uint32_t badAlign[2] = {10, 0};
    const uint32_t badFit[2] = {0, 2};
    const uint32_t huge[2] = {0x101, 0};
    for (const uint32_t* bad : {badAlign, badFit, huge}) {
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorDocViewportAlignmentSet(document, bad));
        EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, quorDocViewportAlignmentSet(0, bad));
    }
    const uint32_t stretched[2] = {QUOR_ALIGN_NONE, QUOR_SLICE};
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocViewportAlignmentSet(0, stretched));
    EXPECT_EQ(QUOR_NO_ERROR, quorDocViewportAlignmentSet(document, stretched));
    ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportAlignmentGet(document, values));
    EXPECT_EQ(QUOR_ALIGN_NONE, values[0]);
    EXPECT_EQ(QUOR_SLICE, values[1]);
}

TEST_F(Documents, DrawingChecksBeforeItClears) {
    const Picture picture(2, 1, "<rect width='1' height='1'/>");
    ASSERT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("K.", picture.letters());
    quorClearColor(1, 0, 0, 1);
    EXPECT_EQ(QUOR_ILLEGAL_ARGUMENT_ERROR, picture.draw(3));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocDraw(1, picture.surface(), 3));
    EXPECT_EQ(QUOR_BAD_HANDLE_ERROR, quorDocDraw(0, picture.document(), 3));
    EXPECT_EQ("K.", picture.letters());

    quorClearPerform(0);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(0, picture.surface(), 2));
    EXPECT_EQ("K.", picture.letters());
    quorClearPerform(1);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(0, picture.surface(), 2));
    EXPECT_EQ("RR", picture.letters());
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("KR", picture.letters());
}

TEST_F(Documents, WithoutAreaClearAndDrawNothing) {
    const uint32_t surface = quorSurfaceCreate(2, 1);
    const uint32_t document =
        quorDocCreate("<svg viewBox='0 0 0 5'><rect width='99' height='99'/></svg>");
    quorClearColor(0, 0, 1, 1);
    EXPECT_EQ(QUOR_NO_ERROR, quorDocDraw(document, surface, 2));
    EXPECT_EQ(0xFF0000FFU, quorSurfacePixels(surface)[0]);
}

}  // namespace
