#include "search/VanishedItems.h"

#include "files/FileName.h"
#include "search/HitCheck.h"

#include <QHash>

#include <algorithm>
#include <chrono>
#include <sys/stat.h>

using namespace std::chrono_literals;

namespace {

constexpr int QuestionsAtOnce = 20'000; // some 20 ms
constexpr auto Round = 1s;
// The clock of a file system ticks slowly: what changed just now may do so at the same time again.
constexpr qint64 Settled = 100'000'000; // nanoseconds

bool isSettled(qint64 modified)
{
    timespec now {};
    ::clock_gettime(CLOCK_REALTIME, &now);
    return qAbs(PackedItem::nanoseconds(now) - modified) > Settled;
}

} // namespace

void VanishedItems::watch(const FoundItems::Snapshot &found)
{
    QHash<QStringView, size_t> places; // in the folders, from 1
    _folders.clear();
    for (const FoundItems::Item *item : found.order) {
        const qsizetype slash = item->result.path.size() - item->result.displayName.size() - 1;
        const QStringView path = QStringView(item->result.path).first(qMax(slash, 1));
        size_t &place = places[path];
        if (place == 0) {
            _folders.push_back({ .path = FileName::toBytes(path), .stamp = {}, .items = {} });
            place = _folders.size();
        }
        _folders[place - 1].items.push_back(item);
    }
    _items = found.items;
    _next = 0;
    _again = QDeadlineTimer(0);
}

std::vector<const FoundItems::Item *> VanishedItems::look()
{
    std::vector<const FoundItems::Item *> gone;
    if (_next == 0) {
        if (!_again.hasExpired())
            return gone;
        _again = QDeadlineTimer(Round);
    }
    for (int questions = 0; questions < QuestionsAtOnce && _next < _folders.size(); ++_next)
        questions += look(_folders[_next], gone);
    if (_next == _folders.size())
        _next = 0;
    return gone;
}

int VanishedItems::look(Folder &folder, std::vector<const FoundItems::Item *> &gone)
{
    struct stat status { };
    if (::lstat(folder.path, &status) != 0)
        status = {};
    const Stamp stamp { status.st_dev, status.st_ino, PackedItem::nanoseconds(status.st_mtim) };
    if (stamp == folder.stamp && status.st_ino != 0)
        return 1;
    HitCheck check;
    const auto isGone = [&](const FoundItems::Item *item) {
        return !check.exists(folder.path, FileName::toBytes(item->result.displayName));
    };
    std::ranges::copy_if(folder.items, std::back_inserter(gone), isGone);
    folder.stamp = isSettled(stamp.modified) ? stamp : Stamp {};
    return 1 + int(folder.items.size());
}
