#include "api/arguments.h"
#include "api/library.h"
#include "api/point_map.h"
#include "base/finite.h"

using quor::Document;
using quor::DrawingSurface;
using quor::isUsableArray;
using quor::library;

namespace {

/// Null when the library is not initialised or the handle is bad.
const Document* liveDocument(uint32_t handle) noexcept {
    return library.isInitialized() ? library.findDocument(handle) : nullptr;
}

}  // namespace

QUOR_API uint32_t quorDocCreate(const char* xmlText) {
    if (!library.isInitialized() || xmlText == nullptr) return QUOR_INVALID_HANDLE;
    return library.createDocument(xmlText);
}

QUOR_API uint32_t quorDocDestroy(uint32_t document) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    return codeOf(library.destroyDocument(document));
}

QUOR_API float quorDocWidth(uint32_t document) {
    const Document* source = liveDocument(document);
    return source != nullptr ? source->width() : 0.0F;
}

QUOR_API float quorDocHeight(uint32_t document) {
    const Document* source = liveDocument(document);
    return source != nullptr ? source->height() : 0.0F;
}

QUOR_API uint32_t quorDocViewportGet(uint32_t document, float* viewport) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(viewport)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const Document* source = library.findDocument(document);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    quor::storeRect(source->viewport, viewport);
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorDocViewportSet(uint32_t document, const float* viewport) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(viewport)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    Document* target = library.findDocument(document);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    return quor::loadRect(viewport, target->viewport) ? QUOR_NO_ERROR : QUOR_ILLEGAL_ARGUMENT_ERROR;
}

QUOR_API uint32_t quorDocViewportAlignmentGet(uint32_t document, uint32_t* values) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(values)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const Document* source = library.findDocument(document);
    if (source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    values[0] = source->alignment.align;
    values[1] = source->alignment.meetOrSlice;
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorDocViewportAlignmentSet(uint32_t document, const uint32_t* values) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    if (!isUsableArray(values) || values[0] > QUOR_ALIGN_XMAX_YMAX || values[1] > QUOR_SLICE) {
        return QUOR_ILLEGAL_ARGUMENT_ERROR;
    }
    Document* target = library.findDocument(document);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    target->alignment = {static_cast<uint8_t>(values[0]), static_cast<uint8_t>(values[1])};
    return QUOR_NO_ERROR;
}

QUOR_API uint32_t quorDocDraw(uint32_t document, uint32_t surface, uint32_t renderingQuality) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    Document* source = library.findDocument(document);
    if (document != QUOR_INVALID_HANDLE && source == nullptr) return QUOR_BAD_HANDLE_ERROR;
    DrawingSurface* target = library.findSurface(surface);
    if (target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    if (renderingQuality > QUOR_RENDERING_QUALITY_BETTER) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    return codeOf(
        library.draw(source, *target, static_cast<quor::RenderingQuality>(renderingQuality)));
}

QUOR_API uint32_t quorPointMap(uint32_t document, uint32_t surface, float x, float y,
                               uint32_t useSurfaceTransform, float* result) {
    if (!library.isInitialized()) return QUOR_NOT_INITIALIZED_ERROR;
    const Document* source = library.findDocument(document);
    const DrawingSurface* target = library.findSurface(surface);
    if (source == nullptr || target == nullptr) return QUOR_BAD_HANDLE_ERROR;
    if (!isUsableArray(result)) return QUOR_ILLEGAL_ARGUMENT_ERROR;
    const quor::MappedPoint mapped = quor::mapPoint(*source, *target, base::finite(x),
                                                    base::finite(y), useSurfaceTransform != 0);
    result[0] = mapped.x;
    result[1] = mapped.y;
    return QUOR_NO_ERROR;
}
