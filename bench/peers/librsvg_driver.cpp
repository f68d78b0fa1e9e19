// librsvg, on a cairo image surface.

#include <cairo.h>
#include <librsvg/rsvg.h>

#include <cstring>

#include "driver.h"

namespace {

class LibrsvgRenderer {
public:
    ~LibrsvgRenderer() { cairo_surface_destroy(surface_); }

    bool loadAndDraw(const std::string& text, int width, int height) {
        clear(width, height);
        RsvgHandle* handle = rsvg_handle_new_from_data(reinterpret_cast<const guint8*>(text.data()),
                                                       text.size(), nullptr);
        if (handle == nullptr) return false;
        rsvg_handle_set_dpi(handle, 96.0);
        cairo_t* context = cairo_create(surface_);
        const RsvgRectangle viewport{0, 0, static_cast<double>(width), static_cast<double>(height)};
        const bool drawn =
            rsvg_handle_render_document(handle, context, &viewport, nullptr) != FALSE;
        cairo_destroy(context);
        cairo_surface_flush(surface_);
        g_object_unref(handle);
        return drawn;
    }

    /// Rows are `width` words long: cairo aligns them to 4 bytes.
    const uint32_t* pixels() const {
        return reinterpret_cast<const uint32_t*>(cairo_image_surface_get_data(surface_));
    }

private:
    void clear(int width, int height) {
        if (surface_ == nullptr || cairo_image_surface_get_width(surface_) != width ||
            cairo_image_surface_get_height(surface_) != height) {
            cairo_surface_destroy(surface_);
            surface_ = cairo_image_surface_create(CAIRO_FORMAT_ARGB32, width, height);
        }
        cairo_surface_flush(surface_);
        std::memset(
            cairo_image_surface_get_data(surface_), 0,
            std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height));
        cairo_surface_mark_dirty(surface_);
    }

    cairo_surface_t* surface_ = nullptr;
};

}  // namespace

int main() {
    LibrsvgRenderer renderer;
    return peers::serve(renderer);
}
