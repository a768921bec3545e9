#include "model/Listing.h"

#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "tests/support/TestFolder.h"

#include <QTest>

#include <fcntl.h>
#include <memory>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Up = SortDirection::Ascending;
constexpr auto Down = SortDirection::Descending;

QStringList names(const Listing &listing)
{
    QStringList names;
    for (qsizetype row = 0; row < listing.size(); ++row)
        names.append(listing[row].name());
    return names;
}

} // namespace

class tst_Sorting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void foldersStayBeforeFiles_data();
    void foldersStayBeforeFiles();
    void namesCompareByCodePoint_data();
    void namesCompareByCodePoint();
    void equalKeysKeepTheirOrder();
    void anUnknownDateIsTheOldest();
    void iconsAreNoOrder();

private:
    Listing read() const { return Listing::read(folder->path(), {}, kinds); }
    // Sizes and dates run against the names, and against each other.
    void make(const QString &name, int size, time_t modified, bool isFolder = false) const
    {
        if (isFolder)
            folder->makeFolder(name);
        else
            folder->write(name, QByteArray(size, 'x'));
        const timespec times[] = { { modified, 0 }, { modified, 0 } };
        utimensat(AT_FDCWD, FileName::toBytes(folder->path(name)), times, 0);
    }

    FileKinds kinds;
    std::unique_ptr<TestFolder> folder;
};

void tst_Sorting::foldersStayBeforeFiles_data()
{
    QTest::addColumn<Column>("column");
    QTest::addColumn<SortDirection>("direction");
    QTest::addColumn<QString>("order");
    QTest::newRow("name up") << Column::Name << Up << u".. m n a.zip b.txt c.app d.txt"_s;
    QTest::newRow("name down") << Column::Name << Down << u".. n m d.txt c.app b.txt a.zip"_s;
    // By bytes: as text, 1000 and 900 come the other way about. Folders keep the order of names.
    QTest::newRow("size up") << Column::Size << Up << u".. m n c.app d.txt b.txt a.zip"_s;
    QTest::newRow("size down") << Column::Size << Down << u".. m n a.zip b.txt d.txt c.app"_s;
    QTest::newRow("date up") << Column::Date << Up << u".. n m b.txt a.zip d.txt c.app"_s;
    QTest::newRow("date down") << Column::Date << Down << u".. m n c.app d.txt a.zip b.txt"_s;
    // Application, Plain text document, Zip archive.
    QTest::newRow("kind up") << Column::Type << Up << u".. m n c.app b.txt d.txt a.zip"_s;
    QTest::newRow("kind down") << Column::Type << Down << u".. m n a.zip b.txt d.txt c.app"_s;
}

void tst_Sorting::foldersStayBeforeFiles()
{
    QFETCH(const Column, column);
    QFETCH(const SortDirection, direction);
    make(u"m"_s, 0, 2000, true);
    make(u"n"_s, 0, 1000, true);
    make(u"a.zip"_s, 1'100'000, 1'000'000'000);
    make(u"b.txt"_s, 1000, -5);
    make(u"c.app"_s, 0, 4'000'000'000, true); // a package is sorted among the files
    make(u"d.txt"_s, 900, 1'000'000'001);
    const Listing byName = read().sorted(Column::Name, Up);
    QTEST(names(byName.sorted(column, direction)).join(u' '), "order");
}

void tst_Sorting::namesCompareByCodePoint_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::newRow("upper case before lower") << QByteArray("B") << QByteArray("a");
    QTest::newRow("only the case differs") << QByteArray("Read") << QByteArray("read");
    QTest::newRow("digits are no numbers") << QByteArray("file 10") << QByteArray("file 2");
    QTest::newRow("accents come late") << QByteArray("z") << QByteArray("\xc3\xa9");
    QTest::newRow("a beginning before the whole") << QByteArray("name") << QByteArray("name ");
    QTest::newRow("alike in the first eight bytes")
        << QByteArray("12345678A") << QByteArray("12345678a");
    QTest::newRow("above the first plane is above its end")
        << QByteArray("\xef\xbf\xbd") << QByteArray("\xf0\x9f\x8d\x83");
}

void tst_Sorting::namesCompareByCodePoint()
{
    QFETCH(const QByteArray, first);
    QFETCH(const QByteArray, second);
    const QStringList both { FileName::fromBytes(first), FileName::fromBytes(second) };
    for (const QString &name : both)
        folder->write(name);
    QCOMPARE(names(read().sorted(Column::Name, Up)).mid(1), both);
    QCOMPARE(names(read().sorted(Column::Name, Down)).mid(1), QStringList({ both[1], both[0] }));
}

void tst_Sorting::equalKeysKeepTheirOrder()
{
    for (int i = 0; i < 100; ++i)
        make(QString::number(i), i % 2, 1'000'000);
    const Listing before = read().sorted(Column::Name, Down);
    for (const Column column : { Column::Date, Column::Type }) {
        for (const SortDirection direction : { Up, Down })
            QCOMPARE(names(before.sorted(column, direction)), names(before));
    }
    const Listing bySize = before.sorted(Column::Size, Down);
    const auto sizeThenOrder = [&](qsizetype a, qsizetype b) {
        if (bySize[a].pureSize() != bySize[b].pureSize())
            return bySize[a].pureSize() > bySize[b].pureSize();
        return bySize[a].name() > bySize[b].name();
    };
    for (qsizetype row = 2; row < bySize.size(); ++row)
        QVERIFY(sizeThenOrder(row - 1, row));
}

void tst_Sorting::anUnknownDateIsTheOldest()
{
    make(u"a"_s, 1, -1'000'000);
    make(u"b"_s, 1, 1'000'000);
    folder->link(u"nowhere"_s, u"c"_s);
    QCOMPARE(names(read().sorted(Column::Date, Up)).mid(1),
             QStringList({ u"c"_s, u"a"_s, u"b"_s }));
}

void tst_Sorting::iconsAreNoOrder()
{
    make(u"a"_s, 1, 1);
    make(u"b"_s, 2, 2);
    const Listing down = read().sorted(Column::Name, Down);
    QCOMPARE(names(down.sorted(Column::Icon, Up)), names(down));
}

QTEST_MAIN(tst_Sorting)
#include "tst_Sorting.moc"
