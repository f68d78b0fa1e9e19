#include <gtest/gtest.h>

#include "svg/containers.h"
#include "tree_fixture.h"

namespace quor {
namespace {

TEST(Use, PositionIsAPlainNumber) {
    struct Case {
        const char* attributes;
        float x, y;
    };
    const Case cases[] = {
        {"", 0, 0},
        {"x='3' y='-4.5'", 3, -4.5F},
        {"x='50%' y='2in'", 50, 2},
        {"x='' y='abc'", 0, 0},
        {"style='x:8'", 8, 0},
        {"x='1e300' y='-1e300'", 3.4028235e38F, -3.4028235e38F},
    };
    for (const Case& c : cases) {
        const SvgTree tree(inSvg(std::string("<use id='u' fill='red' ") + c.attributes + "/>"));
        const auto* use = tree.find<SvgUse>("u");
        EXPECT_EQ(use->x, c.x) << c.attributes;
        EXPECT_EQ(use->y, c.y) << c.attributes;
        EXPECT_EQ(use->style().setMask, StyleBit::kDisplay | StyleBit::kFill);
    }
}

TEST(Use, FindsItsTargetWhereverItStands) {
    const SvgTree tree(
        inSvg("<use id='later' xlink:href='#r'/><defs><rect id='r'/></defs>"
              "<use id='earlier' xlink:href='#r'/><use id='closed' xlink:href='r)'/>"
              "<use id='self' xlink:href='#self'/>"));
    const SvgNode* rect = tree.find("r");
    for (const char* id : {"later", "earlier", "closed"}) {
        auto* use = tree.find<SvgUse>(id);
        EXPECT_EQ(use->target(), rect) << id;
        EXPECT_EQ(use->target(), rect) << id;
        EXPECT_FALSE(use->isBeingDrawn);
    }
    EXPECT_EQ(tree.find<SvgUse>("self")->target(), tree.find("self"));
}

TEST(Use, HasNoTargetWhenNothingBearsTheName) {
    for (const char* attributes : {"", "xlink:href=''", "xlink:href='#nobody'", "href='#r'",
                                   "xlink:href='#masked'", "xlink:href='file.svg#r'"}) {
        const SvgTree tree(inSvg(std::string("<rect id='r'/><mask><rect id='masked'/></mask>") +
                                 "<use id='u' " + attributes + "/>"));
        EXPECT_EQ(tree.find<SvgUse>("u")->target(), nullptr) << attributes;
    }
}

}  // namespace
}  // namespace quor
