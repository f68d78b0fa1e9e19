/* Packs the elements of a small document into one bin and prints where each of them went. */
#include <quor/quor.h>
#include <stdio.h>

static const char kDrawing[] =
    "<svg xmlns='http://www.w3.org/2000/svg'>"
    "  <circle id='sun' cx='20' cy='20' r='16' fill='gold'/>"
    "  <path id='hill' d='M0 60 Q40 20 80 60 Z' fill='green'/>"
    "  <g id='house'><rect x='50' y='40' width='20' height='16' fill='maroon'/>"
    "    <polygon points='46,40 60,28 74,40' fill='black'/></g>"
    "</svg>";

/* Draws the bin on a surface of its size; the pixels would become a texture. */
static uint32_t drawBin(uint32_t bin, const uint32_t* info) {
    uint32_t surface = quorSurfaceCreate(info[0], info[1]);
    uint32_t error = quorPackingDraw(bin, 0, info[2], surface, QUOR_RENDERING_QUALITY_BETTER);
    if (error == QUOR_NO_ERROR) {
        printf("%u x %u pixels, the first is #%08x\n", (unsigned)info[0], (unsigned)info[1],
               (unsigned)quorSurfacePixels(surface)[0]);
    }
    quorSurfaceDestroy(surface);
    return error;
}

int main(void) {
    uint32_t document, error, counts[2]; /* elements taken, elements too large */
    if (quorInit(640, 480, 96) != QUOR_NO_ERROR) return 1;
    document = quorDocCreate(kDrawing);
    error = quorPackingBegin(2048, 1, 0, 2.0f); /* two pixels a unit, one pixel between elements */
    if (error == QUOR_NO_ERROR) {
        error = quorPackingAdd(document, 0, 1.0f, counts);
        if (error == QUOR_NO_ERROR) {
            error = quorPackingEnd(1);
        } else {
            quorPackingEnd(0);
        }
    }
    for (uint32_t bin = 0; error == QUOR_NO_ERROR && bin < quorPackingBinsCount(); ++bin) {
        const QuorPackedRect* rects = quorPackingBinRects(bin);
        uint32_t info[3]; /* width, height, rectangles */
        error = quorPackingBinInfo(bin, info);
        for (uint32_t i = 0; error == QUOR_NO_ERROR && i < info[2]; ++i) {
            printf("%-6s at %3u, %3u: %u x %u\n", rects[i].id, (unsigned)rects[i].x,
                   (unsigned)rects[i].y, (unsigned)rects[i].width, (unsigned)rects[i].height);
        }
        if (error == QUOR_NO_ERROR) error = drawBin(bin, info);
    }
    quorDone();
    return error == QUOR_NO_ERROR ? 0 : 1;
}
