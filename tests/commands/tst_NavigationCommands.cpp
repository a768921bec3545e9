#include "commands/NavigationCommands.h"

#include "tests/support/StoppedDisk.h"
#include "widgets/PathField.h"
#include "widgets/SegmentedControl.h"

class tst_NavigationCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPaneGoesBackToItsItems()
    {
        StartedWorld world(u"left/a/b/, left/c/, left/z=, left/a/1=, left/a/2="_s);
        const QString left = world.shown();
        const auto key = [&](Qt::Key pressed) {
            QTest::keyClick(&world.list(), pressed, Qt::AltModifier);
            return world.shown();
        };
        QVERIFY(!world.isEnabled(Command::Back));
        world.closeMenus();
        QCOMPARE(key(Qt::Key_Left), left); // neither back nor up
        world.select(u"c"_s);
        world.open(u"c"_s);
        world.show(Side::Left, u"left/a"_s, u"a"_s);
        world.select(u"2"_s);
        world.bus.post(DirectoryChanged.left, { .path = world.shown() });
        world.model.sortRowEntries(Column::Name, Side::Left, SortDirection::Ascending);
        world.select(u"2"_s);
        QCOMPARE(key(Qt::Key_Left), left + u"/c"_s);
        world.folder.write(u"left/0"_s); // the rows move, the item is meant
        QCOMPARE(key(Qt::Key_Left), left);
        QCOMPARE(world.selected(), u"c"_s);
        QVERIFY(!world.isEnabled(Command::Back) && world.isEnabled(Command::Forward));
        world.closeMenus();
        QCOMPARE(key(Qt::Key_Right), left + u"/c"_s);
        QCOMPARE(key(Qt::Key_Right), left + u"/a"_s);
        QCOMPARE(world.selected(), u"2"_s);
        QCOMPARE(world.shown(Side::Right), world.folder.path(u"right"_s));
    }

    void theSegmentsBeyondStayOnTheWay()
    {
        StartedWorld world(u"left/a/b/"_s);
        const SegmentedControl &navigator = *world.window.segmentedControls.left;
        const int deep = navigator.segmentCount() + 2;
        world.open(u"a"_s);
        world.open(u"b"_s);
        world.run(Command::Back);
        QCOMPARE(navigator.segmentCount(), deep);
        QCOMPARE(navigator.label(navigator.selectedSegment()), u"a"_s);
        world.show(Side::Left, u"right"_s, u"right"_s);
        world.run(Command::Back);
        QCOMPARE(world.shown(), world.folder.path(u"left/a"_s));
        QCOMPARE(navigator.segmentCount(), deep - 1);
    }

    void whatIsGoneIsPassed()
    {
        StartedWorld world(u"left/a/, left/b/, left/b/c/"_s);
        const QString left = world.shown();
        for (const char *name : { "left/a", "left", "left/b", "left/b/c", "right" })
            world.show(Side::Left, QString::fromLatin1(name));
        world.folder.shell(u"rmdir left/a left/b/c left/b"_s);
        world.run(Command::Back);
        QCOMPARE(world.shown(), left); // the nearest
        QVERIFY(notice(world).contains(left + u"/b/c"_s));
        world.run(Command::Back); // "b" and "a" are gone, and the nearest is shown already
        QCOMPARE(world.shown(), left);
        QVERIFY(!world.isEnabled(Command::Back));
        world.closeMenus();
        world.run(Command::Forward);
        QCOMPARE(world.shown(), world.folder.path(u"right"_s));
    }

    void aPaneStaysWhereNobodyAnswers()
    {
        Disk disk;
        StartedWorld world(QString::fromLatin1(Tree));
        const QString left = world.shown();
        world.show(Side::Left, u"left/slow"_s);
        world.show(Side::Left, u"right"_s);
        disk.stopAt(left + u"/slow"_s);
        for (int times = 0; times < 2; ++times) {
            whileWaiting(world, [&] { world.application.waiting().giveUp(); });
            world.run(Command::Back);
            QCOMPARE(world.shown(), world.folder.path(u"right"_s));
        }
        disk.answer();
        world.run(Command::Back);
        QCOMPARE(world.shown(), left + u"/slow"_s);
    }

    void aMouseGoesBackInThePaneUnderIt()
    {
        StartedWorld world(u"left/a/, right/b/"_s);
        world.open(u"a"_s);
        world.show(Side::Right, u"right/b"_s);
        const QString right = world.folder.path(u"right"_s);
        QWidget *rows = world.list(Side::Right).viewport();
        QTest::mouseClick(rows, Qt::BackButton);
        QCOMPARE(world.shown(Side::Right), right);
        QVERIFY(world.list(Side::Right).hasFocus());
        QTest::mouseDClick(rows, Qt::ForwardButton);
        QCOMPARE(world.shown(Side::Right), right + u"/b"_s);
        QTest::mouseClick(world.window.segmentedControls.right, Qt::BackButton);
        QCOMPARE(world.shown(Side::Right), right);
        QCOMPARE(world.shown(), world.folder.path(u"left/a"_s));
    }

    void panesSwapWithWhatIsSelected()
    {
        World world(u"left/1=, left/2=, left/3=, right/x="_s);
        for (int i = 0; i < 100; ++i)
            world.folder.write(u"right/%1"_s.arg(i, 3, 10, QChar(u'0')));
        world.start();
        const QString left = world.shown();
        const QString right = world.shown(Side::Right);
        // Each pane keeps its order, in which what is selected is found again.
        world.model.sortRowEntries(Column::Name, Side::Left, SortDirection::Descending);
        world.list().selectRows({ world.row(u"1"_s), world.row(u"3"_s) });
        world.select(u"x"_s, Side::Right);
        world.list(Side::Right).scrollToRow(world.row(u"x"_s, Side::Right));
        const int first = world.list(Side::Right).shownRows().first;
        QVERIFY(first > 0);
        QTest::keyClick(&world.list(), Qt::Key_U, Qt::ControlModifier);
        QCOMPARE(world.shown(), right);
        QCOMPARE(world.shown(Side::Right), left);
        QCOMPARE(world.selected(), u"x"_s);
        QCOMPARE(world.selected(Side::Right).split(u' ').size(), 2);
        world.run(Command::SwapPanes);
        QCOMPARE(world.shown(), left);
        QCOMPARE(world.selected(Side::Right), u"x"_s);
        world.run(Command::Back); // a swap is a step like another
        QCOMPARE(world.shown(), right);
        // A folder that nobody answers for leaves both where they are.
        world.run(Command::Forward);
        Disk disk;
        disk.stopAt(right);
        whileWaiting(world, [&] { world.application.waiting().giveUp(); });
        world.run(Command::SwapPanes);
        QCOMPARE(world.shown(), left);
        QCOMPARE(world.shown(Side::Right), right);
    }

    void theOtherPaneFollows()
    {
        StartedWorld world(u"left/a/, right/b/, right/c="_s);
        world.focus(Side::Right);
        QTest::keyClick(&world.list(Side::Right), Qt::Key_E, Qt::ControlModifier);
        QTRY_COMPARE(world.shown(), world.folder.path(u"right"_s));
        world.select(u"c"_s);
        world.run(Command::SameFolderInBoth); // already: nothing is lost
        QCOMPARE(world.selected(), u"c"_s);
    }

    void theKeyAsksForTheActivePane()
    {
        const QString odd = QString(QChar(0xDCFF));
        StartedWorld world(u"right/%1/, right/.hidden/"_s.arg(odd));
        world.focus(Side::Right);
        const QString right = world.shown(Side::Right);
        bool asked = false;
        whenSheetOpens(world.window, [&](QWidget &sheet) {
            auto *field = sheet.findChild<PathField *>();
            QVERIFY(field);
            asked = true;
            QCOMPARE(field->text(), right);
            field->end(false);
            QTest::keyClicks(field, u"/"_s);
            QTest::keyClick(field, Qt::Key_Tab); // faster than the disk, perhaps
            QTRY_COMPARE(field->text(), right + u'/' + odd + u'/');
            QTest::keyClick(field, Qt::Key_Return);
        });
        QTest::keyClick(&world.list(Side::Right), Qt::Key_L, Qt::ControlModifier);
        QVERIFY(asked);
        QCOMPARE(world.shown(Side::Right), right + u'/' + odd);
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
    }
};

QTEST_MAIN(tst_NavigationCommands)
#include "tst_NavigationCommands.moc"
