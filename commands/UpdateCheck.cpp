#include "commands/UpdateCheck.h"

#include "base/Arrivals.h"
#include "files/FileName.h"
#include "model/Launching.h"
#include "platform/Alerts.h"
#include "platform/VersionServer.h"
#include "settings/VersionText.h"

#include <QCoreApplication>
#include <QLoggingCategory>

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.update")

Alert information(const QString &text)
{
    Alert alert = Alert::error(text);
    alert.style = Alert::Style::Informational;
    alert.title = localized("Twinleaf - Information");
    return alert;
}

} // namespace

UpdateCheck::UpdateCheck(VersionServer &versionServer, Launching &launcher, Alerts &alertsToAsk,
                         Addresses addresses, QString version)
    : server(versionServer)
    , launching(launcher)
    , alerts(alertsToAsk)
    , _addresses(std::move(addresses))
    , _version(std::move(version))
{
}

void UpdateCheck::checkForNewerVersion()
{
    qCInfo(log).noquote() << "Current version of Twinleaf:" << _version;
    qCInfo(log) << "Downloading version informations...";
    if (!server.fetch(_addresses.versionFile, [this](const std::optional<QByteArray> &received) {
            Arrivals::deliver(QCoreApplication::instance(),
                              [this, received] { compare(received); });
        }))
        alerts.ask(Alert::error(localized("Cannot download version informations! Is the computer "
                                          "connected to the internet?")));
}

void UpdateCheck::compare(const std::optional<QByteArray> &received)
{
    if (!received) {
        // Kept: a connection that fails later is only logged.
        qCWarning(log) << "The version informations could not be downloaded.";
        return;
    }
    qCInfo(log).noquote() << "Newest version:" << FileName::shown(QString::fromUtf8(*received));
    const qint32 current = VersionText::hexValue(_version.toUtf8());
    const qint32 newest = VersionText::hexValue(*received);
    if (current == newest) {
        alerts.ask(information(
            localized("Your version of Twinleaf is up to date, you have the newest version!")));
    } else if (current > newest) {
        alerts.ask(
            Alert::error(localized("Cannot calculate version informations. Please try again!")));
    } else {
        Alert question =
            Alert::question(localized("A newer version is available! Do you want to download it?"));
        question.title = localized("Twinleaf - Information");
        if (alerts.ask(question) == Alert::Yes)
            launching.openAddress(_addresses.downloadPage);
    }
}
