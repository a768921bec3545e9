#include "indexer/Session.h"

#include "files/MountTable.h"
#include "indexer/Log.h"

#include <algorithm>
#include <chrono>
#include <limits>
#include <poll.h>
#include <unistd.h>

namespace {

constexpr qint64 Never = std::numeric_limits<qint64>::max();
constexpr qint64 BetweenLooks = 100; // milliseconds: a storm of changes is taken in gusts
constexpr qint64 Portion = 1000; // milliseconds that a transaction lasts at most
constexpr qint64 MostText = 16 * 1024 * 1024; // bytes of text in one
// What is not watched is walked again at a price of at most so much of the time.
constexpr qint64 TimesRefresh = 100;
// Of a folder that takes long to read.
constexpr qint64 TimesReading = 10;
// Its row is written whole, so that one of many items is not written at each step of a download.
constexpr qint64 BytesPerMillisecond = 100;
constexpr qint64 LongestRest = 30000; // milliseconds
// But what changes in it now and then is known at once.
constexpr qint64 ShortRest = 1000; // milliseconds
constexpr int MostShortRests = 10; // in a row

} // namespace

Session::Session(ForeignFiles &files, const Indexer::LeftOut &leftOut,
                 const Indexer::Limits &limits, const IndexLock &alone,
                 const std::atomic<bool> &stopped, int wake)
    : _times(limits.times)
    , _alone(alone)
    , _stopped(stopped)
    , _wake(wake)
    , _index(IndexFile::path())
    , _files(files)
    , _leftOut(leftOut)
    , _mostWatches(limits.watches)
{
}

Session::End Session::run(const std::function<void()> &idle)
{
    switch (_index.open()) {
    case IndexFile::State::Good:
        break;
    case IndexFile::State::Damaged:
    case IndexFile::State::Foreign:
        return End::Damaged;
    case IndexFile::State::None:
    case IndexFile::State::Blocked:
        qCWarning(indexLog) << "the index cannot be written:" << IndexFile::path()
                            << _index.database().faultText();
        return End::Later;
    }
    _writer.emplace(_index);
    _watches.emplace(_mostWatches < 0 ? Watches::defaultMost() : _mostWatches);
    _listed = _leftOut();
    _tree.emplace(_index, *_writer, *_watches, WalkRules(_listed));
    _reading.emplace(_files);
    _documents.emplace(_index, *_writer, *_tree, *_reading, _times.late);
    _lookAt = now() + _times.look;
    // What happened while nobody followed it is not in it yet.
    _index.setNamesWhole(false);
    if (!commit() || !refresh())
        return fault().value_or(_stopped ? End::Stopped : End::Later);
    while (!_stopped) {
        takeChanges();
        updateChanged();
        if (_refreshAt >= 0 && now() >= _refreshAt && !refresh())
            break;
        bool working = _documents->work(now());
        if (!working && _changed.isEmpty() && now() - _lastChange >= _times.quiet)
            working = _tree->removeSome();
        if (!commitInPortions())
            break;
        if (now() >= _lookAt) {
            if (const auto end = fault())
                return *end;
            _lookAt = now() + _times.look;
        }
        if (!working && !_documents->isReading() && _changed.isEmpty()) {
            if (!commit())
                break;
            idle();
        }
        wait(working);
    }
    if (_stopped && commit())
        return End::Stopped;
    return fault().value_or(_stopped ? End::Stopped : End::Later);
}

bool Session::refresh()
{
    const qint64 begin = now();
    _refreshAt = -1;
    const bool ended = _tree->refresh([this] {
        takeChanges();
        return !_stopped && commitInPortions();
    });
    _documents->allMayHaveChanged();
    _refreshTook = now() - begin;
    const bool isWhole = std::exchange(_refreshAt, -1) < 0;
    // What another machine writes to the disk is told to nobody here.
    const bool isElsewhere = MountTable::current().slowMountOnTheWay(IndexFile::homePath());
    if (!isWhole)
        allMayHaveChanged(now());
    else if (_watches->isShort() || isElsewhere)
        _refreshAt = now() + std::max(_times.refresh, _refreshTook * TimesRefresh);
    if (!ended)
        return false;
    _index.setNamesWhole(isWhole);
    return commit();
}

void Session::takeChanges()
{
    const qint64 time = now();
    if (time - _watched < BetweenLooks)
        return;
    _watched = time;
    const Watches::Changes changes = _watches->take();
    for (const qint64 folder : changes.folders) {
        _lastChange = time;
        if (!_changed.contains(folder))
            _changed.insert(folder, std::max(time + _times.coalesce, _rests.value(folder).end));
    }
    if (changes.lost)
        allMayHaveChanged(time);
}

// All is looked at, but not all the time.
void Session::allMayHaveChanged(qint64 time)
{
    _index.setNamesWhole(false);
    const qint64 next = time + _refreshTook * TimesReading;
    _refreshAt = _refreshAt < 0 ? next : std::min(_refreshAt, next);
}

void Session::updateChanged()
{
    const qint64 time = now();
    QList<qint64> due;
    for (auto folder = _changed.cbegin(); folder != _changed.cend(); ++folder) {
        if (folder.value() <= time)
            due.append(folder.key());
    }
    if (due.isEmpty())
        return;
    _rests.removeIf([time](const auto &one) { return one.value().forgotten <= time; });
    for (const qint64 folder : std::as_const(due)) {
        if (_stopped)
            return;
        _changed.remove(folder);
        const qint64 begin = now();
        if (!_tree->update(folder, [this] { return !_stopped && commitInPortions(); })) {
            if (_tree->homeIsInPlace())
                allMayHaveChanged(begin); // the machine was short of something
            else
                _refreshAt = begin;
        }
        rest(folder, begin);
        _documents->changed(folder);
    }
}

void Session::rest(qint64 folder, qint64 begin)
{
    const qint64 end = now();
    const qint64 full =
        std::max(_times.betweenReadings,
                 std::min(LongestRest,
                          std::max((end - begin) * TimesReading,
                                   qint64(_index.itemsIn(folder).size()) / BytesPerMillisecond)));
    Rest &rest = _rests[folder];
    rest.end = end + (++rest.inARow > MostShortRests ? full : std::min(full, ShortRest));
    rest.forgotten = rest.end + full * MostShortRests;
}

bool Session::commitInPortions()
{
    if (_index.database().fault() != 0)
        return false;
    if (!_index.hasChanges()) {
        _uncommittedSince = now();
        return true;
    }
    _written += _writer->takeWritten();
    return (now() - _uncommittedSince < Portion && _written < MostText) || commit();
}

bool Session::commit()
{
    _uncommittedSince = now();
    _written = 0;
    return _index.commit();
}

void Session::wait(bool working)
{
    constexpr qint64 Longest = 3600000; // milliseconds
    const qint64 left = working ? 0 : std::clamp(nextTime() - now(), qint64(0), Longest);
    pollfd sources[] = {
        { _wake, POLLIN, 0 },
        { _reading->descriptor(), POLLIN, 0 },
        { _watches->descriptor(), POLLIN, 0 },
    };
    // Changes that come in a storm are looked at a few times a second.
    const qint64 first = std::clamp(_watched + BetweenLooks - now(), qint64(0), left);
    if (::poll(sources, 2, int(first)) == 0 && left > first)
        ::poll(sources, 3, int(left - first));
}

qint64 Session::nextTime() const
{
    qint64 next = _lookAt;
    for (const qint64 time : _changed)
        next = std::min(next, time);
    if (_refreshAt >= 0)
        next = std::min(next, _refreshAt);
    if (_index.hasChanges())
        next = std::min(next, _uncommittedSince + Portion);
    if (_lastChange != 0 && now() - _lastChange < _times.quiet)
        next = std::min(next, _lastChange + _times.quiet);
    return std::min(next, _documents->nextTime().value_or(Never));
}

std::optional<Session::End> Session::fault()
{
    const Database &database = _index.database();
    if (!_index.isInPlace() || !_alone.isInPlace()) {
        qCWarning(indexLog) << "the index is gone or another one: it is made anew";
        return End::Replaced;
    }
    if (database.fault() != 0) {
        qCWarning(indexLog) << "the index cannot be written:" << database.faultText();
        return database.isDamaged() ? End::Damaged : End::Later;
    }
    if (!_tree->homeIsInPlace() || _leftOut() != _listed)
        return End::Replaced;
    return std::nullopt;
}

qint64 Session::now()
{
    return std::chrono::duration_cast<std::chrono::milliseconds>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}
