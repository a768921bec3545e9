#pragma once

#include "platform/AuthorizationServices.h"

class Alerts;
class MessageBus;
class Programs;

// The one place where the program gains administrator's rights, and runs commands with them. The
// rights of a command are those of its path. Main thread.
class Authentication final {
public:
    Authentication(AuthorizationServices &services, Programs &programs, Alerts &alerts,
                   MessageBus &bus);
    ~Authentication(); // gives up what is held
    Authentication(const Authentication &) = delete;
    Authentication &operator=(const Authentication &) = delete;

    // Whether the rights for these commands are held, the first 20 of them; asks nobody. False for
    // none, and for a path that is too long for a right.
    bool isAuthenticated(const QStringList &commands);
    // Asks the person for them, once isAuthenticated has been asked; posts Authenticated when they
    // are given.
    bool fetchPassword(const QStringList &commands);
    // Asks only when they are not held.
    bool authenticate(const QStringList &commands);
    // Posts Deauthenticated, when rights have been looked for since the last time.
    void deauthenticate();
    // Runs the command with rights, which the person may be asked for, and waits for its end. Only
    // the first 19 arguments are passed. False when that failed, with a beep and a line in the log
    // unless the rights were refused. `subject`: see its type.
    bool executeCommand(const QString &command, const QStringList &arguments = {},
                        const CommandSubject &subject = {});

    // The first process with this in its command line, in the order of ps; 0: there is none.
    int getPID(const QString &processName);
    // Ends that process with rights, if the person agrees. Kept: what the ending itself came to is
    // not asked; true says that it was tried.
    bool killProcess(const QString &processName);

private:
    bool mayEnd(const QString &processName, int process);
    void beep(const QString &reason);

    AuthorizationServices &services;
    Programs &programs;
    Alerts &alerts;
    MessageBus &bus;
    bool _hasReference = false; // made by the first look at the rights
};
