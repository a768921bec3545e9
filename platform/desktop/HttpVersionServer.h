#pragma once

#include "platform/VersionServer.h"

#include <QNetworkAccessManager>

// Fetches by HTTPS alone; an address of another kind makes no connection.
class HttpVersionServer final : public VersionServer {
public:
    bool fetch(const QString &address,
               const std::function<void(std::optional<QByteArray>)> &received) override;

private:
    QNetworkAccessManager _network;
};
