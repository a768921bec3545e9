#include "model/Listing.h"

#include "files/FileName.h"
#include "tests/support/TestFolder.h"
#include "widgets/FileKinds.h"

#include <QTest>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr auto Up = SortDirection::Ascending;
constexpr auto Down = SortDirection::Descending;

QStringList names(const Listing &listing)
{
    QStringList names;
    for (qsizetype row = 1; row < listing.size(); ++row)
        names.append(listing[row].name());
    return names;
}

} // namespace

class tst_Sorting : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void foldersStayBeforeFiles()
    {
        const QList<std::tuple<Column, SortDirection, QString>> cases {
            { Column::Name, Up, u"m n a.zip b.txt c.app d.txt"_s },
            { Column::Name, Down, u"n m d.txt c.app b.txt a.zip"_s },
            // By bytes: as text, 1000 and 900 come the other way about. Folders keep the order of
            // names.
            { Column::Size, Up, u"m n c.app d.txt b.txt a.zip"_s },
            { Column::Size, Down, u"m n a.zip b.txt d.txt c.app"_s },
            { Column::Date, Up, u"n m b.txt a.zip d.txt c.app"_s },
            { Column::Date, Down, u"m n c.app d.txt a.zip b.txt"_s },
            // Application, Plain text document, Zip archive.
            { Column::Type, Up, u"m n c.app b.txt d.txt a.zip"_s },
            { Column::Type, Down, u"m n a.zip b.txt d.txt c.app"_s },
            { Column::Icon, Down, u"m n a.zip b.txt c.app d.txt"_s }, // icons are no order
        };
        // Sizes and dates run against the names, and against each other.
        make(u"m/"_s, 0, 2000);
        make(u"n/"_s, 0, 1000);
        make(u"a.zip"_s, 1'100'000, 1'000'000'000);
        make(u"b.txt"_s, 1000, -5);
        make(u"c.app/"_s, 0, 4'000'000'000); // a package is sorted among the files
        make(u"d.txt"_s, 900, 1'000'000'001);
        const Listing byName = read().sorted(Column::Name, Up);
        for (const auto &[column, direction, order] : cases) {
            const Listing sorted = byName.sorted(column, direction);
            QVERIFY(sorted[0].isParent());
            QCOMPARE(names(sorted).join(u' '), order);
        }
    }

    void namesCompareByCodePoint()
    {
        const QList<QByteArrayList> cases {
            { "B", "a" },
            { "Read", "read" },
            { "file 10", "file 2" }, // digits are no numbers
            { "z", "\xc3\xa9" },
            { "name", "name " },
            { "12345678A", "12345678a" }, // alike in the first eight bytes
            { "\xef\xbf\xbd", "\xf0\x9f\x8d\x83" }, // above the first plane is above its end
        };
        for (const QByteArrayList &both : cases) {
            init();
            const QString first = FileName::fromBytes(both[0]);
            const QString second = FileName::fromBytes(both[1]);
            folder->write(first);
            folder->write(second);
            QCOMPARE(names(read().sorted(Column::Name, Up)), QStringList({ first, second }));
            QCOMPARE(names(read().sorted(Column::Name, Down)), QStringList({ second, first }));
        }
    }

    void equalKeysKeepTheirOrder()
    {
        for (int i = 0; i < 100; ++i)
            make(QString::number(i), i % 2, 1'000'000);
        const Listing before = read().sorted(Column::Name, Down);
        for (const Column column : { Column::Date, Column::Type }) {
            for (const SortDirection direction : { Up, Down })
                QCOMPARE(names(before.sorted(column, direction)), names(before));
        }
        QStringList bySize = names(before); // odd names are the larger files
        std::ranges::stable_sort(bySize, {},
                                 [](const QString &name) { return -(name.toInt() % 2); });
        QCOMPARE(names(before.sorted(Column::Size, Down)), bySize);
    }

    void anUnknownDateIsTheOldest()
    {
        make(u"a"_s, 1, -1'000'000);
        make(u"b"_s, 1, 1'000'000);
        folder->link(u"nowhere"_s, u"c"_s);
        QCOMPARE(names(read().sorted(Column::Date, Up)), QStringList({ u"c"_s, u"a"_s, u"b"_s }));
    }

private:
    Listing read() const { return Listing::read(folder->path(), {}, kinds); }
    void make(const QString &name, int size, time_t modified) const
    {
        if (name.endsWith(u'/'))
            folder->makeFolder(name);
        else
            folder->write(name, QByteArray(size, 'x'));
        folder->setModified(name, modified);
    }

    FileKinds kinds;
    std::unique_ptr<TestFolder> folder;
};

QTEST_MAIN(tst_Sorting)
#include "tst_Sorting.moc"
