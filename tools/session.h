#pragma once

#include <cstdint>

#include "quor/quor.h"

namespace tool {

/// The library, initialised for as long as this object lives.
class Session {
public:
    Session(std::uint32_t screenWidth, std::uint32_t screenHeight, float dpi)
        : error_(quorInit(screenWidth, screenHeight, dpi)) {}
    ~Session() { quorDone(); }
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    /// The error code of the initialisation.
    std::uint32_t error() const noexcept { return error_; }

private:
    std::uint32_t error_;
};

/// Owns a library object through its handle, which may be QUOR_INVALID_HANDLE.
template <std::uint32_t (*destroy)(std::uint32_t)>
class Owned {
public:
    explicit Owned(std::uint32_t handle) noexcept : handle_(handle) {}
    ~Owned() {
        if (handle_ != QUOR_INVALID_HANDLE) destroy(handle_);
    }
    Owned(const Owned&) = delete;
    Owned& operator=(const Owned&) = delete;

    std::uint32_t get() const noexcept { return handle_; }
    bool isValid() const noexcept { return handle_ != QUOR_INVALID_HANDLE; }

private:
    std::uint32_t handle_;
};

using Document = Owned<quorDocDestroy>;
using Surface = Owned<quorSurfaceDestroy>;

}  // namespace tool
