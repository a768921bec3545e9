#pragma once

#include "platform/ChildProcess.h"

#include <atomic>
#include <memory>
#include <mutex>

// One packing or unpacking, so that it can be cancelled: started by its worker, ended by the main
// thread.
class ArchiveTask final {
public:
    void started(pid_t process)
    {
        const std::lock_guard lock(_mutex);
        _child = std::make_unique<ChildProcess>(process);
        if (_cancelled)
            _child->terminate();
    }
    void terminate()
    {
        const std::lock_guard lock(_mutex);
        _cancelled = true;
        if (_child)
            _child->terminate();
    }
    bool isCancelled() const { return _cancelled; }

private:
    std::mutex _mutex;
    std::unique_ptr<ChildProcess> _child;
    std::atomic<bool> _cancelled { false }; // set by the main thread, read by the worker
};
