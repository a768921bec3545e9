#include "indexer/Documents.h"

#include "indexer/Log.h"
#include "search/UserAttributes.h"

#include <QElapsedTimer>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 AtOnce = 20; // milliseconds of work between two looks at what changed
constexpr int PendingAtOnce = 256; // folders
constexpr qint64 WithoutReader = 60000; // milliseconds until it is tried again
constexpr qint64 Unnoticed = 2000; // milliseconds that what changed may be unknown
constexpr int MostTries = 3; // of a file whose reading did not come to an end

} // namespace

Documents::Documents(IndexWriter &index, DocumentWriter &writer, Tree &tree, Reading &reading,
                     qint64 waitWhenLate)
    : _index(index)
    , _writer(writer)
    , _tree(tree)
    , _reading(reading)
    , _waitWhenLate(waitWhenLate)
{
}

void Documents::changed(qint64 folder)
{
    _mayBeMore = true;
    _left.clear();
    _later.remove(folder);
    if (const auto open = _open.find(folder); open != _open.end())
        open->again = true;
    else if (!_urgent.contains(folder))
        _urgent.append(folder);
}

void Documents::allMayHaveChanged()
{
    _mayBeMore = true;
    _left.clear();
    for (Open &open : _open)
        open.again = true;
}

bool Documents::work(qint64 now)
{
    bool worked = takeAnswers(now);
    tellWhatIsBehind(now);
    if (now < _noReaderUntil)
        return worked;
    _noReaderUntil = 0;
    QElapsedTimer spent;
    spent.start();
    while (_reading.hasRoom() && spent.elapsed() < AtOnce) {
        if (_current == 0 && !beginNext(now))
            break;
        worked = true;
        if (PackedItem item; _folder.rest.next(item))
            feed(item, now);
        else
            endFeeding();
    }
    return worked;
}

std::optional<qint64> Documents::nextTime() const
{
    std::optional<qint64> next;
    for (const qint64 time : _later)
        next = std::min(next.value_or(time), time);
    if (_noReaderUntil != 0)
        next = std::max(next.value_or(0), _noReaderUntil);
    if (_tellAt != 0)
        next = std::min(next.value_or(_tellAt), _tellAt);
    return next;
}

void Documents::tellWhatIsBehind(qint64 now)
{
    const bool isBehind = !_urgent.isEmpty()
        || std::any_of(_open.cbegin(), _open.cend(), [](const Open &open) { return open.urgent; });
    if (!isBehind) {
        _behindSince = now;
        _toldBehind.clear();
    }
    const bool isUnnoticed = now - _behindSince < Unnoticed;
    _tellAt = isBehind && isUnnoticed ? _behindSince + Unnoticed : 0;
    if (isUnnoticed)
        return;
    QList<qint64> waiting = _urgent;
    for (auto open = _open.cbegin(); open != _open.cend(); ++open) {
        if (open->urgent)
            waiting.append(open.key());
    }
    for (const qint64 folder : std::as_const(waiting)) {
        if (!_toldBehind.contains(folder)) {
            _toldBehind.insert(folder);
            _index.setUnknown(folder);
        }
    }
}

bool Documents::takeAnswers(qint64 now)
{
    bool taken = false;
    while (auto answer = _reading.take()) {
        taken = true;
        const DocumentWriter::Document &document = answer->document;
        const qint64 folder = document.folder;
        const bool hasNoReader = answer->outcome == ForeignFiles::Outcome::NoReader;
        if (!std::exchange(_hadNoReader, hasNoReader) && hasNoReader)
            qCWarning(indexLog) << "twinleaf-reader cannot be started: names only";
        if (hasNoReader) {
            _noReaderUntil = now + WithoutReader;
            _open[folder].later = _noReaderUntil;
        } else if (isTriedAgain(*answer)) {
            _open[folder].later = now + _waitWhenLate;
        } else {
            if (_open[folder].urgent)
                _busy.wasRead(folder, document.name, document.stamp, now, answer->duration);
            // It may have gone, with its folder, while it was read.
            if (_index.placeOf(folder))
                _writer.put(document);
        }
        --_open[folder].asked;
        endIfDone(folder);
    }
    return taken;
}

// It was no fault of the file, unless that happens each time.
bool Documents::isTriedAgain(const Reading::Answer &answer)
{
    const auto file = std::pair(answer.document.folder, answer.document.name);
    if (answer.outcome == ForeignFiles::Outcome::Late && ++_late[file] < MostTries)
        return true;
    _late.remove(file);
    return false;
}

bool Documents::beginNext(qint64 now)
{
    for (auto later = _later.begin(); later != _later.end();) {
        if (now < *later) {
            ++later;
            continue;
        }
        _urgent.append(later.key());
        later = _later.erase(later);
    }
    while (!_urgent.isEmpty()) {
        const qint64 folder = _urgent.takeFirst();
        if (const auto open = _open.find(folder); open != _open.end())
            open->again = true;
        else if (begin(folder, true))
            return true;
    }
    for (;;) {
        if (_pending.isEmpty() && _mayBeMore) {
            // Some of them are left or under way; more are behind these.
            const int most = PendingAtOnce + int(_open.size() + _later.size() + _left.size());
            for (const qint64 folder : _index.pendingFolders(most)) {
                if (!_open.contains(folder) && !_later.contains(folder) && !_left.contains(folder))
                    _pending.prepend(folder);
            }
            _mayBeMore = !_pending.isEmpty();
        }
        if (_pending.isEmpty())
            return false;
        const qint64 folder = _pending.takeLast();
        if (!_open.contains(folder) && !_later.contains(folder) && begin(folder, false))
            return true;
    }
}

bool Documents::begin(qint64 folder, bool urgent)
{
    _folder = {};
    _folder.items = _index.itemsIn(folder);
    if (_folder.items.isNull())
        return false; // it is gone
    _folder.opened = _tree.open(folder);
    if (!_folder.opened.isOpen()) {
        _left.insert(folder);
        return false;
    }
    _folder.urgent = urgent;
    _folder.rest = PackedItems(_folder.items);
    _folder.known = _writer.documentsIn(folder);
    if (!_folder.known.isEmpty()) {
        QHash<QByteArray, DocumentWriter::Known> gone = _folder.known;
        PackedItems items(_folder.items);
        for (PackedItem item; items.next(item);)
            gone.remove(item.name.toByteArray());
        for (const DocumentWriter::Known &one : std::as_const(gone))
            _writer.remove(one.id);
    }
    _current = folder;
    _open.insert(folder, { .urgent = urgent });
    return true;
}

void Documents::feed(const PackedItem &item, qint64 now)
{
    const QByteArray name = item.name.toByteArray();
    const auto known = _folder.known.constFind(name);
    const bool isKnown = known != _folder.known.constEnd();
    if (isKnown && known->stamp == item.stamp)
        return;
    const bool mayBeTagged = item.type == DT_REG || item.type == DT_DIR;
    const QByteArray path =
        "/proc/self/fd/" + QByteArray::number(_folder.opened.number()) + '/' + name;
    DocumentWriter::Document document { _current, name, item.stamp, IndexFile::Outcome::Nothing };
    if (mayBeTagged)
        document.attributes = userAttributes(path);
    if (_kinds.isOffered(item) && read(item, document, now))
        return;
    if (!document.attributes.isEmpty())
        _writer.put(document);
    else if (isKnown)
        _writer.remove(known->id);
}

// False: there is nothing of it to read.
bool Documents::read(const PackedItem &item, DocumentWriter::Document document, qint64 now)
{
    Open &open = _open[_current];
    if (const qint64 wait = _busy.waitFor(_current, document.name, item.stamp, now)) {
        open.later = open.later == 0 ? now + wait : std::min(open.later, now + wait);
        return true;
    }
    Descriptor file(::openat(_folder.opened.number(), document.name,
                             O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status { };
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    document.stamp = PackedItem::stampOf(status);
    ++open.asked;
    _reading.ask({ std::move(document), std::move(file) },
                 _folder.urgent ? Reading::Turn::Next : Reading::Turn::Last);
    return true;
}

void Documents::endFeeding()
{
    _folder = {};
    const qint64 folder = std::exchange(_current, 0);
    _open[folder].wasFed = true;
    endIfDone(folder);
}

void Documents::endIfDone(qint64 folder)
{
    const Open open = _open.value(folder);
    if (!open.wasFed || open.asked > 0)
        return;
    _open.remove(folder);
    if (open.again)
        _urgent.append(folder);
    else if (open.later != 0)
        _later.insert(folder, open.later);
    else
        _index.endPending(folder);
}
