#include "platform/desktop/MountWatch.h"

#include "files/FileName.h"
#include "files/FileStatus.h"
#include "files/MountTable.h"

#include <QSocketNotifier>

#include <algorithm>
#include <fcntl.h>
#include <glib.h>
#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

bool anyMissing(const QStringList &wanted, const QStringList &points)
{
    return std::any_of(wanted.begin(), wanted.end(),
                       [&](const QString &point) { return !points.contains(point); });
}

} // namespace

QString volumesFolder()
{
    // Neither need be there before the first volume is; where "/media" is, it will be in there.
    const QString user = FileName::fromBytes(g_get_user_name());
    QString media = "/media/"_L1 + user;
    QString runMedia = "/run/media/"_L1 + user;
    if (exists(media) || (exists(u"/media"_s) && !exists(runMedia)))
        return media;
    return runMedia;
}

QStringList localVolumePoints()
{
    QStringList points;
    const QString volumes = volumesFolder();
    const MountTable table = MountTable::current();
    for (const Mount &mount : table.mounts()) {
        if (MountTable::isVolume(mount, volumes) && !points.contains(mount.point))
            points.append(mount.point);
    }
    std::stable_partition(points.begin(), points.end(),
                          [](const QString &point) { return point == u"/"; });
    return points;
}

MountWatch::MountWatch(QObject *parent)
    : QObject(parent)
    , _table(open("/proc/self/mountinfo", O_RDONLY | O_CLOEXEC))
    , _points(localVolumePoints())
{
    _pause.setSingleShot(true);
    _pause.setInterval(200ms);
    connect(&_pause, &QTimer::timeout, this, &MountWatch::compare);
    if (_table < 0)
        return;
    auto *notifier = new QSocketNotifier(_table, QSocketNotifier::Exception, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        if (!_pause.isActive())
            _pause.start();
    });
}

MountWatch::~MountWatch()
{
    // The notifier goes first: it must not watch a number that may be another file's by then.
    delete findChild<QSocketNotifier *>();
    if (_table >= 0)
        close(_table);
}

void MountWatch::compare()
{
    const QStringList before = std::exchange(_points, localVolumePoints());
    if (anyMissing(_points, before))
        Q_EMIT volumeDidMount();
    if (anyMissing(before, _points))
        Q_EMIT volumeDidUnmount();
}
