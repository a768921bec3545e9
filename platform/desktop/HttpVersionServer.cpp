#include "platform/desktop/HttpVersionServer.h"

#include <QNetworkReply>
#include <QNetworkRequest>
#include <QUrl>

namespace {

constexpr qint64 Limit = 4096; // bytes: a version is a line of text

} // namespace

bool HttpVersionServer::fetch(const QString &address,
                              const std::function<void(std::optional<QByteArray>)> &received)
{
    const QUrl url(address);
    if (!url.isValid() || url.scheme() != QLatin1StringView("https"))
        return false;
    QNetworkRequest request(url);
    request.setTransferTimeout(int(_patience.count()));
    request.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                         QNetworkRequest::NoLessSafeRedirectPolicy);
    QNetworkReply *reply = _network.get(request);
    reply->setReadBufferSize(Limit);
    // A server that sends more than a line is cut off rather than heard out.
    QObject::connect(reply, &QNetworkReply::readyRead, reply, [reply] {
        if (reply->bytesAvailable() >= Limit)
            reply->abort();
    });
    QObject::connect(reply, &QNetworkReply::finished, reply, [reply, received] {
        const bool good = reply->error() == QNetworkReply::NoError;
        reply->deleteLater();
        received(good ? std::optional(reply->readAll()) : std::nullopt);
    });
    return true;
}
