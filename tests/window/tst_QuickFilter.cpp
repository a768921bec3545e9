#include "tests/support/World.h"
#include "window/FilterBar.h"

#include <QClipboard>

namespace {

// The left pane on some files and folders, with the keyboard.
struct Filtering : World {
    PaneTableView &left = list(Side::Left);
    FilterBar &bar = *window.filterBars.left;

    Filtering()
        : World(u"left/apple=1, left/Banana=22, left/berry=333, left/box/cherry=1, left/café=4, "
                "trash/"_s)
    {
        workspace.trashFolder = folder.path(u"trash"_s);
        alerts.decide = [](const Alert &) { return Alert::Yes; };
        start();
        left.setFocus();
    }
    void type(const QString &text)
    {
        run(Command::QuickFilter);
        QTRY_VERIFY(bar.field->hasFocus());
        QTest::keyClicks(bar.field, text);
    }
    void press(Qt::Key key)
    {
        QTest::keyClick(bar.field->hasFocus() ? static_cast<QWidget *>(bar.field) : &left, key);
    }
};

} // namespace

class tst_QuickFilter : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachKeyNarrowsAndEscapeEndsIt()
    {
        Filtering panes;
        const QString all = panes.names();
        panes.type(u"B"_s);
        QCOMPARE(panes.names(), u".. box Banana berry"_s);
        QCOMPARE(panes.selected(), u"box"_s); // the next command is about what is found
        panes.type(u"Er"_s); // asked for again, the field takes another text
        QCOMPARE(panes.names(), u".. berry"_s);
        panes.press(Qt::Key_Backspace);
        QCOMPARE(panes.selected(), u"berry"_s);
        panes.press(Qt::Key_Escape);
        QCOMPARE(panes.names(), all);
        QCOMPARE(panes.selected(), u"berry"_s);
        QVERIFY(!panes.bar.isVisible());
        QVERIFY(panes.left.hasFocus());
        panes.type(u"nothing"_s);
        QCOMPARE(panes.names(), u".."_s);
        QCOMPARE(panes.left.accessibleDescription(), u"No name fits the filter"_s);
        // In the pane the first Escape takes the selection away.
        panes.type(u"b"_s);
        panes.press(Qt::Key_Down);
        panes.press(Qt::Key_Escape);
        QVERIFY(panes.bar.isVisible());
        panes.press(Qt::Key_Escape);
        QVERIFY(!panes.bar.isVisible());
        QCOMPARE(panes.names(), all);
    }

    void whatWasFoundStaysInSight()
    {
        Filtering panes;
        panes.folder.shell(u"cd left; touch $(seq -f 'm%04g' 1 300)"_s);
        QTRY_VERIFY(panes.model.rowsLeft().size() > 300);
        panes.type(u"m0250"_s);
        panes.press(Qt::Key_Escape);
        QCOMPARE(panes.selected(), u"m0250"_s);
        const QRect row = panes.left.visualRect(panes.left.currentIndex());
        QVERIFY(panes.left.viewport()->rect().contains(row.center()));
    }

    void oddTexts()
    {
        Filtering panes;
        panes.folder.write(FileName::fromBytes("left/x\xff"
                                               "y"));
        panes.show(Side::Left, u"left"_s);
        const std::pair<QString, qsizetype> texts[] = {
            { u"CAFE"_s, 2 },
            { u"x\ufffdy"_s, 2 },
            { u"berry\n"_s, 2 },
            { u"*a*"_s, 4 },
            { u"?e*"_s, 2 },
            { QString(10'000, u'a'), 1 },
            { QString(10'000, u'*'), 7 },
        };
        for (const auto &[text, rows] : texts) {
            panes.type({});
            QGuiApplication::clipboard()->setText(text);
            panes.bar.field->paste();
            QVERIFY2(panes.model.rowsLeft().size() == rows, qPrintable(text.left(9)));
        }
    }

    void listingAgainAndSortingKeepItAnotherFolderEndsIt()
    {
        Filtering panes;
        panes.type(u"b"_s);
        panes.press(Qt::Key_Return);
        QVERIFY(panes.left.hasFocus());
        panes.select(u"Banana"_s);
        QTest::keyClick(&panes.left, Qt::Key_Insert);
        panes.folder.write(u"left/bbb"_s);
        panes.folder.write(u"left/other"_s);
        panes.run(Command::Reload);
        QCOMPARE(panes.names(), u".. box Banana bbb berry"_s);
        QCOMPARE(panes.selected(), u"Banana"_s);
        panes.run(Command::SortBySize);
        QCOMPARE(panes.names(), u".. box bbb Banana berry"_s);
        panes.press(Qt::Key_Down); // the mark holds
        QCOMPARE(panes.selected(), u"Banana"_s);
        panes.run(Command::SelectAll);
        QCOMPARE(panes.selected(), u"box bbb Banana berry"_s);
        // Back in the folder, its row is found among all of them.
        panes.select(u"berry"_s);
        panes.type(u"box"_s);
        panes.open(u"box"_s);
        QCOMPARE(panes.names(), u".. cherry"_s);
        QVERIFY(!panes.bar.isVisible());
        panes.open(RowSet { ParentRow });
        QCOMPARE(panes.selected(), u"box"_s);
        QCOMPARE(panes.model.rowsLeft().size(), 8);
    }

    void operationsSeeWhatIsShown()
    {
        Filtering panes;
        panes.type(u"b"_s);
        // From the field itself, by a key that means nothing there.
        panes.run(Command::SelectAll);
        QTest::keyClick(panes.bar.field, Qt::Key_F5);
        panes.twinleaf.drain();
        QCOMPARE(panes.names(Side::Right), u".. box Banana berry"_s);
        // What no longer fits is no longer seen.
        panes.select(u"berry"_s);
        panes.answerSheet(u"cherry"_s);
        panes.run(Command::Rename);
        QCOMPARE(panes.names(), u".. box Banana"_s);
        panes.select(u"Banana"_s);
        panes.run(Command::Delete);
        QCOMPARE(panes.names(), u".. box"_s);
        // What was made is seen, whatever the filter.
        panes.answerSheet(u"new"_s);
        panes.run(Command::NewFolder);
        QCOMPARE(panes.names(), u".. box new apple café cherry"_s);
        QCOMPARE(panes.selected(), u"new"_s);
        QVERIFY(!panes.bar.isVisible() && panes.bar.field->text().isEmpty());
    }

    void whatArrivesByItselfIsFilteredToo()
    {
        Filtering panes;
        panes.type(u"b"_s);
        panes.folder.write(u"left/unseen"_s);
        panes.folder.write(u"left/bbb"_s);
        QTRY_COMPARE(panes.names(), u".. box Banana bbb berry"_s);
        QVERIFY(panes.bar.field->hasFocus());
    }
};

QTEST_MAIN(tst_QuickFilter)
#include "tst_QuickFilter.moc"
