#pragma once

#include "files/FileStatus.h"
#include "files/Journal.h"
#include "model/OperationRecord.h"
#include "operations/RequestValidation.h"
#include "operations/RunQueue.h"

#include <QSet>

class Alerts;
class FileQueries;
class DateText;
class ProgressSheet;
class Programs;
class Workspace;

// The copy and move engine: one item after the other by the system's own commands, with the working
// sheet, the overwrite question and cancellation between items.
class CopyMove final {
public:
    CopyMove(Alerts &alerts, Programs &programs, Workspace &workspace, FileQueries &queries,
             const DateText &dates);

    void setProgressSheet(ProgressSheet *progressSheet) { sheet = progressSheet; }

    RunQueue::Ticket enqueue() { return _queue.enqueue(); }
    // Carries a request out when its turn has come. Worker thread.
    void performCopyMoveProgress(const AcceptedRequest &run, Operation operation,
                                 RunQueue::Ticket ticket);

    // Stops the active run between two items; asked again, it cancels the runs that wait. A call
    // when nothing runs has no effect. Any thread.
    void cancelThread() { _queue.cancel(); }
    // Stops the active run and the waiting ones. Any thread.
    void cancelAll() { _queue.cancelAll(); }

    // One item by the system's command, with its extended attributes. Any worker thread.
    bool copyFile(const QString &source, const QString &destination);
    bool moveFile(const QString &source, const QString &destination);

    // Whether the item may be put at the target at all: not onto itself, not into itself, not over
    // what holds it, not over what is locked. Any worker thread.
    bool mayReplace(const QString &source, const QString &target, Operation operation) const;
    // Makes sure that copying onto `target` unasked loses nothing: what the command would write
    // over goes to the Trash. False when it must not be done at all. Any worker thread.
    bool clearForCopyOver(const QString &source, const QString &target);

    const Journal &journal() const { return _journal; }

private:
    struct Run;
    enum class Next { GoOn, EndRun, EndThread };

    Next performItem(Run &run, qsizetype &index);
    bool isAdmissible(const Run &run, const QString &name) const;
    bool isLong(Run &run) const; // so that the sheet comes up
    void reportFailure(const Run &run, const QString &name, const QString &details = {});
    bool replaceItem(Run &run, const QString &source, const QString &target, QString &details);
    QString overwriteDetails(const QString &source, const QString &target) const;

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    FileQueries &queries;
    const DateText &dates;
    ProgressSheet *sheet = nullptr;

    RunQueue _queue;
    Journal _journal;
};
