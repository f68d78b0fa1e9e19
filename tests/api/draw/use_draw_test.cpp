#include "library_fixture.h"

namespace {

using UseDraw = LibraryFixture;

TEST_F(UseDraw, PlacesItsTargetAndLendsItItsStyle) {
    const LetterCase cases[] = {
        {"x and y",
         "<defs><rect id='a' width='1' height='1'/></defs>"
         "<use xlink:href='#a' x='2' y='1'/>",
         "..../..K."},
        {"x and y lie inside its transform",
         "<defs><rect id='a' width='.5' height='.5'/></defs>"
         "<use xlink:href='#a' x='1' transform='scale(2)'/>",
         "..K./...."},
        {"a target that is drawn by itself too",
         "<rect id='a' width='1' height='1'/><use xlink:href='#a' x='1' fill='red'/>"
         "<use xlink:href='#a' x='2'/>",
         "KRK./...."},
        {"color comes from the use, not from where the target stands",
         "<defs color='blue'><rect id='a' fill='currentColor' width='1' height='1'/></defs>"
         "<g color='red'><use xlink:href='#a'/></g><use xlink:href='#a' x='1' color='lime'/>",
         "RG../...."},
        {"through another use",
         "<defs><rect id='a' width='1' height='1'/><use id='b' xlink:href='#a' x='1'/></defs>"
         "<use xlink:href='#b' x='1' fill='red'/>",
         "..R./...."},
        {"hidden itself, with a visible target",
         "<defs><rect id='a' visibility='visible' width='1' height='1'/></defs>"
         "<use xlink:href='#a' visibility='hidden'/>",
         "K.../...."},
        {"a target inside an element that is not displayed",
         "<g display='none'><rect id='a' width='1' height='1'/></g><use xlink:href='#a'/>",
         "K.../...."},
        {"no target", "<use xlink:href='#none'/><use/><rect width='1' height='1'/>", "K.../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(UseDraw, NestedViewportsMapTheirContent) {
    const LetterCase cases[] = {
        {"viewBox",
         "<svg x='2' width='2' height='2' viewBox='10 10 4 4'>"
         "<rect x='10' y='10' width='2' height='2'/></svg>",
         "..K./...."},
        {"position alone",
         "<svg x='1' y='1' width='2' height='1'><rect width='1' height='1'/></svg>", "..../.K.."},
        {"without area",
         "<svg width='0' height='2'><rect width='4' height='2'/></svg>"
         "<svg width='2' height='2' viewBox='0 0 0 1'><rect width='9' height='9'/>"
         "</svg>",
         "..../...."},
        {"style is inherited",
         "<svg fill='red' width='4' height='2'><rect width='1' height='1'/></svg>", "R.../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(UseDraw, ReferenceCirclesEndTheDrawEveryTime) {
    const struct {
        const char* name;
        const char* content;
    } circles[] = {
        {"itself", "<use id='a' xlink:href='#a'/>"},
        {"its parent", "<g id='a'><use xlink:href='#a'/></g>"},
        {"its parent, asked for a colour",
         "<g id='a'><use xlink:href='#a'/><rect fill='currentColor' width='1' height='1'/></g>"},
        {"each other", "<use id='a' xlink:href='#b'/><use id='b' xlink:href='#a'/>"},
        {"over three groups",
         "<defs><g id='a'><use xlink:href='#b'/></g><g id='b'><use xlink:href='#c'/></g>"
         "<g id='c'><use xlink:href='#a'/></g></defs><use xlink:href='#b'/>"},
        {"the outermost element",
         "<g id='a'/><svg id='s' width='1' height='1'>"
         "<use xlink:href='#s'/></svg>"},
    };
    for (const auto& circle : circles) {
        SCOPED_TRACE(circle.name);
        const Picture picture(4, 2, circle.content);
        EXPECT_EQ(QUOR_INVALID_SVG_ERROR, picture.draw());
        EXPECT_EQ(QUOR_INVALID_SVG_ERROR, picture.draw());
    }
    expectLetters({"others draw as before", "<rect width='1' height='1'/>", "K.../...."});
}

/// Definitions of `count` links; link i uses link i + 1, `fanOut` times, and the last is empty.
std::string chain(int count, int fanOut) {
    std::string text = "<defs>";
    for (int i = 0; i < count; ++i) {
        text += "<g id='l" + std::to_string(i) + "'>";
        for (int j = 0; j < fanOut; ++j)
            text += "<use xlink:href='#l" + std::to_string(i + 1) + "'/>";
        text += "</g>";
    }
    return text + "<g id='l" + std::to_string(count) + "'/></defs>";
}

TEST_F(UseDraw, NestsFiveHundredAndTwelveDeepAndNoDeeper) {
    const std::string first = "<use xlink:href='#l0'/>";
    EXPECT_EQ(QUOR_NO_ERROR, Picture(4, 2, chain(511, 1) + first).draw());
    EXPECT_EQ(QUOR_INVALID_SVG_ERROR, Picture(4, 2, chain(512, 1) + first).draw());
}

TEST_F(UseDraw, ElementsInsideEachOtherAreLimitedHoweverTheyCameThere) {
    // 60 groups a link: at most 4096 levels hold 66 links.
    const auto nested = [](int links) {
        std::string text = "<defs>";
        for (int i = 0; i < links; ++i) {
            text += "<g id='l" + std::to_string(i) + "'>";
            for (int j = 0; j < 60; ++j) text += "<g>";
            text += "<use xlink:href='#l" + std::to_string(i + 1) + "'/>";
            for (int j = 0; j < 60; ++j) text += "</g>";
            text += "</g>";
        }
        return text + "</defs><use xlink:href='#l0'/>";
    };
    EXPECT_EQ(QUOR_NO_ERROR, Picture(4, 2, nested(65)).draw());
    EXPECT_EQ(QUOR_INVALID_SVG_ERROR, Picture(4, 2, nested(67)).draw());
}

TEST_F(UseDraw, ASmallFileCannotDrawForever) {
    const Picture picture(4, 2, chain(12, 10) + "<use xlink:href='#l0'/>");
    EXPECT_EQ(QUOR_INVALID_SVG_ERROR, picture.draw());
}

}  // namespace
