#include "process_pool.h"

#include <poll.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <optional>
#include <system_error>
#include <vector>

namespace tool {

namespace {

/// Until `count` bytes are read; false when the other end is closed before.
bool readAll(int descriptor, void* bytes, std::size_t count) {
    auto* next = static_cast<char*>(bytes);
    while (count > 0) {
        const ssize_t size = read(descriptor, next, count);
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return false;
        next += size;
        count -= static_cast<std::size_t>(size);
    }
    return true;
}

bool writeAll(int descriptor, const void* bytes, std::size_t count) {
    const auto* next = static_cast<const char*>(bytes);
    while (count > 0) {
        const ssize_t size = write(descriptor, next, count);
        if (size < 0 && errno == EINTR) continue;
        if (size <= 0) return false;
        next += size;
        count -= static_cast<std::size_t>(size);
    }
    return true;
}

struct ResultHeader {
    std::uint32_t isSuccess;
    std::uint32_t messageSize;
};

bool sendResult(int descriptor, const TaskResult& result) {
    const ResultHeader header{result.isSuccess, static_cast<std::uint32_t>(result.message.size())};
    return writeAll(descriptor, &header, sizeof header) &&
           writeAll(descriptor, result.message.data(), result.message.size());
}

bool receiveResult(int descriptor, TaskResult& result) {
    ResultHeader header;
    if (!readAll(descriptor, &header, sizeof header)) return false;
    result.isSuccess = header.isSuccess != 0;
    result.message.resize(header.messageSize);
    return readAll(descriptor, result.message.data(), result.message.size());
}

struct Pipe {
    Pipe() {
        if (pipe(ends) != 0) throw std::system_error(errno, std::generic_category(), "pipe");
    }
    int ends[2];  ///< for reading, for writing
};

/// A child process that does one task after the other.
class Worker {
public:
    explicit Worker(const TaskPool& pool) {
        const Pipe tasks;
        const Pipe results;
        process_ = fork();
        if (process_ < 0) throw std::system_error(errno, std::generic_category(), "fork");
        if (process_ == 0) {
            close(tasks.ends[1]);
            close(results.ends[0]);
            serve(pool, tasks.ends[0], results.ends[1]);
        }
        close(tasks.ends[0]);
        close(results.ends[1]);
        tasks_ = tasks.ends[1];
        results_ = results.ends[0];
    }
    ~Worker() {
        dismiss();
        close(results_);
        int status;
        while (waitpid(process_, &status, 0) < 0 && errno == EINTR) continue;
    }
    Worker(const Worker&) = delete;
    Worker& operator=(const Worker&) = delete;

    void start(std::size_t task) {
        task_ = task;
        writeAll(tasks_, &task, sizeof task);  // a dead worker shows when its result is read
    }
    /// Ends its loop once the workers that were made later, which hold the pipe too, are dismissed.
    void dismiss() {
        if (tasks_ >= 0) close(tasks_);
        tasks_ = -1;
    }
    std::optional<std::size_t> task() const { return task_; }
    int results() const { return results_; }

    /// The result of the task that was started. False when the worker is dead.
    bool finish(TaskResult& result) {
        task_.reset();
        return receiveResult(results_, result);
    }

private:
    /// An exception ends the process here instead of going on as a second caller.
    [[noreturn]] static void serve(const TaskPool& pool, int tasks, int results) noexcept {
        std::shared_ptr<void> session = pool.enter();
        std::size_t task = 0;
        while (readAll(tasks, &task, sizeof task))
            if (!sendResult(results, pool.work(task))) break;
        session.reset();
        std::fflush(nullptr);
        _exit(0);
    }

    pid_t process_;
    int tasks_, results_;
    std::optional<std::size_t> task_;
};

/// Hands tasks to workers and results on in their order.
class Dispatcher {
public:
    explicit Dispatcher(const TaskPool& pool) : pool_(pool), results_(pool.taskCount) {}
    ~Dispatcher() {
        for (const auto& worker : workers_) worker->dismiss();
    }
    Dispatcher(const Dispatcher&) = delete;
    Dispatcher& operator=(const Dispatcher&) = delete;

    void run() {
        for (std::size_t i = 0; i < pool_.processes; ++i) {
            workers_.push_back(std::make_unique<Worker>(pool_));
            startNext(*workers_.back());
        }
        while (delivered_ < pool_.taskCount) waitForResults();
    }

private:
    void startNext(Worker& worker) {
        if (next_ < pool_.taskCount) worker.start(next_++);
    }

    void waitForResults() {
        std::vector<pollfd> ends;
        for (const auto& worker : workers_)
            ends.push_back({worker->task() ? worker->results() : -1, POLLIN, 0});
        if (poll(ends.data(), ends.size(), -1) < 0 && errno != EINTR)
            throw std::system_error(errno, std::generic_category(), "poll");
        for (std::size_t i = 0; i < ends.size(); ++i)
            if (ends[i].revents != 0) takeResult(workers_[i]);
    }

    void takeResult(std::unique_ptr<Worker>& worker) {
        const std::size_t task = *worker->task();
        TaskResult result;
        if (!worker->finish(result)) {
            result = pool_.lost(task);
            worker = std::make_unique<Worker>(pool_);
        }
        results_[task] = std::move(result);
        pool_.progress(task);
        startNext(*worker);
        for (; delivered_ < pool_.taskCount && results_[delivered_]; ++delivered_)
            pool_.deliver(delivered_, *results_[delivered_]);
    }

    const TaskPool& pool_;
    std::vector<std::unique_ptr<Worker>> workers_;
    std::vector<std::optional<TaskResult>> results_;
    std::size_t next_ = 0;       ///< the first task that was not started
    std::size_t delivered_ = 0;  ///< how many were
};

void runHere(const TaskPool& pool) {
    const std::shared_ptr<void> session = pool.enter();
    for (std::size_t task = 0; task < pool.taskCount; ++task) {
        pool.progress(task);
        pool.deliver(task, pool.work(task));
    }
}

}  // namespace

void runTasks(const TaskPool& pool) {
    if (pool.processes < 2) return runHere(pool);
    std::fflush(nullptr);                               // or children would write it again
    const auto former = std::signal(SIGPIPE, SIG_IGN);  // a dead worker's pipe is no reason to die
    Dispatcher(pool).run();
    std::signal(SIGPIPE, former);
}

}  // namespace tool
