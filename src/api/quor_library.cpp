#include "api/arguments.h"
#include "api/library.h"
#include "base/finite.h"

using quor::library;

QUOR_API uint32_t quorInit(uint32_t screenWidth, uint32_t screenHeight, float dpi) {
    return codeOf(library.initialize(screenWidth, screenHeight, base::finite(dpi)));
}

QUOR_API void quorDone(void) { library.done(); }

QUOR_API const char* quorGetString(uint32_t name) {
    switch (name) {
        case QUOR_VENDOR:
            return "Kestrune S.r.l.";
        case QUOR_VERSION:
            return "1.0.0.335";
        default:
            return "";
    }
}
