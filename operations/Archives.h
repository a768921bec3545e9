#pragma once

#include <QStringList>

#include <memory>

class Alerts;
class ArchiveProgressSheet;
class Journal;
class Programs;
class Workers;
class Workspace;
struct ProgramEnd;

// The name under which an archive is really written: its extension is always "zip".
QString archiveFileName(const QString &archiveName);

// Packs items into a zip archive and unpacks archives, each by an external program on a worker
// thread, with the archive sheet up meanwhile. Main thread.
class Archives final {
public:
    Archives(Alerts &alerts, Programs &programs, Workspace &workspace, const Journal &journal,
             Workers &workers);
    ~Archives();

    void setArchiveSheet(ArchiveProgressSheet *archiveSheet) { sheet = archiveSheet; }

    void archiveItems(const QStringList &paths, const QString &destination,
                      const QString &archiveName);
    void unpackArchive(const QString &archive, const QString &destination);

    // Ends the newest unpacking. Kept: packing cannot be cancelled; it goes on without its sheet.
    void cancelArchiving();
    // Ends every unpacking.
    void cancelAll();

    // The shell's command line for packing items of one folder.
    static QString commandLine(const QString &folder, const QString &archive,
                               const QStringList &names);

private:
    struct Packing;
    class Task;

    int showSheet(const QString &title);
    void closeSheet(int number);
    void _archiveItems(const Packing &packing);
    int pack(const Packing &packing);
    int runZip(const Packing &packing);
    void taskDidTerminate(const ProgramEnd &end);

    Alerts &alerts;
    Programs &programs;
    Workspace &workspace;
    const Journal &journal;
    Workers &workers;
    ArchiveProgressSheet *sheet = nullptr; // the window's
    int _sheetNumber = 0; // counts the jobs: only the newest one closes the sheet
    std::shared_ptr<Task> task; // of the newest unpacking
    QList<std::weak_ptr<Task>> _tasks;
};
