#include "svg/engine_error.h"

namespace quor {

Status statusOf(VGErrorCode error) noexcept {
    switch (error) {
        case VG_NO_ERROR:
            return Status::kOk;
        case VG_BAD_HANDLE_ERROR:
        case VG_ILLEGAL_ARGUMENT_ERROR:
            return Status::kIllegalArgument;
        case VG_OUT_OF_MEMORY_ERROR:
            return Status::kOutOfMemory;
        default:
            return Status::kUnknown;
    }
}

Status takeEngineError() noexcept { return statusOf(vgGetError()); }

}  // namespace quor
