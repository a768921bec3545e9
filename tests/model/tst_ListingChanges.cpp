#include "model/ListingChanges.h"

#include "files/FolderWatch.h"
#include "tests/support/TestTree.h"
#include "widgets/FileKinds.h"

#include <QRandomGenerator>

#include <sys/stat.h>
#include <unistd.h>

namespace {

QString inWords(const Entry &entry)
{
    return entry.name() + u'|' + entry.size() + u'|' + QString::number(entry.pureSize()) + u'|'
        + entry.date().toString(Qt::ISODateWithMs) + u'|' + entry.type() + u'|'
        + QString::number(entry.finderLabel()) + (entry.isFolder() ? u"|folder"_s : QString())
        + (entry.isLink() ? u"|link"_s : QString());
}

QStringList inWords(const Listing &listing)
{
    QStringList rows;
    for (qsizetype row = 0; row < listing.size(); ++row)
        rows.append(inWords(listing[row]));
    return rows;
}

// What the rows are sorted by.
QString key(const Entry &entry, Column column)
{
    return column == Column::Size ? QString::number(entry.pureSize()).rightJustified(20)
        : column == Column::Date
        ? QString::number(entry.date().toMSecsSinceEpoch()).rightJustified(20)
        : entry.type();
}

} // namespace

class tst_ListingChanges : public QObject {
    Q_OBJECT

private Q_SLOTS:
    // After any changes the rows are those of a new reading, and the changes lead to them.
    void changedRowsAreThoseOfANewReading_data()
    {
        QTest::addColumn<Column>("column");
        QTest::addColumn<SortDirection>("direction");
        QTest::addColumn<bool>("hidden");
        QTest::addColumn<bool>("follow");
        for (const auto column : { Column::Name, Column::Size, Column::Date, Column::Type })
            for (const auto direction : { SortDirection::Ascending, SortDirection::Descending })
                for (const bool follow : { true, false })
                    QTest::addRow("%s %d %d", qPrintable(columnIdentifier(column)), int(direction),
                                  follow)
                        << column << direction << (direction == SortDirection::Ascending) << follow;
    }
    void changedRowsAreThoseOfANewReading()
    {
        QFETCH(const Column, column);
        QFETCH(const SortDirection, direction);
        QFETCH(const bool, hidden);
        QFETCH(const bool, follow);
        const ListingOptions options { .traverseLinks = follow, .showHiddenFiles = hidden };
        const TestFolder folder;
        makeTree(folder, u"in/, in/.hidden=item 3"_s);
        FolderWatch watch;
        const auto read = [&] {
            return Listing::read(folder.path(u"in"_s), options, kinds).sorted(column, direction);
        };
        Listing listing = Listing::read(folder.path(u"in"_s), options, kinds, nullptr, &watch)
                              .sorted(column, direction);
        QVERIFY(watch.isWatching());
        QRandomGenerator random(20 * quint32(column) + quint32(direction));
        for (int round = 0; round < 60; ++round) {
            for (int change = random.bounded(1, 9); change > 0; --change)
                changeAnItem(folder, random);
            FolderWatch::Changes changes;
            QVERIFY(watch.wait(changes, std::chrono::milliseconds::zero()));
            QVERIFY(!changes.lost && !changes.away);
            const auto changed = withChanges(listing, watch.folder(), changes.names);
            QVERIFY(changed);
            compareWithReading(changed->listing, read(), column);
            // Each kept row is where it is said to be, and one that shows something else is told.
            for (int row = 0; row < listing.size(); ++row) {
                bool gone = false;
                const int now = changed->rows.rowNow(row, &gone);
                const QString name = listing[row].name();
                QCOMPARE(gone, changed->listing.rowOfName(name) < 0);
                if (gone)
                    continue;
                QCOMPARE(changed->listing[now].name(), name);
                QVERIFY(inWords(listing[row]) == inWords(changed->listing[now])
                        || changed->rows.touch({ row }));
            }
            QCOMPARE(changed->listing.size(),
                     listing.size() - changed->rows.removed.size() + changed->rows.inserted.size());
            listing = changed->listing;
        }
        QVERIFY(listing.size() > 5);
    }

    void anotherFolderAtThePathHasToBeReadAnew()
    {
        const TestFolder folder;
        makeTree(folder, u"in/a"_s);
        FolderWatch watch;
        const Listing listing = Listing::read(folder.path(u"in"_s), {}, kinds, nullptr, &watch)
                                    .sorted(Column::Name, SortDirection::Ascending);
        folder.shell(u"mv in away; mkdir in; touch in/b away/c"_s);
        FolderWatch::Changes changes;
        QVERIFY(watch.wait(changes, std::chrono::milliseconds::zero()));
        QVERIFY(changes.away); // and what happens there is none of this folder's
        QVERIFY(!withChanges(listing, watch.folder(), changes.names));
        folder.shell(u"rm -r in"_s);
        QVERIFY(!withChanges(listing, watch.folder(), changes.names));
    }

private:
    // There, and no link: of what changes behind that nobody tells.
    static bool isItself(const char *path)
    {
        struct stat status { };
        return lstat(path, &status) == 0 && !S_ISLNK(status.st_mode);
    }

    static void changeAnItem(const TestFolder &folder, QRandomGenerator &random)
    {
        const QString in = u"in/"_s;
        const auto name = [&] {
            const QStringList kinds { u"item %1"_s, u".item %1"_s, u"item %1.png"_s, u"%1.app"_s };
            return in + kinds[random.bounded(4)].arg(random.bounded(8));
        };
        const QString item = name();
        const QByteArray path = folder.bytes(item);
        switch (random.bounded(9)) {
        case 0:
        case 1: // in place of what was there: its kind changes
            remove(path);
            folder.write(item, QByteArray(random.bounded(5000), 'x'));
            break;
        case 2:
            remove(path);
            mkdir(path, 0755);
            break;
        case 3:
            remove(path);
            folder.link(random.bounded(2) ? u"nowhere"_s : u"/usr"_s, item);
            break;
        case 4:
            rename(path, folder.bytes(name()));
            break;
        case 5:
            remove(path);
            break;
        case 6:
            if (isItself(path))
                folder.setModified(item, random.bounded(1'000'000));
            break;
        case 7:
            if (isItself(path))
                folder.setFinderFlags(item, quint16(random.bounded(8) << 1));
            break;
        case 8: // invisible
            if (isItself(path))
                folder.setFinderFlags(item, random.bounded(2) ? 0x4000 : 0);
            break;
        }
    }

    // Of equal keys the order is that in which they came; the rest is fixed.
    static void compareWithReading(const Listing &changed, const Listing &read, Column column)
    {
        QStringList rows = inWords(changed);
        QStringList expected = inWords(read);
        if (column != Column::Name) {
            rows.sort();
            expected.sort();
        }
        QCOMPARE(rows, expected);
        for (qsizetype row = 1; column != Column::Name && row < qMin(changed.size(), read.size());
             ++row) {
            QCOMPARE(changed[row].isFolder(), read[row].isFolder());
            QCOMPARE(key(changed[row], column), key(read[row], column));
        }
    }

    FileKinds kinds;
};

QTEST_MAIN(tst_ListingChanges)
#include "tst_ListingChanges.moc"
