#include "search/IndexFile.h"

#include "files/CacheFolder.h"
#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/PathText.h"
#include "files/SystemCalls.h"
#include "settings/BundleInfo.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr qint64 ApplicationId = 0x54574958; // "TWIX"
// Grows with each change of the tables, of what stands in them, of Folding, or of which attributes
// are searched.
constexpr qint64 Version = 2;

// Words are collected in memory (bytes) up to a commit, and segments merged only when there are
// many: it makes the first pass shorter.
constexpr char Schema[] = R"(
BEGIN IMMEDIATE;
CREATE TABLE state(key TEXT PRIMARY KEY, value) WITHOUT ROWID;
CREATE TABLE folder(id INTEGER PRIMARY KEY, parent INTEGER NOT NULL, name BLOB NOT NULL,
    inode INTEGER NOT NULL, pending INTEGER NOT NULL, newest INTEGER NOT NULL);
CREATE UNIQUE INDEX folder_place ON folder(parent, name);
CREATE INDEX folder_inode ON folder(inode);
CREATE INDEX folder_pending ON folder(newest) WHERE pending;
CREATE TABLE names(folder INTEGER PRIMARY KEY, generation INTEGER NOT NULL, items BLOB NOT NULL);
CREATE TABLE document(id INTEGER PRIMARY KEY AUTOINCREMENT, folder INTEGER NOT NULL,
    name BLOB NOT NULL, size INTEGER NOT NULL, modified INTEGER NOT NULL, changed INTEGER NOT NULL,
    inode INTEGER NOT NULL, outcome INTEGER NOT NULL, generation INTEGER NOT NULL,
    attributes BLOB, text BLOB);
CREATE UNIQUE INDEX document_place ON document(folder, name);
CREATE VIRTUAL TABLE property_words USING fts5(words, content='', columnsize=0, detail=none,
    tokenize='ascii');
CREATE VIRTUAL TABLE content_words USING fts5(words, content='', columnsize=0, detail=none,
    tokenize='ascii');
INSERT INTO content_words(content_words, rank) VALUES('hashsize', 16777216);
INSERT INTO content_words(content_words, rank) VALUES('automerge', 0);
)";

// What stands at the path, before SQLite opens it: that waits at a FIFO.
IndexFile::State standing(const QByteArray &path)
{
    struct stat status { };
    if (::lstat(path, &status) != 0)
        return errno == ENOENT ? IndexFile::State::None : IndexFile::State::Blocked;
    if (S_ISREG(status.st_mode))
        return IndexFile::State::Good;
    return status.st_uid == ::geteuid() ? IndexFile::State::Damaged : IndexFile::State::Blocked;
}

// A folder in the index's place may hold something of somebody's.
bool putAside(const QByteArray &path)
{
    return ::rmdir(path) == 0
        || SystemCalls::renameat2(AT_FDCWD, path, AT_FDCWD, path + ".old", RENAME_NOREPLACE) == 0;
}

IndexFile::State stateOfFault(const Database &database)
{
    return database.isDamaged() ? IndexFile::State::Damaged : IndexFile::State::Blocked;
}

bool isOfHome(Database &database)
{
    Statement home(database, "SELECT value FROM state WHERE key = 'home'");
    return home.next() && home.bytes(0) == FileName::toBytes(IndexFile::homePath());
}

IndexFile::State check(Database &database)
{
    const qint64 application = database.number("PRAGMA application_id");
    const qint64 version = database.number("PRAGMA user_version");
    if (database.fault() != 0)
        return stateOfFault(database);
    if (application != ApplicationId || version != Version)
        return IndexFile::State::Foreign;
    const bool ofHome = isOfHome(database);
    if (database.fault() != 0)
        return stateOfFault(database);
    return ofHome ? IndexFile::State::Good : IndexFile::State::Foreign;
}

// All or nothing: a file without tables is one that was not made.
bool make(Database &database)
{
    if (!database.run(Schema))
        return false;
    Statement put(database, "INSERT INTO state VALUES(?, ?)");
    const QByteArray home = FileName::toBytes(IndexFile::homePath());
    put.bindText(1, IndexFile::Key::HomePath).bindBytes(2, home).run();
    const auto number = [](const char *pragma, qint64 value) {
        return QByteArray("PRAGMA ") + pragma + " = " + QByteArray::number(value);
    };
    return database.run(number("application_id", ApplicationId))
        && database.run(number("user_version", Version)) && database.run("COMMIT");
}

} // namespace

QString IndexFile::folder()
{
    return PathText::joined(cacheFolder(), BundleInfo::bundleIdentifier());
}

QString IndexFile::path()
{
    return PathText::joined(folder(), u"index.sqlite"_s);
}

QString IndexFile::homePath()
{
    return PathText::normalized(PathText::homeFolder());
}

IndexFile::State IndexFile::openForReading(const QString &path, Database &database)
{
    database.close();
    if (const State found = standing(FileName::toBytes(path)); found != State::Good)
        return found;
    if (!database.open(path, Database::Access::Read))
        return stateOfFault(database);
    const State found = check(database);
    if (found != State::Good)
        database.close();
    return found;
}

IndexFile::State IndexFile::openForWriting(const QString &path, Database &database)
{
    database.close();
    const QByteArray bytes = FileName::toBytes(path);
    FileSystem::makePrivateFolders(PathText::parent(path));
    State found = standing(bytes);
    if (found == State::Blocked || found == State::Damaged)
        return found;
    // A copy that was brought back may have lost the right to be written. Where it cannot be given
    // back the file shows it when it is opened.
    for (const char *file : { "", "-wal", "-shm", "-journal" }) {
        [[maybe_unused]] const int given =
            ::fchmodat(AT_FDCWD, bytes + file, 0600, AT_SYMLINK_NOFOLLOW);
    }
    // Its companions get the same mode. Closed before SQLite has it open: the end of any descriptor
    // of the file takes the locks of the whole process, and another program would then take itself
    // for the last one and remove the log under the writer.
    Descriptor(::open(bytes, O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600))
        .close();
    if (!database.open(path, Database::Access::Make))
        return stateOfFault(database);
    // Where there is no shared memory (a home on the network) it stays with a journal.
    database.run("PRAGMA journal_mode = WAL");
    if (database.fault() != 0 && !database.isDamaged())
        database.clearFault();
    database.run("PRAGMA synchronous = NORMAL");
    if (database.fault() == 0 && database.number("SELECT count(*) FROM sqlite_schema") == 0
        && database.number("PRAGMA application_id") == 0) {
        if (!make(database)) {
            found = stateOfFault(database);
            database.close();
            return found;
        }
    }
    found = check(database);
    if (found != State::Good)
        database.close();
    return found;
}

bool IndexFile::remove(const QString &path)
{
    const QByteArray bytes = FileName::toBytes(path);
    // The log first: without its file it would be the log of the next one.
    for (const char *companion : { "-wal", "-shm", "-journal", "" }) {
        if (::unlink(bytes + companion) != 0 && errno != ENOENT && !putAside(bytes + companion))
            return false;
    }
    return true;
}

std::optional<FileIdentity> IndexFile::identity(const QString &path)
{
    struct stat status { };
    if (::lstat(FileName::toBytes(path), &status) != 0)
        return std::nullopt;
    return FileIdentity { status.st_dev, status.st_ino };
}

qint64 IndexFile::state(Database &database, const char *key)
{
    Statement value(database, "SELECT value FROM state WHERE key = ?");
    value.bindText(1, key);
    return value.next() ? value.number(0) : 0;
}
