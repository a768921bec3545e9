#pragma once

#include "files/HeldItem.h"
#include "files/Readings.h"

#include <QTimer>

#include <atomic>

// The size of a folder, counted beside the window. Main thread.
class FolderCount final : public QObject {
    Q_OBJECT

public:
    FolderCount();
    ~FolderCount() override;

    // In place of the one under way. What is counted stays this folder, whatever its name.
    void start(const std::shared_ptr<const HeldItem> &folder);
    void stop();
    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    void countedUp(qint64 bytes); // so far
    void counted(qint64 bytes); // all

private:
    // Shared with the counting thread, which may outlive this.
    struct Sum {
        std::atomic<bool> stop { false }; // set by the main thread
        std::atomic<qint64> bytes { 0 }; // read by it
    };
    std::shared_ptr<Sum> _sum; // while something is counted
    Readings _counting;
    QTimer _looks;
};
