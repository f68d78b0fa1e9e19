#include "output_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstring>
#include <filesystem>
#include <system_error>

#include "file_error.h"
#include "input_file.h"

namespace tool {

namespace fs = std::filesystem;

namespace {

// A process writes one file at a time. Whoever ends it with a signal is to find nothing of it.
char unfinished[4096];                    // path of the file, for the handler
volatile std::sig_atomic_t isUnfinished;  // whether there is one

void removeUnfinished(int signal) {
    if (isUnfinished != 0) unlink(unfinished);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

void guardAgainstSignals(const std::string& path) {
    if (path.size() >= sizeof unfinished) return;
    std::strcpy(unfinished, path.c_str());
    isUnfinished = 1;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP}) {
        const auto former = std::signal(signal, removeUnfinished);
        if (former == SIG_IGN) std::signal(signal, SIG_IGN);  // as nohup wants it
    }
}

}  // namespace

OutputFile::OutputFile(const std::string& path) : path_(path), target_(path) {
    if (path == kStandardStream) {
        file_ = stdout;
        return;
    }
    std::error_code ignored;
    const fs::file_status status = fs::status(path, ignored);
    if (fs::is_directory(status)) throwUnwritable(EISDIR);
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        file_ = std::fopen(path.c_str(), "wb");
        if (file_ == nullptr) throwUnwritable(errno);
        return;
    }
    // A link stays a link: what it points to is replaced.
    if (const fs::path real = fs::canonical(path, ignored); !ignored) target_ = real.string();
    if (fs::exists(status) && access(target_.c_str(), W_OK) != 0) throwUnwritable(errno);
    openBeside();
}

OutputFile::~OutputFile() {
    close();
    isUnfinished = 0;
    if (!temporary_.empty()) unlink(temporary_.c_str());
}

void OutputFile::openBeside() {
    const fs::path target(target_);
    const std::string hidden =
        "." + target.filename().string().substr(0, 200) + ".quor-" + std::to_string(getpid());
    const std::string beside = fs::path(target).replace_filename(hidden).string();
    unlink(beside.c_str());  // left by a killed process of the same number
    const int descriptor = open(beside.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (descriptor < 0) throwUnwritable(errno);
    temporary_ = beside;
    guardAgainstSignals(beside);
    file_ = fdopen(descriptor, "wb");
    if (file_ == nullptr) throwUnwritable(errno);
}

void OutputFile::close() noexcept {
    if (file_ != nullptr && file_ != stdout) std::fclose(file_);
    file_ = nullptr;
}

void OutputFile::throwUnwritable(int error) const {
    throw FileError("cannot write " + (path_ == kStandardStream ? "<stdout>" : path_) + ": " +
                    std::strerror(error) + "; choose another place with -o");
}

void OutputFile::write(const void* bytes, std::size_t count) {
    if (std::fwrite(bytes, 1, count, file_) != count) throwUnwritable(errno);
}

void OutputFile::commit() {
    if (std::fflush(file_) != 0) throwUnwritable(errno);
    if (file_ == stdout) return;
    const int failed = std::fclose(file_);
    file_ = nullptr;
    if (failed != 0) throwUnwritable(errno);
    if (temporary_.empty()) return;
    if (std::rename(temporary_.c_str(), target_.c_str()) != 0) throwUnwritable(errno);
    isUnfinished = 0;
    temporary_.clear();
}

}  // namespace tool
