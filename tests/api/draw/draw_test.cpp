#include "library_fixture.h"

namespace {

using Draw = LibraryFixture;

TEST_F(Draw, PutsShapesWhereTheyAreInDocumentOrder) {
    const LetterCase cases[] = {
        {"first row on top", "<rect x='1' y='0' width='2' height='1'/>", ".KK./...."},
        {"last row", "<rect x='3' y='1' width='1' height='1'/>", "..../...K"},
        {"later above earlier",
         "<rect width='3' height='2' fill='red'/><rect x='1' width='3' height='1' fill='blue'/>",
         "RBBB/RRR."},
        {"over every edge", "<rect x='-9' y='-9' width='99' height='99'/>", "KKKK/KKKK"},
        {"path and polygon",
         "<path d='M0 0h1v2h-1z' fill='lime'/><polygon points='2,0 4,0 4,1 2,1'/>", "G.KK/G..."},
        {"stroke of a line", "<line x1='0' y1='1.5' x2='3' y2='1.5' stroke='red'/>", "..../RRR."},
        {"defs do not draw, unknown containers do",
         "<defs><rect width='1' height='2'/></defs><a><rect x='2' width='1' height='2'/></a>",
         "..K./..K."},
        {"shapes without area or data",
         "<rect width='-1' height='2'/><circle r='0'/><path d=''/><polygon points='1'/>",
         "..../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, InheritsStylesAndGivesThemBack) {
    const LetterCase cases[] = {
        {"fill from the group", "<g fill='red'><rect width='1' height='1'/></g>", "R.../...."},
        {"a sibling keeps the parent's",
         "<g fill='red'><rect width='1' height='1' fill='blue'/>"
         "<rect x='1' width='1' height='1'/></g><rect x='2' width='1' height='1'/>",
         "BRK./...."},
        {"engine state is restored behind a child",
         "<g fill-rule='evenodd'><path d='M0 0h1v1h-1zM0 0h1v1h-1z'/></g>"
         "<path d='M2 0h1v1h-1zM2 0h1v1h-1z'/>",
         "..K./...."},
        {"stroke width is restored behind a child",
         "<g stroke='red'><path d='M0 .5h1' stroke-width='4'/><path d='M2 .5h2'/></g>",
         "R.RR/R..."},
        {"currentColor climbs to color",
         "<g color='red'><g color='inherit'><rect width='1' height='1' fill='currentColor'/></g>"
         "</g>",
         "R.../...."},
        {"currentColor is black without color", "<rect width='1' height='1' fill='currentColor'/>",
         "K.../...."},
        {"an inherited currentColor is a colour already",
         "<g color='red' fill='currentColor'><rect color='blue' width='1' height='1'/></g>",
         "R.../...."},
        {"style wins over the attribute",
         "<rect width='1' height='1' fill='red' style='fill: blue'/>", "B.../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, HidesWhatIsNotDisplayedOrVisible) {
    const LetterCase cases[] = {
        {"no child of an element that is not displayed",
         "<g display='none'><rect display='inline' width='4' height='2'/></g>", "..../...."},
        {"a displayed sibling",
         "<rect width='1' height='1' display='none'/>"
         "<rect x='1' width='1' height='1'/>",
         ".K../...."},
        {"a visible child of a hidden element",
         "<g visibility='hidden'><rect width='2' height='1'/>"
         "<rect visibility='visible' x='2' width='1' height='1'/></g>",
         "..K./...."},
        {"fill none", "<rect fill='none' width='4' height='2'/>", "..../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, MultipliesTransformsFromTheOutside) {
    const LetterCase cases[] = {
        {"nested",
         "<g transform='translate(1,0)'><g transform='scale(2)'>"
         "<rect width='1' height='1'/></g></g>",
         ".KK./.KK."},
        {"the other way round",
         "<g transform='scale(2)'><g transform='translate(1,0)'>"
         "<rect width='1' height='1'/></g></g>",
         "..KK/..KK"},
        {"a sibling is placed without it",
         "<g transform='translate(3,1)'><rect width='1' height='1'/></g>"
         "<rect width='1' height='1'/>",
         "K.../...K"},
        {"a quarter turn", "<rect transform='matrix(0,1,-1,0,4,0)' width='2' height='1'/>",
         "...K/...K"},
        {"a list with a fault is the identity",
         "<rect transform='translate(1) rubbish' width='1' height='1'/>", "K.../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, ScalesAlphaByTheOpacityOfEachPaint) {
    const LetterCase cases[] = {
        {"fill", "<rect width='1' height='1' fill='red' fill-opacity='.5'/>", "r.../...."},
        {"opacity does not stick",
         "<rect width='1' height='1' fill='red' fill-opacity='.5'/>"
         "<rect x='1' width='1' height='1' fill='red'/>",
         "rR../...."},
        {"inherited", "<g fill-opacity='.5'><rect width='1' height='1'/></g>", "k.../...."},
        {"fill and stroke differ, the stroke is on top",
         "<path d='M0 1H2' stroke='lime' stroke-opacity='1' stroke-width='2' fill='red'"
         " fill-opacity='.5'/><path d='M2 0h2v2h-2z' fill='red' fill-opacity='.5' stroke='none'/>",
         "GGrr/GGrr"},
        {"fill and stroke alike: each of its own opacity, mixed where they overlap",
         "<rect x='1' y='-1' width='6' height='4' fill='red' stroke='blue' stroke-width='2'"
         " fill-opacity='.5' stroke-opacity='.5'/>",
         "b?rr/b?rr"},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, TakesTheFallbackOfAReferenceThatGivesNoPaint) {
    const LetterCase cases[] = {
        {"nothing of that id", "<rect width='1' height='1' fill='url(#none) red'/>", "R.../...."},
        {"not a paint server", "<g id='g'/><rect width='1' height='1' fill='url(#g) lime'/>",
         "G.../...."},
        {"a gradient without stops",
         "<linearGradient id='a'/><rect width='1' height='1' fill='url(#a) blue'/>", "B.../...."},
        {"none", "<rect width='1' height='1' fill='url(#none) none'/>", "..../...."},
        {"no fallback", "<rect width='1' height='1' fill='url(#none)'/>", "..../...."},
        {"currentColor", "<rect color='red' width='1' height='1' fill='url(#none) currentColor'/>",
         "R.../...."},
        {"of a stroke", "<path d='M0 .5H2' fill='none' stroke='url(#none) red'/>", "RR../...."},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, KeepsTheWidthOfNonScalingStrokes) {
    const LetterCase cases[] = {
        {"under a uniform scale",
         "<path transform='scale(2)' d='M0 .25H1' stroke='red' vector-effect='non-scaling-stroke'"
         "/><path d='M2 1.5H4' stroke='blue'/>",
         "RR../..BB"},
        {"under a general matrix, and the matrix is put back",
         "<g transform='matrix(2,0,0,1,0,0)'><path d='M0 .5H1' stroke='red'"
         " vector-effect='non-scaling-stroke'/><path d='M1 1.5H2' stroke='blue'/></g>",
         "RR../..BB"},
        {"under a scale of nothing it is dropped",
         "<path transform='scale(0)' d='M0 .5H1' stroke='red'"
         " vector-effect='non-scaling-stroke'/><path d='M2 1.5H4' stroke='blue'/>",
         "..../..BB"},
    };
    for (const LetterCase& c : cases) expectLetters(c);
}

TEST_F(Draw, GivesTheSamePixelsEveryTime) {
    const Picture picture(4, 2,
                          "<g stroke='red' color='lime'><circle cx='2' cy='1' r='1.3'"
                          " fill='currentColor' stroke-width='.7' stroke-dasharray='1 .3'/>"
                          "</g><ellipse rx='1' ry='1' fill-opacity='.3'/>");
    for (uint32_t quality : {0U, 1U, 2U}) {
        SCOPED_TRACE(quality);
        EXPECT_EQ(QUOR_NO_ERROR, picture.draw(quality));
        uint32_t first[8];
        EXPECT_EQ(QUOR_NO_ERROR, quorSurfaceCopy(picture.surface(), first, 0));
        EXPECT_EQ(QUOR_NO_ERROR, picture.draw(quality));
        EXPECT_EQ(0, memcmp(first, quorSurfacePixels(picture.surface()), sizeof first));
    }
}

TEST_F(Draw, FitsTheViewportOnTheSurface) {
    const Picture picture(4, 2, "<rect width='1' height='1'/>");
    const float half[4] = {2, 0, 2, 2};
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportSet(picture.surface(), half));
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw(QUOR_RENDERING_QUALITY_NONANTIALIASED));
    EXPECT_EQ("..../....", picture.letters()) << "half a pixel covers no centre";

    const uint32_t stretched[2] = {QUOR_ALIGN_NONE, QUOR_MEET};
    const float shown[4] = {0, 0, 2, 1};
    ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportAlignmentSet(picture.document(), stretched));
    ASSERT_EQ(QUOR_NO_ERROR, quorDocViewportSet(picture.document(), shown));
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("..K./..K.", picture.letters());

    const float moved[5] = {0, 0, 0, -1, 1};
    ASSERT_EQ(QUOR_NO_ERROR, quorSurfaceViewportTransformSet(picture.surface(), moved));
    EXPECT_EQ(QUOR_NO_ERROR, picture.draw());
    EXPECT_EQ("..../.K..", picture.letters());
}

}  // namespace
