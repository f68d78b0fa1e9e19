// One frame an element, placed and drawn by the library.

#include <algorithm>
#include <cstdio>

#include "element_places.h"
#include "frame_names.h"
#include "input_file.h"
#include "library_error.h"
#include "quor/quor.h"
#include "sheet_source.h"
#include "too_large.h"

namespace tool {

namespace {

/// "element 2" for what has no id but its place.
std::string shownId(const std::string& id) {
    return id.starts_with(kPlacePrefix) ? "element " + id.substr(1) : id;
}

class ElementFrames final : public SheetSource {
public:
    ElementFrames(const PackOptions& options, float scale, std::vector<PackInput>& inputs)
        : options_(options),
          scale_(scale),
          inputs_(inputs),
          border_(options.border + 2 * (options.padding + options.extrude)) {}

    void pack(std::vector<AtlasSheet>& sheets) override {
        collect();
        requireSuccess(quorPackingEnd(1));
        listFrames(sheets);
    }

    void draw(std::uint32_t sheet, std::uint32_t surface) override {
        std::uint32_t info[3];  // width, height, rectangles
        requireSuccess(quorPackingBinInfo(sheet, info));
        requireSuccess(quorPackingDraw(sheet, 0, info[2], surface, options_.quality));
    }

private:
    void collect() {
        // Before the packing, for finding them packs too.
        for (const PackInput& input : inputs_) reportTooLarge(input);
        requireSuccess(
            quorPackingBegin(options_.maxSize, border_, options_.isPowerOfTwo ? 1 : 0, scale_));
        for (const PackInput& input : inputs_) {
            std::uint32_t info[2] = {};
            const std::uint32_t error =
                quorPackingAdd(input.document->get(), explodes() ? 1 : 0, 1, info);
            counts_.push_back(error == QUOR_NO_ERROR ? info[0] : 0);
        }
    }

    bool explodes() const { return options_.unit == FrameUnit::kShape; }

    void reportTooLarge(const PackInput& input) {
        std::uint32_t info[2] = {};
        requireSuccess(quorPackingBegin(options_.maxSize, border_, 0, scale_));
        const std::uint32_t error =
            quorPackingAdd(input.document->get(), explodes() ? 1 : 0, 1, info);
        requireSuccess(quorPackingEnd(0));
        try {
            requireSuccess(error);
        } catch (const FileError& fault) {
            report(input.file.path, fault);
            ++problems_;
            return;
        }
        if (info[1] == 0) return;
        ++problems_;
        const double usable = options_.maxSize - 2.0 * border_;
        for (const TooLargeElement& element :
             findTooLarge(input.document->get(), explodes(), scale_, info[1])) {
            // Rounded down to three digits: sizes are rounded outward.
            const double scale = scale_ * (usable - 1) / (element.longerSide + 2);
            std::fprintf(stderr,
                         "%s: %s is about %.0f pixels long and a sheet takes %.0f; left out. Give "
                         "--scale %.3g or less\n",
                         displayName(input.file.path).c_str(), shownId(element.id).c_str(),
                         element.longerSide, usable, scale * 0.995);
        }
    }

    /// Rectangles come in collecting order: input after input.
    void listFrames(std::vector<AtlasSheet>& sheets) {
        std::vector<std::pair<std::uint32_t, QuorPackedRect>> placed;  // by bin
        for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) {
            std::uint32_t info[3];  // width, height, rectangles
            requireSuccess(quorPackingBinInfo(bin, info));
            sheets.push_back({"", info[0], info[1], {}});
            const QuorPackedRect* rects = quorPackingBinRects(bin);
            for (std::uint32_t i = 0; i < info[2]; ++i) placed.emplace_back(bin, rects[i]);
        }
        std::sort(placed.begin(), placed.end(),
                  [](const auto& a, const auto& b) { return a.second.element < b.second.element; });
        FrameNames names(options_.trimsNames);
        auto next = placed.begin();
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            for (std::uint32_t n = 0; n < counts_[i]; ++n, ++next) {
                sheets[next->first].frames.push_back(
                    frameOf(next->second, names, inputs_[i].frameName));
            }
        }
    }

    AtlasFrame frameOf(const QuorPackedRect& rect, FrameNames& names,
                       const std::string& fileName) const {
        const std::string id = rect.id;
        const std::uint32_t width = rect.width + 2 * options_.padding;
        const std::uint32_t height = rect.height + 2 * options_.padding;
        return {names.nameOf(fileName, id.starts_with(kPlacePrefix) ? id.substr(1) : id),
                rect.x - options_.padding,
                rect.y - options_.padding,
                width,
                height,
                0,
                0,
                width,
                height,
                rect.originX,
                rect.originY};
    }

    const PackOptions& options_;
    float scale_;
    std::vector<PackInput>& inputs_;
    std::uint32_t border_;               ///< between what is drawn
    std::vector<std::uint32_t> counts_;  ///< elements by input
};

}  // namespace

std::unique_ptr<SheetSource> packElements(const PackOptions& options, float scale,
                                          std::vector<PackInput>& inputs) {
    return std::make_unique<ElementFrames>(options, scale, inputs);
}

}  // namespace tool
