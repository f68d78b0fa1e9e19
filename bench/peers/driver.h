#pragma once

#include <time.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>
#include <string>

/// What the drivers share: a conversation in lines on standard input and output.
///
///     time WIDTH HEIGHT SECONDS FILE     answers "ok S": seconds of the processor per load + draw
///     pixels WIDTH HEIGHT OUT FILE       answers "ok"; OUT holds the pixels, 0xAARRGGBB words
///
/// Any answer other than "ok ..." says that this renderer does not draw the file. FILE reaches to
/// the end of the line; the other words hold no spaces.
///
/// A renderer has two functions: `bool loadAndDraw(text, width, height)`, which goes from the text
/// in memory to premultiplied pixels in memory that is kept from call to call, and `pixels()`.
namespace peers {

struct Request {
    std::string command;
    int width = 0;
    int height = 0;
    std::string argument;  ///< SECONDS or OUT
    std::string text;      ///< what FILE holds
};

inline Request readRequest(const std::string& line) {
    Request request;
    std::string file;
    std::istringstream words(line);
    words >> request.command >> request.width >> request.height >> request.argument >> std::ws;
    std::getline(words, file);
    std::ifstream stream(file, std::ios::binary);
    request.text.assign(std::istreambuf_iterator<char>(stream), {});
    return request;
}

/// What this process has spent so far on all its threads.
inline double processorSeconds() {
    timespec now{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

/// One call unmeasured, then as many as fill the time, two at least.
template <class Renderer>
std::string timeDrawing(Renderer& renderer, const Request& request) {
    const double wanted = std::stod(request.argument);
    if (!renderer.loadAndDraw(request.text, request.width, request.height)) return "failed";
    const double start = processorSeconds();
    double spent = 0;
    int calls = 0;
    for (; calls < 2 || spent < wanted; ++calls) {
        renderer.loadAndDraw(request.text, request.width, request.height);
        spent = processorSeconds() - start;
    }
    return "ok " + std::to_string(spent / calls * 1e6) + "e-6";
}

template <class Renderer>
std::string storePixels(Renderer& renderer, const Request& request) {
    if (!renderer.loadAndDraw(request.text, request.width, request.height)) return "failed";
    std::ofstream stream(request.argument, std::ios::binary);
    stream.write(reinterpret_cast<const char*>(renderer.pixels()),
                 std::streamsize{4} * request.width * request.height);
    return stream ? "ok" : "cannot write";
}

template <class Renderer>
int serve(Renderer& renderer) {
    for (std::string line; std::getline(std::cin, line);) {
        const Request request = readRequest(line);
        if (request.command == "time") {
            std::cout << timeDrawing(renderer, request) << std::endl;
        } else if (request.command == "pixels") {
            std::cout << storePixels(renderer, request) << std::endl;
        } else {
            std::cout << "unknown command" << std::endl;
        }
    }
    return 0;
}

}  // namespace peers
