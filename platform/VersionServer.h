#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

// The maker's web server, asked for the newest version. Main thread.
class VersionServer {
public:
    virtual ~VersionServer() = default;

    // Fetches a text of at most a few KiB; false when no connection can be made at all. `received`
    // is called once later, with nothing when the server failed, sent more or was silent too long.
    virtual bool fetch(const QString &address,
                       const std::function<void(std::optional<QByteArray>)> &received) = 0;
};
