#include "model/Listing.h"

#include "files/PathText.h"
#include "tests/support/TestTree.h"
#include "tests/support/WithoutRights.h"
#include "widgets/FileKinds.h"

#include <algorithm>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr auto Up = SortDirection::Ascending;
constexpr auto Down = SortDirection::Descending;
constexpr ListingOptions Following {};
constexpr ListingOptions NotFollowing { .traverseLinks = false };
constexpr ListingOptions WithHidden { .showHiddenFiles = true };

QString inWords(const Entry &entry)
{
    return entry.size() + u", "_s + QString::number(entry.pureSize())
        + (entry.date().isValid() ? u", dated"_s : u""_s)
        + (entry.isFolder() ? u", folder"_s : u""_s);
}

QStringList namesOf(const Listing &listing)
{
    QStringList names;
    for (qsizetype row = 1; row < listing.size(); ++row)
        names.append(listing[row].name());
    return names;
}

} // namespace

class tst_Listing : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { folder = std::make_unique<TestFolder>(); }
    void parentRowStandsForTheFolderItself()
    {
        for (const QString &path : { u"/usr/share"_s, u"/"_s }) {
            const Listing listing = Listing::read(path, Following, kinds);
            QVERIFY(listing.size() > 1);
            const Entry parent = listing[0];
            QCOMPARE(parent.name(), u".."_s);
            QCOMPARE(parent.path(), path);
            QCOMPARE(inWords(parent), u"--, 0, dated, folder"_s);
            QCOMPARE(parent.date().toMSecsSinceEpoch(),
                     fileStatus(path, Links::Follow)->modified / 1'000'000);
            QVERIFY(!listing[1].path().contains(u"//"_s));
            QCOMPARE(PathText::parent(listing[1].path()), path);
        }
        // Of a link it has the date as set.
        makeTree(*folder, u"folder/, link->folder"_s);
        folder->setModified(u"folder"_s, 1000);
        QCOMPARE(read(Following, u"link"_s)[0].date().toSecsSinceEpoch(), 1000);
        QVERIFY(read(NotFollowing, u"link"_s)[0].date().toSecsSinceEpoch() > 1000);
    }

    void whatIsClosedHasWhatRowsItCan()
    {
        makeTree(*folder, u"closed/in/, names only/in/, names only/file=text, file=text"_s);
        for (const auto &[name, mode] : { std::pair(u"closed"_s, 0), { u"names only"_s, 0444 } })
            chmod(folder->bytes(name), mode_t(mode));
        const WithoutRights withoutRights;
        for (const auto &[name, hasDate] : { std::pair(u"closed"_s, true),
                                             { u"closed/in"_s, false },
                                             { u"gone"_s, false },
                                             { u"file"_s, true } }) {
            const Listing listing = read(Following, name);
            QCOMPARE(listing.size(), 1);
            QCOMPARE(listing[0].path(), folder->path(name));
            QCOMPARE(listing[0].date().isValid(), hasDate);
            QCOMPARE(listing.sorted(Column::Name, SortDirection::Descending).size(), 1);
        }
        const Listing namesOnly = read(Following, u"names only"_s);
        QCOMPARE(namesOnly.size(), 3);
        for (const qsizetype row : { 1, 2 })
            QCOMPARE(inWords(namesOnly[row]), u"0, 0"_s);
    }

    void oddItems()
    {
        const struct {
            QString name, followed;
            QString asSuch = followed;
        } items[] = {
            { u"file"_s, u"3 KB, 3000, dated"_s },
            { u"empty"_s, u"0 Bytes, 0, dated"_s },
            { u"sparse"_s, u"5.00 GB, 5368709120, dated"_s },
            { u"folder"_s, u"--, 0, dated, folder"_s },
            { u"Program.app"_s, u"--, 0, dated"_s },
            { u"file.app"_s, u"4 Bytes, 4, dated"_s },
            { u"fifo"_s, u"0 Bytes, 0, dated"_s },
            { u"socket"_s, u"0 Bytes, 0, dated"_s },
            { u"to file"_s, u"3 KB, 3000, dated"_s, u"4 Bytes, 4, dated"_s },
            // It has no size to show, as it opens like a folder, but its kind is its own.
            { u"to folder"_s, u"--, 0, dated, folder"_s, u"--, 0, dated"_s },
            { u"dangling"_s, u"0, 0"_s, u"7 Bytes, 7, dated"_s },
            { u"loop"_s, u"0, 0"_s, u"4 Bytes, 4, dated"_s },
        };
        makeTree(*folder,
                 u"empty, sparse, folder/, Program.app/, file.app=text, to file->file, "
                 u"to folder->folder, dangling->nowhere, loop->loop"_s);
        folder->write(u"file"_s, QByteArray(3000, 'x'));
        QCOMPARE(truncate(folder->bytes(u"sparse"_s), 5LL << 30), 0);
        mkfifo(folder->bytes(u"fifo"_s), 0600);
        mknod(folder->bytes(u"socket"_s), S_IFSOCK | 0600, 0);

        for (const auto &options : { Following, NotFollowing }) {
            const Listing listing = read(options);
            QCOMPARE(listing.size(), 13);
            for (const auto &[name, followed, asSuch] : items) {
                const qsizetype row = listing.rowOfName(name);
                QVERIFY2(row > 0, qUtf8Printable(name));
                const Entry entry = listing[row];
                QCOMPARE(name + u": "_s + inWords(entry),
                         name + u": "_s + (options.traverseLinks ? followed : asSuch));
                QCOMPARE(entry.type() == u"Folder"_s, entry.isFolder());
                QVERIFY(!entry.type().isEmpty());
            }
        }
        const Listing listing = read();
        for (const QString &broken : { u"dangling"_s, u"loop"_s })
            QCOMPARE(listing[listing.rowOfName(broken)].type(),
                     kinds.kindText(broken, FileKind::Symlink, true));
    }

    void anyNameIsFoundAgain()
    {
        const QByteArrayList names {
            "a\xff\xfe.txt", "\xe2\x82", "a\nb", "-m", "\xf0\x9f\x8d\x83", QByteArray(255, 'n'),
        };
        for (qsizetype i = 0; i < names.size(); ++i)
            folder->write(FileName::fromBytes(names[i]), QByteArray(i + 1, 'x'));
        const Listing listing = read();
        for (qsizetype i = 0; i < names.size(); ++i) {
            const QString name = FileName::fromBytes(names[i]);
            const qsizetype row = listing.rowOfPath(folder->path(name));
            QVERIFY2(row > 0, names[i]);
            QCOMPARE(FileName::toBytes(listing[row].name()), names[i]);
            QCOMPARE(listing[row].pureSize(), i + 1);
            QCOMPARE(listing.rowOfPath(folder->path(name) + u"x"_s), -1);
            QCOMPARE(listing.rowOfPath(u"/somewhere/else/"_s + name), -1);
        }
    }

    void hiddenItemsAreLeftOutAndLabelsRead()
    {
        makeTree(*folder,
                 u".dotted, .hidden=listed\nnot there\n, Temporary Items, dangling->nowhere, "
                 u"listed, shown, temporary items"_s);
        const QStringList shown { u"dangling"_s, u"shown"_s, u"temporary items"_s };
        QCOMPARE(sortedNames(Following), shown);
        QCOMPARE(sortedNames(WithHidden), folder->names());

        folder->setFinderFlags(u"shown"_s, 0x000C); // the label field
        folder->setFinderFlags(u"temporary items"_s, 0x4000); // invisible
        QCOMPARE(sortedNames(Following), shown.mid(0, 2));
        const Listing listing = read();
        QCOMPARE(listing[listing.rowOfName(u"shown"_s)].finderLabel(), 1);
        QCOMPARE(listing[listing.rowOfName(u"dangling"_s)].finderLabel(), 0);
    }

    void everyItemOfALargeFolderIsLookedAt()
    {
        // More than one thread's share, and more names than one read of the kernel answers.
        constexpr int Count = 2100;
        const QString tail(200, u'x');
        for (int i = 0; i < Count; ++i)
            folder->write(QString::number(i) + tail, QByteArray(i % 7 + 1, 'x'));
        const Listing listing = read();
        QCOMPARE(listing.size(), Count + 1);
        for (qsizetype row = 1; row < listing.size(); ++row)
            QCOMPARE(listing[row].pureSize(), listing[row].name().chopped(200).toInt() % 7 + 1);
    }

    void iconsAreOfTheItemOrOfItsGroup()
    {
        makeTree(*folder, u"Program.app/, file.png"_s);
        for (const bool ofGroups : { false, true }) {
            const Listing listing = read({ .showSpecifiedIcons = !ofGroups });
            const auto icon = [&](const QString &name) {
                return listing[listing.rowOfName(name)].icon().pixmap(16).toImage();
            };
            QCOMPARE(icon(u".."_s).isNull(), ofGroups);
            QCOMPARE(icon(u"Program.app"_s) == icon(u"file.png"_s), ofGroups);
        }
    }

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
            QCOMPARE(namesOf(sorted).join(u' '), order);
        }
        folder->link(u"nowhere"_s, u"x"_s); // an unknown date is the oldest
        QCOMPARE(namesOf(read().sorted(Column::Date, Up)).mid(2, 2).join(u' '), u"x b.txt"_s);
    }

    void namesCompareByCodePoint()
    {
        const QByteArrayList inOrder {
            "12345678A",
            "12345678a", // alike in the first eight bytes
            "B",
            "Read",
            "a",
            "file 10",
            "file 2", // digits are no numbers
            "name",
            "name ",
            "read",
            "z",
            "\xc3\xa9",
            "\xef\xbf\xbd",
            "\xf0\x9f\x8d\x83", // above the first plane is above its end
        };
        QStringList names;
        for (const QByteArray &name : inOrder) {
            names.append(FileName::fromBytes(name));
            folder->write(names.last());
        }
        QCOMPARE(namesOf(read().sorted(Column::Name, Up)), names);
        std::ranges::reverse(names);
        QCOMPARE(namesOf(read().sorted(Column::Name, Down)), names);
    }

    void equalKeysKeepTheirOrder()
    {
        for (int i = 0; i < 100; ++i)
            make(QString::number(i), i % 2, 1'000'000);
        const Listing before = read().sorted(Column::Name, Down);
        for (const Column column : { Column::Date, Column::Type }) {
            for (const SortDirection direction : { Up, Down })
                QCOMPARE(namesOf(before.sorted(column, direction)), namesOf(before));
        }
        QStringList bySize = namesOf(before); // odd names are the larger files
        std::ranges::stable_sort(bySize, {},
                                 [](const QString &name) { return -(name.toInt() % 2); });
        QCOMPARE(namesOf(before.sorted(Column::Size, Down)), bySize);
    }

private:
    Listing read(const ListingOptions &options = Following, const QString &name = {}) const
    {
        return Listing::read(name.isEmpty() ? folder->path() : folder->path(name), options, kinds);
    }

    QStringList sortedNames(const ListingOptions &options) const
    {
        return namesOf(read(options).sorted(Column::Name, Up));
    }
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

QTEST_MAIN(tst_Listing)
#include "tst_Listing.moc"
