#pragma once

#include <cstdint>

#include "api/atlas_session.h"
#include "api/document.h"
#include "api/drawing_surface.h"
#include "api/handles.h"
#include "svg/status.h"
#include "svg/tree_resources.h"
#include "vg/engine.h"

namespace quor {

/// The clear colour, and whether draws clear their surface first. Kept across done().
struct ClearSettings {
    float color[4] = {1.0F, 1.0F, 1.0F, 0.0F};  ///< red, green, blue, alpha; not premultiplied
    bool isEnabled = true;
};

/// The one process-wide state. Owns the engine context and, through the handle table, every
/// document and surface.
///
/// Invariant  while the library is initialised the engine context is current on some surface, so
///            that engine objects can be freed at any time: on an idle one when no other is.
class LibraryContext {
public:
    constexpr LibraryContext() noexcept = default;

    /// Precondition: dpi is finite. Failures leave the library uninitialised and hold no memory.
    Status initialize(uint32_t screenWidth, uint32_t screenHeight, float dpi) noexcept;
    void done() noexcept;
    bool isInitialized() const noexcept { return isInitialized_; }

    /// Null for a bad handle.
    DrawingSurface* findSurface(uint32_t handle) const noexcept;
    Document* findDocument(uint32_t handle) const noexcept;

    /// 0 on any failure.
    uint32_t createSurface(uint32_t width, uint32_t height) noexcept;
    uint32_t createDocument(const char* xmlText) noexcept;

    Status destroySurface(uint32_t handle) noexcept;
    Status destroyDocument(uint32_t handle) noexcept;

    /// Clears the surface as the settings say, then draws the document unless it is null.
    Status draw(Document* document, DrawingSurface& surface, RenderingQuality quality) noexcept;

    AtlasSession& atlas() noexcept { return atlas_; }

    /// Starts a packing with the packing surface current. kOutOfMemory, with nothing changed, when
    /// that surface was destroyed and cannot be made again; kIllegalArgument when it cannot be made
    /// current. Preconditions as for AtlasSession::begin.
    Status beginPacking(const packing::BinRules& rules, float scale) noexcept;

    /// Clears the surface as the settings say, then draws the rectangles of the packing.
    /// kBadHandle, with nothing drawn, when the document of one of them no longer exists.
    Status drawPackedRects(const QuorPackedRect* rects, uint32_t count, DrawingSurface& surface,
                           RenderingQuality quality) noexcept;

    ClearSettings clearing;

private:
    bool allocate() noexcept;
    void releaseAll() noexcept;
    void retire(DrawingSurface* surface) noexcept;
    /// Keeps a small document, emptied, for the next one to be created, and frees others.
    void retire(Document* document) noexcept;
    /// Makes the surface current and clears it as the settings say.
    Status prepareDraw(const DrawingSurface& surface) const noexcept;
    Status clear(const DrawingSurface& surface) const noexcept;
    bool createPackingSurface() noexcept;

    bool isInitialized_ = false;
    vg::Context* engine_ = nullptr;
    vg::Surface* idleSurface_ = nullptr;  ///< 1 x 1, current when no other surface is
    ScreenParameters screen_;
    HandleTable handles_;
    Document* spareDocument_ = nullptr;  ///< empty
    /// 1 x 1, where the atlas packer measures documents; null when a caller destroyed it. By its
    /// address, for its handle may have gone to another surface.
    DrawingSurface* packingSurface_ = nullptr;
    AtlasSession atlas_;
};

extern constinit LibraryContext library;

}  // namespace quor
