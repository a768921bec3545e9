#include "tests/support/World.h"

#include "model/CurrentRows.h"
#include "window/InfoBars.h"
#include "window/InfoBarTextField.h"
#include "window/NoticeLabel.h"

#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>

#include <sys/stat.h>

namespace {

struct Messages {
    QStringList folders;
    void folderChanged(Side, const FolderChange &change) { folders += change.path; }
};

} // namespace

// What changes on the disk is seen in the panes, and moves nothing else.
class tst_FolderRefresh : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void changesAreShown_data()
    {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("names");
        QTest::newRow("made") << u"touch aa zz; mkdir new"_s << u".. new a aa b c zz"_s;
        QTest::newRow("removed") << u"rm b"_s << u".. a c"_s;
        QTest::newRow("renamed") << u"mv a z"_s << u".. b c z"_s;
        QTest::newRow("moved in") << u"mv ../right/other ."_s << u".. a b c other"_s;
        QTest::newRow("another kind") << u"rm c; mkdir c"_s << u".. c a b"_s;
        QTest::newRow("hidden") << u"touch .dot aa"_s << u".. a aa b c"_s;
        QTest::newRow("rule") << u"echo b > .hidden"_s << u".. a c"_s;
        QTest::newRow("made anew") << u"cd ..; rm -r left; mkdir left; touch left/x"_s << u".. x"_s;
        QTest::newRow("replaced") << u"cd ..; mkdir l; touch l/y; mv left old; mv l left"_s
                                  << u".. y"_s;
        QTest::newRow("many") << u"touch $(seq -f 'f%04g' 1 200); rm b $(seq -f 'f%04g' 1 199)"_s
                              << u".. a c f0200"_s;
    }
    void changesAreShown()
    {
        QFETCH(const QString, script);
        QFETCH(const QString, names);
        StartedWorld world(u"left/a=1, left/b=2, left/c=3, right/other"_s);
        Messages messages;
        world.bus.subscribe(DirectoryChanged, &messages, &Messages::folderChanged);
        world.folder.shell(u"cd left; "_s + script);
        QTRY_COMPARE(world.names(), names);
        // And what comes after it.
        world.folder.write(u"left/after"_s);
        QTRY_VERIFY(world.row(u"after"_s) > 0);
        QCOMPARE(messages.folders, QStringList());
        world.bus.unsubscribe(&messages);
    }

    void aFileBeingWrittenIsShown()
    {
        StartedWorld world(u"left/a=1"_s);
        world.select(u"a"_s);
        for (const int size : { 10, 2000, 70'000 }) {
            world.folder.write(u"left/a"_s, QByteArray(size, 'x'));
            QTRY_COMPARE(world.model.rowsLeft()[world.row(u"a"_s)].pureSize(), size);
        }
        // In the bar too.
        QTRY_COMPARE(world.window.infoBars.left.fileSize->text(), world.model.rowsLeft()[1].size());
        QCOMPARE(world.selected(), u"a"_s);
    }

    void selectionKeyboardAndViewStayOnTheirItems()
    {
        StartedWorld world;
        world.folder.shell(u"cd left; touch $(seq -f 'm%04g' 1 300)"_s);
        QTRY_COMPARE(world.model.rowsLeft().size(), 301);
        PaneTableView &list = world.list();
        for (const int many : { 1, 40 }) { // told row by row, and as a whole
            list.selectRows({ world.row(u"m0150"_s), world.row(u"m0152"_s) });
            list.showRows({ list.selectedRows(), world.row(u"m0152"_s), world.row(u"m0140"_s) });
            const Listing before = world.model.rowsLeft();
            world.folder.shell(
                u"cd left; for i in $(seq 1 %1); do touch a$RANDOM$i m0149$i m0151$i z$i; done; "
                "rm m0141"_s.arg(many));
            QTRY_COMPARE(world.row(u"m0141"_s), -1);
            QTRY_COMPARE(world.model.rowsLeft().size(), before.size() + 4 * many - 1);
            QCOMPARE(world.selected(), u"m0150 m0152"_s);
            QCOMPARE(list.currentIndex().row(), world.row(u"m0152"_s));
            QCOMPARE(list.rowAt(0), world.row(u"m0140"_s));
            QCOMPARE(list.selectedRow(), world.row(u"m0152"_s));
            // A request of before finds its row again.
            QCOMPARE(currentRows(RowSet { int(before.rowOfName(u"m0152"_s)) }, before,
                                 world.model.rowsLeft()),
                     RowSet { world.row(u"m0152"_s) });
            world.folder.shell(u"cd left; rm -f a* z* m0149?* m0151?*; touch m0141"_s);
            QTRY_COMPARE(world.model.rowsLeft().size(), 301);
        }
        // What is gone is selected no longer, and the bar and the buttons know.
        world.select(u"m0150"_s);
        world.focus(Side::Left);
        QVERIFY(world.window.buttons[Command::Delete]->isEnabled());
        world.folder.shell(u"rm left/m0150"_s);
        QTRY_COMPARE(world.window.infoBars.left.fileName->text(), QString());
        QCOMPARE(world.selected(), QString());
        QVERIFY(!world.window.buttons[Command::Delete]->isEnabled());
        QCOMPARE(list.currentIndex().row(), world.row(u"m0151"_s));
        world.select(u"m0300"_s);
        world.folder.shell(u"rm left/m0300"_s);
        QTRY_COMPARE(world.row(u"m0300"_s), -1);
        QCOMPARE(list.currentIndex().row(), world.row(u"m0299"_s));
    }

    void sortedByDateTheKeyboardStaysOnTheItem()
    {
        StartedWorld world(u"left/a=1, left/b=2, left/c=3"_s);
        for (const auto &name : { u"a"_s, u"b"_s, u"c"_s })
            world.folder.setModified(u"left/"_s + name, 1000 + name[0].unicode());
        world.model.sortRowEntries(Column::Date, Side::Left, SortDirection::Ascending);
        QTRY_COMPARE(world.names(), u".. a b c"_s);
        world.select(u"a"_s);
        world.folder.setModified(u"left/a"_s, 5000);
        QTRY_COMPARE(world.names(), u".. b c a"_s);
        QCOMPARE(world.selected(), u"a"_s);
        QCOMPARE(world.list().currentIndex().row(), 3);
    }

    void nothingMovesUnderAQuestionOrAMenu()
    {
        StartedWorld world(u"left/a=1"_s);
        {
            const OpenDialogs::Guard question(world.openDialogs);
            world.folder.write(u"left/b"_s);
            QTRY_VERIFY(holdsBack(world));
            QCOMPARE(world.names(), u".. a"_s);
        }
        QTRY_COMPARE(world.names(), u".. a b"_s);
        QMenu menu;
        menu.addAction(u"x"_s);
        menu.popup({});
        world.folder.write(u"left/c"_s);
        QTRY_VERIFY(holdsBack(world));
        // Sorted meanwhile: it comes in the order of then.
        world.model.sortRowEntries(Column::Name, Side::Left, SortDirection::Descending);
        QCOMPARE(world.names(), u".. b a"_s);
        menu.close();
        QTRY_COMPARE(world.names(), u".. c b a"_s);
    }

    void nothingMovesUnderThePointer()
    {
        const int interval = QApplication::doubleClickInterval();
        StartedWorld world(u"left/in/, left/z=1"_s);
        PaneTableView &list = world.list();
        list.showDropTarget(world.row(u"in"_s)); // a drag of another program
        world.folder.shell(u"mkdir left/before"_s);
        QTRY_VERIFY(holdsBack(world));
        list.hideDropTarget();
        QTRY_COMPARE(world.names(), u".. before in z"_s);
        // The second press of a double click is still to come.
        QApplication::setDoubleClickInterval(60'000);
        QTest::mouseClick(list.viewport(), Qt::LeftButton, {},
                          list.visualRect(list.model()->index(2, 1)).center());
        QCOMPARE(world.selected(), u"in"_s);
        world.folder.shell(u"rmdir left/before"_s);
        QTRY_VERIFY(holdsBack(world));
        QApplication::setDoubleClickInterval(interval);
        QTRY_COMPARE(world.names(), u".. in z"_s);
    }

    void aFolderThatWasCountedKeepsItsSize_data()
    {
        QTest::addColumn<QString>("filter");
        QTest::newRow("told row by row") << u""_s;
        QTest::newRow("all rows anew") << u"in"_s;
    }
    void aFolderThatWasCountedKeepsItsSize()
    {
        QFETCH(const QString, filter);
        StartedWorld world(u"left/in/file=x"_s);
        world.model.setFilter(Side::Left, filter);
        world.select(u"in"_s);
        const auto size = [&] { return world.window.infoBars.left.fileSize->text(); };
        QTest::keyClick(&world.list(), Qt::Key_Space);
        QTRY_COMPARE(size(), u"4 KB"_s);
        world.folder.write(u"left/another in"_s);
        QTRY_VERIFY(world.row(u"another in"_s) > 0);
        QCOMPARE(size(), u"4 KB"_s);
        QCOMPARE(world.selected(), u"in"_s);
        world.folder.shell(u"rm -r left/in"_s);
        QTRY_COMPARE(size(), u""_s);
    }

    void moreThanTheQueueHolds()
    {
        StartedWorld world(u"left/a=1, left/b=2"_s);
        {
            const OpenDialogs::Guard question(world.openDialogs);
            world.folder.write(u"left/first"_s);
            QTRY_VERIFY(holdsBack(world)); // so nobody takes what comes now
            for (int i = 0; i < 20'000; ++i)
                chmod(world.folder.bytes(i % 2 ? u"left/a"_s : u"left/b"_s), i % 4 ? 0600 : 0644);
            world.folder.write(u"left/last"_s);
        }
        QTRY_COMPARE(world.names(), u".. a b first last"_s);
        world.folder.write(u"left/after"_s);
        QTRY_VERIFY(world.row(u"after"_s) > 0);
    }

    void aFolderThatIsGoneIsLeft_data()
    {
        QTest::addColumn<QString>("folder");
        QTest::addColumn<QString>("script");
        QTest::newRow("removed") << u"left/in"_s << u"rm -r left/in"_s;
        QTest::newRow("renamed away") << u"left/in"_s << u"mv left/in left/out"_s;
        QTest::newRow("a file in its place") << u"left/in"_s << u"rm -r left/in; touch left/in"_s;
        QTest::newRow("the one above") << u"left/in/deep"_s << u"mv left/in left/out"_s;
    }
    void aFolderThatIsGoneIsLeft()
    {
        QFETCH(const QString, folder);
        QFETCH(const QString, script);
        StartedWorld world(u"left/in/a=1, left/in/deep/b=1"_s);
        world.show(Side::Left, folder);
        {
            const OpenDialogs::Guard question(world.openDialogs);
            world.folder.shell(script);
            QTRY_VERIFY_WITH_TIMEOUT(holdsBack(world), 20'000);
            QCOMPARE(world.shown(), world.folder.path(folder));
        }
        QTRY_COMPARE(world.shown(), world.folder.path(u"left"_s));
        QVERIFY(world.window.notice->isVisible());
        world.folder.write(u"left/after"_s);
        QTRY_VERIFY(world.row(u"after"_s) > 0);
    }

    void aLinkThatLeadsElsewhereIsFollowed()
    {
        StartedWorld world(u"left/in/a=1, left/other/b=1"_s);
        world.folder.shell(u"ln -s in left/link"_s);
        world.show(Side::Left, u"left/link"_s);
        QCOMPARE(world.names(), u".. a"_s);
        world.folder.shell(u"ln -sfn other left/link"_s);
        QTRY_COMPARE_WITH_TIMEOUT(world.names(), u".. b"_s, 20'000);
    }

    void aFolderThatNeverRestsIsShownAsItWas()
    {
        StartedWorld world(u"left/a=1"_s);
        for (int round = 0; round < 200; ++round) {
            world.folder.write(u"left/n%1"_s.arg(round));
            QCoreApplication::processEvents();
        }
        QTRY_COMPARE(world.model.rowsLeft().size(), 202);
        QVERIFY(world.row(u"n199"_s) > 0);
    }

    void bothPanesOfOneFolder()
    {
        World world(u"left/a=1"_s);
        world.startOnLeft();
        world.folder.write(u"left/b"_s);
        for (const Side side : { Side::Left, Side::Right })
            QTRY_COMPARE(world.names(side), u".. a b"_s);
    }

private:
    static bool holdsBack(World &world)
    {
        return world.application.folderRefresh().holdsBack(Side::Left);
    }
};

QTEST_MAIN(tst_FolderRefresh)
#include "tst_FolderRefresh.moc"
