#include "platform/desktop/ShowAddresses.h"

#include "files/FileName.h"
#include "files/FileUrls.h"

#include <QLoggingCategory>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

Q_LOGGING_CATEGORY(log, "twinleaf.requests")

constexpr qsizetype MostLines = 5; // one for each of a thousand would hide what matters
constexpr qsizetype LongestShown = 200; // letters of an address

QString refusal(const QString &address)
{
    const QString shown = FileName::shown(address.left(LongestShown))
        + (address.size() > LongestShown ? u"..."_s : QString());
    if (address.startsWith("file:"_L1, Qt::CaseInsensitive))
        return u"Not shown: '%1' is no file of this machine"_s.arg(shown);
    const qsizetype colon = address.indexOf(u':');
    return colon > 0 && !address.left(colon).contains(u'/')
        ? u"Not shown: '%1' is remote; only file: addresses are taken"_s.arg(shown)
        : u"Not shown: '%1' is no address"_s.arg(shown);
}

} // namespace

ShowAddresses readShowAddresses(const QStringList &addresses)
{
    ShowAddresses read;
    QSet<QString> seen;
    qsizetype refused = 0;
    const QStringList taken = addresses.mid(0, ShowAddresses::Most);
    for (const QString &address : taken) {
        if (const auto path = FileUrls::pathOf(address.toUtf8())) {
            if (const qsizetype known = seen.size(); seen.insert(*path), seen.size() > known)
                read.paths.append(*path);
        } else if (++refused <= MostLines) {
            read.refusals.append(refusal(address));
        }
    }
    if (refused > MostLines)
        read.refusals.append(u"Not shown: %1 more addresses"_s.arg(refused - MostLines));
    if (addresses.size() > taken.size())
        read.refusals.append(
            u"Not shown: %1 addresses beyond the first %2"_s.arg(addresses.size() - taken.size())
                .arg(taken.size()));
    for (const QString &line : std::as_const(read.refusals))
        qCWarning(log, "%s", qUtf8Printable(line));
    return read;
}
