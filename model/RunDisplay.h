#pragma once

#include <QList>
#include <QString>

// A copy or move run, from its request to its end.
struct ShownRun {
    unsigned ticket;
    QString text; // plain: "Copying 3 items to Backup"

    friend bool operator==(const ShownRun &, const ShownRun &) = default;
};

// Shows the copy and move runs beside the window's spinner. Main thread.
class RunDisplay {
public:
    virtual ~RunDisplay() = default;

    // The run that has the turn, then those that wait; none at the end of the last one.
    virtual void showRuns(const QList<ShownRun> &runs) = 0;
    // Bytes done, speed and time left of a long item; "" when the next item begins.
    virtual void showRunDetail(const QString &detail) = 0;
};
