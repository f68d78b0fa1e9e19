/* Draws a small document into memory and prints one of its pixels. */
#include <quor/quor.h>
#include <stdio.h>

static const char kDrawing[] =
    "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
    "  <rect width='8' height='8' fill='navy'/><circle cx='4' cy='4' r='3' fill='gold'/>"
    "</svg>";

int main(void) {
    if (quorInit(640, 480, 96) != QUOR_NO_ERROR) return 1; /* screen in pixels, dots per inch */
    uint32_t document = quorDocCreate(kDrawing);
    uint32_t surface = quorSurfaceCreate(256, 256);
    uint32_t error = quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER);
    if (document != QUOR_INVALID_HANDLE && error == QUOR_NO_ERROR) {
        const uint32_t* pixels = quorSurfacePixels(surface); /* rows from the top, 0xAARRGGBB */
        printf("the centre is #%08x\n", (unsigned)pixels[128 * 256 + 128]);
    }
    quorDone(); /* frees the document and the surface */
    return document != QUOR_INVALID_HANDLE && error == QUOR_NO_ERROR ? 0 : 1;
}
