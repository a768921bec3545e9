#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

class Alerts;
class Authentication;
class Waiting;

// Permission digits and the words shown for them, and the small setters of the information sheet.
class Permissions {
public:
    Permissions(Alerts &alerts, Authentication &authentication, Waiting &waiting);

    // One class (owner, group, others) is an octal digit, '0' to '7'. No words for any other.
    static std::optional<QString> permissionToString(QChar digit);
    static QChar stringToPermission(const QString &words); // a blank for words of no digit
    // Kept: no character is checked. "8" is 8.
    static int octalToDecimal(const QString &digits);

    // The setters show nothing and answer whether it is so now, which it may have been before: then
    // nothing is written. The path leads to the item, through links; "/proc/self/fd/N" of an open
    // descriptor does, too.

    // Set-id and sticky bits stay beside what is set. This and the next: any thread.
    static bool setPosixPermissions(mode_t permissions, const QString &path);
    static bool setOwnerAndGroup(const QString &path, const QString &owner, const QString &group);
    // The lock that keeps an item from being changed or removed: with the administrator's rights
    // the file system's own, else the owner's mark. Taking off the file system's own needs them,
    // and the person may be asked. Main thread.
    bool setLockState(const QString &path, bool locked) const;
    // Gives the file the codes by which it belongs to an application, where the file system keeps
    // such. Without an application (no absolute path) there is nothing to give. Main thread.
    bool setCreatorAndTypeCode(const QString &path, const QString &application) const;
    // The codes of an application in single quotes. Missing ones are told. Main thread.
    QString getBundleOSType(const QString &bundle) const;
    QString getBundleSignature(const QString &bundle) const;

private:
    QString told(const std::optional<QString> &code, const char *complaint) const;

    Alerts &alerts;
    Authentication &authentication;
    Waiting &waiting;
};
