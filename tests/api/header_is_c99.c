/* The interface header is plain C99: compiled with -std=c99 -pedantic -Werror and linked with the
 * shared library. Exits with the number of the first check that failed. */
#include "quor/quor.h"

static const char kWarmGrey[] =
    "<svg width='4' height='2'><rect width='4' height='2' fill='#804020'/></svg>";

int main(void) {
    uint32_t document, surface;
    if (quorSurfaceCreate(1, 1) != QUOR_INVALID_HANDLE) return 1; /* before quorInit */
    if (quorInit(640, 480, 96.0f) != QUOR_NO_ERROR) return 2;
    document = quorDocCreate(kWarmGrey);
    if (document == QUOR_INVALID_HANDLE || quorDocWidth(document) != 4.0f) return 3;
    surface = quorSurfaceCreate(4, 2);
    if (quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER) != QUOR_NO_ERROR) return 4;
    if (quorSurfacePixels(surface)[7] != 0xFF804020u) return 5;
    quorDone();
    return quorGetString(QUOR_VERSION)[0] == '1' ? 0 : 6;
}
