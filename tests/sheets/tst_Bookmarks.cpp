#include "files/DiskQuestions.h"
#include "tests/support/StoppedDisk.h"
#include "tests/support/World.h"
#include "widgets/PathField.h"
#include "widgets/RecordTable.h"
#include "widgets/RecordTableModel.h"

#include <QCompleter>
#include <QDialog>

using namespace Qt::StringLiterals;

namespace {

// The bookmark manager as a person finds it, while its sheet is open.
struct Shown {
    explicit Shown(QDialog &open)
        : sheet(open)
    {
    }
    void add(const QString &typed) const
    {
        field.setText(typed);
        QTest::keyClick(&field, Qt::Key_Return);
    }
    void click(const QString &name) const
    {
        const auto buttons = sheet.findChildren<QAbstractButton *>();
        for (QAbstractButton *each : buttons)
            if (each->accessibleName() == name)
                return each->click();
        QFAIL(qPrintable(name));
    }
    // What the table tells of a row: "there", "gone", or nothing yet.
    QString look(int row) const
    {
        const QModelIndex icon = table.model()->index(row, RecordTableModel::IconColumn);
        if (icon.data(Qt::DecorationRole).value<QIcon>().isNull())
            return {};
        const QString told = icon.data(Qt::AccessibleDescriptionRole).toString();
        return told.contains(u"is not there"_s) ? u"gone"_s : u"there"_s;
    }

    QDialog &sheet;
    PathField &field = *sheet.findChild<PathField *>();
    RecordTable &table = *sheet.findChild<RecordTable *>();
};

void manager(World &world, const std::function<void(const Shown &)> &act)
{
    bool seen = false;
    whenSheetOpens(world.window, [&](QWidget &opened) {
        auto *sheet = qobject_cast<QDialog *>(&opened);
        QVERIFY(sheet);
        seen = true;
        act(Shown(*sheet));
        Shown(*sheet).click(u"Done"_s);
        QVERIFY(!sheet->isVisible());
    });
    world.run(Command::BookmarkManager);
    QVERIFY(seen);
}

QString namesOf(const QList<Bookmark> &bookmarks)
{
    QStringList names;
    for (const Bookmark &each : bookmarks)
        names.append(PathText::lastComponent(each.realPath));
    return names.join(u' ');
}

QString stored(World &world)
{
    return namesOf(world.application.bookmarkStore().getBookmarksFromUserDefaults());
}

void bookmark(World &world, const QStringList &names)
{
    for (const QString &name : names)
        world.application.bookmarkStore().addBookmarkEntry(name, world.folder.path(name));
}

} // namespace

class tst_Bookmarks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void pathsAreAddedByTypingAndByPanel()
    {
        const QString odd = u"left/caf"_s + QChar(0xDCE9); // a byte that is not UTF-8
        StartedWorld world(u"left/a/, left/b=file, "_s + odd + u'/');
        qputenv("HOME", world.folder.path(u"left"_s).toUtf8());
        manager(world, [&](const Shown &shown) {
            shown.add(u"~/a/"_s);
            QCOMPARE(shown.field.text(), QString());
            shown.add(world.folder.path(u"left/a"_s)); // is there already
            shown.add(u" ~/b "_s); // Kept: a file will do
            world.openPanel.folder = world.folder.path(odd);
            shown.click(u"Choose..."_s);
            QCOMPARE(stored(world), u"a b "_s + PathText::lastComponent(odd));
            // The panel starts at what is typed where that is there, else at home.
            for (const auto &[typed, start] :
                 { std::pair(u"~/a"_s, u"left/a"_s), { u"~/none"_s, u"left"_s } }) {
                shown.field.setText(typed);
                shown.click(u"Choose..."_s);
                QCOMPARE(world.openPanel.startFolder, world.folder.path(start));
            }
            QTRY_COMPARE(shown.look(2), u"there"_s);
            for (const QString &wrong : { u"~/none"_s, u"left/a"_s, u"~other"_s }) {
                world.alerts.answer(Alert::Ok);
                shown.add(wrong);
                QCOMPARE(shown.field.text(), wrong);
                const Alert alert = world.alerts.last();
                QCOMPARE(alert.title, u"Twinleaf - Error"_s);
                QCOMPARE(alert.text, u"Folder doesn't exists or it's not a folder!"_s);
                QCOMPARE(alert.buttons.first().text, u"Ok"_s);
            }
            QCOMPARE(shown.table.model()->rowCount(), 3);
        });
        // The menu has them: two lines and a separator stand above.
        QCOMPARE(world.application.menus().bookmarksMenu().actions().size(), 3 + 3);
    }

    void aBlankAtTheEndCountsWhereANameHasOne()
    {
        StartedWorld world(u"left/a/, left/b/"_s);
        const QString named = world.folder.path(u"left/a "_s);
        world.folder.makeFolder(u"left/a "_s);
        manager(world, [&](const Shown &shown) {
            shown.add(named);
            shown.add(world.folder.path(u"left/b "_s));
        });
        QCOMPARE(stored(world), u"a  b"_s);
    }

    void rowsAreMovedAndDeletedByKeys()
    {
        StartedWorld world;
        bookmark(world, { u"a"_s, u"b"_s, u"c"_s });
        manager(world, [&](const Shown &shown) {
            RecordTable &table = shown.table;
            table.selectRow(0);
            QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
            QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
            QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier); // is the last already
            QCOMPARE(stored(world), u"b c a"_s);
            QTest::keyClick(&table, Qt::Key_Up, Qt::AltModifier);
            QCOMPARE(stored(world), u"b a c"_s);
            QCOMPARE(table.selectedRow(), 1);
            QTest::keyClick(&table, Qt::Key_Delete);
            QCOMPARE(table.selectedRow(), 1); // the one after it
            shown.click(u"Delete"_s);
            QCOMPARE(stored(world), u"b"_s);
            table.clearSelection();
            QTest::keyClick(&table, Qt::Key_Delete);
            QCOMPARE(stored(world), u"b"_s);
        });
    }

    void aNameIsNoMarkup()
    {
        StartedWorld world;
        bookmark(world, { u"<b>x"_s });
        manager(world, [](const Shown &shown) {
            const QModelIndex row = shown.table.model()->index(0, 1);
            QVERIFY(row.data(Qt::ToolTipRole).toString().contains(u"/&lt;b&gt;x"_s));
            QVERIFY(row.data(Qt::AccessibleDescriptionRole).toString().contains(u"/<b>x"_s));
        });
    }

    void aRowIsBroughtBeforeAnother_data()
    {
        QTest::addColumn<int>("row");
        QTest::addColumn<int>("before"); // 3: behind the last
        QTest::addColumn<QString>("order");
        QTest::newRow("up") << 2 << 0 << u"c a b"_s;
        QTest::newRow("down") << 0 << 2 << u"b a c"_s;
        QTest::newRow("to the end") << 0 << 3 << u"b c a"_s;
        QTest::newRow("before itself") << 1 << 1 << u"a b c"_s;
        QTest::newRow("behind itself") << 1 << 2 << u"a b c"_s;
    }
    void aRowIsBroughtBeforeAnother()
    {
        QFETCH(int, row);
        QFETCH(int, before);
        QFETCH(QString, order);
        StartedWorld world;
        bookmark(world, { u"a"_s, u"b"_s, u"c"_s });
        manager(world, [&](const Shown &shown) {
            RecordTable &table = shown.table;
            for (int each = 0; each < 3; ++each) {
                const QRect place = table.visualRect(table.model()->index(each, 1));
                QCOMPARE(table.rowBefore(place.topLeft()), each);
                QCOMPARE(table.rowBefore(place.bottomLeft()), each + 1);
            }
            QCOMPARE(table.rowBefore(table.viewport()->rect().bottomLeft()), 3);
            table.selectRow(row);
            Q_EMIT table.moveAsked(row, before);
            QCOMPARE(stored(world), order);
        });
    }

    void aServerThatIsGoneHoldsUpNothing()
    {
        StartedWorld world(u"left/slow/, left/here/"_s);
        mountServer(world, u"left/slow"_s);
        bookmark(world, { u"left/slow"_s, u"left/here"_s, u"left/none"_s });
        Disk disk;
        disk.stopAt(world.folder.path(u"left/slow"_s));
        manager(world, [&](const Shown &shown) {
            QTRY_COMPARE(shown.look(1), u"there"_s);
            QTRY_COMPARE(shown.look(2), u"gone"_s);
            QCOMPARE(shown.look(0), QString());
            disk.answer();
            QTRY_COMPARE(shown.look(0), u"there"_s);
        });
        QVERIFY(!disk.askedByWindow.contains(FileName::toBytes(world.folder.path(u"left/slow"_s))));
        QTRY_VERIFY(!DiskQuestions::anyUnderWay());
    }

    void foldersAreOfferedForWhatIsTyped()
    {
        StartedWorld world(u"left/Letters/, left/Lists/, left/Lines=file, left/Links->Lists, "
                           "left/slow/, left/Listed->slow"_s);
        mountServer(world, u"left/slow"_s);
        Disk disk;
        manager(world, [&](const Shown &shown) {
            shown.field.setFocus();
            QTest::keyClicks(&shown.field, world.folder.path(u"left/li"_s));
            const auto *completer = shown.field.completer();
            const auto offered = [completer] {
                QStringList names;
                for (int row = 0; row < completer->completionModel()->rowCount(); ++row)
                    names.append(PathText::lastComponent(
                        completer->completionModel()->index(row, 0).data().toString()));
                return names.join(u' ');
            };
            QTRY_COMPARE(offered(), u"Links Listed Lists"_s);
            QVERIFY(disk.asked().contains("Links"));
            QVERIFY(!disk.asked().contains("Listed")); // it may be gone
            // One Return adds what is typed although it is offered, too.
            shown.field.setText(world.folder.path(u"left/List"_s));
            QTest::keyClicks(&shown.field, u"s"_s);
            QTRY_COMPARE(offered(), u"Lists"_s);
            QAbstractItemView *offers = completer->popup();
            QTRY_VERIFY(offers->isVisible());
            QTest::keyClick(offers, Qt::Key_Return);
            QCOMPARE(shown.field.text(), QString());
        });
    }

    void whatIsNoBookmarkStaysWhereItIs()
    {
        TestFolder folder;
        UserDefaults defaults(folder.path(u"settings.plist"_s));
        const QVariantList foreign { 7LL, u"text"_s, QVariantMap { { u"Other"_s, 1LL } } };
        defaults.setValue(Settings::Bookmarks, foreign);
        BookmarkStore bookmarks(defaults);
        bookmarks.addBookmarkEntry({}, u"/a"_s);
        QCOMPARE(bookmarks.getBookmarksFromUserDefaults().size(), 1);
        bookmarks.deleteBookmarkEntry({ {}, u"/a"_s });
        QCOMPARE(defaults.array(Settings::Bookmarks).value(), foreign);
    }

    void whatAnotherProgramStoredMeanwhileStays()
    {
        TestFolder folder;
        const QString file = folder.path(u"settings.plist"_s);
        UserDefaults ours(file);
        BookmarkStore bookmarks(ours);
        for (const QString &name : { u"a"_s, u"b"_s, u"c"_s })
            bookmarks.addBookmarkEntry(name, u'/' + name);
        QVERIFY(ours.synchronize());
        UserDefaults theirs(file);
        BookmarkStore others(theirs);
        others.addBookmarkEntry(u"d"_s, u"/d"_s);
        others.deleteBookmarkEntry({ u"b"_s, u"/b"_s });
        QVERIFY(theirs.synchronize());
        bookmarks.moveBookmarkEntry({ u"c"_s, u"/c"_s }, Bookmark { u"a"_s, u"/a"_s });
        bookmarks.moveBookmarkEntry({ u"a"_s, u"/a"_s }, Bookmark { u"b"_s, u"/b"_s });
        bookmarks.addBookmarkEntry(u"e"_s, u"/e"_s);
        QVERIFY(ours.synchronize());
        UserDefaults read(file);
        QCOMPARE(namesOf(BookmarkStore(read).getBookmarksFromUserDefaults()), u"c d a e"_s);
    }
};

QTEST_MAIN(tst_Bookmarks)
#include "tst_Bookmarks.moc"
