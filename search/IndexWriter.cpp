#include "search/IndexWriter.h"

namespace {

std::optional<qint64> firstNumber(Statement &rows)
{
    std::optional<qint64> number;
    if (rows.next())
        number = rows.number(0);
    rows.reset();
    return number;
}

} // namespace

struct IndexWriter::Statements {
    explicit Statements(Database &database)
        : begin(database, "BEGIN IMMEDIATE")
        , commit(database, "COMMIT")
        , setState(database, "INSERT OR REPLACE INTO state VALUES(?, ?)")
        , foldersIn(database, "SELECT id, name, inode FROM folder WHERE parent = ?")
        , firstFolderIn(database, "SELECT id FROM folder WHERE parent = ? LIMIT 1")
        , folderWithInode(database, "SELECT id FROM folder WHERE inode = ? LIMIT 1")
        , placeOf(database, "SELECT parent, name FROM folder WHERE id = ?")
        , addFolder(database, "INSERT INTO folder VALUES(?, ?, ?, ?, 0, 0)")
        , moveFolder(database, "UPDATE folder SET parent = ?, name = ? WHERE id = ?")
        , setInode(database, "UPDATE folder SET inode = ? WHERE id = ?")
        , removeFolder(database, "DELETE FROM folder WHERE id = ?")
        , removeItems(database, "DELETE FROM names WHERE folder = ?")
        , itemsIn(database, "SELECT items FROM names WHERE folder = ?")
        , setItems(database, "INSERT OR REPLACE INTO names VALUES(?, ?, ?)")
        , setNewest(database,
                    "UPDATE folder SET pending = max(pending, ?), newest = ? WHERE id = ?")
        , pending(database, "SELECT id FROM folder WHERE pending ORDER BY newest DESC LIMIT ?")
        , endPending(database, "UPDATE folder SET pending = 0 WHERE id = ?")
        , allPending(database, "UPDATE folder SET pending = ? WHERE pending")
        , setUnknown(database, "UPDATE folder SET pending = ? WHERE id = ? AND pending")
    {
    }

    Statement begin;
    Statement commit;
    Statement setState;
    Statement foldersIn;
    Statement firstFolderIn;
    Statement folderWithInode;
    Statement placeOf;
    Statement addFolder;
    Statement moveFolder;
    Statement setInode;
    Statement removeFolder;
    Statement removeItems;
    Statement itemsIn;
    Statement setItems;
    Statement setNewest;
    Statement pending;
    Statement endPending;
    Statement allPending;
    Statement setUnknown;
    qint64 nextFolder = IndexFile::Home + 1;
};

IndexWriter::IndexWriter(const QString &path)
    : _path(path)
{
}

IndexWriter::~IndexWriter() = default;

IndexFile::State IndexWriter::open()
{
    const IndexFile::State state = IndexFile::openForWriting(_path, _database);
    if (state != IndexFile::State::Good)
        return state;
    _identity = IndexFile::identity(_path);
    _statements = std::make_unique<Statements>(_database);
    _statements->nextFolder =
        std::max(_database.number("SELECT max(id) FROM folder"), IndexFile::Home) + 1;
    _generation = IndexFile::state(_database, IndexFile::Key::Generation);
    _namesAreWhole = IndexFile::state(_database, IndexFile::Key::Names) != 0;
    if (_database.fault() != 0)
        return _database.isDamaged() ? IndexFile::State::Damaged : IndexFile::State::Blocked;
    return state;
}

bool IndexWriter::isInPlace() const
{
    return _identity && IndexFile::identity(_path) == _identity;
}

qint64 IndexWriter::generation()
{
    if (!_changed) {
        _changed = true;
        _statements->begin.run();
    }
    return _generation + 1;
}

bool IndexWriter::commit()
{
    if (!_changed)
        return _database.fault() == 0;
    _statements->setState.bindText(1, IndexFile::Key::Generation).bind(2, _generation + 1).run();
    // With a fault in it, it is not to stand.
    if (_database.fault() != 0 || !_statements->commit.run())
        return false;
    ++_generation;
    _changed = false;
    return true;
}

void IndexWriter::setNamesWhole(bool whole)
{
    if (whole == _namesAreWhole)
        return;
    generation();
    _statements->setState.bindText(1, IndexFile::Key::Names).bind(2, whole).run();
    if (!whole)
        _statements->allPending.bind(1, qint64(IndexFile::Pending::Unknown)).run();
    _namesAreWhole = whole;
}

QList<IndexWriter::Folder> IndexWriter::foldersIn(qint64 parent)
{
    QList<Folder> folders;
    Statement &rows = _statements->foldersIn.bind(1, parent);
    while (rows.next())
        folders.append({ rows.number(0), rows.bytes(1).toByteArray(), quint64(rows.number(2)) });
    return folders;
}

std::optional<qint64> IndexWriter::firstFolderIn(qint64 parent)
{
    return firstNumber(_statements->firstFolderIn.bind(1, parent));
}

std::optional<qint64> IndexWriter::folderWithInode(quint64 inode)
{
    return firstNumber(_statements->folderWithInode.bind(1, qint64(inode)));
}

std::optional<IndexWriter::Place> IndexWriter::placeOf(qint64 folder)
{
    Statement &row = _statements->placeOf.bind(1, folder);
    std::optional<Place> place;
    if (row.next())
        place = Place { row.number(0), row.bytes(1).toByteArray() };
    row.reset();
    return place;
}

qint64 IndexWriter::addFolder(qint64 parent, QByteArrayView name, quint64 inode)
{
    generation();
    const qint64 id = parent == 0 ? IndexFile::Home : _statements->nextFolder++;
    // An empty name is no NULL.
    _statements->addFolder.bind(1, id)
        .bind(2, parent)
        .bindBytes(3, name.isNull() ? QByteArrayView("") : name)
        .bind(4, qint64(inode))
        .run();
    return id;
}

void IndexWriter::moveFolder(qint64 folder, qint64 parent, QByteArrayView name)
{
    generation();
    _statements->moveFolder.bind(1, parent).bindBytes(2, name).bind(3, folder).run();
}

void IndexWriter::setInode(qint64 folder, quint64 inode)
{
    generation();
    _statements->setInode.bind(1, qint64(inode)).bind(2, folder).run();
}

void IndexWriter::removeFolder(qint64 folder)
{
    generation();
    _statements->removeItems.bind(1, folder).run();
    _statements->removeFolder.bind(1, folder).run();
}

QByteArray IndexWriter::itemsIn(qint64 folder)
{
    Statement &row = _statements->itemsIn.bind(1, folder);
    QByteArray items;
    if (row.next()) {
        const QByteArrayView stored = row.bytes(0);
        items = stored.isEmpty() ? QByteArray("") : stored.toByteArray();
    }
    row.reset();
    return items;
}

void IndexWriter::setItems(qint64 folder, QByteArrayView items, qint64 newest,
                           IndexFile::Pending pending)
{
    const qint64 now = generation();
    _statements->setItems.bind(1, folder)
        .bind(2, now)
        .bindBytes(3, items.isNull() ? QByteArrayView("") : items)
        .run();
    _statements->setNewest.bind(1, qint64(pending)).bind(2, newest).bind(3, folder).run();
}

QList<qint64> IndexWriter::pendingFolders(int limit)
{
    QList<qint64> folders;
    Statement &rows = _statements->pending.bind(1, limit);
    while (rows.next())
        folders.append(rows.number(0));
    return folders;
}

void IndexWriter::endPending(qint64 folder)
{
    generation();
    _statements->endPending.bind(1, folder).run();
}

void IndexWriter::setUnknown(qint64 folder)
{
    generation();
    _statements->setUnknown.bind(1, qint64(IndexFile::Pending::Unknown)).bind(2, folder).run();
}
