#include "sheets/trash/TrashWork.h"

#include "files/FileName.h"
#include "files/FolderWalk.h"

using namespace Qt::StringLiterals;

namespace {

constexpr std::chrono::milliseconds BetweenLooks { 100 };

} // namespace

TrashWork::TrashWork(TrashCan &trashCan)
    : trash(trashCan)
{
    _looks.setInterval(BetweenLooks);
    _looks.callOnTimeout(this, [this] { Q_EMIT progressed(_shared->done); });
}

std::shared_ptr<TrashWork::Shared> TrashWork::begin(qsizetype items)
{
    _shared = std::make_shared<Shared>();
    _looks.start();
    Q_EMIT workingChanged(items);
    return _shared;
}

void TrashWork::ended()
{
    _looks.stop();
    _shared.reset();
    Q_EMIT workingChanged(0);
}

void TrashWork::list(const std::function<void(const Contents &)> &take)
{
    _listings.drop();
    _listings.start(
        [can = &trash] { // worker thread
            Contents contents;
            contents.items = can->items(&contents.unread);
            return contents;
        },
        take);
}

void TrashWork::count(const QList<TrashedItem> &items,
                      const std::function<void(std::optional<qint64>)> &take)
{
    _work.start(
        [shared = begin(items.size()), items] { // worker thread
            qint64 total = 0;
            for (const TrashedItem &item : items) {
                if (item.status.kind == FileKind::Directory)
                    walkFiles(item.path(), shared->stop, [&](qint64 size) { total += size; });
                else
                    total += item.status.size;
                if (shared->stop)
                    return std::optional<qint64>();
                ++shared->done;
            }
            return std::optional(total);
        },
        [this, take](const std::optional<qint64> &total) {
            ended();
            take(total);
        });
}

void TrashWork::run(const QList<TrashedItem> &items,
                    const std::function<TrashEnd(const TrashedItem &)> &step,
                    const std::function<void(const End &)> &take)
{
    _work.start(
        [shared = begin(items.size()), items, step] { // worker thread
            End end;
            for (const TrashedItem &item : items) {
                if (shared->stop)
                    break;
                const TrashEnd one = step(item);
                if (one.what == TrashEnd::Done)
                    ++end.done;
                else if (one.what == TrashEnd::NoFolder)
                    end.homeless.append(item);
                else
                    end.failed.append(FileName::shown(item.formerName()) + u": "_s + one.reason);
                ++shared->done;
            }
            return end;
        },
        [this, take](const End &end) {
            ended();
            take(end);
        });
}

void TrashWork::putBack(const QList<TrashedItem> &items, TrashCan::Folders folders,
                        const std::function<void(const End &)> &take)
{
    run(
        items,
        [can = &trash, folders](const TrashedItem &item) { return can->putBack(item, folders); },
        take);
}

void TrashWork::remove(const QList<TrashedItem> &items,
                       const std::function<void(const End &)> &take)
{
    run(
        items, [can = &trash](const TrashedItem &item) { return can->remove(item); }, take);
}

void TrashWork::cancel()
{
    if (_shared)
        _shared->stop = true;
}

bool TrashWork::end(QDeadlineTimer deadline)
{
    cancel();
    _looks.stop();
    const bool listed = _listings.end(deadline);
    return _work.end(deadline) && listed;
}
