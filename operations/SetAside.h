#pragma once

#include "files/Journal.h"

#include <QString>

#include <memory>
#include <optional>

class Workspace;

// What was done with a set-aside item after the work that was to replace it had failed.
enum class Settled { CameBack, WentToTrash, KeptBeside };

// An existing item that is to be replaced: renamed to a hidden sibling, never deleted first. Open
// ones stand in a journal, which the next start replays. Worker thread.
class SetAside final {
public:
    enum class Work { CopyFile, CopyFolder, Move };

    // Nothing when the item cannot be renamed (or noted): then it stands untouched.
    static std::optional<SetAside> take(const QString &target, Work work, const Journal &journal);

    // The replacement stands: the old item is removed.
    void discard();
    // The work failed: brings the old item back, or saves it from what the work left at its name.
    Settled settleFailure(Workspace &workspace);

    // Settles what a crash left open. An item whose name is free comes back; where something stands
    // at its name, nobody can tell whether it is whole, so it stays and the old item goes to the
    // Trash. Answers a line about each.
    static QStringList replay(const Journal &journal, Workspace &workspace);

private:
    SetAside(QString target, QString sibling, Work work);
    QString holder() const;
    QString held() const;
    bool comeBack() const;
    bool trash(Workspace &workspace) const;
    bool keepBeside() const;
    std::optional<Settled> save(Workspace &workspace) const;
    bool settleInterrupted(Workspace &workspace, const QString &folder, QStringList &told) const;

    QString _target;
    QString _sibling;
    Work _work;
    std::unique_ptr<Journal::Note> _note;
};
