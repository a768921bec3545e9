#pragma once

#include <QByteArray>
#include <QString>

#include <optional>

class Alerts;
class Launching;
class VersionServer;

// Whether there is a newer version of the program than this one. Main thread.
class UpdateCheck {
public:
    // The addresses of the version file and of the download page; `version` is the running one.
    struct Addresses {
        QString versionFile;
        QString downloadPage;
    };
    UpdateCheck(VersionServer &server, Launching &launching, Alerts &alerts, Addresses addresses,
                QString version);

    bool isOffered() const
    {
        return !_addresses.versionFile.isEmpty() && !_addresses.downloadPage.isEmpty();
    }
    void checkForNewerVersion();

private:
    void compare(const std::optional<QByteArray> &received);

    VersionServer &server;
    Launching &launching;
    Alerts &alerts;
    const Addresses _addresses;
    const QString _version;
};
