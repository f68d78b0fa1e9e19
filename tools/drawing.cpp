#include "drawing.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "library_error.h"
#include "rejected_document.h"

namespace tool {

namespace {

/// Coordinates on a surface end at 2047, so larger ones would miss pixels.
constexpr std::uint32_t kLargestSurface = 2047;

/// Side of a tile in pixels. A row of tiles of the widest picture takes 128 MiB.
constexpr std::int64_t kTile = 1024;

std::uint32_t createSurface(std::uint32_t width, std::uint32_t height) {
    const std::uint32_t surface = quorSurfaceCreate(width, height);
    if (surface == QUOR_INVALID_HANDLE) throwOutOfMemory();
    return surface;
}

/// Makes the surface show the part of the picture whose top left corner is (x, y).
void showPart(const Surface& surface, const PictureSize& size, float rotation, std::int64_t x,
              std::int64_t y) {
    const auto width = static_cast<float>(size.width);
    const auto height = static_cast<float>(size.height);
    const float viewport[4] = {0, 0, width, height};
    const float transform[5] = {width / 2, height / 2, rotation, static_cast<float>(-x),
                                static_cast<float>(-y)};
    requireSuccess(quorSurfaceViewportSet(surface.get(), viewport));
    requireSuccess(quorSurfaceViewportTransformSet(surface.get(), transform));
}

/// Where the first tile begins, at or before 0, when one begins at `origin`.
std::int64_t firstTile(std::int64_t origin) {
    const std::int64_t rest = ((origin % kTile) + kTile) % kTile;
    return rest == 0 ? 0 : rest - kTile;
}

/// The pixels of a line that a tile beginning at `start` shares with a picture of `size` pixels.
struct Overlap {
    Overlap(std::int64_t start, std::uint32_t size)
        : first(std::max<std::int64_t>(start, 0)),
          end(std::min<std::int64_t>(start + kTile, size)),
          skipped(static_cast<std::size_t>(first - start)) {}

    std::size_t count() const { return static_cast<std::size_t>(end - first); }

    std::int64_t first, end;  ///< in the picture
    std::size_t skipped;      ///< of the tile
};

}  // namespace

Drawing::Drawing(std::string text, const Placement& placement)
    : text_(std::move(text)), placement_(placement), document_(load()) {
    place(*document_);
}

std::unique_ptr<Document> Drawing::load() const {
    auto document = std::make_unique<Document>(quorDocCreate(text_.c_str()));
    if (!document->isValid()) throw explainRejectedDocument(text_);
    return document;
}

void Drawing::place(const Document& document) const {
    std::uint32_t alignment[2];  // align, meet or slice
    requireSuccess(quorDocViewportAlignmentGet(document.get(), alignment));
    if (placement_.align) alignment[0] = *placement_.align;
    if (placement_.isSlice) alignment[1] = QUOR_SLICE;
    requireSuccess(quorDocViewportAlignmentSet(document.get(), alignment));
    if (!placement_.region) return;
    const float viewport[4] = {placement_.region->x, placement_.region->y, placement_.region->width,
                               placement_.region->height};
    requireSuccess(quorDocViewportSet(document.get(), viewport));
}

DocumentSize Drawing::size() const {
    const std::uint32_t document = document_->get();
    float viewport[4];  // x, y, width, height
    requireSuccess(quorDocViewportGet(document, viewport));
    const DocumentSize whole{quorDocWidth(document), quorDocHeight(document), viewport[2],
                             viewport[3]};
    return placement_.region ? partSize(whole) : whole;
}

DocumentSize Drawing::partSize(const DocumentSize& shown) const {
    float viewport[4];
    requireSuccess(quorDocViewportGet(load()->get(), viewport));
    const double across = shown.width >= 0 && viewport[2] > 0 ? shown.width / viewport[2] : -1;
    const double down = shown.height >= 0 && viewport[3] > 0 ? shown.height / viewport[3] : -1;
    const double scale = across >= 0 && down >= 0 ? std::min(across, down) : std::max(across, down);
    return {shown.viewportWidth * scale, shown.viewportHeight * scale, shown.viewportWidth,
            shown.viewportHeight};
}

void Drawing::draw(const PictureSize& size, const TakeRows& take) const {
    const bool fits = std::max(size.width, size.height) <= kLargestSurface;
    if (fits && !placement_.region) return drawAtOnce(size, take);
    drawInTiles(size, take);
}

void Drawing::drawAtOnce(const PictureSize& size, const TakeRows& take) const {
    const Surface surface(createSurface(size.width, size.height));
    showPart(surface, size, placement_.rotation, 0, 0);
    requireSuccess(quorDocDraw(document_->get(), surface.get(), placement_.quality));
    take(quorSurfacePixels(surface.get()), size.height);
}

void Drawing::gridOrigin(const PictureSize& size, std::int64_t& x, std::int64_t& y) const {
    x = y = 0;
    if (placement_.rotation != 0) return;  // nothing falls between pixels then
    const Surface probe(createSurface(1, 1));
    showPart(probe, size, 0, 0, 0);
    float origin[2];
    requireSuccess(quorPointMap(document_->get(), probe.get(), 0, 0, 0, origin));
    constexpr float kFar = 1e9f;  // from there on a float tells no pixels apart
    x = std::llround(std::clamp(std::floor(origin[0]), -kFar, kFar));
    y = std::llround(std::clamp(std::floor(origin[1]), -kFar, kFar));
}

void Drawing::drawInTiles(const PictureSize& size, const TakeRows& take) const {
    std::int64_t originX, originY;
    gridOrigin(size, originX, originY);
    const Surface surface(createSurface(kTile, kTile));
    const std::uint32_t* tile = quorSurfacePixels(surface.get());
    std::vector<std::uint32_t> rows(std::min<std::size_t>(size.height, kTile) * size.width);
    for (std::int64_t y = firstTile(originY); y < size.height; y += kTile) {
        const Overlap vertical(y, size.height);
        for (std::int64_t x = firstTile(originX); x < size.width; x += kTile) {
            // What an earlier draw leaves in a document could stand in for shapes of this one,
            // moved by a fraction of 1/32 pixel.
            const std::unique_ptr<Document> document = load();
            place(*document);
            showPart(surface, size, placement_.rotation, x, y);
            requireSuccess(quorDocDraw(document->get(), surface.get(), placement_.quality));
            const Overlap across(x, size.width);
            for (std::size_t row = 0; row < vertical.count(); ++row) {
                std::copy_n(tile + (vertical.skipped + row) * kTile + across.skipped,
                            across.count(),
                            &rows[row * size.width + static_cast<std::size_t>(across.first)]);
            }
        }
        take(rows.data(), static_cast<std::uint32_t>(vertical.count()));
    }
}

}  // namespace tool
