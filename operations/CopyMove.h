#pragma once

#include "files/Journal.h"
#include "model/OperationRecord.h"
#include "operations/RequestValidation.h"
#include "operations/RunQueue.h"
#include "operations/Transfer.h"

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

    void setRunDisplay(RunDisplay *runDisplay) { display = runDisplay; }

    RunQueue &queue() { return _queue; }
    // Carries a request out when its turn has come, and answers what it did. Worker thread.
    DoneItems performCopyMoveProgress(const AcceptedRequest &run, Operation operation,
                                      RunQueue::Ticket ticket);

    // One item to a full path. What stands there goes to the Trash when the copy is in place; an
    // existing folder is copied into. Answers why it was not done, or nothing. Any worker thread.
    std::optional<QString> duplicate(const QString &source, const QString &destination,
                                     DoneItems &done);

    const Journal &journal() const { return _journal; }

private:
    struct Run;
    enum class Next { GoOn, EndRun, EndThread };

    Next performItem(Run &run, qsizetype &index);
    // What is to become of an item, by the answer about it if a question is needed.
    struct Decision {
        std::optional<Next> leaves; // the item is not for this run
        std::optional<Standing> standing; // nothing: it cannot be done
        std::optional<FileStatus> shown;
        QString reason;
    };
    Decision decide(Run &run, const QString &name, bool mayAsk, bool isLast);
    bool movesToFree(Run &run, const QString &name);
    TransferEnd putInto(Run &run, const QString &name, const FileIdentity &folder);
    void tell(Run &run, const QString &name);
    bool isLong(Run &run) const; // so that the sheet comes up
    void showLine(const QString &line) const;
    void reportStaying(const QStringList &lines);
    QString overwriteDetails(const Run &run, const QString &name, const FileStatus &standing,
                             bool isLast) const;

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    FileQueries &queries;
    const DateText &dates;
    ProgressSheet *sheet = nullptr;
    RunDisplay *display = nullptr;

    RunQueue _queue;
    Journal _journal;
};
