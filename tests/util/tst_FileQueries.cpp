#include "util/FileQueries.h"

#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

QByteArray linkFile(const QString &target)
{
    return "[Desktop Entry]\nType=Link\nURL=file://" + FileName::toBytes(target) + '\n';
}

} // namespace

class tst_FileQueries : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void hiddenItems_data();
    void hiddenItems();
    void packageIsNoDirectoryButEveryFolderIsAPackage();
    void oversizedReadsThirtyTwoBits_data();
    void oversizedReadsThirtyTwoBits();
    void attributesAreThoseOfTheLinkOrItsTarget();
    void aliasesResolveToTheirEnd();
    void labelColourOfFinderFlags_data();
    void labelColourOfFinderFlags();
    void pathUpToAComponent();
    void shownPathNamesVolumes();
    void absentTextContainsNothing();

private:
    const TestFolder folder;
    const FileKinds kinds;
    RecordedWorkspace workspace;
    FileQueries queries { workspace, kinds };
};

void tst_FileQueries::hiddenItems_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hidden");
    QTest::newRow("dot, not even there") << ".profile" << true;
    QTest::newRow("not there") << "gone" << true;
    QTest::newRow("temporary items") << "Temporary Items" << true;
    QTest::newRow("plain") << "plain" << false;
    QTest::newRow("slash at the end") << "plain/" << false;
    QTest::newRow("dangling link") << "dangling" << false;
    QTest::newRow("listed") << "listed" << true;
}

void tst_FileQueries::hiddenItems()
{
    QFETCH(QString, name);
    folder.makeFolder(u"hidden/plain"_s);
    folder.makeFolder(u"hidden/Temporary Items"_s);
    folder.write(u"hidden/listed"_s);
    folder.write(u"hidden/.hidden"_s, "other\nlisted");
    if (!exists(folder.path(u"hidden/dangling"_s)))
        folder.link(u"nowhere"_s, u"hidden/dangling"_s);
    QTEST(queries.isFileHidden(folder.path(u"hidden/"_s + name)), "hidden");
}

void tst_FileQueries::packageIsNoDirectoryButEveryFolderIsAPackage()
{
    folder.makeFolder(u"plain"_s);
    folder.makeFolder(u"Editor.app"_s);
    QVERIFY(queries.isDirectory(folder.path(u"plain"_s)));
    QVERIFY(!queries.isDirectory(folder.path(u"Editor.app"_s)));
    QVERIFY(!queries.isDirectory(folder.path(u"Editor.app/"_s)));
    QVERIFY(queries.isPackage(folder.path(u"plain"_s)));
    QVERIFY(queries.isPackage(folder.path(u"Editor.app"_s)));
}

void tst_FileQueries::oversizedReadsThirtyTwoBits_data()
{
    QTest::addColumn<qint64>("size");
    QTest::addColumn<bool>("oversized");
    QTest::newRow("limit") << 52428800LL << false;
    QTest::newRow("over it") << 52428801LL << true;
    QTest::newRow("last before 2 GiB") << 0x7FFFFFFFLL << true;
    QTest::newRow("2 GiB") << 0x80000000LL << false;
    QTest::newRow("3 GiB") << 0xC0000000LL << false;
}

void tst_FileQueries::oversizedReadsThirtyTwoBits()
{
    QFETCH(qint64, size);
    folder.write(u"sparse"_s);
    const QString path = folder.path(u"sparse"_s);
    QCOMPARE(::truncate(FileName::toBytes(path), size), 0);
    QTEST(queries.isItemFolderOrOversized(path), "oversized");
}

void tst_FileQueries::attributesAreThoseOfTheLinkOrItsTarget()
{
    folder.makeFolder(u"target"_s);
    folder.link(u"target"_s, u"link"_s);
    folder.link(u"nowhere"_s, u"broken"_s);
    const QString link = folder.path(u"link"_s);
    const QString broken = folder.path(u"broken"_s);
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

void tst_FileQueries::aliasesResolveToTheirEnd()
{
    const auto path = [this](const QString &name) { return folder.path(name); };
    const auto unchanged = [this, &path](const QString &name) {
        return queries.resolveAliasPath(path(name)) == path(name);
    };
    folder.write(u"file"_s);
    folder.link(u"file"_s, u"symlink"_s);
    folder.write(u"one.desktop"_s, linkFile(path(u"file"_s)));
    folder.write(u"two.desktop"_s, linkFile(path(u"one.desktop"_s)));
    folder.write(u"dead.desktop"_s, linkFile(path(u"gone"_s)));
    folder.write(u"ring.desktop"_s, linkFile(path(u"ring.desktop"_s)));

    QVERIFY(queries.isAlias(path(u"one.desktop"_s)));
    QVERIFY(queries.isAlias(path(u"dead.desktop"_s)));
    QVERIFY(!queries.isAlias(path(u"symlink"_s)));
    QCOMPARE(queries.resolveAliasPath(path(u"two.desktop"_s)), path(u"file"_s));
    for (const QString &name :
         { u"file"_s, u"symlink"_s, u"dead.desktop"_s, u"ring.desktop"_s, u"gone"_s })
        QVERIFY2(unchanged(name), qUtf8Printable(name));

    QByteArray finderInfo(32, '\0');
    finderInfo[8] = char(0x80);
    if (folder.setAttribute(u"file"_s, "user.com.apple.FinderInfo", finderInfo)) {
        QVERIFY(queries.isAlias(path(u"file"_s)));
        QVERIFY(unchanged(u"file"_s)); // an alias of another system leads nowhere here
    }
}

void tst_FileQueries::labelColourOfFinderFlags_data()
{
    QTest::addColumn<int>("bits");
    QTest::addColumn<int>("label");
    QTest::addColumn<QColor>("colour");
    QTest::newRow("none") << 0 << 0 << QColor(0, 0, 0);
    QTest::newRow("red") << 12 << 1 << QColor(255, 80, 80);
    QTest::newRow("orange") << 14 << 2 << QColor(255, 207, 0);
    QTest::newRow("yellow") << 10 << 3 << QColor(255, 255, 80);
    QTest::newRow("green") << 4 << 4 << QColor(80, 255, 80);
    QTest::newRow("blue") << 8 << 5 << QColor(80, 80, 255);
    QTest::newRow("purple") << 6 << 6 << QColor(255, 80, 255);
    QTest::newRow("grey among other flags") << 0xC003 << 7 << QColor(200, 200, 200);
}

void tst_FileQueries::labelColourOfFinderFlags()
{
    QFETCH(int, bits);
    QFETCH(int, label);
    QCOMPARE(FileQueries::labelOfBits(bits), label);
    QTEST(FileQueries::finderLabelColor(label), "colour");

    folder.write(u"labelled"_s);
    QByteArray finderInfo(32, '\0');
    finderInfo[8] = char(bits >> 8);
    finderInfo[9] = char(bits);
    if (!folder.setAttribute(u"labelled"_s, "user.com.apple.FinderInfo", finderInfo))
        QSKIP("no extended attributes here");
    QCOMPARE(queries.finderLabelColorOfPath(folder.path(u"labelled"_s)), label);
}

void tst_FileQueries::pathUpToAComponent()
{
    QCOMPARE(FileQueries::getPathComponents(u"/"_s, 0), u"/"_s);
    QCOMPARE(FileQueries::getPathComponents(u"/Users/x/y"_s, 1), u"/Users"_s);
    QCOMPARE(FileQueries::getPathComponents(u"/Users/x"_s, 9), u"/Users/x"_s);
}

void tst_FileQueries::shownPathNamesVolumes()
{
    const QString root = queries.getLocalizedPath(u"/"_s);
    QVERIFY(!root.isEmpty() && !root.contains(u'/'));
    QCOMPARE(queries.getLocalizedPath(u"/usr/share"_s), root + u"/usr/share"_s);
    QCOMPARE(queries.getLocalizedPath(u"/media/somebody/Stick"_s),
             root + u"/media/Volumes/Stick"_s);
    QCOMPARE(queries.getLocalizedPath(u"/srv/somebody"_s), root + u"/srv/somebody"_s);
}

void tst_FileQueries::absentTextContainsNothing()
{
    QVERIFY(!FileQueries::isStringInSubstring(u"Folder"_s, QString()));
    QVERIFY(!FileQueries::isStringInSubstring(QString(), u"a"_s));
}

QTEST_MAIN(tst_FileQueries)
#include "tst_FileQueries.moc"
