#include "search/IndexReader.h"

#include "files/FileName.h"
#include "search/DocumentCandidates.h"
#include "search/IndexLock.h"
#include "search/SearchedAttributes.h"
#include "search/StoredDocument.h"

#include <sqlite3.h>

namespace {

constexpr int StepsBetweenLooks = 10'000; // of SQLite's machine: well under a millisecond
constexpr char FolderUnderWay[] = ""; // not null, and no path

} // namespace

IndexReader::IndexReader(QString path, const std::atomic<bool> &stop)
    : _path(std::move(path))
    , _stop(stop)
{
}

bool IndexReader::begin()
{
    end();
    if (const auto file = IndexFile::identity(_path); !_database.isOpen() || file != _file) {
        _parent = {};
        _file = file;
        if (IndexFile::openForReading(_path, _database) != IndexFile::State::Good) {
            _database.close();
            return false;
        }
        // So that also a statement with a single answer, far away, is stopped.
        sqlite3_progress_handler(
            _database.connection(), StepsBetweenLooks,
            [](void *stop) { return int(static_cast<std::atomic<bool> *>(stop)->load()); },
            const_cast<std::atomic<bool> *>(&_stop));
        _parent = Statement(_database, "SELECT parent, name FROM folder WHERE id = ?");
    }
    _database.clearFault();
    _isFollowed = IndexLock::isHeldByAny();
    _paths = { { IndexFile::Home, FileName::toBytes(IndexFile::homePath()) } };
    _database.run("BEGIN");
    _hasAllNames = _isFollowed && IndexFile::state(_database, IndexFile::Key::Names) == 1;
    _hasAll = _hasAllNames
        && _database.number("SELECT EXISTS(SELECT 1 FROM folder WHERE pending AND pending = 2)")
            == 0;
    _version = _database.number("PRAGMA data_version");
    if (_database.fault() == 0)
        return true;
    _database.close();
    return false;
}

void IndexReader::end()
{
    if (_database.isOpen() && !sqlite3_get_autocommit(_database.connection()))
        _database.run("ROLLBACK");
}

bool IndexReader::hasChanged()
{
    if (!_database.isOpen()) {
        Database probe; // one that is being made becomes good while it stays the same file
        return IndexFile::openForReading(_path, probe) == IndexFile::State::Good;
    }
    return IndexLock::isHeldByAny() != _isFollowed || IndexFile::identity(_path) != _file
        || _database.number("PRAGMA data_version") != _version;
}

bool IndexReader::failed() const
{
    return _database.fault() != 0 && (_database.fault() & 0xFF) != SQLITE_INTERRUPT;
}

void IndexReader::findNames(const TextMatch &match, const TakeHit &take)
{
    TextMatch own(match);
    Statement folders(_database, "SELECT folder, items FROM names");
    while (!_stop && folders.next()) {
        QByteArray path;
        PackedItem item;
        for (PackedItems items(folders.bytes(1)); items.next(item);) {
            if (!own.matches(item.name))
                continue;
            if (path.isNull())
                path = pathOf(folders.number(0));
            if (path.isEmpty())
                break;
            take(path, item.name);
        }
    }
}

void IndexReader::findDocuments(const QueryText &query, const TextMatch &match,
                                const TakeRead &take)
{
    TextMatch own(match);
    Statement document(_database,
                       "SELECT folder, name, size, modified, changed, inode, attributes, text"
                       " FROM document WHERE id = ?");
    QByteArray text;
    const auto isHit = [&](DocumentCandidates::In in) {
        if (in == DocumentCandidates::In::Content) {
            StoredDocument::textOf(document.bytes(7), text);
            return own.matches(text);
        }
        bool found = false;
        eachSearchedText(
            StoredDocument::attributesOf(document.bytes(6)),
            [&](const QString &value) { found = found || own.matches(FileName::toBytes(value)); });
        return found;
    };
    const auto look = [&](DocumentCandidates::In in) {
        eachCandidate(_database, query, in,
                      [&](qint64 id, DocumentCandidates::Certainty certainty) {
                          document.bind(1, id);
                          if (document.next()
                              && (certainty == DocumentCandidates::Certainty::Is || isHit(in))) {
                              const QByteArray path = pathOf(document.number(0));
                              if (!path.isEmpty())
                                  take(path, document.bytes(1),
                                       { .size = document.number(2),
                                         .modified = document.number(3),
                                         .changed = document.number(4),
                                         .inode = quint64(document.number(5)) });
                          }
                          document.reset();
                          return !_stop;
                      });
    };
    look(DocumentCandidates::In::Properties);
    if (query.content)
        look(DocumentCandidates::In::Content);
}

// The paths that were asked for are kept: hits lie beside each other.
QByteArray IndexReader::pathOf(qint64 folder)
{
    const auto known = _paths.constFind(folder);
    if (known != _paths.constEnd())
        return *known;
    _paths.insert(folder, FolderUnderWay); // a damaged file may lead round in a circle
    _parent.bind(1, folder);
    QByteArray name;
    qint64 parent = 0;
    if (_parent.next()) {
        parent = _parent.number(0);
        name = _parent.bytes(1).toByteArray();
    }
    _parent.reset();
    const QByteArray above = parent > 0 && !name.isEmpty() ? pathOf(parent) : QByteArray();
    if (above.isEmpty())
        return QByteArray(FolderUnderWay);
    QByteArray path = above.size() == 1 ? above + name : above + '/' + name;
    _paths.insert(folder, path);
    return path;
}
