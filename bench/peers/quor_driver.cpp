// Quor, through its interface alone.

#include "driver.h"
#include "quor/quor.h"

namespace {

class QuorRenderer {
public:
    QuorRenderer() { quorInit(1024, 1024, 96.0F); }
    ~QuorRenderer() { quorDone(); }

    bool loadAndDraw(const std::string& text, int width, int height) {
        resize(static_cast<uint32_t>(width), static_cast<uint32_t>(height));
        const uint32_t document = quorDocCreate(text.c_str());
        if (document == QUOR_INVALID_HANDLE) return false;
        const uint32_t error =
            quorDocDraw(document, surface_, QUOR_RENDERING_QUALITY_BETTER);  // clears first
        quorDocDestroy(document);
        return error == QUOR_NO_ERROR;
    }

    const uint32_t* pixels() const { return quorSurfacePixels(surface_); }

private:
    void resize(uint32_t width, uint32_t height) {
        if (quorSurfaceWidth(surface_) == width && quorSurfaceHeight(surface_) == height) return;
        quorSurfaceDestroy(surface_);
        surface_ = quorSurfaceCreate(width, height);
    }

    uint32_t surface_ = QUOR_INVALID_HANDLE;
};

}  // namespace

int main() {
    QuorRenderer renderer;
    return peers::serve(renderer);
}
