#pragma once

#include <QObject>

#include <functional>
#include <memory>

// Questions to the disk for which nobody waits: the window goes on, and the answers come when they
// come. Those about local disks are asked one after the other, those about any other mount on a
// thread of its own, so that a server that is gone holds up only what lies on it. Main thread.
class DiskQuestions final : public QObject {
    Q_OBJECT

public:
    explicit DiskQuestions(QObject *parent = nullptr);
    ~DiskQuestions() override; // what has not been answered is dropped

    // Calls `job()` about the path on another thread, then `done(answer)` on this one.
    template <typename Job, typename Done>
    void ask(const QString &path, Job job, Done done)
    {
        enqueue(path, [job = std::move(job), done = std::move(done)]() mutable {
            return std::function<void()>(
                [answer = job(), done = std::move(done)]() mutable { done(std::move(answer)); });
        });
    }

    // Whether the disk is being asked now: by a thread that may never come back.
    static bool anyUnderWay();

private:
    // Asks, and answers what is then to be done on the main thread.
    using Question = std::function<std::function<void()>()>;
    struct Shared;

    void enqueue(const QString &path, Question question);

    const std::shared_ptr<Shared> _shared;
};
