#pragma once

#include "files/FileStatus.h"

#include <QStringList>

#include <memory>
#include <optional>

class Alerts;
class ArchiveProgressSheet;
class ArchiveTask;
class Journal;
class Programs;
class Workers;
class Workspace;
struct ProgramEnd;

// Packs items into a zip archive and unpacks archives, each by an external program on a worker
// thread, with the archive sheet up meanwhile. Main thread.
class Archives final {
public:
    Archives(Alerts &alerts, Programs &programs, Workspace &workspace, const Journal &journal,
             Workers &workers);
    ~Archives();

    void setArchiveSheet(ArchiveProgressSheet *archiveSheet) { sheet = archiveSheet; }

    // `replaced`: what stands at the archive's name, as it was when the person agreed to lose it.
    void archiveItems(const QStringList &paths, const QString &destination,
                      const QString &archiveName, const std::optional<FileStatus> &replaced);
    void unpackArchive(const QString &archive, const QString &destination);

    // Ends the newest packing or unpacking.
    void cancelArchiving();
    // Ends all of them.
    void cancelAll();

private:
    int showSheet(const QString &title);
    void closeSheet(int number);
    std::shared_ptr<ArchiveTask> newTask();
    void taskDidTerminate(const ProgramEnd &end);

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    const Journal &journal;
    Workers &workers;
    ArchiveProgressSheet *sheet = nullptr; // the window's
    int _sheetNumber = 0; // counts the jobs: only the newest one closes the sheet
    std::shared_ptr<ArchiveTask> task; // the newest one
    QList<std::weak_ptr<ArchiveTask>> _tasks;
};
