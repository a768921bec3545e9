#pragma once

#include <QByteArrayView>
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

    // A version as a number: four bits a character, digits and upper-case letters up to F by their
    // value, anything else as 0. Kept: a dot shifts too, and so does a line end after the text.
    static qint32 hexValue(QByteArrayView text);

private:
    void compare(const std::optional<QByteArray> &received);

    VersionServer &server;
    Launching &launching;
    Alerts &alerts;
    const Addresses _addresses;
    const QString _version;
};
