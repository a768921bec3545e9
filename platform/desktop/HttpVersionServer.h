#pragma once

#include "platform/VersionServer.h"

#include <QNetworkAccessManager>

#include <chrono>

// Fetches by HTTPS alone; an address of another kind makes no connection.
class HttpVersionServer final : public VersionServer {
public:
    // How long a silent server is waited for.
    explicit HttpVersionServer(std::chrono::milliseconds patience = std::chrono::seconds(30))
        : _patience(patience)
    {
    }

    bool fetch(const QString &address,
               const std::function<void(std::optional<QByteArray>)> &received) override;

private:
    const std::chrono::milliseconds _patience;
    QNetworkAccessManager _network;
};
