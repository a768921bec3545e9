#pragma once

#include <QString>

#include <optional>

#include <sys/types.h>

class Alerts;
class Authentication;
class Workspace;

// Permission digits and the words shown for them, and the small setters of the information sheet.
class Permissions {
public:
    Permissions(Alerts &alerts, Workspace &workspace, Authentication &authentication);

    // One class (owner, group, others) is an octal digit, '0' to '7'. No words for any other.
    static std::optional<QString> permissionToString(QChar digit);
    static QChar stringToPermission(const QString &words); // a blank for words of no digit
    // Kept: no character is checked. "8" is 8.
    static int octalToDecimal(const QString &digits);

    // The setters show nothing and answer whether it is done. Any thread, the lock state excepted.
    static bool setPosixPermissions(mode_t permissions, const QString &path);
    static bool setOwnerAndGroup(const QString &path, const QString &owner, const QString &group);
    // The flag that keeps an item from being changed or removed. Main thread: with the
    // administrator's rights it is the file system's own.
    bool setLockState(const QString &path, bool locked) const;
    // Gives the file the codes by which it belongs to an application, where the file system keeps
    // such; else nothing is done, and that is success.
    bool setCreatorAndTypeCode(const QString &path, const QString &application) const;
    // The codes of an application in single quotes. Missing ones are told. Main thread.
    QString getBundleOSType(const QString &bundle) const;
    QString getBundleSignature(const QString &bundle) const;

private:
    Alerts &alerts;
    Workspace &workspace;
    Authentication &authentication;
};
