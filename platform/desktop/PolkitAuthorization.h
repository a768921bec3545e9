#pragma once

#include "platform/AuthorizationServices.h"
#include "platform/desktop/Polkit.h"

#include <QPointer>
#include <QWidget>

class OpenDialogs;

// The rights as the desktop's polkit grants them: one action for all commands, and what has the
// rights is a small program of our own, which knows three commands and trusts nothing else.
class PolkitAuthorization final : public AuthorizationServices {
public:
    // pkexec starts a program by our action only under the path that the installed policy names,
    // which is the one fixed at build time. Any other one, beside the program say, it would start
    // by an action for all programs; where a person can write, somebody's program would be root's.
    struct Programs {
        QString pkexec;
        QString helper;
    };
    static Programs installed();

    explicit PolkitAuthorization(OpenDialogs &openDialogs, Programs programs = installed());

    // Over which it is said that a password is waited for.
    void setParent(QWidget *window) { _parent = window; }

    bool holdsRights(const QStringList &commands) override;
    bool askForRights(const QStringList &commands) override;
    void giveUpRights() override;
    int execute(const QString &command, const QStringList &arguments,
                const CommandSubject &subject) override;

private:
    OpenDialogs &_openDialogs;
    const Programs _programs;
    QPointer<QWidget> _parent;
    Polkit _polkit;
    bool _isAsking = false;
    bool _wereHeld = false; // there may be something to give up
    bool _givenUp = false; // what could not be revoked does not count
};
