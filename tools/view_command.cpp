#include "view_command.h"

#include <SDL.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <new>
#include <optional>

#include "file_watch.h"
#include "folder_walk.h"
#include "input_file.h"
#include "library_error.h"
#include "png_writer.h"
#include "rejected_document.h"
#include "session.h"
#include "view_camera.h"
#include "view_picture.h"

namespace tool {

namespace {

constexpr WindowSize kFirstSize = {800, 600};
constexpr double kZoomStep = 1.25;
constexpr double kMoveStep = 40;  // pixels
constexpr double kTurn = 15;      // degrees

class Window {
public:
    Window() {
        // A signal ends the program as it ends others.
        SDL_SetHint(SDL_HINT_NO_SIGNAL_HANDLERS, "1");
        if (SDL_Init(SDL_INIT_VIDEO) == 0) {
            window_ = SDL_CreateWindow("quor", SDL_WINDOWPOS_CENTERED, SDL_WINDOWPOS_CENTERED,
                                       kFirstSize.width, kFirstSize.height, SDL_WINDOW_RESIZABLE);
        }
        if (window_ == nullptr) {
            const std::string reason = SDL_GetError();
            SDL_Quit();
            throw FileError("quor: there is no window to be had: " + reason +
                            "; use quor render instead");
        }
    }
    ~Window() {
        SDL_DestroyWindow(window_);
        SDL_Quit();
    }
    Window(const Window&) = delete;
    Window& operator=(const Window&) = delete;

    WindowSize size() const {
        WindowSize size;
        SDL_GetWindowSize(window_, &size.width, &size.height);
        return size;
    }

    void setTitle(const std::string& title) { SDL_SetWindowTitle(window_, title.c_str()); }

    void show(ViewPicture& picture) {
        const auto [width, height] = picture.size;
        SDL_Surface* source = SDL_CreateRGBSurfaceWithFormatFrom(
            picture.pixels.data(), width, height, 32, width * 4, SDL_PIXELFORMAT_ARGB8888);
        SDL_Surface* target = SDL_GetWindowSurface(window_);
        if (source != nullptr && target != nullptr) {
            SDL_SetSurfaceBlendMode(source, SDL_BLENDMODE_NONE);
            SDL_BlitSurface(source, nullptr, target, nullptr);
            SDL_UpdateWindowSurface(window_);
        }
        SDL_FreeSurface(source);
    }

private:
    SDL_Window* window_ = nullptr;
};

/// A file that is shown, and read again when it changes.
class ShownFile {
public:
    explicit ShownFile(const std::string& path) : path_(path), watch_({path}) { load(); }

    /// Reads it again; what was shown stays when it cannot be.
    void load() {
        fault_.clear();
        try {
            const std::string text = readInputText(path_);
            auto document = std::make_unique<Document>(quorDocCreate(text.c_str()));
            if (!document->isValid()) throw explainRejectedDocument(text);
            document_ = std::move(document);
        } catch (const FileError& error) {
            fault_ = error.what();
            report(path_, error);
        }
    }

    bool hasChanged() { return !watch_.changesSince({path_}).empty(); }

    const Document* document() const { return document_.get(); }
    const std::string& path() const { return path_; }
    const std::string& fault() const { return fault_; }

    /// What of the document is shown; a unit square where there is nothing.
    Region shown() const {
        float viewport[4] = {0, 0, 1, 1};
        if (document_ != nullptr) requireSuccess(quorDocViewportGet(document_->get(), viewport));
        const bool hasArea = viewport[2] > 0 && viewport[3] > 0;
        return hasArea ? Region{viewport[0], viewport[1], viewport[2], viewport[3]}
                       : Region{0, 0, 1, 1};
    }

private:
    std::string path_;
    FileWatch watch_;
    std::unique_ptr<Document> document_;
    std::string fault_;
};

class Viewer {
public:
    explicit Viewer(std::vector<FoundFile> inputs) : inputs_(std::move(inputs)) { open(0); }

    void run() {
        while (!isDone_) {
            if (isStale_) redraw();
            SDL_Event event;
            constexpr int kPause = 100;  // milliseconds between looks at the file
            if (SDL_WaitEventTimeout(&event, kPause) != 0) {
                handle(event);
                while (SDL_PollEvent(&event) != 0) handle(event);
            }
            if (!file_->hasChanged()) continue;
            file_->load();
            isStale_ = true;
        }
    }

private:
    void open(std::size_t index) {
        index_ = index;
        file_ = std::make_unique<ShownFile>(inputs_[index].path);
        fit();
    }

    void fit() {
        isFitted_ = true;
        isStale_ = true;
        camera_.fit(file_->shown(), window_.size());
    }

    void redraw() {
        isStale_ = false;
        const auto start = std::chrono::steady_clock::now();
        ViewPicture picture =
            drawView(file_->document(), camera_, window_.size(), ground_, quality_);
        const std::chrono::duration<double, std::milli> time =
            std::chrono::steady_clock::now() - start;
        window_.show(picture);
        char text[96];
        std::snprintf(text, sizeof text, " - %.0f %% - %.2f ms - %zu of %zu", 100 * camera_.scale(),
                      time.count(), index_ + 1, inputs_.size());
        const std::string state = file_->fault().empty() ? note_ : file_->fault();
        window_.setTitle(displayName(file_->path()) + text + (state.empty() ? "" : " - " + state));
        note_.clear();
    }

    /// A name that is free, in the folder that the program was started in.
    std::string copyName() const {
        const std::string stem = file_->path() == kStandardStream
                                     ? "stdin"
                                     : std::filesystem::path(file_->path()).stem().string();
        std::string name = stem + "-view.png";
        std::error_code ignored;
        for (int i = 2; std::filesystem::exists(name, ignored); ++i)
            name = stem + "-view-" + std::to_string(i) + ".png";
        return name;
    }

    void copy() {
        const std::string name = copyName();
        const ViewPicture picture =
            drawView(file_->document(), camera_, window_.size(), Ground::kNone, quality_);
        try {
            writePng(name, picture.pixels.data(), static_cast<std::uint32_t>(picture.size.width),
                     static_cast<std::uint32_t>(picture.size.height));
            note_ = "copied to " + name;
        } catch (const FileError& error) {
            note_ = error.what();
            report(file_->path(), error);
        }
    }

    void step(std::size_t distance) { open((index_ + distance) % inputs_.size()); }

    void handle(const SDL_Event& event) {
        switch (event.type) {
            case SDL_QUIT:
                isDone_ = true;
                break;
            case SDL_WINDOWEVENT:
                handleWindow(event.window);
                break;
            case SDL_MOUSEWHEEL: {
                int x, y;
                SDL_GetMouseState(&x, &y);
                zoom(event.wheel.y, {static_cast<double>(x), static_cast<double>(y)});
                break;
            }
            case SDL_MOUSEMOTION:
                if ((event.motion.state & SDL_BUTTON_LMASK) != 0)
                    move(event.motion.xrel, event.motion.yrel);
                break;
            case SDL_KEYDOWN:
                isStale_ = true;
                if (!moveByKey(event.key.keysym.sym)) handleKey(event.key.keysym);
                break;
            default:
                break;
        }
    }

    void handleWindow(const SDL_WindowEvent& event) {
        if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED && isFitted_) fit();
        if (event.event == SDL_WINDOWEVENT_SIZE_CHANGED || event.event == SDL_WINDOWEVENT_EXPOSED)
            isStale_ = true;
    }

    void zoom(int steps, const WindowPoint& fixed) {
        for (; steps > 0; --steps) camera_.zoom(kZoomStep, fixed);
        for (; steps < 0; ++steps) camera_.zoom(1 / kZoomStep, fixed);
        isFitted_ = false;
        isStale_ = true;
    }

    void move(double dx, double dy) {
        camera_.move(dx, dy);
        isFitted_ = false;
        isStale_ = true;
    }

    void rotate(double degrees) {
        camera_.rotate(degrees, window_.size().center());
        isFitted_ = false;
    }

    bool moveByKey(SDL_Keycode key) {
        switch (key) {
            case SDLK_LEFT:
                return move(kMoveStep, 0), true;
            case SDLK_RIGHT:
                return move(-kMoveStep, 0), true;
            case SDLK_UP:
                return move(0, kMoveStep), true;
            case SDLK_DOWN:
                return move(0, -kMoveStep), true;
            default:
                return false;
        }
    }

    void handleKey(const SDL_Keysym& key) {
        const bool isShifted = (key.mod & KMOD_SHIFT) != 0;
        switch (key.sym) {
            case SDLK_PLUS:
            case SDLK_EQUALS:
            case SDLK_KP_PLUS:
                return zoom(1, window_.size().center());
            case SDLK_MINUS:
            case SDLK_KP_MINUS:
                return zoom(-1, window_.size().center());
            case SDLK_r:
                return rotate(isShifted ? -kTurn : kTurn);
            case SDLK_0:
            case SDLK_f:
                return fit();
            case SDLK_1:
                isFitted_ = false;
                return camera_.zoom(1 / camera_.scale(), window_.size().center());
            case SDLK_q:
                quality_ = QUOR_RENDERING_QUALITY_FASTER;
                break;
            case SDLK_b:
                quality_ = QUOR_RENDERING_QUALITY_BETTER;
                break;
            case SDLK_n:
                quality_ = QUOR_RENDERING_QUALITY_NONANTIALIASED;
                break;
            case SDLK_g:
                ground_ = static_cast<Ground>((static_cast<int>(ground_) + 1) % 3);
                break;
            case SDLK_SPACE:
            case SDLK_PAGEDOWN:
                return step(1);
            case SDLK_BACKSPACE:
            case SDLK_PAGEUP:
                return step(inputs_.size() - 1);
            case SDLK_c:
                return copy();
            case SDLK_ESCAPE:
                isDone_ = true;
                break;
            default:
                break;
        }
    }

    Window window_;
    std::vector<FoundFile> inputs_;
    std::size_t index_ = 0;
    std::unique_ptr<ShownFile> file_;
    Camera camera_;
    Ground ground_ = Ground::kChecker;
    std::uint32_t quality_ = QUOR_RENDERING_QUALITY_BETTER;
    std::string note_;      ///< for the next title
    bool isFitted_ = true;  ///< the camera follows the window's size
    bool isStale_ = true;   ///< the window does not show what it should
    bool isDone_ = false;
};

}  // namespace

bool viewFiles(const std::vector<std::string>& inputs) {
    const Session session(static_cast<std::uint32_t>(kFirstSize.width),
                          static_cast<std::uint32_t>(kFirstSize.height), 96);
    try {
        requireSuccess(session.error());
        Viewer(findDrawings(inputs)).run();
        return true;
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
}

}  // namespace tool
