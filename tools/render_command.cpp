#include "render_command.h"

#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <new>
#include <optional>
#include <thread>

#include "file_error.h"
#include "folder_walk.h"
#include "input_file.h"
#include "library_error.h"
#include "output_plan.h"
#include "process_pool.h"
#include "progress.h"
#include "render_job.h"
#include "session.h"
#include "watch_inputs.h"

namespace tool {

namespace {

struct FormatName {
    PictureFormat format;
    const char* ending;
};

constexpr FormatName kFormats[] = {
    {PictureFormat::kPng, ".png"},
    {PictureFormat::kWebp, ".webp"},
    {PictureFormat::kRaw, ".raw"},
};

/// Endings that promise a picture of a kind this tool does not write.
constexpr const char* kOtherFormats[] = {".jpg",  ".jpeg", ".gif", ".bmp", ".tif", ".tiff",
                                         ".avif", ".heic", ".jxl", ".ico", ".ppm", ".tga",
                                         ".pdf",  ".ps",   ".eps", ".svg", ".svgz"};

/// As the options say, else as the output's ending does. Throws FileError.
PictureFormat formatOf(const RenderOptions& options) {
    if (options.format) return *options.format;
    const std::string ending = std::filesystem::path(options.output).extension().string();
    for (const FormatName& known : kFormats)
        if (ending == known.ending) return known.format;
    for (const char* other : kOtherFormats) {
        if (ending == other) {
            throw FileError(options.output + ": pictures are .png, .webp or .raw, not " + ending +
                            "; choose one of them, or tell with --format what to write there");
        }
    }
    return PictureFormat::kPng;
}

std::string endingOf(PictureFormat format) {
    for (const FormatName& known : kFormats)
        if (known.format == format) return known.ending;
    return {};
}

/// One input of a run: its job, or why there is none.
struct Task {
    FoundFile input;
    std::optional<RenderJob> job;
    std::string refusal;
};

std::vector<Task> planTasks(const RenderOptions& options, const std::vector<FoundFile>& inputs) {
    const PictureFormat format = formatOf(options);
    OutputPlan outputs(options.output, inputs.size(), endingOf(format));
    std::vector<Task> tasks;
    for (const FoundFile& input : inputs) {
        Task task{input, std::nullopt, ""};
        try {
            task.job = RenderJob{input, outputs.pathFor(input), format};
        } catch (const FileError& error) {
            task.refusal = reportText(input.path, error);
        }
        tasks.push_back(std::move(task));
    }
    return tasks;
}

TaskResult perform(const Task& task, const RenderOptions& options) {
    if (!task.job) return {false, task.refusal};
    try {
        try {
            renderPicture(*task.job, options);
            return {true, options.warns ? warningFor(*task.job) : ""};
        } catch (const std::bad_alloc&) {
            throwOutOfMemory();
        }
    } catch (const FileError& error) {
        return {false, reportText(task.input.path, error)};
    }
}

/// The library, set up as the options say.
std::shared_ptr<void> openSession(const RenderOptions& options) {
    // Percentages of a document without a size of its own refer to the picture asked for.
    const SizeRequest& size = options.size;
    const std::uint32_t side = size.width.value_or(size.height.value_or(kDefaultSide));
    auto session = std::make_shared<Session>(size.width.value_or(side), size.height.value_or(side),
                                             options.dpi);
    requireSuccess(session->error());
    const Color& color = options.background;
    quorClearColor(color.red, color.green, color.blue, color.alpha);
    return session;
}

std::size_t processCount(const RenderOptions& options, std::size_t taskCount) {
    constexpr std::size_t kWorthwhile = 16;  // tasks: fewer are done sooner than processes start
    const std::size_t all = std::max(1u, std::thread::hardware_concurrency());
    const std::size_t wanted =
        options.jobs > 0 ? options.jobs : std::min(all, taskCount / kWorthwhile);
    return std::clamp<std::size_t>(wanted, 1, std::max<std::size_t>(taskCount, 1));
}

/// Prints which files failed, when there were several.
void reportSummary(std::size_t total, const std::vector<std::string>& failed) {
    if (total < 2 || failed.empty()) return;
    std::fprintf(stderr, "quor: %zu of %zu files rendered; failed:\n", total - failed.size(),
                 total);
    for (const std::string& input : failed)
        std::fprintf(stderr, "  %s\n", displayName(input).c_str());
}

bool renderInputs(const RenderOptions& options, const std::vector<FoundFile>& inputs) {
    const std::vector<Task> tasks = planTasks(options, inputs);
    Progress progress(tasks.size());
    std::vector<std::string> failed;
    std::size_t position = 0;
    TaskPool pool;
    pool.taskCount = tasks.size();
    pool.processes = processCount(options, tasks.size());
    pool.enter = [&] { return openSession(options); };
    pool.work = [&](std::size_t i) { return perform(tasks[i], options); };
    pool.lost = [&](std::size_t i) {
        const FileError error("the process that rendered it died; perhaps for want of memory");
        return TaskResult{false, reportText(tasks[i].input.path, error)};
    };
    pool.progress = [&](std::size_t i) {
        progress.show(++position, displayName(tasks[i].input.path));
    };
    pool.deliver = [&](std::size_t i, const TaskResult& result) {
        if (!result.message.empty()) progress.clear();
        std::fputs(result.message.c_str(), stderr);
        if (!result.isSuccess) failed.push_back(tasks[i].input.path);
    };
    runTasks(pool);
    progress.clear();
    reportSummary(tasks.size(), failed);
    return failed.empty();
}

}  // namespace

bool renderFiles(const RenderOptions& options) {
    try {
        if (options.watches) {
            watchInputs(options.inputs, [&](const std::vector<FoundFile>& inputs) {
                renderInputs(options, inputs);
                std::fprintf(stderr, "%zu rendered; waiting for changes, Ctrl-C ends\n",
                             inputs.size());
            });
        }
        const std::vector<FoundFile> inputs = findDrawings(options.inputs);
        if (inputs.empty()) {
            throw FileError(options.inputs.front() +
                            ": there is no .svg or .svgz file in this folder; name another one");
        }
        return renderInputs(options, inputs);
    } catch (const FileError& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return false;
    }
}

}  // namespace tool
