// Sprites from an atlas that is made anew, crisp, whenever the screen's scale changes:
//   live_atlas samples/gear.svg samples/leaf.svg ...
// The mouse wheel, + and - change the scale; Q ends it. For pictures without a hand at it:
//   live_atlas --scale 2.5 --frames 30 --screenshot OUT.png samples/gear.svg
// --stretched makes the atlas once, at scale 1, and lets the screen stretch it.

#include <SDL.h>
#include <png.h>
#include <quor/quor.h>

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr int kSprites = 300;
constexpr float kSide = 48;                 // of a sprite at scale 1, pixels
constexpr std::uint32_t kScreenSide = 512;  // what documents without a size fill

struct Options {
    std::vector<std::string> files;
    std::string screenshot;
    int frames = 0;  ///< 0: until the window is closed
    float scale = 1;
    bool isStretched = false;
};

void require(bool isDone, const std::string& what) {
    if (!isDone) throw std::runtime_error(what);
}
void require(std::uint32_t error) {
    require(error == QUOR_NO_ERROR, "the library reports error " + std::to_string(error));
}

/// A document whose only element is the whole drawing, kSide units large: packing takes the
/// elements of documents, and the outermost one's own size does not count.
std::uint32_t loadSprite(const std::string& file) {
    std::ifstream stream(file, std::ios::binary);
    const std::string text{std::istreambuf_iterator<char>(stream), {}};
    const std::uint32_t drawing = quorDocCreate(text.c_str());
    require(drawing != QUOR_INVALID_HANDLE, file + ": no drawing");
    const float width = quorDocWidth(drawing) > 0 ? quorDocWidth(drawing) : kScreenSide;
    const float height = quorDocHeight(drawing) > 0 ? quorDocHeight(drawing) : kScreenSide;
    quorDocDestroy(drawing);
    const std::string scale = std::to_string(kSide / std::max(width, height));
    const std::string wrapped = "<svg xmlns='http://www.w3.org/2000/svg'><g transform='scale(" +
                                scale + ")'>" + text.substr(text.find("<svg")) + "</g></svg>";
    const std::uint32_t sprite = quorDocCreate(wrapped.c_str());
    require(sprite != QUOR_INVALID_HANDLE, file + ": no sprite");
    return sprite;
}

double milliseconds(std::chrono::steady_clock::time_point since) {
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - since)
        .count();
}

/// The frames of all sprites at one scale, on textures of the screen.
class Atlas {
public:
    struct Frame {
        SDL_Texture* sheet = nullptr;
        SDL_Rect box{};
        int originX = 0, originY = 0;  ///< of its corner from the sprite's
    };

    explicit Atlas(SDL_Renderer* renderer) : renderer_(renderer) {}
    ~Atlas() { clear(); }
    Atlas(const Atlas&) = delete;
    Atlas& operator=(const Atlas&) = delete;

    /// Packs and draws everything anew: this is all that a change of scale takes.
    void make(const std::vector<std::uint32_t>& sprites, float scale) {
        clear();
        const auto start = std::chrono::steady_clock::now();
        require(quorPackingBegin(quorSurfaceMaxDimension(), 1, 0, scale));
        for (const std::uint32_t sprite : sprites) {
            std::uint32_t counts[2];
            require(quorPackingAdd(sprite, 0, 1, counts));
        }
        require(quorPackingEnd(1));
        packing = milliseconds(start);
        drawing = uploading = 0;
        for (std::uint32_t bin = 0; bin < quorPackingBinsCount(); ++bin) addSheet(bin);
    }

    const Frame& frameOf(std::uint32_t sprite) const { return frames_.at(sprite); }
    bool has(std::uint32_t sprite) const { return frames_.contains(sprite); }
    std::size_t sheetCount() const { return sheets_.size(); }

    double packing = 0, drawing = 0, uploading = 0;  ///< milliseconds of the last make()

private:
    void addSheet(std::uint32_t bin) {
        auto start = std::chrono::steady_clock::now();
        std::uint32_t info[3];  // width, height, rectangles
        require(quorPackingBinInfo(bin, info));
        const std::uint32_t surface = quorSurfaceCreate(info[0], info[1]);
        require(surface != QUOR_INVALID_HANDLE, "no memory for a sheet");
        require(quorPackingDraw(bin, 0, info[2], surface, QUOR_RENDERING_QUALITY_BETTER));
        drawing += milliseconds(start);
        start = std::chrono::steady_clock::now();
        SDL_Texture* const sheet = upload(surface, info);
        uploading += milliseconds(start);
        quorSurfaceDestroy(surface);
        const QuorPackedRect* rects = quorPackingBinRects(bin);
        for (std::uint32_t i = 0; i < info[2]; ++i) {
            const QuorPackedRect& rect = rects[i];
            frames_[rect.document] = {sheet,
                                      {static_cast<int>(rect.x), static_cast<int>(rect.y),
                                       static_cast<int>(rect.width), static_cast<int>(rect.height)},
                                      rect.originX,
                                      rect.originY};
        }
    }

    /// The pixels are premultiplied, so the source counts in full. Renderers that cannot blend so
    /// get straight ones.
    SDL_Texture* upload(std::uint32_t surface, const std::uint32_t* info) {
        const int width = static_cast<int>(info[0]);
        const int height = static_cast<int>(info[1]);
        SDL_Texture* const sheet = SDL_CreateTexture(renderer_, SDL_PIXELFORMAT_ARGB8888,
                                                     SDL_TEXTUREACCESS_STATIC, width, height);
        require(sheet != nullptr, SDL_GetError());
        sheets_.push_back(sheet);
        const SDL_BlendMode premultiplied = SDL_ComposeCustomBlendMode(
            SDL_BLENDFACTOR_ONE, SDL_BLENDFACTOR_ONE_MINUS_SRC_ALPHA, SDL_BLENDOPERATION_ADD,
            SDL_BLENDFACTOR_ONE, SDL_BLENDFACTOR_ONE_MINUS_SRC_ALPHA, SDL_BLENDOPERATION_ADD);
        std::uint32_t* const pixels = quorSurfacePixels(surface);
        if (SDL_SetTextureBlendMode(sheet, premultiplied) != 0) {
            std::for_each(pixels, pixels + std::size_t{info[0]} * info[1], makeStraight);
            SDL_SetTextureBlendMode(sheet, SDL_BLENDMODE_BLEND);
        }
        SDL_UpdateTexture(sheet, nullptr, pixels, width * 4);
        return sheet;
    }

    static void makeStraight(std::uint32_t& pixel) {
        const std::uint32_t alpha = pixel >> 24;
        std::uint32_t straight = alpha << 24;
        for (int shift = 0; alpha != 0 && shift < 24; shift += 8)
            straight |= std::min(((pixel >> shift & 255) * 255 + alpha / 2) / alpha, 255U) << shift;
        pixel = straight;
    }

    void clear() {
        for (SDL_Texture* sheet : sheets_) SDL_DestroyTexture(sheet);
        sheets_.clear();
        frames_.clear();
    }

    SDL_Renderer* renderer_;
    std::vector<SDL_Texture*> sheets_;
    std::map<std::uint32_t, Frame> frames_;  ///< by document
};

/// Something that moves. Places are in parts of the window, speeds in parts a frame.
struct Sprite {
    std::uint32_t document;
    float x, y;
    float speedX, speedY;

    void move() {
        x += speedX;
        y += speedY;
        if (x < 0 || x > 1) speedX = -speedX;
        if (y < 0 || y > 1) speedY = -speedY;
    }
};

std::vector<Sprite> makeSprites(const std::vector<std::uint32_t>& documents) {
    std::mt19937 random(7);
    const auto part = [&] { return static_cast<float>(random() % 10000) / 10000.0F; };
    std::vector<Sprite> sprites;
    for (std::size_t i = 0; i < kSprites; ++i) {
        const float x = part(), y = part(), speedX = part(), speedY = part();
        sprites.push_back(
            {documents[i % documents.size()], x, y, (speedX - 0.5F) / 200, (speedY - 0.5F) / 200});
    }
    return sprites;
}

class Show {
public:
    explicit Show(const Options& options) : options_(options), scale_(options.scale) {
        require(SDL_Init(SDL_INIT_VIDEO) == 0, SDL_GetError());
        SDL_SetHint(SDL_HINT_RENDER_SCALE_QUALITY, options.isStretched ? "linear" : "nearest");
        window_ = SDL_CreateWindow("live atlas", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                   960, 600, SDL_WINDOW_RESIZABLE);
        require(window_ != nullptr, SDL_GetError());
        renderer_ = SDL_CreateRenderer(window_, -1, 0);
        require(renderer_ != nullptr, SDL_GetError());
    }
    ~Show() {
        SDL_DestroyRenderer(renderer_);
        SDL_DestroyWindow(window_);
        SDL_Quit();
    }
    Show(const Show&) = delete;
    Show& operator=(const Show&) = delete;

    void run() {
        std::vector<std::uint32_t> documents;
        for (const std::string& file : options_.files) documents.push_back(loadSprite(file));
        std::vector<Sprite> sprites = makeSprites(documents);
        Atlas atlas(renderer_);
        float made = 0;
        for (int frame = 0; !isOver_ && (options_.frames == 0 || frame < options_.frames);
             ++frame) {
            const float wanted = options_.isStretched ? 1 : scale_;
            if (made != wanted) {
                atlas.make(documents, wanted);
                made = wanted;
                showTitle(atlas);
            }
            for (Sprite& sprite : sprites) sprite.move();
            draw(atlas, sprites, scale_ / made);
            if (!options_.screenshot.empty() && frame + 1 == options_.frames) saveScreenshot();
            SDL_RenderPresent(renderer_);
            handleEvents();
            if (options_.frames == 0) SDL_Delay(16);
        }
    }

private:
    void draw(const Atlas& atlas, const std::vector<Sprite>& sprites, float stretch) const {
        SDL_SetRenderDrawColor(renderer_, 245, 243, 235, 255);
        SDL_RenderClear(renderer_);
        int width = 0, height = 0;
        SDL_GetRendererOutputSize(renderer_, &width, &height);
        for (const Sprite& sprite : sprites) {
            if (!atlas.has(sprite.document)) continue;
            const Atlas::Frame& frame = atlas.frameOf(sprite.document);
            const auto scaled = [&](int pixels) {
                return static_cast<int>(std::lround(static_cast<float>(pixels) * stretch));
            };
            // Whole pixels of the screen, so that each of the atlas meets one.
            const SDL_Rect place = {
                static_cast<int>(sprite.x * static_cast<float>(width)) + scaled(frame.originX),
                static_cast<int>(sprite.y * static_cast<float>(height)) + scaled(frame.originY),
                scaled(frame.box.w), scaled(frame.box.h)};
            SDL_RenderCopy(renderer_, frame.sheet, &frame.box, &place);
        }
    }

    void showTitle(const Atlas& atlas) const {
        char title[200];
        std::snprintf(title, sizeof title,
                      "%d sprites, %zu sheet%s at scale %.2f: packing %.1f ms, drawing %.1f, "
                      "uploading %.1f",
                      kSprites, atlas.sheetCount(), atlas.sheetCount() == 1 ? "" : "s",
                      static_cast<double>(scale_), atlas.packing, atlas.drawing, atlas.uploading);
        SDL_SetWindowTitle(window_, title);
        if (options_.frames != 0) std::printf("%s\n", title);
    }

    void handleEvents() {
        SDL_Event event;
        while (SDL_PollEvent(&event) != 0) {
            if (event.type == SDL_QUIT) isOver_ = true;
            if (event.type == SDL_MOUSEWHEEL) zoom(static_cast<float>(event.wheel.y));
            if (event.type == SDL_KEYDOWN) {
                if (event.key.keysym.sym == SDLK_q) isOver_ = true;
                if (event.key.keysym.sym == SDLK_PLUS || event.key.keysym.sym == SDLK_EQUALS)
                    zoom(1);
                if (event.key.keysym.sym == SDLK_MINUS) zoom(-1);
            }
            if (event.type == SDL_WINDOWEVENT && event.window.event == SDL_WINDOWEVENT_SIZE_CHANGED)
                scale_ = options_.scale * static_cast<float>(event.window.data1) / 960;
        }
    }

    void zoom(float steps) { scale_ = std::clamp(scale_ * std::pow(1.1F, steps), 0.1F, 20.0F); }

    void saveScreenshot() const {
        int width = 0, height = 0;
        SDL_GetRendererOutputSize(renderer_, &width, &height);
        std::vector<unsigned char> pixels(static_cast<std::size_t>(width) *
                                          static_cast<std::size_t>(height) * 4);
        require(SDL_RenderReadPixels(renderer_, nullptr, SDL_PIXELFORMAT_RGBA32, pixels.data(),
                                     width * 4) == 0,
                SDL_GetError());
        png_image image{};
        image.version = PNG_IMAGE_VERSION;
        image.width = static_cast<png_uint_32>(width);
        image.height = static_cast<png_uint_32>(height);
        image.format = PNG_FORMAT_RGBA;
        require(png_image_write_to_file(&image, options_.screenshot.c_str(), 0, pixels.data(), 0,
                                        nullptr) != 0,
                image.message);
    }

    const Options& options_;
    float scale_;
    bool isOver_ = false;
    SDL_Window* window_ = nullptr;
    SDL_Renderer* renderer_ = nullptr;
};

Options parseOptions(int argc, char** argv) {
    Options options;
    for (int i = 1; i < argc; ++i) {
        const std::string argument = argv[i];
        const auto value = [&] {
            require(i + 1 < argc, argument + " needs a value");
            return std::string(argv[++i]);
        };
        if (argument == "--stretched") {
            options.isStretched = true;
        } else if (argument == "--frames") {
            options.frames = std::atoi(value().c_str());
        } else if (argument == "--scale") {
            options.scale = static_cast<float>(std::atof(value().c_str()));
        } else if (argument == "--screenshot") {
            options.screenshot = value();
        } else {
            options.files.push_back(argument);
        }
    }
    require(!options.files.empty(),
            "live_atlas [--scale S] [--stretched] [--frames N --screenshot OUT.png] FILE.svg...");
    require(options.scale > 0, "--scale is a number above 0");
    return options;
}

}  // namespace

int main(int argc, char** argv) {
    int status = EXIT_SUCCESS;
    try {
        const Options options = parseOptions(argc, argv);
        require(quorInit(kScreenSide, kScreenSide, 96));
        quorClearColor(0, 0, 0, 0);
        Show(options).run();
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        status = EXIT_FAILURE;
    }
    quorDone();
    return status;
}
