#pragma once

#include "files/Readings.h"
#include "texts/FileSearch.h"

#include <QTimer>

// One search at a time, beside the window. Main thread.
class FindRun final : public QObject {
    Q_OBJECT

public:
    FindRun();

    // One that is under way is given up.
    void start(const std::shared_ptr<const FileBytes> &file, const SearchPattern &pattern,
               qint64 from, FileSearch::Direction direction);
    bool stop(); // false when there was none
    bool isRunning() const { return _progress != nullptr; }

    bool end(QDeadlineTimer deadline); // false when a thread does not come back

Q_SIGNALS:
    void progressed(int percent);
    void ended(const FileSearch::Hit &hit);

private:
    Readings _readings;
    std::shared_ptr<FileSearch::Progress> _progress; // of the one under way
    QTimer _looks;
};
