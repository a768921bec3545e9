#pragma once

#include "files/FileStatus.h"

#include <QStringList>

class AuthorizationServices;
class MessageBus;
class Programs;

// The one place where the program gains administrator's rights, and runs commands with them. The
// rights of a command are those of its path. Main thread.
class Authentication final {
public:
    Authentication(AuthorizationServices &services, Programs &programs, MessageBus &bus);
    ~Authentication(); // gives up what is held

    // Whether the rights for these commands are held; asks nobody. False for none.
    bool isAuthenticated(const QStringList &commands);
    // Asks the person for them; posts Authenticated when they are given.
    bool fetchPassword(const QStringList &commands);
    // Asks only when they are not held.
    bool authenticate(const QStringList &commands);
    // Posts Deauthenticated, once, when there was something to give up.
    void deauthenticate();
    // Runs the command with rights, which the person may be asked for, and waits for its end. False
    // when that failed, with a beep and a line in the log unless the rights were refused. `item`:
    // what the last argument has to lead to.
    bool executeCommand(const QString &command, const QStringList &arguments = {},
                        const std::optional<FileIdentity> &item = {});

    int getPID(const QString &processName); // 0: there is none
    bool killProcess(const QString &processName);

private:
    AuthorizationServices &services;
    Programs &programs;
    MessageBus &bus;
    bool _hasReference = false; // made by the first look at the rights
};
