#pragma once

#include <QStringList>

#include <sys/types.h>

// The users and groups of the machine. Directory services answer for them, too, so each of these
// may take long: worker threads.
struct AccountNames {
    QStringList users; // in the order of the database, each once
    QStringList groups;
};
AccountNames readAccountNames(); // one at a time

// The account's name, or its number as text where it has none.
QString userName(uid_t user);
QString groupName(gid_t group);
QString currentUserName();
