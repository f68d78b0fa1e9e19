#include "svg/paint_server.h"

namespace quor {

Status SvgPaintServer::buildPaint(Traversal& /*traversal*/, SvgShape& /*shape*/, bool /*forFill*/,
                                  bool& isUsable) noexcept {
    isUsable = false;
    return Status::kOk;
}

}  // namespace quor
