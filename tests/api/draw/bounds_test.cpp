#include <cmath>
#include <random>
#include <string>

#include "api/draw/node_draw.h"
#include "api/library.h"
#include "library_fixture.h"
#include "svg/containers.h"

namespace {

using quor::Box;
using quor::SvgMatrix;

/// The box of the whole document, in pixels of a surface of the document's own size, y downward.
Box boundsOf(uint32_t handle, const SvgMatrix& base = {}) {
    quor::Document* document = quor::library.findDocument(handle);
    quor::Traversal traversal;
    EXPECT_TRUE(traversal.initialize());
    EXPECT_EQ(quor::Status::kOk, traversal.begin(base));
    document->root().setOutermostMapping(SvgMatrix());
    Box box;
    EXPECT_EQ(quor::Status::kOk, quor::nodeBounds(document->root(), traversal, box));
    return box;
}

using Bounds = LibraryFixture;

TEST_F(Bounds, OfShapesAndContainers) {
    const struct {
        const char* name;
        const char* content;
        Box box;
    } cases[] = {
        {"a fill", "<rect x='1' y='2' width='3' height='4'/>", {1, 2, 4, 6}},
        {"tight around a curve", "<circle cx='5' cy='5' r='2'/>", {3, 3, 7, 7}},
        {"a group",
         "<g><rect width='1' height='1'/><rect x='8' width='1' height='2'/></g>",
         {0, 0, 9, 2}},
        {"transforms",
         "<g transform='translate(1,1)'><rect transform='scale(2)' x='1' width='1'"
         " height='1'/></g>",
         {3, 1, 5, 3}},
        {"a turned box stays tight", "<circle transform='rotate(45)' r='2'/>", {-2, -2, 2, 2}},
        {"a stroke with miters",
         "<rect x='4' y='4' width='1' height='1' stroke='red'/>",
         {2, 2, 7, 7}},
        {"a stroke with bevels",
         "<rect x='4' y='4' width='1' height='1' stroke='red'"
         " stroke-linejoin='bevel'/>",
         {3.5F, 3.5F, 5.5F, 5.5F}},
        {"square caps",
         "<line x1='2' y1='2' x2='6' y2='2' stroke='red' stroke-width='2'"
         " stroke-linejoin='round' stroke-linecap='square'/>",
         {0.5857865F, 0.5857865F, 7.4142135F, 3.4142135F}},
        {"a stroke of width 0",
         "<rect width='1' height='1' stroke='red' stroke-width='0'/>",
         {0, 0, 1, 1}},
        {"a stroke grows with the scale",
         "<rect transform='scale(2)' x='2' y='2' width='1' height='1' stroke='red'"
         " stroke-linejoin='round'/>",
         {3, 3, 7, 7}},
        {"a non-scaling one does not",
         "<rect transform='scale(2)' x='2' y='2' width='1' height='1' stroke='red'"
         " stroke-linejoin='round' vector-effect='non-scaling-stroke'/>",
         {3.5F, 3.5F, 6.5F, 6.5F}},
        {"nor under a general matrix",
         "<rect transform='matrix(2,0,0,4,0,0)' x='2' y='2' width='1' height='1' stroke='red'"
         " stroke-linejoin='round' vector-effect='non-scaling-stroke'/>",
         {3.5F, 7.5F, 6.5F, 12.5F}},
        {"a use",
         "<defs><rect id='a' x='1' width='1' height='1'/></defs>"
         "<use xlink:href='#a' x='2' y='3' transform='scale(2)'/>",
         {6, 6, 8, 8}},
        {"a nested viewport",
         "<svg x='2' width='4' height='4' viewBox='0 0 1 1'>"
         "<rect width='.5' height='.5'/></svg>",
         {2, 0, 4, 2}},
        {"empty shapes do not count",
         "<rect x='5' y='5' width='1' height='1'/><path d=''/><circle r='0'/>",
         {5, 5, 6, 6}},
        {"defs, containers of no kind and hidden elements do not count",
         "<rect width='1' height='1'/><defs><rect id='r' x='9' width='9' height='9'/></defs>"
         "<a><rect x='9' width='9' height='9'/></a>"
         "<rect display='none' x='9' width='9' height='9'/>",
         {0, 0, 1, 1}},
        {"nothing", "<g/>", {0, 0, -1, -1}},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.name);
        const uint32_t document = quorDocCreate(svgOf(10, 10, c.content).c_str());
        ASSERT_NE(QUOR_INVALID_HANDLE, document);
        const Box box = boundsOf(document);
        EXPECT_NEAR(c.box.minX, box.minX, 2e-5);
        EXPECT_NEAR(c.box.minY, box.minY, 2e-5);
        EXPECT_NEAR(c.box.maxX, box.maxX, 2e-5);
        EXPECT_NEAR(c.box.maxY, box.maxY, 2e-5);
    }
}

TEST_F(Bounds, AreInTheCoordinatesOfTheBaseTransform) {
    const uint32_t document = quorDocCreate(
        svgOf(10, 10, "<g transform='translate(1,0)'><rect width='1' height='1'/></g>").c_str());
    const Box box = boundsOf(document, SvgMatrix::scaling(3, 3));
    EXPECT_FLOAT_EQ(3, box.minX);
    EXPECT_FLOAT_EQ(6, box.maxX);
    EXPECT_FLOAT_EQ(3, box.maxY);
}

TEST_F(Bounds, ReferenceCirclesAreReported) {
    const uint32_t handle =
        quorDocCreate(svgOf(4, 4, "<g id='a'><use xlink:href='#a'/></g>").c_str());
    quor::Document* document = quor::library.findDocument(handle);
    quor::Traversal traversal;
    ASSERT_TRUE(traversal.initialize());
    ASSERT_EQ(quor::Status::kOk, traversal.begin(SvgMatrix()));
    Box box;
    EXPECT_EQ(quor::Status::kInvalidSvg, quor::nodeBounds(document->root(), traversal, box));
}

class RandomDrawing {
public:
    explicit RandomDrawing(unsigned seed) : random_(seed) {}

    std::string element(int depth) {
        const std::string attributes = style() + transform();
        switch (pick(depth > 0 ? 6 : 4)) {
            case 0:
                return "<rect" + attributes + " x='" + number(10, 50) + "' y='" + number(10, 50) +
                       "' width='" + number(0, 20) + "' height='" + number(0, 20) + "'/>";
            case 1:
                return "<ellipse" + attributes + " cx='" + number(20, 44) + "' cy='" +
                       number(20, 44) + "' rx='" + number(0, 15) + "' ry='" + number(0, 15) + "'/>";
            case 2:
                return "<polyline" + attributes + " points='" + numbers(8) + "'/>";
            case 3:
                return "<path" + attributes + " d='M" + numbers(2) + "C" + numbers(6) +
                       "A 9 4 30 1 0" + numbers(2) + "'/>";
            case 4:
                return "<svg x='5' y='5' width='50' height='40' viewBox='0 0 64 64'>" +
                       element(depth - 1) + "</svg>";
            default:
                return "<g" + attributes + '>' + element(depth - 1) + element(depth - 1) + "</g>";
        }
    }

private:
    int pick(int count) { return static_cast<int>(random_() % static_cast<unsigned>(count)); }
    std::string number(int low, int high) {
        return std::to_string(low + pick((high - low) * 8 + 1) / 8.0);
    }
    std::string numbers(int count) {
        std::string text;
        for (int i = 0; i < count; ++i) text += ' ' + number(8, 56);
        return text;
    }
    std::string style() {
        static const char* const kStyles[] = {
            "",
            " stroke='red'",
            " stroke='blue' stroke-width='3' stroke-linejoin='bevel'",
            " fill='none' stroke='red' stroke-width='2' stroke-linecap='square'",
            " stroke='lime' stroke-linecap='round' stroke-dasharray='3 2' stroke-miterlimit='2'",
            " stroke='red' stroke-width='4' vector-effect='non-scaling-stroke'"};
        return kStyles[pick(6)];
    }
    std::string transform() {
        static const char* const kTransforms[] = {"", " transform='rotate(20 32 32)'",
                                                  " transform='translate(3,-4) scale(.8)'",
                                                  " transform='matrix(1,.3,-.2,.6,4,5)'"};
        return kTransforms[pick(4)];
    }

    std::mt19937 random_;
};

TEST_F(Bounds, HoldEveryPixelThatIsPainted) {
    constexpr int kSize = 64;
    constexpr float kGrid = 1.0F / 16.0F;  // vertices are rounded to 1/32 pixel
    int painted = 0;
    for (unsigned seed = 1; seed <= 150; ++seed) {
        const std::string content = RandomDrawing(seed).element(3);
        SCOPED_TRACE(testing::Message() << "seed " << seed << ": " << content);
        const Picture picture(kSize, kSize, content);
        const Box box = boundsOf(picture.document());
        ASSERT_EQ(QUOR_NO_ERROR, picture.draw(seed % 3));
        for (int y = 0; y < kSize; ++y) {
            for (int x = 0; x < kSize; ++x) {
                if (picture.at(x, y) == 0) continue;
                ++painted;
                const auto left = static_cast<float>(x);
                const auto top = static_cast<float>(y);
                ASSERT_TRUE(left + 1 > box.minX - kGrid && left < box.maxX + kGrid &&
                            top + 1 > box.minY - kGrid && top < box.maxY + kGrid)
                    << x << ", " << y << " lies outside";
            }
        }
    }
    EXPECT_GT(painted, 10000);
}

}  // namespace
