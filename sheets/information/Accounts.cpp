#include "sheets/information/Accounts.h"

#include "files/AccountLookUp.h"
#include "files/FileName.h"

#include <grp.h>
#include <mutex>
#include <pwd.h>
#include <unistd.h>

namespace {

template <typename Entry>
QString nameOf(id_t number, int (*byNumber)(id_t, Entry *, char *, size_t, Entry **),
               char *Entry::*name)
{
    QString text = QString::number(number);
    lookUpAccount(byNumber, number,
                  [&](const Entry &entry) { text = FileName::fromBytes(entry.*name); });
    return text;
}

} // namespace

AccountNames readAccountNames()
{
    static std::mutex database; // it knows one place in each list
    const std::lock_guard lock(database);
    AccountNames names;
    setpwent();
    while (const passwd *user = getpwent())
        names.users.append(FileName::fromBytes(user->pw_name));
    endpwent();
    setgrent();
    while (const group *one = getgrent())
        names.groups.append(FileName::fromBytes(one->gr_name));
    endgrent();
    names.users.removeDuplicates();
    names.groups.removeDuplicates();
    return names;
}

QString userName(uid_t user)
{
    return nameOf(user, &getpwuid_r, &passwd::pw_name);
}

QString groupName(gid_t group)
{
    return nameOf(group, &getgrgid_r, &group::gr_name);
}

QString currentUserName()
{
    return userName(geteuid());
}
