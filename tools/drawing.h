#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "picture_size.h"
#include "quor/quor.h"
#include "region.h"
#include "session.h"

namespace tool {

/// How a document lies in its picture, and how it is drawn.
struct Placement {
    std::optional<Region> region;        ///< what is shown in place of the document's viewport
    std::optional<std::uint32_t> align;  ///< QUOR_ALIGN_*; the document's own when absent
    bool isSlice = false;                ///< cover the picture; else as the document says
    float rotation = 0;                  ///< degrees clockwise about the picture's centre
    std::uint32_t quality = QUOR_RENDERING_QUALITY_BETTER;
};

/// A loaded document that is drawn into pictures of any size.
class Drawing {
public:
    /// Throws FileError when the library takes no document from the text.
    Drawing(std::string text, const Placement& placement);

    /// The size that the document, or its region, asks for.
    DocumentSize size() const;

    /// Rows from the top, premultiplied and without gaps, and how many.
    using TakeRows = std::function<void(const std::uint32_t* pixels, std::uint32_t rowCount)>;

    /// Draws the picture from the top down. One that fits on a surface comes in a single call;
    /// others are drawn in tiles and come a row of tiles at a time. Throws FileError.
    ///
    /// Tiles lie on a grid through the origin of the document's coordinates, and each is drawn from
    /// a document of its own. So the part of a drawing that a region shows is, at the same scale
    /// and where its corner falls between pixels, the same as that part of a whole in tiles, pixel
    /// by pixel. Of a picture on one surface it may differ by what 1/32 pixel makes: edges that
    /// leave a tile are cut at its border, and points are rounded to that.
    void draw(const PictureSize& size, const TakeRows& take) const;

private:
    std::unique_ptr<Document> load() const;
    /// The region at the scale of the whole document; `shown` tells the document's size.
    DocumentSize partSize(const DocumentSize& shown) const;
    void place(const Document& document) const;
    void drawAtOnce(const PictureSize& size, const TakeRows& take) const;
    void drawInTiles(const PictureSize& size, const TakeRows& take) const;
    void gridOrigin(const PictureSize& size, std::int64_t& x, std::int64_t& y) const;

    std::string text_;
    Placement placement_;
    std::unique_ptr<Document> document_;
};

}  // namespace tool
