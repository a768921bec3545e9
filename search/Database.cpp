#include "search/Database.h"

#include "files/FileName.h"

#include <sqlite3.h>

namespace {

// Another program writes for this long at most; the writer's own commits are much shorter.
constexpr int BusyTimeout = 5000; // milliseconds

bool isFault(int result)
{
    return result != SQLITE_OK && result != SQLITE_ROW && result != SQLITE_DONE;
}

} // namespace

void Statement::Finish::operator()(sqlite3_stmt *statement) const
{
    sqlite3_finalize(statement);
}

Statement::Statement(Database &database, const char *words)
    : _database(&database)
{
    sqlite3_stmt *statement = nullptr;
    database.note(sqlite3_prepare_v3(database.connection(), words, -1, SQLITE_PREPARE_PERSISTENT,
                                     &statement, nullptr));
    _statement.reset(statement);
}

Statement &Statement::bind(int place, qint64 number)
{
    if (_statement)
        _database->note(sqlite3_bind_int64(_statement.get(), place, number));
    return *this;
}

Statement &Statement::bindBytes(int place, QByteArrayView bytes)
{
    if (_statement)
        _database->note(sqlite3_bind_blob64(_statement.get(), place, bytes.data(),
                                            sqlite3_uint64(bytes.size()), SQLITE_STATIC));
    return *this;
}

Statement &Statement::bindText(int place, QByteArrayView utf8)
{
    if (_statement)
        _database->note(sqlite3_bind_text64(_statement.get(), place, utf8.data(),
                                            sqlite3_uint64(utf8.size()), SQLITE_STATIC,
                                            SQLITE_UTF8));
    return *this;
}

bool Statement::next()
{
    if (!_statement)
        return false;
    const int result = sqlite3_step(_statement.get());
    if (result == SQLITE_ROW)
        return true;
    _database->note(result);
    reset();
    return false;
}

bool Statement::run()
{
    if (!_statement)
        return false;
    int result = SQLITE_ROW;
    while (result == SQLITE_ROW)
        result = sqlite3_step(_statement.get());
    _database->note(result);
    reset();
    return result == SQLITE_DONE;
}

void Statement::reset()
{
    if (_statement)
        sqlite3_reset(_statement.get());
}

qint64 Statement::number(int column) const
{
    return sqlite3_column_int64(_statement.get(), column);
}

QByteArrayView Statement::bytes(int column) const
{
    const void *start = sqlite3_column_blob(_statement.get(), column);
    return { static_cast<const char *>(start), sqlite3_column_bytes(_statement.get(), column) };
}

void Database::Close::operator()(sqlite3 *connection) const
{
    sqlite3_close_v2(connection);
}

bool Database::open(const QString &path, Access access)
{
    close();
    clearFault();
    sqlite3 *connection = nullptr;
    const int kind = access == Access::Read ? SQLITE_OPEN_READONLY
        : access == Access::Write           ? SQLITE_OPEN_READWRITE
                                            : SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE;
    // No mutex: nobody shares a connection.
    const int result = sqlite3_open_v2(FileName::toBytes(path).constData(), &connection,
                                       kind | SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE, nullptr);
    _connection.reset(connection);
    note(result);
    if (isFault(result)) {
        close();
        return false;
    }
    sqlite3_busy_timeout(connection, BusyTimeout);
    return true;
}

void Database::close()
{
    _connection.reset();
}

bool Database::run(const char *words)
{
    const int result = sqlite3_exec(connection(), words, nullptr, nullptr, nullptr);
    note(result);
    return !isFault(result);
}

qint64 Database::number(const char *words)
{
    Statement statement(*this, words);
    return statement.next() ? statement.number(0) : 0;
}

qint64 Database::lastId() const
{
    return sqlite3_last_insert_rowid(connection());
}

QString Database::faultText() const
{
    return _faultText;
}

bool Database::isDamaged() const
{
    const int kind = _fault & 0xFF;
    return kind == SQLITE_CORRUPT || kind == SQLITE_NOTADB || kind == SQLITE_FORMAT
        || _fault == SQLITE_IOERR_SHORT_READ;
}

void Database::note(int result)
{
    if (!isFault(result) || _fault != 0)
        return;
    _fault = result;
    _faultText =
        QString::fromUtf8(_connection ? sqlite3_errmsg(_connection.get()) : sqlite3_errstr(result));
}
