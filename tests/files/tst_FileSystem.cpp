#include "files/FileCopy.h"
#include "files/FileFlags.h"
#include "files/FileName.h"
#include "files/FileSystem.h"
#include "files/HiddenRule.h"
#include "files/SameFile.h"
#include "files/TreeRemoval.h"
#include "tests/support/TestTree.h"
#include "tests/support/WithoutRights.h"

#include <QRegularExpression>
#include <QtEndian>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

class tst_FileSystem : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }

    void renameNeverReplaces()
    {
        makeThings();
        const auto identity = [&](const QString &name) {
            return fileStatus(path(name), Links::NoFollow)->identity;
        };
        const QStringList things = folder->names();
        for (const QString &from : things) {
            for (const QString &to : things) {
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

    void renameMayChangeCaseOnly()
    {
        folder->write(u"name"_s, "mine");
        QVERIFY(!FileSystem::renameItem(path(u"name"_s), path(u"Name"_s)));
        QCOMPARE(folder->names(), QStringList { u"Name"_s });
        // On a folder that tells case apart the other name may be another file, or a link to this
        // one.
        folder->write(u"name"_s, "other");
        folder->hardLink(u"name"_s, u"NAME"_s);
        QCOMPARE(FileSystem::renameItem(path(u"Name"_s), path(u"name"_s)), std::errc::file_exists);
        QCOMPARE(FileSystem::renameItem(path(u"name"_s), path(u"NAME"_s)), std::errc::file_exists);
        QCOMPARE(treeOf(*folder, { {} }), u"/NAME=other, /Name=mine, /name=other"_s);
    }

    void whatIsNoPathIsRefused()
    {
        makeThings();
        const QStringList before = folder->names();
        // A path ends at a NUL for the system, which would then reach the empty folder.
        const QString cut = u"empty folder"_s + QChar(0) + u"x"_s;
        const QString newCut = u"new"_s + QChar(0) + u"x"_s;
        for (const QString &to : { u""_s, u"."_s, u".."_s, newCut, u"folder2/.."_s, u"new/"_s })
            QCOMPARE(FileSystem::renameItem(path(u"folder"_s), path(to)),
                     std::errc::invalid_argument);
        for (const QString &from : { u"folder2/."_s, u"folder2/.."_s, cut })
            QCOMPARE(FileSystem::renameItem(path(from), path(u"new"_s)),
                     std::errc::invalid_argument);
        QCOMPARE(FileSystem::makeFolder(path(newCut)), std::errc::invalid_argument);
        QCOMPARE(FileSystem::renameNoReplace(path(cut), path(u"new"_s)),
                 std::errc::invalid_argument);
        QCOMPARE(folder->names(), before);
        QCOMPARE(folder->read(u"folder/in"_s), "in");
    }

    void removingATreeFollowsNoLink()
    {
        makeTree(*folder,
                 u"file=file, folder/in=in, folder link->~/folder, dangling link->nowhere, "
                 "tree/a/folder link->~/folder, tree/file link->~/file, tree/a/b/up->.., "
                 "tree/-rf/, tree/.../*"_s);
        folder->write(u"tree/"_s + FileName::fromBytes("\xFF\n"));
        QCOMPARE(FileSystem::makeFolder(path(u"tree/-rf"_s)), std::errc::file_exists);
        mkfifo(FileName::toBytes(path(u"tree/fifo"_s)), 0600);
        for (const QString &name : { u"tree"_s, u"folder link"_s, u"dangling link"_s })
            QVERIFY(!remove(name));
        QCOMPARE(treeOf(*folder, { {} }), u"/file=file, /folder/in=in"_s);
        QCOMPARE(remove(u"tree"_s), std::errc::no_such_file_or_directory);
    }

    void removingADeepTreeEnds()
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
        QVERIFY(!remove(QString::fromLatin1(name)));
        QVERIFY(folder->names().isEmpty());
    }

    void removingGoesOnAfterAFailure()
    {
        makeTree(*folder, u"tree/1, tree/2, tree/kept/file, tree/3, tree/4"_s);
        chmod(FileName::toBytes(path(u"tree/kept"_s)), 0555);
        const WithoutRights withoutRights;
        QCOMPARE(remove(u"tree"_s), std::errc::permission_denied);
        QCOMPARE(treeOf(*folder, { u"tree"_s }), u"tree/kept/file="_s);
        chmod(FileName::toBytes(path(u"tree/kept"_s)), 0755);
    }

    void attributesComeAlongWhereNobodyMayWrite()
    {
        makeTree(*folder, u"from, to, closed/, link->from, plain"_s);
        const QByteArray large(3000, 'x');
        folder->setAttribute(u"from"_s, "user.large", large);
        const QByteArray closed = FileName::toBytes(path(u"to"_s));
        chmod(closed, 0444);
        chmod(FileName::toBytes(path(u"closed"_s)), 0555);
        const WithoutRights withoutRights;
        QVERIFY(!FileCopy::copyUserAttributes(path(u"from"_s), path(u"to"_s)));
        QVERIFY(!FileCopy::copyUserAttributes(path(u"from"_s), path(u"closed"_s)));
        QVERIFY(FileCopy::copyUserAttributes(path(u"link"_s), path(u"plain"_s)));
        QVERIFY(FileCopy::copyUserAttributes(path(u"plain"_s), path(u"link"_s)));
        QCOMPARE(folder->attribute(u"to"_s, "user.large"), large);
        QCOMPARE(folder->attribute(u"closed"_s, "user.large"), large);
        QCOMPARE(fileStatus(path(u"to"_s), Links::NoFollow)->mode, 0444U);
    }

    void filesAreTheSameAndInsideByAnyName()
    {
        makeThings();
        const auto pairs = [](const QString &words) { return words.split(u", "_s); };
        for (const QString &pair :
             pairs(u"file=folder/../file, file=hard link, link=file, link=hard link, "
                   "folder=folder link/., folder/in=folder link/in, dangling link=./dangling link, "
                   "file|other file, missing|missing"_s)) {
            const QStringList names = pair.split(QRegularExpression(u"[=|]"_s));
            const bool same = pair.contains(u'=');
            QVERIFY2(SameFile::isSame(path(names[0]), path(names[1])) == same, qPrintable(pair));
            QVERIFY2(SameFile::isSame(path(names[1]), path(names[0])) == same, qPrintable(pair));
        }
        // "folder2/sub link" lies there and leads elsewhere, and a link holds nothing.
        for (const QString &pair :
             pairs(u"folder<folder, folder/sub/deep<folder, folder|folder/sub, folder2|folder, "
                   "folder link/sub<folder, folder2/sub link/deep<folder, "
                   "folder2/sub link|folder2, folder/sub|folder link, missing|folder"_s)) {
            const QStringList names = pair.split(QRegularExpression(u"[<|]"_s));
            QVERIFY2(SameFile::isInside(path(names[0]), path(names[1])) == pair.contains(u'<'),
                     qPrintable(pair));
        }
    }

    void marksComeFromTheFirstThatAnswers()
    {
        using FileFlags::Alias, FileFlags::Invisible;
        constexpr auto Tags = "user.xdg.tags";
        constexpr auto Netatalk = "user.org.netatalk.Metadata";
        const auto finder = &TestFolder::finderInfo;
        const struct {
            const char *name;
            QList<std::pair<const char *, QByteArray>> attributes;
            int marks;
        } cases[] = {
            { "none", {}, 0 },
            { "red", { { Label, "1" } }, 0x0C },
            { "grey", { { Label, "7" } }, 0x02 },
            { "no label hides", { { Label, "0" }, { Tags, "Red" }, { Finder, finder(0x06) } }, 0 },
            { "a label that is none", { { Label, "8" }, { Tags, "red" } }, 0x0C },
            { "first colour", { { Tags, "holiday, GRAY ,Red" }, { Finder, finder(0x06) } }, 0x02 },
            { "no colour", { { Tags, "holiday,Reddish" }, { Finder, finder(0x06) } }, 0x06 },
            { "flags beside a label", { { Label, "7" }, { Finder, finder(0xC00C) } }, 0xC002 },
            { "flags beyond the label", { { Finder, finder(0x3FF1) } }, 0 },
            { "cut off", { { Finder, "12345678\xFF" } }, 0 },
            { "AppleDouble", { { Netatalk, appleDouble(1, 9, 38) } }, 0x8004 },
            { "other entry", { { Netatalk, appleDouble(1, 8, 38) } }, 0 },
            { "past the end", { { Netatalk, appleDouble(1, 9, 0xFFFFFFF0) } }, 0 },
            { "entries past the end", { { Netatalk, appleDouble(0xFFFF, 8, 38) } }, 0 },
        };
        for (const auto &[name, attributes, expected] : cases) {
            const QString file = QString::fromUtf8(name);
            folder->write(file);
            for (const auto &[attribute, value] : attributes)
                folder->setAttribute(file, attribute, value);
            const auto marks = FileFlags::marks(folder->path(file));
            const int flags = (marks.invisible ? Invisible : 0) | (marks.alias ? Alias : 0);
            QVERIFY2((marks.labelBits | flags) == expected, name);
        }
    }

    void marksFollowLinksAndLocksDoNot()
    {
        makeTree(*folder, u"marked=!, link->marked"_s);
        folder->setAttribute(u"marked"_s, Label, "1");
        QCOMPARE(FileFlags::marks(folder->path(u"link"_s)).labelBits, quint8(0x0C));
        QVERIFY(FileFlags::isLocked(folder->path(u"marked"_s)));
        QVERIFY(!FileFlags::isLocked(folder->path(u"link"_s)));
        QVERIFY(!FileFlags::isLocked(folder->path(u"missing"_s)));
    }

    void hiddenNamesAreBytesOfAFile()
    {
        makeTree(*folder, u"hiding/, waiting/"_s);
        folder->write(u"hiding/.hidden"_s, "one\n\n two \n\xFF\nlast");
        QCOMPARE(mkfifo(folder->bytes(u"waiting/.hidden"_s), 0600), 0);
        HiddenRule rule(folder->path(u"hiding"_s));
        for (const char *hidden : { "one", " two ", "\xFF", "last", ".dot", "Temporary Items" })
            QVERIFY2(rule.hidesName(hidden), hidden);
        for (const char *shown : { "two", "", "las", "temporary items" })
            QVERIFY2(!rule.hidesName(shown), shown);
        for (const QString &name : { u"missing"_s, u"waiting"_s })
            QVERIFY(!HiddenRule(folder->path(name)).hidesName("one"));
    }

private:
    static constexpr auto Label = "user.twinleaf.label";
    static constexpr auto Finder = "user.com.apple.FinderInfo";

    // An AppleDouble header, and the Finder's information behind it.
    static QByteArray appleDouble(quint16 entries, quint32 id, quint32 offset)
    {
        QByteArray header(38, '\0');
        qToBigEndian(entries, header.data() + 24);
        qToBigEndian(id, header.data() + 26);
        qToBigEndian(offset, header.data() + 30);
        return header + TestFolder::finderInfo(0x8004);
    }

    QString path(const QString &name) const { return folder->path(name); }
    std::error_code remove(const QString &name) const
    {
        return removeTreeAt(AT_FDCWD, folder->bytes(name)).failed;
    }

    // One of each sort, with the name of the sort.
    void makeThings() const
    {
        makeTree(*folder,
                 u"file=file, other file=other, hard link==file, empty folder/, folder/sub/deep/, "
                 "folder2/, folder/in=in, link->file, folder link->folder, "
                 "folder2/sub link->../folder/sub, dangling link->nowhere"_s);
        mkfifo(FileName::toBytes(path(u"fifo"_s)), 0600);
    }

    std::unique_ptr<TestFolder> folder;
};

QTEST_GUILESS_MAIN(tst_FileSystem)
#include "tst_FileSystem.moc"
