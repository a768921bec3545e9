#pragma once

#include "files/FileStatus.h"
#include "files/ProcessStart.h"

#include <QStringList>

#include <variant>

// What the last argument of a command has to mean when it runs: the file that its path leads to, or
// the process of its number. With any other one nothing is done.
using CommandSubject = std::variant<std::monostate, FileIdentity, ProcessStart>;

// The administrator's rights: whether this process holds them, asking the person for them, giving
// them up, and running a command with them. Where nobody can grant rights each answers false. Main
// thread; what asks a person or runs a program waits with the window alive.
class AuthorizationServices {
public:
    virtual ~AuthorizationServices() = default;

    // Whether the rights for all these commands are held now. Nobody is asked.
    virtual bool holdsRights(const QStringList &commands) = 0;
    // The same, and the person may be asked for a password.
    virtual bool askForRights(const QStringList &commands) = 0;
    // Gives up the rights of this process, and no other's.
    virtual void giveUpRights() = 0;
    // Runs one of the few commands that may run so, and waits for its end: its exit status, 0 for
    // done.
    virtual int execute(const QString &command, const QStringList &arguments,
                        const CommandSubject &subject) = 0;
};
