#include "platform/desktop/Trash.h"
#include "platform/FileName.h"
#include "platform/FileStatus.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

// The real Trash, in the home folder that the test runs in.
class tst_Trash : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void itemMovesWholeIntoTheTrash_data();
    void itemMovesWholeIntoTheTrash();
    void sameNameTwiceKeepsBoth();
    void linkTargetStays();
    void whatMustStayIsRefused_data();
    void whatMustStayIsRefused();

private:
    QByteArray inHome(const QByteArray &name) const { return _home + '/' + name; }
    QStringList trashed() const
    {
        return QDir(QString::fromUtf8(_home + "/.local/share/Trash/info"))
            .entryList(QDir::Files | QDir::Hidden);
    }
    static void writeFile(const QByteArray &path, const QByteArray &content)
    {
        const int file = open(path.constData(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
        QVERIFY(file >= 0);
        QCOMPARE(write(file, content.constData(), size_t(content.size())), content.size());
        close(file);
    }
    static bool isThere(const QByteArray &path)
    {
        struct stat status { };
        return lstat(path.constData(), &status) == 0;
    }

    QByteArray _home;
};

void tst_Trash::initTestCase()
{
    _home = qgetenv("HOME");
    if (!_home.contains("twinleaf-test"))
        QSKIP("Only in a home folder made for the test");
}

void tst_Trash::itemMovesWholeIntoTheTrash_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QByteArray>("kind");
    const auto row = [](const char *title, const QByteArray &name, const char *kind) {
        QTest::newRow(title) << name << QByteArray(kind);
    };
    row("file", "file", "file");
    row("folder", "folder", "folder");
    row("dangling link", "dangling", "link");
    row("FIFO", "fifo", "fifo");
    row("name that is no text", "caf\xe9 \xff", "file");
    row("longest name", QByteArray(245, 'n'), "file");
    row("name with newline, quotes and percent", "a\n\"b' %41", "file");
    row("leading dash", "-rf", "file");
}

void tst_Trash::itemMovesWholeIntoTheTrash()
{
    QFETCH(QByteArray, name);
    QFETCH(QByteArray, kind);
    const QByteArray path = inHome(name);
    if (kind == "file") {
        writeFile(path, "content");
    } else if (kind == "folder") {
        QCOMPARE(mkdir(path.constData(), 0755), 0);
        writeFile(path + "/inner", "content");
    } else if (kind == "link") {
        QCOMPARE(symlink("/nonexistent", path.constData()), 0);
    } else {
        QCOMPARE(mkfifo(path.constData(), 0644), 0);
    }
    const auto before = fileStatus(FileName::fromBytes(path), Links::NoFollow);
    QVERIFY(before);

    QVERIFY(moveItemToTrash(FileName::fromBytes(path)));

    QVERIFY(!isThere(path));
    const QByteArray inTrash = _home + "/.local/share/Trash/files/" + name;
    const auto after = fileStatus(FileName::fromBytes(inTrash), Links::NoFollow);
    QVERIFY(after);
    QVERIFY(after->identity == before->identity);
}

void tst_Trash::sameNameTwiceKeepsBoth()
{
    const qsizetype before = trashed().size();
    for (const char *content : { "first", "second" }) {
        writeFile(inHome("twice"), content);
        QVERIFY(moveItemToTrash(FileName::fromBytes(inHome("twice"))));
    }
    QCOMPARE(trashed().size(), before + 2);
}

void tst_Trash::linkTargetStays()
{
    QCOMPARE(mkdir(inHome("target").constData(), 0755), 0);
    writeFile(inHome("target/inner"), "content");
    QCOMPARE(symlink("target", inHome("link").constData()), 0);

    // With a slash at its end a path would mean the folder behind the link.
    QVERIFY(moveItemToTrash(FileName::fromBytes(inHome("link/"))));

    QVERIFY(!isThere(inHome("link")));
    QVERIFY(isThere(inHome("target/inner")));
}

void tst_Trash::whatMustStayIsRefused_data()
{
    QTest::addColumn<QString>("path");
    const QString home = QString::fromUtf8(qgetenv("HOME"));
    QTest::newRow("root") << "/";
    QTest::newRow("root by many slashes") << "///";
    QTest::newRow("home") << home;
    QTest::newRow("home with a slash") << home + u'/';
    QTest::newRow("home by another spelling") << home + "/../home"_L1;
    QTest::newRow("folder that holds home") << home.left(home.lastIndexOf(u'/'));
    QTest::newRow("Trash") << home + "/.local/share/Trash"_L1;
    QTest::newRow("its files") << home + "/.local/share/Trash/files"_L1;
    QTest::newRow("folder that holds the Trash") << home + "/.local"_L1;
    QTest::newRow("mount point") << "/proc";
    QTest::newRow("nothing there") << home + "/nothing"_L1;
    QTest::newRow("relative path") << "file";
    QTest::newRow("empty") << "";
}

void tst_Trash::whatMustStayIsRefused()
{
    QFETCH(QString, path);
    QDir(QString::fromUtf8(_home)).mkpath(u".local/share/Trash/files"_s);
    const qsizetype before = trashed().size();
    QVERIFY(!moveItemToTrash(path));
    QCOMPARE(trashed().size(), before);
    QVERIFY(isThere(_home));
    QVERIFY(isThere(_home + "/.local/share/Trash/files"));
}

QTEST_GUILESS_MAIN(tst_Trash)
#include "tst_Trash.moc"
