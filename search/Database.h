#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

struct sqlite3;
struct sqlite3_stmt;

class Database;

// A prepared statement. A fault of it is kept by its database, and answered as "no row". On the
// thread of its database.
class Statement final {
public:
    Statement() = default;
    Statement(Database &database, const char *words);

    // Places count from 1. What is bound by a view has to live until the statement is reset.
    Statement &bind(int place, qint64 number);
    Statement &bindBytes(int place, QByteArrayView bytes); // a BLOB; null: NULL
    Statement &bindText(int place, QByteArrayView utf8); // a TEXT

    bool next(); // to the next row; false, and reset, when there is none
    bool run(); // to its end and reset; false on a fault
    void reset();

    // Of the row, columns count from 0; what a view shows is gone with the next call of the above.
    qint64 number(int column) const;
    QByteArrayView bytes(int column) const; // of a BLOB or a TEXT; null where it is NULL

private:
    struct Finish {
        void operator()(sqlite3_stmt *statement) const;
    };

    Database *_database = nullptr;
    std::unique_ptr<sqlite3_stmt, Finish> _statement;
};

// A connection to a file of SQLite. One thread at a time.
class Database final {
public:
    enum class Access { Read, Write, Make };

    bool open(const QString &path, Access access);
    void close();
    bool isOpen() const { return _connection != nullptr; }

    bool run(const char *words); // statements without results, and PRAGMA
    qint64 number(const char *words); // the first column of the first row, else 0
    qint64 lastId() const; // of the last row that was added

    // The first fault since it was cleared, a result code of SQLite (the extended one); 0: none.
    int fault() const { return _fault; }
    QString faultText() const; // in words, for the log
    void clearFault() { _fault = 0; }
    // Of the fault: what stands in the file is no database, or no whole one.
    bool isDamaged() const;

    void note(int result); // a result code; used by Statement
    sqlite3 *connection() const { return _connection.get(); }

private:
    struct Close {
        void operator()(sqlite3 *connection) const;
    };

    std::unique_ptr<sqlite3, Close> _connection;
    int _fault = 0;
    QString _faultText;
};
