#include "sheets/information/Accounts.h"

#include "files/FileName.h"

#include <cerrno>
#include <grp.h>
#include <mutex>
#include <pwd.h>
#include <unistd.h>
#include <vector>

namespace {

constexpr size_t LargestEntry = 1 << 20; // bytes; a group may have thousands of members

// What the look-up by number says; it tells when its buffer is too small.
template <typename Entry, typename Number, typename LookUp>
QString nameOf(Number number, LookUp lookUp, char *Entry::*name)
{
    Entry entry {};
    Entry *found = nullptr;
    for (std::vector<char> buffer(1024); buffer.size() <= LargestEntry;
         buffer.resize(buffer.size() * 4))
        if (lookUp(number, &entry, buffer.data(), buffer.size(), &found) != ERANGE) {
            if (found)
                return FileName::fromBytes(found->*name);
            break;
        }
    return QString::number(number);
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
    return nameOf<passwd>(user, &getpwuid_r, &passwd::pw_name);
}

QString groupName(gid_t group)
{
    return nameOf<struct group>(group, &getgrgid_r, &group::gr_name);
}

QString currentUserName()
{
    return userName(geteuid());
}
