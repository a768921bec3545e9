#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/SameFile.h"
#include "tests/support/TestTree.h"
#include "tests/support/WithoutRights.h"

#include <QTest>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

class tst_FileSystem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void renameNeverReplaces();
    void renameMayChangeCaseOnly();
    void whatIsNoPathIsRefused();
    void anyNameIsRenamedAndRemoved();
    void removingATreeFollowsNoLink();
    void removingADeepTreeEnds();
    void removingGoesOnAfterAFailure();
    void attributesOfTheTargetAreKept();
    void filesAreTheSameByAnyName();
    void itemsAreInsideByAnyName();

private:
    QString path(const QString &name) const { return folder->path(name); }
    void makeThings() const;

    std::unique_ptr<TestFolder> folder;
};

// One of each sort, with the name of the sort.
void tst_FileSystem::makeThings() const
{
    makeTree(*folder,
             u"file=file, other file=other, hard link==file, empty folder/, folder/sub/deep/, "
             "folder2/, folder/in=in, link->file, folder link->folder, "
             "folder2/sub link->../folder/sub, dangling link->nowhere"_s);
    mkfifo(FileName::toBytes(path(u"fifo"_s)), 0600);
}

void tst_FileSystem::renameNeverReplaces()
{
    makeThings();
    const auto identity = [&](const QString &name) {
        const auto status = fileStatus(path(name), Links::NoFollow);
        return status ? status->identity : FileIdentity();
    };
    for (const QString &from :
         { u"file"_s, u"empty folder"_s, u"folder"_s, u"link"_s, u"dangling link"_s, u"fifo"_s }) {
        for (const QString &to : { u"other file"_s, u"hard link"_s, u"empty folder"_s, u"folder2"_s,
                                   u"folder link"_s, u"dangling link"_s, u"fifo"_s }) {
            if (from == to)
                continue;
            const auto before = std::pair(identity(from), identity(to));
            const auto failed = FileSystem::renameNoReplace(path(from), path(to));
            QVERIFY2(failed == std::errc::file_exists, qPrintable(from + u" to "_s + to));
            QCOMPARE(FileSystem::renameItem(path(from), path(to)), std::errc::file_exists);
            QCOMPARE(std::pair(identity(from), identity(to)), before);
        }
    }
}

void tst_FileSystem::renameMayChangeCaseOnly()
{
    folder->write(u"name"_s, "mine");
    QVERIFY(!FileSystem::renameItem(path(u"name"_s), path(u"Name"_s)));
    QCOMPARE(folder->names(), QStringList { u"Name"_s });
    // On a folder that tells case apart the other name may be another file, or a link to this one.
    folder->write(u"name"_s, "other");
    folder->hardLink(u"name"_s, u"NAME"_s);
    QCOMPARE(FileSystem::renameItem(path(u"Name"_s), path(u"name"_s)), std::errc::file_exists);
    QCOMPARE(FileSystem::renameItem(path(u"name"_s), path(u"NAME"_s)), std::errc::file_exists);
    QCOMPARE(treeOf(*folder, { {} }), u"/NAME=other, /Name=mine, /name=other"_s);
}

void tst_FileSystem::whatIsNoPathIsRefused()
{
    makeThings();
    const QStringList before = folder->names();
    // A path ends at a NUL for the system, which would then reach the empty folder.
    const QString cut = u"empty folder"_s + QChar(0) + u"x"_s;
    const QString newCut = u"new"_s + QChar(0) + u"x"_s;
    const std::pair<QString, QString> renames[] = {
        { u"folder"_s, {} },        { u"folder"_s, u"."_s },          { u"folder"_s, u".."_s },
        { u"folder"_s, newCut },    { u"folder"_s, u"folder2/.."_s }, { u"folder"_s, u"new/"_s },
        { u"folder2/."_s, u"n"_s }, { u"folder2/.."_s, u"new"_s },    { cut, u"new"_s },
    };
    for (const auto &[from, to] : renames) {
        const auto failed = FileSystem::renameItem(path(from), path(to));
        QVERIFY2(failed == std::errc::invalid_argument, qPrintable(from + u" to "_s + to));
    }
    const std::error_code others[] = {
        FileSystem::removeTree(path(cut)),
        FileSystem::removeEmptyFolder(path(cut)),
        FileSystem::removeTree(path(u"folder/."_s)),
        FileSystem::removeTree(path(u"folder/.."_s)),
        FileSystem::makeFolder(path(newCut)),
        FileSystem::renameNoReplace(path(cut), path(u"new"_s)),
    };
    for (const std::error_code &failed : others)
        QCOMPARE(failed, std::errc::invalid_argument);
    QCOMPARE(folder->names(), before);
    QCOMPARE(folder->read(u"folder/in"_s), "in");
}

void tst_FileSystem::anyNameIsRenamedAndRemoved()
{
    for (const QByteArray &name :
         { QByteArray("\xFF\xFE"), QByteArray("-rf"), QByteArray("..."),
           QByteArray("$(touch x)`'\"\n*"), QByteArray(255, 'n'), QByteArray("\xEF\xBB\xBFx") }) {
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
}

void tst_FileSystem::removingATreeFollowsNoLink()
{
    makeTree(*folder,
             u"file=file, folder/in=in, folder link->~/folder, dangling link->nowhere, "
             "tree/a/folder link->~/folder, tree/file link->~/file, tree/a/b/up->.."_s);
    mkfifo(FileName::toBytes(path(u"tree/fifo"_s)), 0600);
    for (const QString &name : { u"tree"_s, u"folder link"_s, u"dangling link"_s })
        QVERIFY(!FileSystem::removeTree(path(name)));
    QCOMPARE(treeOf(*folder, { {} }), u"/file=file, /folder/in=in"_s);
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

void tst_FileSystem::removingGoesOnAfterAFailure()
{
    makeTree(*folder, u"tree/1, tree/2, tree/kept/file, tree/3, tree/4"_s);
    chmod(FileName::toBytes(path(u"tree/kept"_s)), 0555);
    const WithoutRights withoutRights;
    QCOMPARE(FileSystem::removeTree(path(u"tree"_s)), std::errc::permission_denied);
    QCOMPARE(treeOf(*folder, { u"tree"_s }), u"tree/kept/file="_s);
    chmod(FileName::toBytes(path(u"tree/kept"_s)), 0755);
}

void tst_FileSystem::attributesOfTheTargetAreKept()
{
    makeTree(*folder, u"from, to, plain, link->from, plain link->plain"_s);
    const QByteArray large(3000, 'x');
    folder->setAttribute(u"from"_s, "user.both", "from");
    folder->setAttribute(u"from"_s, "user.large", large);
    folder->setAttribute(u"to"_s, "user.both", "to");
    FileSystem::copyUserAttributes(path(u"link"_s), path(u"plain"_s));
    FileSystem::copyUserAttributes(path(u"from"_s), path(u"plain link"_s));
    QVERIFY(!FileSystem::hasUserAttributes(path(u"plain"_s)));
    FileSystem::copyUserAttributes(path(u"from"_s), path(u"to"_s));
    QCOMPARE(folder->attribute(u"to"_s, "user.both"), "to");
    QCOMPARE(folder->attribute(u"to"_s, "user.large"), large);
    QVERIFY(FileSystem::hasUserAttributes(path(u"to"_s)));
    QVERIFY(!FileSystem::hasUserAttributes(path(u"link"_s)));
}

void tst_FileSystem::filesAreTheSameByAnyName()
{
    makeThings();
    const std::tuple<QString, QString, bool> pairs[] = {
        { u"file"_s, u"folder/../file"_s, true },
        { u"file"_s, u"hard link"_s, true },
        { u"link"_s, u"file"_s, true },
        { u"link"_s, u"hard link"_s, true },
        { u"folder"_s, u"folder link/."_s, true },
        { u"folder/in"_s, u"folder link/in"_s, true },
        { u"dangling link"_s, u"./dangling link"_s, true },
        { u"file"_s, u"other file"_s, false },
        { u"missing"_s, u"missing"_s, false },
    };
    for (const auto &[a, b, same] : pairs) {
        QVERIFY2(SameFile::isSame(path(a), path(b)) == same, qPrintable(a + u", "_s + b));
        QVERIFY2(SameFile::isSame(path(b), path(a)) == same, qPrintable(b + u", "_s + a));
    }
}

void tst_FileSystem::itemsAreInsideByAnyName()
{
    makeThings();
    const std::tuple<QString, QString, bool> pairs[] = {
        { u"folder"_s, u"folder"_s, true },
        { u"folder/sub/deep"_s, u"folder"_s, true },
        { u"folder"_s, u"folder/sub"_s, false },
        { u"folder2"_s, u"folder"_s, false },
        { u"folder link/sub"_s, u"folder"_s, true },
        { u"folder2/sub link/deep"_s, u"folder"_s, true },
        { u"folder2/sub link"_s, u"folder2"_s, false }, // lies there and leads elsewhere
        { u"folder/sub"_s, u"folder link"_s, false }, // a link holds nothing
        { u"missing"_s, u"folder"_s, false },
    };
    for (const auto &[inner, outer, inside] : pairs)
        QVERIFY2(SameFile::isInside(path(inner), path(outer)) == inside,
                 qPrintable(inner + u" in "_s + outer));
}

QTEST_GUILESS_MAIN(tst_FileSystem)
#include "tst_FileSystem.moc"
