#pragma once

#include "model/Messages.h"
#include "model/OperationDesk.h"
#include "operations/Archives.h"
#include "operations/CopyMove.h"
#include "operations/PaneRefresh.h"
#include "operations/PermanentRemoval.h"
#include "operations/SingleSteps.h"
#include "operations/Undo.h"
#include "operations/Workers.h"

#include <functional>
#include <mutex>

class OpenDialogs;
class Waiting;

// The public verbs: each checks its request at the door and hands it to a worker.
// Main thread.
class FileOperations : public OperationDesk {
public:
    FileOperations(MessageBus &bus, Alerts &alerts, Programs &programs, Workspace &workspace,
                   FileQueries &queries, const DateText &dates, OpenDialogs &openDialogs);
    ~FileOperations() override;

    // Outlets, set before the first request.
    void setMainModel(MainModel *model);
    void setWindowController(PaneWindow *window, ProgressSheet *sheet);
    void setRunDisplay(RunDisplay *display);
    void setArchiveSheet(ArchiveProgressSheet *sheet) { _archives.setArchiveSheet(sheet); }

    // What happens after a rename, a new folder or a new file that failed; the person has been told
    // by then.
    using NameRefused = std::function<void(Operation, const OperationRequest &)>;
    void setNameRefused(NameRefused handler) { nameRefused = std::move(handler); }

    // What happens when a request that carries out a cut has ended, refused ones included.
    using CutEnded = std::function<void(unsigned cut, bool anyMoved)>;
    void setCutEnded(CutEnded handler) { cutEnded = std::move(handler); }

    void copyItems(const OperationRequest &request) override;
    void moveItems(const OperationRequest &request) override;
    void deleteItems(const OperationRequest &request) override;
    void deletePermanently(const OperationRequest &request,
                           const QList<FileIdentity> &seen) override;
    void newFolder(const OperationRequest &request) override;
    void newFile(const OperationRequest &request) override;
    void renameItem(const OperationRequest &request) override;
    void createAlias(const OperationRequest &request) override;
    void duplicateItem(const QString &source, const QString &destination) override;
    void duplicateItems(const OperationRequest &request) override;
    void archiveItems(const QStringList &paths, const QString &destination,
                      const QString &archiveName,
                      const std::optional<FileStatus> &replaced = {}) override;
    void unpackArchive(const QString &archive, const QString &destination) override;

    // The last of all that, as long as nothing changed since.
    void undoLast() { _undo.undoLast(); }
    UndoHistory &undoHistory() { return _undo.history(); }

    // Lists again what the operation touched and selects where the user expects it.
    void updateFileLists(const OperationRecord &record) { _refresh.updateFileLists(record); }

    // Settles what earlier runs of the program, ended by force, have left; before anything is
    // listed. What nobody answers for is left for a later start. What was done is told later, by
    // one alert; what is done after nobody waited for it any more, when it is done.
    void settleInterruptedWork(Waiting &waiting);
    void tellInterruptedWork();

    RunQueue &runQueue() { return _copyMove.queue(); }

    // For quitting: whether work is under way, and anybody answers in its folders (the person may
    // give up to wait for that); stopping it between two items; and waiting for its end.
    bool anyRunning() const { return _workers.anyRunning(); }
    bool isWorkAnswered(Waiting &waiting) const;
    QString describedRuns(); // the copy and move runs, a line each
    void stopAll();
    void drain() { _workers.drain(); }
    void abandon() { _workers.abandon(); }

private:
    void cancelThread(const NoPayload &);
    void cancelArchiving(const NoPayload &);
    void startCopyMove(const OperationRequest &request, Operation operation);
    // The spinner goes on where the worker of a copy, move, duplicate or undo begins and off where
    // its record comes back; the others never turn it on, and must not turn off what a copy still
    // needs.
    void threadBegins(Operation operation);
    void threadWillExit(const OperationRecord &record);
    static bool spins(Operation operation);
    void endCut(unsigned cut, bool anyMoved) const;
    void askAgain(Operation operation, const OperationRequest &refused); // for the name
    void settle(Journal::Note &note);

    Alerts &alerts;
    Workspace &workspace;
    const FileQueries &queries;
    PaneWindow *windowController = nullptr; // the application's
    NameRefused nameRefused;
    CutEnded cutEnded;
    bool _endsNow = false; // until a name is given again: an end may be called off
    CopyMove _copyMove;
    std::mutex _settledLock; // for the next
    QStringList _settled; // lines about it, to be told
    bool _hasToldSettled = false;
    SingleSteps _singleSteps;
    PermanentRemoval _permanentRemoval;
    PaneRefresh _refresh;
    Archives _archives;
    Undo _undo;
    Workers _workers; // last: ends its threads before what they use goes
};
