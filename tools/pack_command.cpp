#include "pack_command.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <memory>
#include <new>
#include <sstream>

#include "atlas.h"
#include "file_error.h"
#include "frame_names.h"
#include "input_file.h"
#include "library_error.h"
#include "png_writer.h"
#include "progress.h"
#include "rejected_document.h"
#include "session.h"
#include "too_large.h"

namespace tool {

namespace {

namespace fs = std::filesystem;

struct Input {
    std::string name;
    std::unique_ptr<Document> document;
    std::uint32_t taken = 0;  // elements in the present packing
    std::uint32_t tooLarge = 0;
};

/// One element of the present packing.
struct PlacedFrame {
    std::uint32_t bin;
    QuorPackedRect rect;
    std::string id;
};

/// "1.5" for 1.5.
std::string numberText(double number) {
    std::ostringstream text;
    text << number;
    return text.str();
}

void writeText(const std::string& path, const std::string& text) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    bool isWritten = file != nullptr;
    if (isWritten) {
        isWritten = std::fwrite(text.data(), 1, text.size(), file) == text.size();
        isWritten = std::fclose(file) == 0 && isWritten;
    }
    if (!isWritten) {
        throw FileError("cannot write " + path + ": " + std::strerror(errno) +
                        "; choose another place with -o");
    }
}

std::unique_ptr<Document> loadDocument(const std::string& input) {
    const std::string text = readInputText(input);
    auto document = std::make_unique<Document>(quorDocCreate(text.c_str()));
    if (!document->isValid()) throw explainRejectedDocument(text);
    return document;
}

/// Runs `work` for one input; false, with a message, when it failed.
template <class Work>
bool tryInput(const std::string& name, Progress& progress, Work work) {
    try {
        try {
            work();
            return true;
        } catch (const std::bad_alloc&) {
            throwOutOfMemory();
        }
    } catch (const FileError& error) {
        progress.clear();
        report(name, error);
        return false;
    }
}

/// Makes the atlas of one scale.
class AtlasRun {
public:
    AtlasRun(const PackOptions& options, std::vector<Input>& inputs, float scale)
        : options_(options), inputs_(inputs), scale_(scale), names_(options.trimsNames) {
        base_ = options.output;
        if (options.scales.size() > 1) base_ += "@" + numberText(scale) + "x";
        baseName_ = fs::path(base_).filename().string();
    }

    /// False when an input failed or an element is too large.
    bool run() {
        const auto start = std::chrono::steady_clock::now();
        const bool isComplete = collect();
        requireSuccess(quorPackingEnd(1));
        listFrames();
        buildAtlas();
        drawSheets();
        for (const AtlasDescription& description : describe())
            writeText(base_ + description.suffix, description.text);
        const std::chrono::duration<double> time = std::chrono::steady_clock::now() - start;
        printSummary(time.count());
        return reportTooLarge() && isComplete;
    }

private:
    bool collect() {
        requireSuccess(quorPackingBegin(options_.maxSize, options_.border,
                                        options_.isPowerOfTwo ? 1 : 0, scale_));
        Progress progress(inputs_.size());
        bool isComplete = true;
        for (std::size_t i = 0; i < inputs_.size(); ++i) {
            Input& input = inputs_[i];
            progress.show(i + 1, displayName(input.name));
            isComplete &= tryInput(input.name, progress, [&] { add(input); });
        }
        return isComplete;
    }

    void add(Input& input) {
        std::uint32_t info[2] = {};
        input.taken = input.tooLarge = 0;
        requireSuccess(
            quorPackingAdd(input.document->get(), options_.explodesGroups ? 1 : 0, 1, info));
        input.taken = info[0];
        input.tooLarge = info[1];
    }

    /// All rectangles in collecting order: input after input.
    void listFrames() {
        for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) {
            std::uint32_t info[3];  // width, height, rectangles
            requireSuccess(quorPackingBinInfo(bin, info));
            atlas_.sheets.push_back(
                {baseName_ + "-" + std::to_string(bin) + ".png", info[0], info[1], {}});
            const QuorPackedRect* rects = quorPackingBinRects(bin);
            for (std::uint32_t i = 0; i < info[2]; ++i)
                frames_.push_back({bin, rects[i], rects[i].id});
        }
        std::sort(frames_.begin(), frames_.end(),
                  [](const auto& a, const auto& b) { return a.rect.element < b.rect.element; });
    }

    void buildAtlas() {
        atlas_.scale = scale_;
        auto frame = frames_.begin();
        for (const Input& input : inputs_) {
            for (std::uint32_t i = 0; i < input.taken; ++i, ++frame) {
                const QuorPackedRect& rect = frame->rect;
                atlas_.sheets[frame->bin].frames.push_back(
                    {names_.nameOf(input.name, frame->id, i, input.taken + input.tooLarge), rect.x,
                     rect.y, rect.width, rect.height, rect.originX, rect.originY});
            }
        }
    }

    void drawSheets() {
        Progress progress(atlas_.sheets.size());
        for (std::size_t i = 0; i < atlas_.sheets.size(); ++i) {
            progress.show(i + 1, atlas_.sheets[i].image);
            drawSheet(static_cast<std::uint32_t>(i), atlas_.sheets[i]);
        }
    }

    void drawSheet(std::uint32_t bin, const AtlasSheet& sheet) {
        const Surface surface(quorSurfaceCreate(sheet.width, sheet.height));
        if (!surface.isValid()) throwOutOfMemory();
        const auto count = static_cast<std::uint32_t>(sheet.frames.size());
        requireSuccess(quorPackingDraw(bin, 0, count, surface.get(), options_.quality));
        // Straight first, for the neighbours' true colours, not their share, are to spread.
        std::vector<std::uint32_t> pixels(std::size_t{sheet.width} * sheet.height);
        makeStraight(quorSurfacePixels(surface.get()), pixels.size());
        requireSuccess(quorSurfaceCopy(surface.get(), pixels.data(), options_.dilates ? 1 : 0));
        const fs::path path = fs::path(base_).replace_filename(sheet.image);
        writePng(path.string(), pixels.data(), sheet.width, sheet.height, AlphaKind::kStraight);
    }

    std::vector<AtlasDescription> describe() const {
        switch (static_cast<AtlasFormat>(options_.format)) {
            case AtlasFormat::kJsonArray:
                return describeAsJsonArray(atlas_, baseName_);
            case AtlasFormat::kText:
                return describeAsText(atlas_, baseName_);
            case AtlasFormat::kCss:
                return describeAsCss(atlas_, baseName_);
            case AtlasFormat::kJsonHash:
                break;
        }
        return describeAsJsonHash(atlas_, baseName_);
    }

    void printSummary(double seconds) const {
        double used = 0;
        double all = 0;
        for (const AtlasSheet& sheet : atlas_.sheets) {
            all += double{1} * sheet.width * sheet.height;
            for (const AtlasFrame& frame : sheet.frames)
                used += double{1} * frame.width * frame.height;
        }
        std::printf("%s: %zu frames on %zu sheet%s, %.1f %% occupied, %.2f s\n", base_.c_str(),
                    frames_.size(), atlas_.sheets.size(), atlas_.sheets.size() == 1 ? "" : "s",
                    all > 0 ? 100 * used / all : 0.0, seconds);
    }

    /// True when nothing is too large.
    bool reportTooLarge() const {
        bool isNone = true;
        for (const Input& input : inputs_) {
            if (input.tooLarge == 0) continue;
            isNone = false;
            reportTooLarge(input);
        }
        return isNone;
    }

    void reportTooLarge(const Input& input) const {
        const double usable = options_.maxSize - 2.0 * options_.border;
        const auto found =
            findTooLarge(input.document->get(), options_.explodesGroups, scale_, input.tooLarge);
        for (const TooLargeElement& element : found) {
            const std::string id =
                element.id.empty() ? "element " + std::to_string(element.index) : element.id;
            // Rounded down to three digits: sizes are rounded outward.
            const double scale = scale_ * (usable - 1) / (element.longerSide + 2);
            std::fprintf(stderr,
                         "%s: %s is about %.0f pixels long and a sheet takes %.0f; left out. Give "
                         "--scale %.3g or less%s\n",
                         displayName(input.name).c_str(), id.c_str(), element.longerSide, usable,
                         scale * 0.995,
                         options_.maxSize < quorSurfaceMaxDimension() ? ", or a larger --max-size"
                                                                      : ", or --explode its group");
        }
    }

    const PackOptions& options_;
    std::vector<Input>& inputs_;
    float scale_;
    FrameNames names_;
    std::string base_;  ///< path of the atlas without ending
    std::string baseName_;
    std::vector<PlacedFrame> frames_;
    Atlas atlas_{};
};

/// The inputs that load.
std::vector<Input> loadInputs(const PackOptions& options) {
    std::vector<Input> inputs;
    Progress progress(options.inputs.size());
    std::size_t position = 0;
    for (const std::string& name : options.inputs) {
        progress.show(++position, displayName(name));
        tryInput(name, progress, [&] { inputs.push_back({name, loadDocument(name), 0, 0}); });
    }
    return inputs;
}

void requireFolder(const std::string& output) {
    const fs::path folder = fs::path(output).parent_path();
    std::error_code ignored;
    if (!folder.empty() && !fs::is_directory(folder, ignored)) {
        throw FileError(folder.string() + ": there is no such folder; create it with: mkdir -p " +
                        folder.string());
    }
    if (fs::path(output).filename().empty())
        throw FileError(output + ": name the sheets too: -o " + output + "sheet");
}

bool packAll(const PackOptions& options) {
    requireFolder(options.output);
    std::vector<Input> inputs = loadInputs(options);
    bool isComplete = inputs.size() == options.inputs.size();
    const std::vector<float> scales =
        options.scales.empty() ? std::vector<float>{1} : options.scales;
    for (const float scale : scales) isComplete &= AtlasRun(options, inputs, scale).run();
    return isComplete;
}

}  // namespace

bool packFiles(const PackOptions& options) {
    constexpr std::uint32_t kScreenSide = 512;  // what percentages of a document refer to
    const Session session(kScreenSide, kScreenSide, options.dpi);
    try {
        requireSuccess(session.error());
        quorClearColor(0, 0, 0, 0);
        return packAll(options);
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
}

}  // namespace tool
