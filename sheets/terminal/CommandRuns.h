#pragma once

#include "platform/Programs.h"

#include <QDeadlineTimer>
#include <QObject>

#include <chrono>
#include <memory>

// The command lines that run, each on a thread of its own. Main thread.
class CommandRuns final : public QObject {
    Q_OBJECT

public:
    explicit CommandRuns(Programs &programs);
    ~CommandRuns() override; // ends them

    void run(const QString &folder, const QStringList &words);
    // Of how many anything is left.
    int running() const { return _running; }
    // Asks all of them to end; a second time it does not ask any more.
    void stop();

    // Before the program ends. False when a thread does not come back.
    static constexpr std::chrono::seconds Patience { 2 };
    bool end(QDeadlineTimer deadline = QDeadlineTimer(Patience));

Q_SIGNALS:
    // A line's own program has ended. `shown`: what its output and errors come to.
    void ended(const QStringList &words, const CommandEnd &end, const QString &shown);
    void runningChanged();

private:
    struct Shared;
    void countDown();

    Programs &programs;
    const std::shared_ptr<Shared> _shared; // with the threads
    int _running = 0;
};
