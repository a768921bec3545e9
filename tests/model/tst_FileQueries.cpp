#include "model/FileQueries.h"

#include "files/Waiting.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/TestTree.h"
#include "widgets/FileKinds.h"

#include <memory>
#include <unistd.h>

class tst_FileQueries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void oversizedReadsThirtyTwoBits()
    {
        folder->write(u"sparse"_s);
        // The limit, the last before 2 GiB, and what has the sign bit.
        for (const auto &[size, oversized] : { std::pair(52428800LL, false),
                                               { 52428801LL, true },
                                               { 0x7FFFFFFFLL, true },
                                               { 0x80000000LL, false },
                                               { 0xC0000000LL, false } }) {
            QCOMPARE(::truncate(FileName::toBytes(path(u"sparse"_s)), size), 0);
            QCOMPARE(queries.isItemFolderOrOversized(path(u"sparse"_s)), oversized);
        }
    }

    void foldersPackagesAndLinks()
    {
        makeTree(*folder, u"plain/, Editor.app/, link->plain, broken->nowhere"_s);
        // A package is no directory, but every folder is a package.
        QVERIFY(queries.isDirectory(path(u"plain"_s)));
        QVERIFY(!queries.isDirectory(path(u"Editor.app"_s)));
        QVERIFY(!queries.isDirectory(path(u"Editor.app/"_s)));
        QVERIFY(queries.isPackage(path(u"plain"_s)));
        QVERIFY(queries.isPackage(path(u"Editor.app"_s)));
        const QString link = path(u"link"_s);
        const QString broken = path(u"broken"_s);
        QVERIFY(queries.isPackage(link));
        QCOMPARE(queries.getFileType(link), u"Folder"_s);
        QVERIFY(queries.getFileType(broken) != u"--"_s);
        QVERIFY(!queries.getDateForFile(broken).isValid());
        queries.setTraverseLinks(false);
        QVERIFY(!queries.isPackage(link));
        QVERIFY(queries.isDirectory(link)); // whatever the setting says
        QVERIFY(queries.getFileType(link) != u"Folder"_s);
        QVERIFY(queries.getDateForFile(broken).isValid());
        queries.setTraverseLinks(true);
    }

    void aliasesResolveToTheirEnd()
    {
        makeTree(*folder, u"file, symlink->file"_s);
        for (const auto &[name, target] : { std::pair(u"one.desktop"_s, u"file"_s),
                                            { u"two.desktop"_s, u"one.desktop"_s },
                                            { u"dead.desktop"_s, u"gone"_s },
                                            { u"ring.desktop"_s, u"ring.desktop"_s } })
            folder->write(
                name, "[Desktop Entry]\nType=Link\nURL=file://" + FileName::toBytes(path(target)));

        QVERIFY(queries.isAlias(path(u"one.desktop"_s)));
        QVERIFY(queries.isAlias(path(u"dead.desktop"_s)));
        QVERIFY(!queries.isAlias(path(u"symlink"_s)));
        QCOMPARE(queries.resolveAliasPath(path(u"two.desktop"_s)), path(u"file"_s));
        folder->setFinderFlags(u"file"_s, 0x8000);
        QVERIFY(queries.isAlias(path(u"file"_s))); // of another system: leads nowhere here
        for (const QString &name :
             { u"file"_s, u"symlink"_s, u"dead.desktop"_s, u"ring.desktop"_s, u"gone"_s })
            QCOMPARE(queries.resolveAliasPath(path(name)), path(name));
    }

    void labelOfFinderFlags()
    {
        folder->write(u"labelled"_s);
        QSet<QRgb> colors;
        for (const auto &[bits, label] : { std::pair(0, 0),
                                           { 12, 1 },
                                           { 14, 2 },
                                           { 10, 3 },
                                           { 4, 4 },
                                           { 8, 5 },
                                           { 6, 6 },
                                           { 0xC003, 7 } }) {
            QCOMPARE(FileQueries::labelOfBits(bits), label);
            folder->setFinderFlags(u"labelled"_s, quint16(bits));
            QCOMPARE(queries.finderLabelColorOfPath(path(u"labelled"_s)), label);
            colors += FileQueries::finderLabelColor(label).rgb();
        }
        QCOMPARE(colors.size(), 8);
    }

    void shownPathNamesVolumes()
    {
        const QString root = queries.getLocalizedPath(u"/"_s);
        QVERIFY(!root.isEmpty() && !root.contains(u'/'));
        QCOMPARE(queries.getLocalizedPath(u"/usr/share"_s), root + u"/usr/share"_s);
        QCOMPARE(queries.getLocalizedPath(u"/media/somebody/Stick"_s),
                 root + u"/media/Volumes/Stick"_s);
        QCOMPARE(queries.getLocalizedPath(u"/srv/somebody"_s), root + u"/srv/somebody"_s);
    }

    void absentTextContainsNothing()
    {
        QVERIFY(!FileQueries::isStringInSubstring(u"Folder"_s, QString()));
        QVERIFY(!FileQueries::isStringInSubstring(QString(), u"a"_s));
    }

private:
    QString path(const QString &name) const { return folder->path(name); }

    std::unique_ptr<TestFolder> folder;
    const FileKinds kinds;
    RecordedWorkspace workspace;
    Waiting waiting;
    FileQueries queries { workspace, kinds, waiting };
};

QTEST_MAIN(tst_FileQueries)
#include "tst_FileQueries.moc"
