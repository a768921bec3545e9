#pragma once

#include <QByteArray>
#include <QString>

#include <functional>
#include <optional>

// The maker's web server, asked for the newest version. Main thread.
class VersionServer {
public:
    virtual ~VersionServer() = default;

    // Fetches a small text; false when no connection can be made at all. `received` is called once
    // later: with the first few KiB, or with nothing after a failure or 30 seconds.
    virtual bool fetch(const QString &address,
                       const std::function<void(std::optional<QByteArray>)> &received) = 0;
};
