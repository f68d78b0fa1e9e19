// Starts and ends the library, creates and destroys its objects, and runs draws: surface current,
// cleared, drawn on, finished.

#include "api/library.h"

#include <cassert>
#include <cmath>
#include <utility>

#include "api/atlas_draw.h"
#include "svg/engine_error.h"
#include "vg/vg.h"

namespace quor {

constinit LibraryContext library;

namespace {

void discardMessage(const char* /*message*/) {}

}  // namespace

Status LibraryContext::initialize(uint32_t screenWidth, uint32_t screenHeight, float dpi) noexcept {
    assert(std::isfinite(dpi));
    if (isInitialized_) return Status::kOk;
    clearing = {};
    if (screenWidth == 0 || screenHeight == 0 || !(dpi > 0.0F)) return Status::kIllegalArgument;
    screen_ = {screenWidth, screenHeight, dpi, &discardMessage};
    if (!allocate()) {
        releaseAll();
        return Status::kOutOfMemory;
    }
    isInitialized_ = true;
    return Status::kOk;
}

bool LibraryContext::allocate() noexcept {
    if (!handles_.initialize() || !atlas_.initialize()) return false;
    engine_ = vg::createContext(nullptr);
    idleSurface_ = vg::createSurface(1, 1, {});
    if (engine_ == nullptr || idleSurface_ == nullptr) return false;
    if (!vg::makeCurrent(engine_, idleSurface_)) return false;
    return createPackingSurface();
}

bool LibraryContext::createPackingSurface() noexcept {
    packingSurface_ = findSurface(createSurface(1, 1));
    return packingSurface_ != nullptr;
}

void LibraryContext::done() noexcept {
    if (!isInitialized_) return;
    isInitialized_ = false;
    releaseAll();
}

void LibraryContext::releaseAll() noexcept {
    // The context takes every engine object with it; with nothing current, the destructors of
    // documents find nothing left to free in the engine.
    vg::makeCurrent(nullptr, nullptr);
    vg::destroyContext(engine_);
    engine_ = nullptr;
    handles_.reset([](HandleKind kind, void* object) {
        if (kind == HandleKind::kSurface) {
            delete static_cast<DrawingSurface*>(object);
        } else {
            delete static_cast<Document*>(object);
        }
    });
    delete std::exchange(spareDocument_, nullptr);
    vg::destroySurface(idleSurface_);
    idleSurface_ = nullptr;
    packingSurface_ = nullptr;
    atlas_.release();
}

DrawingSurface* LibraryContext::findSurface(uint32_t handle) const noexcept {
    return static_cast<DrawingSurface*>(handles_.find(handle, HandleKind::kSurface));
}

Document* LibraryContext::findDocument(uint32_t handle) const noexcept {
    return static_cast<Document*>(handles_.find(handle, HandleKind::kDocument));
}

uint32_t LibraryContext::createSurface(uint32_t width, uint32_t height) noexcept {
    DrawingSurface* surface = DrawingSurface::create(width, height);
    if (surface == nullptr) return 0;
    const uint32_t handle = handles_.add(HandleKind::kSurface, surface);
    if (handle == 0) delete surface;
    return handle;
}

uint32_t LibraryContext::createDocument(const char* xmlText) noexcept {
    Document* document = std::exchange(spareDocument_, nullptr);
    if (document == nullptr) document = Document::create(screen_);
    if (document == nullptr) return 0;
    const uint32_t handle =
        document->load(xmlText) == Status::kOk ? handles_.add(HandleKind::kDocument, document) : 0;
    if (handle == 0) delete document;
    return handle;
}

Status LibraryContext::destroySurface(uint32_t handle) noexcept {
    void* object = nullptr;
    if (!handles_.release(handle, HandleKind::kSurface, object)) return Status::kBadHandle;
    if (object != nullptr) retire(static_cast<DrawingSurface*>(object));
    return Status::kOk;
}

Status LibraryContext::destroyDocument(uint32_t handle) noexcept {
    void* object = nullptr;
    if (!handles_.release(handle, HandleKind::kDocument, object)) return Status::kBadHandle;
    atlas_.forgetDocument(static_cast<Document*>(object));
    retire(static_cast<Document*>(object));
    return Status::kOk;
}

void LibraryContext::retire(Document* document) noexcept {
    if (spareDocument_ != nullptr || document == nullptr || !document->isSmall()) {
        delete document;
        return;
    }
    document->unload();
    spareDocument_ = document;
}

void LibraryContext::retire(DrawingSurface* surface) noexcept {
    if (surface == packingSurface_) packingSurface_ = nullptr;
    if (vg::currentSurface() == surface->engineSurface()) vg::makeCurrent(engine_, idleSurface_);
    delete surface;
}

Status LibraryContext::draw(Document* document, DrawingSurface& surface,
                            RenderingQuality quality) noexcept {
    Status status = prepareDraw(surface);
    if (status == Status::kOk && document != nullptr) status = document->draw(surface, quality);
    vg::finishSurface(surface.engineSurface());
    return status;
}

Status LibraryContext::beginPacking(const packing::BinRules& rules, float scale) noexcept {
    if (packingSurface_ == nullptr && !createPackingSurface()) return Status::kOutOfMemory;
    if (!vg::makeCurrent(engine_, packingSurface_->engineSurface())) {
        return Status::kIllegalArgument;
    }
    atlas_.begin(rules, scale);
    return Status::kOk;
}

Status LibraryContext::drawPackedRects(const QuorPackedRect* rects, uint32_t count,
                                       DrawingSurface& surface, RenderingQuality quality) noexcept {
    for (uint32_t i = 0; i < count; ++i) {
        if (atlas_.elementOf(rects[i]).document == nullptr) return Status::kBadHandle;
    }
    Status status = prepareDraw(surface);
    if (status == Status::kOk) {
        status = quor::drawPackedRects(atlas_, rects, count, surface, quality);
    }
    vg::finishSurface(surface.engineSurface());
    return status;
}

Status LibraryContext::prepareDraw(const DrawingSurface& surface) const noexcept {
    if (!vg::makeCurrent(engine_, surface.engineSurface())) return Status::kIllegalArgument;
    (void)takeEngineError();  // an error that an earlier call left pending
    vgSeti(VG_SCISSORING, VG_FALSE);
    return clear(surface);
}

Status LibraryContext::clear(const DrawingSurface& surface) const noexcept {
    if (!clearing.isEnabled) return Status::kOk;
    vgSetfv(VG_CLEAR_COLOR, 4, clearing.color);
    vgClear(0, 0, static_cast<VGint>(surface.width()), static_cast<VGint>(surface.height()));
    return takeEngineError();
}

}  // namespace quor
