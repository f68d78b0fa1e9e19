#include "api/arguments.h"
#include "api/library.h"
#include "base/finite.h"

using quor::library;

// The text of a macro's value.
#define QUOR_QUOTED(value) #value
#define QUOR_TEXT_OF(macro) QUOR_QUOTED(macro)

QUOR_API uint32_t quorInit(uint32_t screenWidth, uint32_t screenHeight, float dpi) {
    return codeOf(library.initialize(screenWidth, screenHeight, base::finite(dpi)));
}

QUOR_API void quorDone(void) { library.done(); }

QUOR_API const char* quorGetString(uint32_t name) {
    switch (name) {
        case QUOR_VENDOR:
            return "Kestrune S.r.l.";
        case QUOR_VERSION:
            return QUOR_TEXT_OF(QUOR_VERSION_MAJOR) "." QUOR_TEXT_OF(QUOR_VERSION_MINOR) "."  //
                QUOR_TEXT_OF(QUOR_VERSION_PATCH) ".335";
        default:
            return "";
    }
}
