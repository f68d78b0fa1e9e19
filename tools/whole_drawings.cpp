// One frame a drawing: each is drawn as `render` does it, trimmed to what shows, and put where the
// library places a rectangle of that size.

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <cstring>
#include <optional>

#include "input_file.h"
#include "library_error.h"
#include "progress.h"
#include "quor/quor.h"
#include "sheet_source.h"

namespace tool {

namespace {

struct Size {
    double width, height;

    double longerSide() const { return std::max(width, height); }
};

/// Pixels; ends are not included.
struct Box {
    std::uint32_t left, top, right, bottom;

    std::uint32_t width() const { return right - left; }
    std::uint32_t height() const { return bottom - top; }
};

/// A drawing that becomes a frame.
struct WholeFrame {
    const PackInput* input;
    std::uint32_t sourceWidth, sourceHeight;
    Box box;  ///< what is kept of it
};

/// Where the packing has put a frame.
struct Place {
    std::size_t frame;
    std::uint32_t x, y;
};

/// The drawing's own size, else that of its viewBox; no area when it has none.
Size naturalSize(std::uint32_t document) {
    float viewport[4] = {};
    requireSuccess(quorDocViewportGet(document, viewport));
    const double width = quorDocWidth(document);
    const double height = quorDocHeight(document);
    if (width >= 0 && height >= 0) return {width, height};
    const double aspect = static_cast<double>(viewport[2]) / viewport[3];
    if (width >= 0) return {width, width / aspect};
    if (height >= 0) return {height * aspect, height};
    return {viewport[2], viewport[3]};
}

Size scaledSize(const Size& natural, const FrameScale& scale) {
    double factor = scale.scale;
    if (scale.longestSide) {
        factor = *scale.longestSide / natural.longerSide();
    } else if (scale.isFitted()) {
        factor = 1e30;
        if (scale.width) factor = std::min(factor, *scale.width / natural.width);
        if (scale.height) factor = std::min(factor, *scale.height / natural.height);
    }
    return {natural.width * factor, natural.height * factor};
}

/// What of the pixels is not transparent; nothing when all are.
std::optional<Box> visibleBox(const std::uint32_t* pixels, std::uint32_t width,
                              std::uint32_t height) {
    Box box = {width, height, 0, 0};
    for (std::uint32_t y = 0; y < height; ++y, pixels += width) {
        const auto isVisible = [](std::uint32_t pixel) { return pixel >> 24 != 0; };
        const auto* first = std::find_if(pixels, pixels + width, isVisible);
        if (first == pixels + width) continue;
        std::uint32_t right = width;
        while (!isVisible(pixels[right - 1])) --right;
        box = {std::min(box.left, static_cast<std::uint32_t>(first - pixels)), std::min(box.top, y),
               std::max(box.right, right), y + 1};
    }
    if (box.left >= box.right) return std::nullopt;
    return box;
}

class WholeDrawings final : public SheetSource {
public:
    WholeDrawings(const PackOptions& options, const FrameScale& scale,
                  std::vector<PackInput>& inputs)
        : options_(options),
          scale_(scale),
          inputs_(inputs),
          margin_(options.padding + options.extrude),
          scratch_(quorSurfaceCreate(1, 1)) {}

    void pack(std::vector<AtlasSheet>& sheets) override {
        Progress progress(inputs_.size());
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            progress.show(i + 1, displayName(inputs_[i].file.path));
            try {
                measure(inputs_[i]);
            } catch (const FileError& error) {
                progress.clear();
                report(inputs_[i].file.path, error);
                ++problems_;
            }
        }
        progress.clear();
        placeFrames();
        for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) listSheet(bin, sheets);
    }

    void draw(std::uint32_t sheet, std::uint32_t surface) override {
        const std::uint32_t stride = quorSurfaceWidth(surface);
        for (const Place& place : places_[sheet]) {
            const WholeFrame& frame = frames_[place.frame];
            const std::uint32_t* source =
                drawAlone(frame) + std::size_t{frame.box.top} * frame.sourceWidth + frame.box.left;
            std::uint32_t* target =
                quorSurfacePixels(surface) + std::size_t{place.y} * stride + place.x;
            for (std::uint32_t y = 0; y < frame.box.height(); ++y) {
                std::copy_n(source, frame.box.width(), target);
                source += frame.sourceWidth;
                target += stride;
            }
        }
    }

private:
    void measure(const PackInput& input) {
        const Size size = scaledSize(naturalSize(input.document->get()), scale_);
        if (!(size.width > 0 && size.height > 0))
            throw FileError("its width, height or viewBox has no area; left out");
        requireFitting(size.longerSide(), quorSurfaceMaxDimension(), "a picture", 1);
        const auto pixels = [](double side) {
            return static_cast<std::uint32_t>(std::max(1.0, std::round(side)));
        };
        WholeFrame frame = {&input, pixels(size.width), pixels(size.height), {}};
        frame.box = {0, 0, frame.sourceWidth, frame.sourceHeight};
        const std::uint32_t* drawn = drawAlone(frame);
        if (options_.trimsFrames) {
            const auto box = visibleBox(drawn, frame.sourceWidth, frame.sourceHeight);
            if (!box) {
                std::fprintf(stderr, "%s: nothing of it shows; left out. --no-trim keeps it\n",
                             displayName(input.file.path).c_str());
                return;
            }
            frame.box = *box;
        }
        const std::uint32_t usable = options_.maxSize - 2 * options_.border;
        const double longer = std::max(frame.box.width(), frame.box.height()) + 2.0 * margin_;
        requireFitting(longer, usable, "a sheet", 2.0 * margin_ + 1);
        frames_.push_back(frame);
    }

    /// `fixed` pixels of the side do not scale.
    void requireFitting(double side, double most, const char* what, double fixed) const {
        if (std::round(side) <= most) return;
        const double factor = (most - fixed) / side;
        char text[160];
        std::snprintf(
            text, sizeof text, "%.0f pixels long and %s takes %.0f; left out. Give %s %.4g or less",
            side, what, most, scale_.isFitted() ? "--size" : "--scale",
            scale_.isFitted() ? std::floor(side * factor) : scale_.scale * factor * 0.999);
        throw FileError(text);
    }

    const std::uint32_t* drawAlone(const WholeFrame& frame) {
        if (quorSurfaceWidth(scratch_.get()) != frame.sourceWidth ||
            quorSurfaceHeight(scratch_.get()) != frame.sourceHeight) {
            requireSuccess(
                quorSurfaceResize(scratch_.get(), frame.sourceWidth, frame.sourceHeight));
        }
        requireSuccess(quorDocDraw(frame.input->document->get(), scratch_.get(), options_.quality));
        return quorSurfacePixels(scratch_.get());
    }

    /// The library packs what a document paints: here a rectangle for each frame.
    void placeFrames() {
        std::string text = "<svg xmlns='http://www.w3.org/2000/svg'>";
        for (const WholeFrame& frame : frames_) {
            text += "<rect width='" + std::to_string(frame.box.width() + 2 * margin_) +
                    "' height='" + std::to_string(frame.box.height() + 2 * margin_) + "'/>";
        }
        rectangles_ = std::make_unique<Document>(quorDocCreate((text + "</svg>").c_str()));
        if (!rectangles_->isValid()) throwOutOfMemory();
        requireSuccess(
            quorPackingBegin(options_.maxSize, options_.border, options_.isPowerOfTwo ? 1 : 0, 1));
        std::uint32_t info[2];
        const std::uint32_t error = quorPackingAdd(rectangles_->get(), 0, 1, info);
        requireSuccess(quorPackingEnd(error == QUOR_NO_ERROR ? 1 : 0));
        requireSuccess(error);
    }

    void listSheet(std::uint32_t bin, std::vector<AtlasSheet>& sheets) {
        std::uint32_t info[3];  // width, height, rectangles
        requireSuccess(quorPackingBinInfo(bin, info));
        sheets.push_back({"", info[0], info[1], {}});
        places_.emplace_back();
        const QuorPackedRect* rects = quorPackingBinRects(bin);
        for (std::uint32_t i = 0; i < info[2]; ++i) {
            const WholeFrame& frame = frames_[rects[i].element];
            places_.back().push_back(
                {rects[i].element, rects[i].x + margin_, rects[i].y + margin_});
            const std::uint32_t padding = 2 * options_.padding;
            sheets.back().frames.push_back(
                {frame.input->frameName, rects[i].x + options_.extrude,
                 rects[i].y + options_.extrude, frame.box.width() + padding,
                 frame.box.height() + padding, static_cast<std::int32_t>(frame.box.left),
                 static_cast<std::int32_t>(frame.box.top), frame.sourceWidth + padding,
                 frame.sourceHeight + padding});
        }
    }

    const PackOptions& options_;
    FrameScale scale_;
    std::vector<PackInput>& inputs_;
    std::uint32_t margin_;  ///< around each frame
    Surface scratch_;
    std::vector<WholeFrame> frames_;
    std::unique_ptr<Document> rectangles_;
    std::vector<std::vector<Place>> places_;  ///< by sheet
};

}  // namespace

std::unique_ptr<SheetSource> packWholeDrawings(const PackOptions& options, const FrameScale& scale,
                                               std::vector<PackInput>& inputs) {
    return std::make_unique<WholeDrawings>(options, scale, inputs);
}

}  // namespace tool
