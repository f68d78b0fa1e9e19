/* Draws an icon in a colour of the program's choice: fill='currentColor' and the like stand for the
 * property `color`, which the program sets at the root before it creates the document. */
#include <quor/quor.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char kIcon[] =
    "<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 8 8'>"
    "  <path d='M1 1H7V7H1Z' fill='currentColor'/>"
    "</svg>";

/* The root's name in the text, past a prolog of comments, a DOCTYPE and the like; null if none. */
static const char* findRoot(const char* text) {
    while (text != NULL && (text = strchr(text, '<')) != NULL) {
        if (strncmp(text, "<svg", 4) == 0) return text + 4;
        text = strncmp(text, "<!--", 4) == 0 ? strstr(text, "-->") : strchr(text, '>');
    }
    return NULL;
}

/* A copy of the text with `attributes` at its root, to be freed; null when that cannot be. The root
 * must not have them already: texts in which an attribute stands twice are refused. */
static char* withRootAttributes(const char* text, const char* attributes) {
    const char* root = findRoot(text);
    const size_t size = strlen(text) + strlen(attributes) + 2;
    char* copy = root != NULL ? malloc(size) : NULL;
    if (copy != NULL) snprintf(copy, size, "%.*s %s%s", (int)(root - text), text, attributes, root);
    return copy;
}

int main(void) {
    /* For icons without any colour add fill='#e07020' too. */
    char* text = withRootAttributes(kIcon, "color='#e07020'");
    uint32_t document, surface, error;
    if (text == NULL || quorInit(640, 480, 96) != QUOR_NO_ERROR) return 1;
    document = quorDocCreate(text);
    surface = quorSurfaceCreate(64, 64);
    error = quorDocDraw(document, surface, QUOR_RENDERING_QUALITY_BETTER);
    if (document != QUOR_INVALID_HANDLE && error == QUOR_NO_ERROR)
        printf("the centre is #%08x\n", (unsigned)quorSurfacePixels(surface)[32 * 64 + 32]);
    quorDone();
    free(text);
    return document != QUOR_INVALID_HANDLE && error == QUOR_NO_ERROR ? 0 : 1;
}
