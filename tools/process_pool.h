#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>

namespace tool {

/// What a task leaves: whether it succeeded and what it has to say, which may be several lines.
struct TaskResult {
    bool isSuccess = true;
    std::string message;
};

struct TaskPool {
    std::size_t taskCount = 0;
    std::size_t processes = 1;

    /// Runs before the first task in each process that does tasks; its result lives until after the
    /// last one.
    std::function<std::shared_ptr<void>()> enter;
    /// Does a task; throws nothing.
    std::function<TaskResult(std::size_t task)> work;
    /// The result of a task whose process died.
    std::function<TaskResult(std::size_t task)> lost;
    /// Is told of each task, in the calling process: before it when that one does it, else after
    /// it, in any order.
    std::function<void(std::size_t task)> progress;
    /// Gets the results in the order of the tasks, in the calling process.
    std::function<void(std::size_t task, const TaskResult& result)> deliver;
};

/// Does all tasks, in child processes when there are to be several. A child that dies fails its
/// task only.
void runTasks(const TaskPool& pool);

}  // namespace tool
