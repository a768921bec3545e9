#include "model/Listing.h"

#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "tests/support/TestFolder.h"
#include "util/PathText.h"

#include <QTest>

#include <fcntl.h>
#include <memory>
#include <sys/fsuid.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

constexpr ListingOptions Following {};
constexpr ListingOptions NotFollowing { .traverseLinks = false };
constexpr ListingOptions WithHidden { .showHiddenFiles = true };

// Another user for the calls of this thread: nothing is closed to root.
class WithoutRights {
public:
    WithoutRights() { setfsuid(65534); }
    ~WithoutRights() { setfsuid(geteuid()); }
};

} // namespace

class tst_Listing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void parentFirstThenFoldersThenFiles();
    void parentRowStandsForTheFolderItself_data();
    void parentRowStandsForTheFolderItself();
    void parentRowOfALinkHasTheDateAsSet();
    void whatCannotBeReadHasOnlyTheParentRow_data();
    void whatCannotBeReadHasOnlyTheParentRow();
    void whatCannotBeLookedAtHasARowAllTheSame();
    void oddItems_data();
    void oddItems();
    void anyNameIsFoundAgain_data();
    void anyNameIsFoundAgain();
    void hiddenItemsAreLeftOut();
    void markedItems();
    void everyItemOfALargeFolderIsLookedAt();
    void iconsAreOfTheItemOrOfItsGroup();
    void entriesAsArraysDifferInTheirOrder();

private:
    Listing read(const ListingOptions &options = Following) const
    {
        return Listing::read(folder->path(), options, kinds);
    }
    QStringList sortedNames(const ListingOptions &options) const
    {
        const Listing listing = read(options);
        QStringList names;
        for (qsizetype row = 1; row < listing.size(); ++row)
            names.append(listing[row].name());
        names.sort();
        return names;
    }

    FileKinds kinds;
    std::unique_ptr<TestFolder> folder;
};

void tst_Listing::parentFirstThenFoldersThenFiles()
{
    for (const auto &name : { u"b"_s, u"a"_s, u"Z"_s }) {
        folder->write(name + u".txt"_s);
        folder->makeFolder(name);
        folder->makeFolder(name + u".app"_s);
    }
    const Listing listing = read();
    QCOMPARE(listing.size(), 10);
    QVERIFY(listing[0].isParent());
    for (qsizetype row = 0; row < listing.size(); ++row) {
        QCOMPARE(listing[row].isFolder(), row < 4);
        QCOMPARE(listing[row].type() == u"Folder"_s, row < 4);
        QCOMPARE(listing.rowOfPath(listing[row].path()), row);
    }
}

void tst_Listing::parentRowStandsForTheFolderItself_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("a folder") << u"/usr/share"_s;
    QTest::newRow("the root folder") << u"/"_s;
}

void tst_Listing::parentRowStandsForTheFolderItself()
{
    QFETCH(const QString, path);
    const Listing listing = Listing::read(path, Following, kinds);
    QVERIFY(listing.size() > 1);
    const Entry parent = listing[0];
    QCOMPARE(parent.name(), u".."_s);
    QCOMPARE(parent.path(), path);
    QCOMPARE(parent.size(), u"--"_s);
    QCOMPARE(parent.pureSize(), 0);
    QCOMPARE(parent.type(), u"Folder"_s);
    QCOMPARE(parent.date().toMSecsSinceEpoch(),
             fileStatus(path, Links::Follow)->modified / 1'000'000);
    QVERIFY(!listing[1].path().contains(u"//"_s));
    QCOMPARE(PathText::parent(listing[1].path()), path);
}

void tst_Listing::parentRowOfALinkHasTheDateAsSet()
{
    folder->makeFolder(u"folder"_s);
    folder->link(u"folder"_s, u"link"_s);
    const timespec times[] = { { 1000, 0 }, { 1000, 0 } };
    utimensat(AT_FDCWD, FileName::toBytes(folder->path(u"folder"_s)), times, 0);
    const auto seconds = [&](const ListingOptions &options) {
        return Listing::read(folder->path(u"link"_s), options, kinds)[0].date().toSecsSinceEpoch();
    };
    QCOMPARE(seconds(Following), 1000);
    QVERIFY(seconds(NotFollowing) > 1000);
}

void tst_Listing::whatCannotBeReadHasOnlyTheParentRow_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasDate");
    QTest::newRow("closed folder") << u"closed"_s << true;
    QTest::newRow("folder in a closed one") << u"closed/in"_s << false;
    QTest::newRow("folder that is gone") << u"gone"_s << false;
    QTest::newRow("file") << u"file"_s << true;
}

void tst_Listing::whatCannotBeReadHasOnlyTheParentRow()
{
    QFETCH(const QString, name);
    QFETCH(const bool, hasDate);
    folder->makeFolder(u"closed/in"_s);
    folder->write(u"file"_s, "text");
    chmod(FileName::toBytes(folder->path()), 0755);
    chmod(FileName::toBytes(folder->path(u"closed"_s)), 0);
    const WithoutRights withoutRights;
    const Listing listing = Listing::read(folder->path(name), Following, kinds);
    QCOMPARE(listing.size(), 1);
    QCOMPARE(listing[0].path(), folder->path(name));
    QCOMPARE(listing[0].date().isValid(), hasDate);
    QCOMPARE(listing.sorted(Column::Name, SortDirection::Descending).size(), 1);
}

void tst_Listing::whatCannotBeLookedAtHasARowAllTheSame()
{
    folder->makeFolder(u"names only/in"_s);
    folder->write(u"names only/file"_s, "text");
    chmod(FileName::toBytes(folder->path()), 0755);
    chmod(FileName::toBytes(folder->path(u"names only"_s)), 0444);
    const WithoutRights withoutRights;
    const Listing listing = Listing::read(folder->path(u"names only"_s), Following, kinds);
    QCOMPARE(listing.size(), 3);
    for (const qsizetype row : { 1, 2 }) {
        QCOMPARE(listing[row].size(), u"0"_s);
        QCOMPARE(listing[row].pureSize(), 0);
        QVERIFY(!listing[row].date().isValid());
        QVERIFY(!listing[row].isFolder());
    }
}

void tst_Listing::oddItems_data()
{
    QTest::addColumn<ListingOptions>("options");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("size");
    QTest::addColumn<qint64>("pureSize");
    QTest::addColumn<bool>("hasDate");
    QTest::addColumn<bool>("isFolder");
    const auto both = [](const char *tag, const QString &name, const QString &size, qint64 pure,
                         bool isFolder) {
        QTest::addRow("%s", tag) << Following << name << size << pure << true << isFolder;
        QTest::addRow("%s, links as such", tag)
            << NotFollowing << name << size << pure << true << isFolder;
    };
    both("file", u"file"_s, u"3 KB"_s, 3000, false);
    both("empty file", u"empty"_s, u"0 Bytes"_s, 0, false);
    both("sparse file", u"sparse"_s, u"5.00 GB"_s, 5LL << 30, false);
    both("folder", u"folder"_s, u"--"_s, 0, true);
    both("package", u"Program.app"_s, u"--"_s, 0, false);
    both("file with a package's suffix", u"file.app"_s, u"4 Bytes"_s, 4, false);
    both("FIFO", u"fifo"_s, u"0 Bytes"_s, 0, false);
    both("socket", u"socket"_s, u"0 Bytes"_s, 0, false);
    const auto row = [](const char *tag, const ListingOptions &options, const QString &name,
                        const QString &size, qint64 pure, bool hasDate, bool isFolder) {
        QTest::addRow("%s", tag) << options << name << size << pure << hasDate << isFolder;
    };
    row("link to a file", Following, u"to file"_s, u"3 KB"_s, 3000, true, false);
    row("link to a file, as such", NotFollowing, u"to file"_s, u"4 Bytes"_s, 4, true, false);
    row("link to a folder", Following, u"to folder"_s, u"--"_s, 0, true, true);
    // It has no size to show, as it opens like a folder, but its kind is its own.
    row("link to a folder, as such", NotFollowing, u"to folder"_s, u"--"_s, 0, true, false);
    row("dangling link", Following, u"dangling"_s, u"0"_s, 0, false, false);
    row("dangling link, as such", NotFollowing, u"dangling"_s, u"7 Bytes"_s, 7, true, false);
    row("link loop", Following, u"loop"_s, u"0"_s, 0, false, false);
    row("link loop, as such", NotFollowing, u"loop"_s, u"4 Bytes"_s, 4, true, false);
}

void tst_Listing::oddItems()
{
    QFETCH(const ListingOptions, options);
    QFETCH(const QString, name);
    folder->write(u"file"_s, QByteArray(3000, 'x'));
    folder->write(u"empty"_s);
    folder->write(u"sparse"_s);
    QCOMPARE(truncate(FileName::toBytes(folder->path(u"sparse"_s)), 5LL << 30), 0);
    folder->makeFolder(u"folder"_s);
    folder->makeFolder(u"Program.app"_s);
    folder->write(u"file.app"_s, "text");
    mkfifo(FileName::toBytes(folder->path(u"fifo"_s)), 0600);
    mknod(FileName::toBytes(folder->path(u"socket"_s)), S_IFSOCK | 0600, 0);
    folder->link(u"file"_s, u"to file"_s);
    folder->link(u"folder"_s, u"to folder"_s);
    folder->link(u"nowhere"_s, u"dangling"_s);
    folder->link(u"loop"_s, u"loop"_s);

    const Listing listing = read(options);
    QCOMPARE(listing.size(), 13);
    const qsizetype row = listing.rowOfName(name);
    QVERIFY(row > 0);
    const Entry entry = listing[row];
    QTEST(entry.size(), "size");
    QTEST(entry.pureSize(), "pureSize");
    QTEST(entry.date().isValid(), "hasDate");
    QTEST(entry.isFolder(), "isFolder");
    QCOMPARE(entry.type() == u"Folder"_s, entry.isFolder());
    QVERIFY(!entry.type().isEmpty());
}

void tst_Listing::anyNameIsFoundAgain_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::newRow("not UTF-8") << QByteArray("a\xff\xfe.txt");
    QTest::newRow("cut off in a character") << QByteArray("\xe2\x82");
    QTest::newRow("line break") << QByteArray("a\nb");
    QTest::newRow("like a flag") << QByteArray("-m");
    QTest::newRow("above the first plane") << QByteArray("\xf0\x9f\x8d\x83");
    QTest::newRow("255 bytes") << QByteArray(255, 'n');
}

void tst_Listing::anyNameIsFoundAgain()
{
    QFETCH(const QByteArray, bytes);
    const QString name = FileName::fromBytes(bytes);
    folder->write(name, "12");
    folder->write(u"other"_s);
    const Listing listing = read();
    const qsizetype row = listing.rowOfPath(folder->path(name));
    QVERIFY(row > 0);
    QCOMPARE(FileName::toBytes(listing[row].name()), bytes);
    QCOMPARE(listing[row].pureSize(), 2);
    QCOMPARE(listing.rowOfPath(folder->path(name) + u"x"_s), -1);
    QCOMPARE(listing.rowOfPath(u"/somewhere/else/"_s + name), -1);
}

void tst_Listing::hiddenItemsAreLeftOut()
{
    const QStringList items { u".dotted"_s, u".hidden"_s, u"Temporary Items"_s, u"dangling"_s,
                              u"listed"_s,  u"shown"_s,   u"temporary items"_s };
    for (const QString &name : items) {
        if (name == u"dangling"_s)
            folder->link(u"nowhere"_s, name);
        else
            folder->write(name);
    }
    folder->write(u".hidden"_s, "listed\nnot there\n");
    QCOMPARE(sortedNames(Following),
             QStringList({ u"dangling"_s, u"shown"_s, u"temporary items"_s }));
    QCOMPARE(sortedNames(WithHidden), items);
}

void tst_Listing::markedItems()
{
    QByteArray finderInfo(32, '\0');
    finderInfo[9] = 0x0C; // the label field of the flag word
    folder->write(u"labelled"_s);
    folder->write(u"plain"_s);
    if (!folder->setAttribute(u"labelled"_s, "user.com.apple.FinderInfo", finderInfo))
        QSKIP("No attributes on this file system");
    folder->write(u"invisible"_s);
    finderInfo[8] = 0x40;
    folder->setAttribute(u"invisible"_s, "user.com.apple.FinderInfo", finderInfo);

    QCOMPARE(sortedNames(Following), QStringList({ u"labelled"_s, u"plain"_s }));
    const Listing listing = read();
    QCOMPARE(listing[listing.rowOfName(u"labelled"_s)].finderLabel(), 1);
    QCOMPARE(listing[listing.rowOfName(u"plain"_s)].finderLabel(), 0);
}

void tst_Listing::everyItemOfALargeFolderIsLookedAt()
{
    constexpr int Count = 2100; // more than one thread's share
    for (int i = 0; i < Count; ++i)
        folder->write(QString::number(i), QByteArray(i % 7 + 1, 'x'));
    const Listing listing = read();
    QCOMPARE(listing.size(), Count + 1);
    for (qsizetype row = 1; row < listing.size(); ++row)
        QCOMPARE(listing[row].pureSize(), listing[row].name().toInt() % 7 + 1);
}

void tst_Listing::iconsAreOfTheItemOrOfItsGroup()
{
    folder->makeFolder(u"folder"_s);
    folder->makeFolder(u"Program.app"_s);
    folder->write(u"file.png"_s);
    const auto icon = [&](const ListingOptions &options, const QString &name) {
        const Listing listing = read(options);
        return listing[listing.rowOfName(name)].icon();
    };
    const ListingOptions ofGroups { .showSpecifiedIcons = false };
    QVERIFY(!icon(Following, u".."_s).isNull());
    QVERIFY(icon(ofGroups, u".."_s).isNull());
    const auto picture = [&](const ListingOptions &options, const QString &name) {
        return icon(options, name).pixmap(16).toImage();
    };
    QVERIFY(picture(Following, u"Program.app"_s) != picture(Following, u"file.png"_s));
    QCOMPARE(picture(ofGroups, u"Program.app"_s), picture(ofGroups, u"file.png"_s));
    QVERIFY(picture(ofGroups, u"folder"_s) != picture(ofGroups, u"file.png"_s));
}

void tst_Listing::entriesAsArraysDifferInTheirOrder()
{
    folder->write(u"file"_s, "text");
    const Entry entry = read()[1];
    const QVariantList rest { entry.name(), entry.size(), entry.date(), entry.type() };
    QCOMPARE(entry.entryAsArray().mid(1), rest + QVariantList { entry.path() });
    QCOMPARE(entry.entryAsArrayWithoutIcon(), QVariantList { entry.path() } + rest);
}

QTEST_MAIN(tst_Listing)
#include "tst_Listing.moc"
