#pragma once

#include "svg/status.h"
#include "vg/vg.h"

namespace quor {

/// The one mapping from engine errors to library codes.
Status statusOf(VGErrorCode error) noexcept;

/// Reads and clears the engine's pending error.
Status takeEngineError() noexcept;

}  // namespace quor
