#include "platform/FileName.h"
#include "platform/FileSystem.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_FileSystem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void renameNeverReplaces_data();
    void renameNeverReplaces();
    void renameMayChangeCaseOnly();
    void renameRefusesWhatIsNoName_data();
    void renameRefusesWhatIsNoName();
    void hardLinkedNamesAreNotOneEntry();
    void anyNameIsRenamedAndRemoved_data();
    void anyNameIsRenamedAndRemoved();
    void removingATreeFollowsNoLink();
    void removingADeepTreeEnds();
    void nothingHappensToAShortenedPath();
    void removingGoesOnAfterAFailure();
    void attributesOfTheTargetAreKept();
    void sameFileByAnyName_data();
    void sameFileByAnyName();
    void insideByAnyName_data();
    void insideByAnyName();

private:
    QString path(const QString &name) const { return folder->path(name); }
    void makeThings() const;

    std::unique_ptr<TestFolder> folder;
};

// One of each sort, with the name of the sort.
void tst_FileSystem::makeThings() const
{
    folder->write(u"file"_s, "file");
    folder->write(u"other file"_s, "other");
    folder->hardLink(u"file"_s, u"hard link"_s);
    folder->makeFolder(u"empty folder"_s);
    folder->makeFolder(u"folder/sub/deep"_s);
    folder->makeFolder(u"folder2"_s);
    folder->write(u"folder/in"_s, "in");
    folder->link(u"file"_s, u"link"_s);
    folder->link(u"folder"_s, u"folder link"_s);
    folder->link(u"../folder/sub"_s, u"folder2/sub link"_s);
    folder->link(u"nowhere"_s, u"dangling link"_s);
    mkfifo(FileName::toBytes(path(u"fifo"_s)), 0600);
}

void tst_FileSystem::renameNeverReplaces_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    for (const char *from : { "file", "empty folder", "folder", "link", "dangling link", "fifo" }) {
        for (const char *to : { "other file", "hard link", "empty folder", "folder2", "folder link",
                                "dangling link", "fifo" }) {
            if (qstrcmp(from, to) != 0)
                QTest::addRow("%s to %s", from, to)
                    << QString::fromUtf8(from) << QString::fromUtf8(to);
        }
    }
}

void tst_FileSystem::renameNeverReplaces()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    makeThings();
    const auto before = fileStatus(path(to), Links::NoFollow);
    QCOMPARE(FileSystem::renameNoReplace(path(from), path(to)), std::errc::file_exists);
    QCOMPARE(FileSystem::renameItem(path(from), path(to)), std::errc::file_exists);
    QVERIFY(exists(path(from)));
    QCOMPARE(fileStatus(path(to), Links::NoFollow)->identity, before->identity);
}

void tst_FileSystem::renameMayChangeCaseOnly()
{
    folder->write(u"name"_s, "mine");
    QVERIFY(!FileSystem::renameItem(path(u"name"_s), path(u"Name"_s)));
    QCOMPARE(folder->names(), QStringList { u"Name"_s });
    // On a folder that tells case apart the other name may be another file.
    folder->write(u"name"_s, "other");
    QCOMPARE(FileSystem::renameItem(path(u"Name"_s), path(u"name"_s)), std::errc::file_exists);
    QCOMPARE(folder->read(u"name"_s), "other");
}

void tst_FileSystem::renameRefusesWhatIsNoName_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("empty") << u"folder"_s << u""_s;
    QTest::newRow("dot") << u"folder"_s << u"."_s;
    QTest::newRow("dots") << u"folder"_s << u".."_s;
    QTest::newRow("dots below") << u"folder"_s << u"folder2/.."_s;
    QTest::newRow("slash at the end") << u"folder"_s << u"new/"_s;
    QTest::newRow("NUL") << u"folder"_s << u"new"_s + QChar(0) + u"name"_s;
    QTest::newRow("NUL in the old name") << u"folder"_s + QChar(0) + u"2"_s << u"new"_s;
    QTest::newRow("parent's entry") << u"folder2/.."_s << u"new"_s;
    QTest::newRow("own entry") << u"folder2/."_s << u"new"_s;
}

void tst_FileSystem::renameRefusesWhatIsNoName()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    makeThings();
    const QStringList before = folder->names();
    QCOMPARE(FileSystem::renameItem(path(from), path(to)), std::errc::invalid_argument);
    QCOMPARE(folder->names(), before);
}

void tst_FileSystem::hardLinkedNamesAreNotOneEntry()
{
    folder->write(u"name"_s, "one");
    folder->hardLink(u"name"_s, u"NAME"_s);
    QCOMPARE(FileSystem::renameItem(path(u"name"_s), path(u"NAME"_s)), std::errc::file_exists);
    QCOMPARE(folder->names(), (QStringList { u"NAME"_s, u"name"_s }));
}

void tst_FileSystem::anyNameIsRenamedAndRemoved_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("not UTF-8") << QByteArray("\xFF\xFE");
    QTest::newRow("option") << QByteArray("-rf");
    QTest::newRow("shell") << QByteArray("$(touch x)`'\"\n*");
    QTest::newRow("longest") << QByteArray(255, 'n');
    QTest::newRow("byte order mark") << QByteArray("\xEF\xBB\xBFx");
    QTest::newRow("dots") << QByteArray("...");
}

void tst_FileSystem::anyNameIsRenamedAndRemoved()
{
    QFETCH(QByteArray, name);
    const QString odd = FileName::fromBytes(name);
    QVERIFY(!FileSystem::makeFolder(path(u"plain"_s)));
    folder->write(u"plain/"_s + odd);
    QVERIFY(!FileSystem::renameItem(path(u"plain"_s), path(odd)));
    QCOMPARE(folder->names(), QStringList { odd });
    QCOMPARE(folder->names(odd), QStringList { odd });
    QCOMPARE(FileSystem::makeFolder(path(odd)), std::errc::file_exists);
    QVERIFY(!FileSystem::removeTree(path(odd)));
    QVERIFY(folder->names().isEmpty());
}

void tst_FileSystem::removingATreeFollowsNoLink()
{
    makeThings();
    folder->makeFolder(u"tree/a/b"_s);
    folder->link(path(u"folder"_s), u"tree/a/folder link"_s);
    folder->link(path(u"file"_s), u"tree/file link"_s);
    folder->link(u".."_s, u"tree/a/b/up"_s);
    mkfifo(FileName::toBytes(path(u"tree/fifo"_s)), 0600);
    QVERIFY(!FileSystem::removeTree(path(u"tree"_s)));
    QVERIFY(!exists(path(u"tree"_s)));
    QVERIFY(!FileSystem::removeTree(path(u"folder link"_s)));
    QVERIFY(!exists(path(u"folder link"_s)));
    QVERIFY(!FileSystem::removeTree(path(u"dangling link"_s)));
    QCOMPARE(folder->read(u"folder/in"_s), "in");
    QCOMPARE(folder->read(u"file"_s), "file");
    QCOMPARE(FileSystem::removeTree(path(u"tree"_s)), std::errc::no_such_file_or_directory);
}

void tst_FileSystem::removingADeepTreeEnds()
{
    // Deeper than any path can say.
    const QByteArray name(200, 'd');
    int at = open(FileName::toBytes(folder->path()), O_PATH | O_DIRECTORY | O_CLOEXEC);
    for (int depth = 0; depth < 50; ++depth) {
        QCOMPARE(mkdirat(at, name, 0700), 0);
        const int below = openat(at, name, O_PATH | O_DIRECTORY | O_CLOEXEC);
        close(at);
        at = below;
    }
    close(at);
    QVERIFY(!FileSystem::removeTree(path(QString::fromLatin1(name))));
    QVERIFY(folder->names().isEmpty());
}

void tst_FileSystem::nothingHappensToAShortenedPath()
{
    makeThings();
    const QStringList before = folder->names();
    const QString cut = path(u"empty folder"_s) + QChar(0) + u"x"_s;
    QCOMPARE(FileSystem::removeTree(cut), std::errc::invalid_argument);
    QCOMPARE(FileSystem::removeEmptyFolder(cut), std::errc::invalid_argument);
    QCOMPARE(FileSystem::renameNoReplace(cut, path(u"new"_s)), std::errc::invalid_argument);
    QCOMPARE(FileSystem::makeFolder(path(u"new"_s) + QChar(0) + u"x"_s),
             std::errc::invalid_argument);
    QCOMPARE(FileSystem::removeTree(path(u"folder/."_s)), std::errc::invalid_argument);
    QCOMPARE(FileSystem::removeTree(path(u"folder/.."_s)), std::errc::invalid_argument);
    QCOMPARE(folder->names(), before);
    QCOMPARE(folder->read(u"folder/in"_s), "in");
}

void tst_FileSystem::removingGoesOnAfterAFailure()
{
    // Needs rights that can be missing, so a child that is nobody removes.
    folder->makeFolder(u"tree/kept"_s);
    folder->write(u"tree/kept/file"_s);
    folder->write(u"tree/gone"_s);
    for (const char *name : { ".", "tree" })
        chmod(FileName::toBytes(path(QString::fromUtf8(name))), 0777);
    chmod(FileName::toBytes(path(u"tree/kept"_s)), 0555);
    const pid_t child = fork();
    if (child == 0) {
        if (geteuid() == 0 && setuid(65534) != 0)
            _exit(2);
        _exit(FileSystem::removeTree(path(u"tree"_s)) == std::errc::permission_denied ? 0 : 1);
    }
    int status = -1;
    QCOMPARE(waitpid(child, &status, 0), child);
    QCOMPARE(status, 0);
    QCOMPARE(folder->names(u"tree"_s), QStringList { u"kept"_s });
    QCOMPARE(folder->names(u"tree/kept"_s), QStringList { u"file"_s });
    chmod(FileName::toBytes(path(u"tree/kept"_s)), 0755);
}

void tst_FileSystem::attributesOfTheTargetAreKept()
{
    folder->write(u"from"_s);
    folder->write(u"to"_s);
    folder->link(u"from"_s, u"link"_s);
    const QByteArray large(3000, 'x');
    if (!folder->setAttribute(u"from"_s, "user.both", "from"))
        QSKIP("no attributes on this file system");
    folder->setAttribute(u"from"_s, "user.large", large);
    folder->setAttribute(u"from"_s, "user.empty", "");
    folder->setAttribute(u"to"_s, "user.both", "to");
    FileSystem::copyUserAttributes(path(u"link"_s), path(u"to"_s));
    QCOMPARE(folder->attribute(u"to"_s, "user.large"), QByteArray());
    FileSystem::copyUserAttributes(path(u"from"_s), path(u"link"_s));
    FileSystem::copyUserAttributes(path(u"from"_s), path(u"to"_s));
    QCOMPARE(folder->attribute(u"to"_s, "user.both"), "to");
    folder->write(u"last"_s);
    FileSystem::copyUserAttributes(path(u"to"_s), path(u"last"_s));
    QCOMPARE(folder->attribute(u"last"_s, "user.both"), "to");
    QVERIFY(FileSystem::hasUserAttributes(path(u"last"_s)));
    QVERIFY(!FileSystem::hasUserAttributes(path(u"link"_s)));
}

void tst_FileSystem::sameFileByAnyName_data()
{
    QTest::addColumn<QString>("a");
    QTest::addColumn<QString>("b");
    QTest::addColumn<bool>("same");
    QTest::newRow("itself") << u"file"_s << u"folder/../file"_s << true;
    QTest::newRow("hard link") << u"file"_s << u"hard link"_s << true;
    QTest::newRow("link") << u"link"_s << u"file"_s << true;
    QTest::newRow("link and hard link") << u"link"_s << u"hard link"_s << true;
    QTest::newRow("folder by link") << u"folder"_s << u"folder link/."_s << true;
    QTest::newRow("through a linked folder") << u"folder/in"_s << u"folder link/in"_s << true;
    QTest::newRow("dangling link itself") << u"dangling link"_s << u"./dangling link"_s << true;
    QTest::newRow("others") << u"file"_s << u"other file"_s << false;
    QTest::newRow("both missing") << u"missing"_s << u"missing"_s << false;
}

void tst_FileSystem::sameFileByAnyName()
{
    QFETCH(QString, a);
    QFETCH(QString, b);
    makeThings();
    QTEST(SameFile::isSame(path(a), path(b)), "same");
    QTEST(SameFile::isSame(path(b), path(a)), "same");
}

void tst_FileSystem::insideByAnyName_data()
{
    QTest::addColumn<QString>("inner");
    QTest::addColumn<QString>("folder");
    QTest::addColumn<bool>("inside");
    QTest::newRow("itself") << u"folder"_s << u"folder"_s << true;
    QTest::newRow("below") << u"folder/sub/deep"_s << u"folder"_s << true;
    QTest::newRow("above") << u"folder"_s << u"folder/sub"_s << false;
    QTest::newRow("name that begins alike") << u"folder2"_s << u"folder"_s << false;
    QTest::newRow("by a linked folder") << u"folder link/sub"_s << u"folder"_s << true;
    QTest::newRow("by a link elsewhere") << u"folder2/sub link/deep"_s << u"folder"_s << true;
    QTest::newRow("lies elsewhere, leads inside") << u"folder2/sub link"_s << u"folder2"_s << false;
    QTest::newRow("a link holds nothing") << u"folder/sub"_s << u"folder link"_s << false;
    QTest::newRow("missing") << u"missing"_s << u"folder"_s << false;
}

void tst_FileSystem::insideByAnyName()
{
    QFETCH(QString, inner);
    QFETCH(QString, folder);
    makeThings();
    QTEST(SameFile::isInside(path(inner), path(folder)), "inside");
}

QTEST_GUILESS_MAIN(tst_FileSystem)
#include "tst_FileSystem.moc"
