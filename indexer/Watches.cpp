#include "indexer/Watches.h"

#include "files/FileName.h"
#include "indexer/Log.h"

#include <QFile>

#include <cerrno>
#include <cstring>
#include <sys/inotify.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int MostWithoutWord = 8192; // the limit of old systems

} // namespace

int Watches::defaultMost()
{
    QFile limit(u"/proc/sys/fs/inotify/max_user_watches"_s);
    const int given =
        limit.open(QIODevice::ReadOnly) ? limit.readAll().trimmed().toInt() : MostWithoutWord;
    // They are the user's, and other programs need some as well.
    return given / 4 * 3;
}

Watches::Watches(int most)
    : _most(most)
{
    if (_events.isOpen())
        return;
    _short = true;
    qCWarning(indexLog) << "no changes are told by the system:" << std::strerror(errno);
}

void Watches::add(qint64 folder, const QByteArray &path)
{
    _ended.remove(folder);
    if (!_events.isOpen() || (_watches.size() >= _most && !_watches.contains(folder))) {
        if (!_short)
            qCWarning(indexLog) << "no more than" << _most << "folders can be watched";
        _short = true;
        return;
    }
    const int watch = _events.add(path);
    if (watch < 0) {
        if (errno == ENOSPC || errno == ENOMEM) {
            if (!_short)
                qCWarning(indexLog) << "the system watches no more folders than" << _watches.size();
            _short = true;
            _most = int(_watches.size());
        }
        return;
    }
    _folders.insert(watch, folder);
    _watches.insert(folder, watch);
}

void Watches::remove(qint64 folder)
{
    _ended.remove(folder);
    const auto found = _watches.constFind(folder);
    if (found == _watches.constEnd())
        return;
    const int watch = *found;
    _watches.erase(found);
    // The same folder may be watched as another one meanwhile.
    if (_folders.value(watch) == folder) {
        _folders.remove(watch);
        _events.remove(watch);
    }
}

Watches::Changes Watches::take()
{
    Changes changes;
    _events.take([&](const inotify_event &event) {
        if (event.mask & IN_Q_OVERFLOW) {
            changes.lost = true;
            return;
        }
        const auto folder = _folders.constFind(event.wd);
        if (folder == _folders.constEnd())
            return;
        if (event.mask & IN_IGNORED) {
            if (_watches.value(*folder) == event.wd) {
                _watches.remove(*folder);
                _ended.insert(*folder);
            }
            _folders.erase(folder);
        } else
            changes.folders.insert(*folder);
    });
    return changes;
}
