#include "library_fixture.h"
#include "vg/context.h"
#include "vg/paint/paint.h"

namespace {

using GradientDraw = LibraryFixture;

/// Blue level / 255 along the top row of a picture of 8 x 4 pixels, a digit of tenths a pixel
/// ('9' from 0.9 up); '.' for a transparent pixel.
std::string tenths(const Picture& picture, int row = 0) {
    std::string text;
    for (int x = 0; x < 8; ++x) {
        const uint32_t pixel = picture.at(x, row);
        const auto level = static_cast<int>((pixel & 0xFF) * 10 / 255);
        text += pixel >> 24 == 0 ? '.' : static_cast<char>('0' + (level < 10 ? level : 9));
    }
    return text;
}

/// Black at 0, blue at 1.
const std::string kStops = "<stop offset='0'/><stop offset='1' stop-color='blue'/>";

struct Case {
    const char* name;
    std::string content;  ///< of a document of 8 x 4 units
    const char* row;
};

std::string linear(const std::string& attributes) {
    return "<linearGradient id='g' " + attributes + ">" + kStops + "</linearGradient>";
}
std::string radial(const std::string& attributes) {
    return "<radialGradient id='g' " + attributes + ">" + kStops + "</radialGradient>";
}
const std::string kFilled = "<rect width='8' height='4' fill='url(#g)'/>";
const std::string kUser = "gradientUnits='userSpaceOnUse' ";

void expectRow(const Case& c) {
    SCOPED_TRACE(c.name);
    const Picture picture(8, 4, c.content);
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ(c.row, tenths(picture));
}

TEST_F(GradientDraw, LinearInBothUnits) {
    const Case cases[] = {
        {"over the box of the shape", linear("") + kFilled, "01345689"},
        {"over the box of a smaller shape",
         linear("") + "<rect x='2' width='4' height='4' fill='url(#g)'/>", "..1368.."},
        {"parts of the box as numbers and percentages", linear("x1='.25' x2='75%'") + kFilled,
         "00136899"},
        {"in user space", linear(kUser + "x1='4' x2='8'") + kFilled, "00001368"},
        {"percentages of the viewport", linear(kUser + "x1='50%' x2='100%'") + kFilled, "00001368"},
        {"in the user space of the shape",
         linear(kUser + "x1='0' x2='2'") + "<g transform='scale(4)'><rect width='2' height='1'"
                                           " fill='url(#g)'/></g>",
         "01345689"},
        {"aslant in the box: lines of one colour are skewed with it",
         linear("x1='0' y1='0' x2='1' y2='1'") + kFilled, "01223445"},
        {"transformed", linear("gradientTransform='translate(.5)'") + kFilled, "00000134"},
        {"transformed in user space",
         linear(kUser + "x1='0' x2='1' gradientTransform='translate(8) scale(-8)'") + kFilled,
         "98654310"},
        {"repeated", linear("x2='.5' spreadMethod='repeat'") + kFilled, "13681368"},
        {"reflected", linear("x2='.5' spreadMethod='reflect'") + kFilled, "13688631"},
        {"one colour past its end", linear("x2='.5'") + kFilled, "13689999"},
        {"no geometry is sent for coincident points", linear("x1='.5' x2='.5'") + kFilled,
         "01345689"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, RadialInBothUnits) {
    const Case cases[] = {
        {"a circle in the box", radial("") + "<rect y='-3.5' width='8' height='8' fill='url(#g)'/>",
         "86311368"},
        {"an ellipse in a box that is no square",
         radial("") + "<rect y='-4' width='8' height='9' fill='url(#g)'/>", "86311368"},
        {"in user space", radial(kUser + "cx='0' cy='.5' r='8'") + kFilled, "01345689"},
        {"the focus is the centre unless given", radial(kUser + "cx='4' cy='.5' r='4'") + kFilled,
         "86311368"},
        {"from the focus to the circle on either side",
         radial(kUser + "cx='4' cy='.5' r='4' fx='2'") + kFilled, "72024579"},
        {"without radius", radial(kUser + "cx='4' cy='2' r='0'") + kFilled, "99999999"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, InheritsFromTheGradientsItRefersTo) {
    const std::string stops = "<linearGradient id='s'>" + kStops + "</linearGradient>";
    const Case cases[] = {
        {"stops, of whatever kind",
         stops +
             "<radialGradient id='g' cx='0' cy='.5' r='8' gradientUnits='userSpaceOnUse'"
             " xlink:href='#s'/>" +
             kFilled,
         "01345689"},
        {"stops over two references",
         stops +
             "<radialGradient id='r' xlink:href='#s'/><linearGradient id='g'"
             " xlink:href='#r'/>" +
             kFilled,
         "01345689"},
        {"its own stops before others",
         stops +
             "<linearGradient id='g' xlink:href='#s'><stop stop-color='blue'/>"
             "</linearGradient>" +
             kFilled,
         "99999999"},
        {"children that are no stops do not count",
         stops + "<linearGradient id='g' xlink:href='#s'><desc/><g/></linearGradient>" + kFilled,
         "01345689"},
        {"units, spread and geometry",
         "<linearGradient id='s' gradientUnits='userSpaceOnUse' x2='4' spreadMethod='reflect'>" +
             kStops + "</linearGradient><linearGradient id='g' xlink:href='#s'/>" + kFilled,
         "13688631"},
        {"an attribute of its own before another's",
         "<linearGradient id='s' x2='.25' spreadMethod='repeat'>" + kStops +
             "</linearGradient><linearGradient id='g' x2='.5' xlink:href='#s'/>" + kFilled,
         "13681368"},
        {"a transform of the nearest that has one",
         "<linearGradient id='s' gradientTransform='scale(9)'>" + kStops +
             "</linearGradient><radialGradient id='r' gradientTransform='translate(.5)'"
             " xlink:href='#s'/><linearGradient id='g' xlink:href='#r'/>" +
             kFilled,
         "00000134"},
        {"geometry past a gradient of the other kind",
         "<linearGradient id='s' x2='.5'>" + kStops +
             "</linearGradient><radialGradient id='r' xlink:href='#s'/>"
             "<linearGradient id='g' xlink:href='#r'/>" +
             kFilled,
         "13689999"},
        {"a focus",
         "<radialGradient id='s' fx='2' r='4'>" + kStops +
             "</radialGradient><radialGradient id='g' gradientUnits='userSpaceOnUse' cx='4'"
             " cy='.5' xlink:href='#s'/>" +
             kFilled,
         "72024579"},
        {"around a circle of references, what it lacks",
         "<linearGradient id='s' xlink:href='#g' x2='.5'>" + kStops +
             "</linearGradient><linearGradient id='g' xlink:href='#s'/>" + kFilled,
         "13689999"},
        {"around a circle that another gradient came by first",
         "<linearGradient id='s' xlink:href='#g' x2='.5'>" + kStops +
             "</linearGradient><radialGradient id='r' xlink:href='#s'/>"
             "<linearGradient id='g' xlink:href='#r'/><rect width='1' height='1' fill='url(#s)'/>"
             "<rect width='1' height='1' fill='url(#r)'/>" +
             kFilled,
         "13689999"},
        {"references to other elements are ignored",
         "<rect id='s' width='0'/><linearGradient id='g' xlink:href='#s'>" + kStops +
             "</linearGradient>" + kFilled,
         "01345689"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, StopsAreReadInOrder) {
    const Case cases[] = {
        {"offsets never fall",
         "<linearGradient id='g'><stop offset='.5'/><stop offset='.25' stop-color='blue'/>"
         "</linearGradient>" +
             kFilled,
         "00009999"},
        {"before the first and past the last",
         "<linearGradient id='g'><stop offset='25%'/><stop offset='75%' stop-color='blue'/>"
         "</linearGradient>" +
             kFilled,
         "00136899"},
        {"opacity",
         "<linearGradient id='g'><stop stop-color='blue' stop-opacity='0'/><stop offset='1'"
         " stop-color='blue'/></linearGradient>" +
             kFilled,
         "01345689"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, FallsBackWhenAGradientIsNotUsable) {
    const std::string fallback = "<rect width='8' height='4' fill='url(#g) blue'/>";
    const Case cases[] = {
        {"no stops", "<linearGradient id='g'/>" + fallback, "99999999"},
        {"nothing but other children", "<linearGradient id='g'><g/></linearGradient>" + fallback,
         "99999999"},
        {"no stops around a circle",
         "<linearGradient id='g' xlink:href='#h'/><radialGradient id='h' xlink:href='#g'/>" +
             fallback,
         "99999999"},
        {"its own reference", "<linearGradient id='g' xlink:href='#g'/>" + fallback, "99999999"},
        {"no gradient", fallback, "99999999"},
        {"no fallback", "<linearGradient id='g'/>" + kFilled, "........"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, AShapeThatCannotUseAGradientLeavesItToOthers) {
    const Picture picture(8, 4,
                          linear("") +
                              "<path d='M0 2H8' fill='url(#g) red'/>"
                              "<rect width='8' height='4' fill='url(#g)'/>");
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("01345689", tenths(picture));
}

TEST_F(GradientDraw, LeavesNoPaintMatrixBehind) {
    expectRow({"user space after a box",
               "<linearGradient id='b'>" + kStops + "</linearGradient>" + linear(kUser + "x2='8'") +
                   "<rect y='1' width='2' height='2' fill='url(#b)'/>" + kFilled,
               "01345689"});
}

TEST_F(GradientDraw, BorrowedStopColorsAreKnownAtEveryDraw) {
    const Picture picture(8, 4,
                          "<g color='blue'><linearGradient id='g'><stop stop-color='currentColor'/>"
                          "</linearGradient></g>" +
                              kFilled);
    for (int draw = 0; draw < 2; ++draw) {
        EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
        EXPECT_EQ("99999999", tenths(picture));
    }
}

TEST_F(GradientDraw, PaintsStrokes) {
    const Case cases[] = {
        {"in user space",
         linear(kUser + "x2='8'") + "<path d='M0 2H8' stroke-width='4' stroke='url(#g)'/>",
         "01345689"},
        {"a box without height takes the fallback",
         linear("") + "<path d='M0 2H8' stroke-width='4' stroke='url(#g) blue'/>", "99999999"},
        {"over the box of the shape, not of its stroke",
         linear("") + "<rect x='2' width='4' height='4' fill='none' stroke-width='4'"
                      " stroke='url(#g)'/>",
         "00136899"},
        {"a stroke that keeps its width keeps its paint",
         linear(kUser + "x2='4'") + "<path transform='scale(2,1)' d='M0 2H4' stroke-width='4'"
                                    " vector-effect='non-scaling-stroke' stroke='url(#g)'/>",
         "01345689"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, SolidColorIsAPaint) {
    const Case cases[] = {
        {"a colour", "<solidColor id='g' solid-color='blue'/>" + kFilled, "99999999"},
        {"black by default", "<solidColor id='g'/>" + kFilled, "00000000"},
        {"with opacity", "<solidColor id='g' solid-color='blue' solid-opacity='.5'/>" + kFilled,
         "55555555"},
        {"times that of the shape",
         "<solidColor id='g' solid-color='blue' solid-opacity='.5'/>"
         "<rect width='8' height='4' fill='url(#g)' fill-opacity='.5'/>",
         "22222222"},
        {"borrowed",
         "<g color='blue'><solidColor id='g' solid-color='currentColor'/></g>" + kFilled,
         "99999999"},
    };
    for (const Case& c : cases) expectRow(c);
}

TEST_F(GradientDraw, OpacitiesInTurnBuildNoRampsTwice) {
    const Picture picture(8, 4,
                          linear("") +
                              "<g fill='url(#g)'><rect width='8' height='2' fill-opacity='.5'/>"
                              "<rect y='2' width='8' height='2' fill-opacity='.25'/></g>");
    const auto builds = [] { return vg::currentContext()->fillPaint->ramps.buildCount(); };
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ(2U, builds());
    for (int i = 0; i < 3; ++i) EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ(2U, builds());
    EXPECT_EQ("00122344", tenths(picture)) << "half of the colour";
    EXPECT_EQ(0x40U, picture.at(7, 3) >> 24);
}

TEST_F(GradientDraw, APaintOutlivesItsDocument) {
    const Picture flat(8, 4, "<rect width='8' height='4' fill='blue'/>");
    {
        const Picture picture(8, 4, linear("") + kFilled);
        EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    }
    EXPECT_EQ(QUOR_NO_ERROR, flat.draw());
    EXPECT_EQ("99999999", tenths(flat));
}

TEST_F(GradientDraw, HostileNumbersDrawSomethingOrNothing) {
    const char* const numbers[] = {"1e30",  "-1e38",        "nan",  "0",
                                   "1e-40", "99999999999%", "-5mm", ""};
    for (const std::string number : numbers) {
        for (const std::string& other : {std::string("0"), number}) {
            SCOPED_TRACE(number);
            const std::string points = "x1='" + other + "' x2='" + number + "' cx='" + number +
                                       "' fx='" + other + "' r='" + number +
                                       "' gradientTransform='matrix(" + number + " 0 0 1 0 0)'";
            for (const std::string& attributes :
                 {points, kUser + points + "spreadMethod='repeat'"}) {
                const Picture picture(8, 4, linear(attributes) + kFilled);
                EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
                const Picture round(8, 4, radial(attributes) + kFilled);
                EXPECT_EQ(QUOR_NO_ERROR, round.draw());
            }
        }
    }
}

TEST_F(GradientDraw, ChainsOfReferencesMayBeLong) {
    std::string chain = "<linearGradient id='c0'>" + kStops + "</linearGradient>";
    for (int i = 1; i <= 30000; ++i) {
        chain += "<linearGradient id='c" + std::to_string(i) + "' xlink:href='#c" +
                 std::to_string(i - 1) + "'/>";
    }
    const Picture picture(8, 4, chain + "<rect width='8' height='4' fill='url(#c30000) lime'/>");
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("01345689", tenths(picture));
}

}  // namespace
