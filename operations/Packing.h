#pragma once

#include "operations/Transfer.h"

class Alerts;
class ArchiveTask;
struct Alert;

// The name under which an archive is really written: its extension is always "zip".
QString archiveFileName(const QString &archiveName);

// Whether the archive that stands at a name is to be replaced.
Alert replaceArchiveQuestion(const QString &details = {});

// Items of one folder, and the archive that is to be made of them.
struct PackingJob {
    QString folder;
    QStringList names;
    QString destination;
    QString archiveName; // as it is written
    std::optional<FileStatus> replaced; // what the person agreed to replace, as it was shown
};

// Packs once: zip writes under a hidden name, and the finished archive takes its place as a copy
// does. Tells the person what went wrong and what the archive lacks. Used by one worker.
class Packing final {
public:
    Packing(const PackingJob &job, Alerts &alerts, Programs &programs, Workspace &workspace,
            const Journal &journal, ArchiveTask &task);

    void run();
    const DoneItems &done() const { return _transfer.done(); }

    // The shell's command line for packing items of one folder.
    static QString commandLine(const QString &folder, const QString &archive,
                               const QStringList &names);

private:
    bool settleName(const QString &details = {});
    // What the archive lacks, and what else is not as one might think. `result`: zip's.
    void tell(int result, const QStringList &lacking, const QStringList &circles,
              const QStringList &staying);
    void fail(int code, const QStringList &reasons);
    bool place(Standing standing);
    // Answers zip's end as wait(2) has it.
    int runZip(const QString &archive, const QStringList &names, const QStringList &circular,
               bool holdsDestination);
    int runWithoutShell(const QString &archive, const QStringList &options,
                        const QStringList &names);
    void keepLine(const QByteArray &line);

    const PackingJob &_job;
    Alerts &alerts;
    Programs &programs;
    ArchiveTask &task;
    Transfer _transfer;
    std::optional<FileStatus> _shown; // what may be replaced
    QStringList _complaints; // zip's, a line each
    QString _errorText;
};
