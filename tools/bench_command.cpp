#include "bench_command.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <cstdio>
#include <functional>

#include "each_input.h"
#include "input_file.h"
#include "library_error.h"
#include "rejected_document.h"
#include "session.h"
#include "terminal.h"

namespace tool {

namespace {

using Clock = std::chrono::steady_clock;

/// The median of what `measure` returns, in microseconds, called for this long but at least thrice.
double medianOf(double seconds, const std::function<double()>& measure) {
    constexpr std::size_t kLeast = 3;
    std::vector<double> times;
    const Clock::time_point end = Clock::now() + std::chrono::duration_cast<Clock::duration>(
                                                     std::chrono::duration<double>(seconds));
    while (times.size() < kLeast || Clock::now() < end) times.push_back(measure());
    const auto middle = times.begin() + static_cast<std::ptrdiff_t>(times.size() / 2);
    std::nth_element(times.begin(), middle, times.end());
    return *middle;
}

/// In microseconds.
double timeOf(const std::function<void()>& work) {
    const Clock::time_point start = Clock::now();
    work();
    return std::chrono::duration<double, std::micro>(Clock::now() - start).count();
}

struct Figure {
    const char* name;
    double microseconds;
};

std::string durationText(double microseconds) {
    char text[32];
    if (microseconds < 1000)
        std::snprintf(text, sizeof text, "%.1f us", microseconds);
    else
        std::snprintf(text, sizeof text, "%.2f ms", microseconds / 1000);
    return text;
}

void printChart(const std::vector<Figure>& figures) {
    constexpr double kLongestBar = 50;  // characters
    double longest = 0;
    for (const Figure& figure : figures) longest = std::max(longest, figure.microseconds);
    for (const Figure& figure : figures) {
        const double share = longest > 0 ? figure.microseconds / longest : 0;
        const auto length = static_cast<std::size_t>(std::ceil(share * kLongestBar));
        std::printf("  %-12s %10s  %s\n", figure.name, durationText(figure.microseconds).c_str(),
                    styled(stdout, Style::kGreen, std::string(length, '#')).c_str());
    }
}

/// The aspect of what the document shows, `side` pixels at the longer side.
std::uint32_t createSurface(const Document& document, std::uint32_t side) {
    float viewport[4];  // x, y, width, height
    requireSuccess(quorDocViewportGet(document.get(), viewport));
    const float longer = std::max(viewport[2], viewport[3]);
    const auto pixels = [&](float length) {
        const float share = longer > 0 ? length / longer : 1;
        return std::max(1u, static_cast<std::uint32_t>(static_cast<float>(side) * share));
    };
    const std::uint32_t surface = quorSurfaceCreate(pixels(viewport[2]), pixels(viewport[3]));
    if (surface == QUOR_INVALID_HANDLE) throwOutOfMemory();
    return surface;
}

void benchFile(const std::string& path, const BenchOptions& options) {
    const std::string text = readInputText(path);
    const Document document(quorDocCreate(text.c_str()));
    if (!document.isValid()) throw explainRejectedDocument(text);
    const Surface surface(createSurface(document, options.side));
    const auto draw = [&](const Document& drawn) {
        requireSuccess(quorDocDraw(drawn.get(), surface.get(), options.quality));
    };
    draw(document);
    const std::vector<Figure> figures = {
        {"load",
         medianOf(options.seconds,
                  [&] { return timeOf([&] { Document loaded(quorDocCreate(text.c_str())); }); })},
        {"first draw", medianOf(options.seconds,
                                [&] {
                                    const Document fresh(quorDocCreate(text.c_str()));
                                    return timeOf([&] { draw(fresh); });
                                })},
        {"later draw", medianOf(options.seconds, [&] { return timeOf([&] { draw(document); }); })},
    };
    std::printf("%s, %u x %u pixels\n", styled(stdout, Style::kBold, displayName(path)).c_str(),
                quorSurfaceWidth(surface.get()), quorSurfaceHeight(surface.get()));
    printChart(figures);
}

}  // namespace

bool benchFiles(const BenchOptions& options) {
    const Session session(options.side, options.side, 96);
    return forEachInput(options.inputs, [&](const std::string& path) {
        requireSuccess(session.error());
        benchFile(path, options);
    });
}

}  // namespace tool
