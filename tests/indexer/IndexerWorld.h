#pragma once

#include "files/Descriptor.h"
#include "files/FileName.h"
#include "files/MountTable.h"
#include "indexer/Indexer.h"
#include "search/IndexFile.h"
#include "search/PackedItems.h"
#include "search/StoredDocument.h"
#include "tests/support/TestFolder.h"

#include <QFile>
#include <QProcess>
#include <QSemaphore>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <memory>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

using namespace Qt::StringLiterals;

// Takes every file for text; one with "crash" in its name ends the reader.
class PlainFiles final : public ForeignFiles {
public:
    Outcome read(int descriptor, const QString &name, ForeignContents &contents) override
    {
        if (++count == killAt)
            ::kill(::getpid(), SIGKILL);
        if (name.contains(u"crash"_s))
            return Outcome::Failed;
        if (name.contains(u"slow"_s) && ++slow <= late)
            return Outcome::Late;
        if (name.contains(u"held"_s))
            gate.acquire();
        QByteArray bytes(4096, 0);
        const ssize_t size = ::pread(descriptor, bytes.data(), size_t(bytes.size()), 0);
        contents.text = QString::fromUtf8(bytes.first(std::max<ssize_t>(size, 0)));
        return Outcome::Read;
    }
    Outcome picture(int, const QSize &, QImage &, QSize &) override { return Outcome::Nothing; }

    std::atomic<int> count = 0;
    int killAt = -1;
    std::atomic<int> late = 0; // how often a file with "slow" in its name is
    int slow = 0;
    QSemaphore gate; // of files with "held" in their names
};

// An indexer at work, until it goes.
class Running {
public:
    explicit Running(
        PlainFiles &files, const Indexer::Limits &limits = quick(),
        const Indexer::LeftOut &leftOut = [] { return QStringList(); })
        : indexer(files, leftOut, limits)
    {
        indexer.idle = [this] { idle = true; };
        thread = std::thread([this] { indexer.run(); });
    }
    ~Running()
    {
        indexer.stop();
        thread.join();
    }
    static Indexer::Limits quick()
    {
        return { .times = { .coalesce = 20,
                            .betweenReadings = 20,
                            .quiet = 100,
                            .look = 50,
                            .refresh = 50,
                            .retry = 50,
                            .late = 20 } };
    }

    std::atomic<bool> idle = false; // it was, since this was cleared
    Indexer indexer;
    std::thread thread;
};

using Known = QMap<QByteArray, QByteArray>;
const Known NoIndex { { "no index", {} } };

// Each path that the index knows, below the home folder, with its text; "" where it has none.
inline Known known()
{
    Database database;
    if (IndexFile::openForReading(IndexFile::path(), database) != IndexFile::State::Good)
        return NoIndex;
    QHash<qint64, std::pair<qint64, QByteArray>> folders;
    Statement folder(database, "SELECT id, parent, name FROM folder");
    while (folder.next())
        folders.insert(folder.number(0), { folder.number(1), folder.bytes(2).toByteArray() });
    Known found;
    Statement names(database, "SELECT folder, items FROM names");
    Statement document(database, "SELECT text FROM document WHERE folder = ? AND name = ?");
    while (names.next()) {
        QByteArray path;
        qint64 at = names.number(0);
        for (; at > IndexFile::Home; at = folders.value(at).first)
            path.prepend(folders.value(at).second + '/');
        if (at != IndexFile::Home)
            continue; // it was aside
        PackedItems items(names.bytes(1));
        for (PackedItem item; items.next(item);) {
            document.bind(1, names.number(0)).bindBytes(2, item.name);
            QByteArray text;
            if (document.next() && !document.bytes(0).isEmpty())
                StoredDocument::textOf(document.bytes(0), text);
            document.reset();
            found.insert(path + item.name.toByteArray(), text);
        }
    }
    return found;
}

// Whether a search takes what the index knows for all there is.
inline bool isWhole()
{
    Database database;
    if (IndexFile::openForReading(IndexFile::path(), database) != IndexFile::State::Good)
        return false;
    Statement known(database,
                    "SELECT value = 1 AND NOT EXISTS(SELECT 1 FROM folder WHERE pending = 2)"
                    " FROM state WHERE key = 'names'");
    return known.next() && known.number(0) == 1;
}

inline bool isSound()
{
    Database database;
    if (IndexFile::openForReading(IndexFile::path(), database) != IndexFile::State::Good)
        return false;
    Statement check(database, "PRAGMA integrity_check");
    return check.next() && check.bytes(0) == "ok";
}

// Documents that a full-text index has for a word.
inline QList<QByteArray> withWord(const QByteArray &word, const QByteArray &words = "content_words")
{
    Database database;
    QList<QByteArray> names;
    if (IndexFile::openForReading(IndexFile::path(), database) != IndexFile::State::Good)
        return names;
    Statement rows(database,
                   "SELECT name FROM " + words + " JOIN document ON document.id = " + words
                       + ".rowid WHERE " + words + " MATCH ? ORDER BY name");
    rows.bindText(1, word);
    while (rows.next())
        names.append(rows.bytes(0).toByteArray());
    return names;
}

// A home folder of its own; the cache lies beside it. Names are bytes.
class Home {
public:
    Home()
    {
        folder.makeFolder(u"home"_s);
        qputenv("HOME", at(""));
        qputenv("XDG_CACHE_HOME", at("../cache"));
    }
    QByteArray at(const QByteArray &name) const
    {
        return folder.bytes(u"home"_s) + (name.isEmpty() ? "" : "/") + name;
    }
    void write(const QByteArray &name, const QByteArray &bytes) const
    {
        folder.write(u"home/"_s + FileName::fromBytes(name), bytes);
    }
    void makeFolder(const QByteArray &name) const { QCOMPARE(::mkdir(at(name), 0755), 0); }
    void rename(const QByteArray &from, const QByteArray &to) const
    {
        QCOMPARE(::rename(at(from), at(to)), 0);
    }
    void remove(const QByteArray &name) const { QCOMPARE(::remove(at(name)), 0); }

    TestFolder folder;
};
