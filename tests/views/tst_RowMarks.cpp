#include "tests/support/World.h"
#include "views/VirtualKeys.h"

namespace {

// Both panes on five files, the left one with the keyboard on "..".
struct Marking : World {
    PaneTableView &left = list(Side::Left);

    Marking()
        : World(u"left/a=a, left/b=b, left/c=c, left/d=d, left/e=e, trash/"_s)
    {
        workspace.trashFolder = folder.path(u"trash"_s);
        startOnLeft();
        left.setFocus();
    }
    // A key, with "+" together with Shift; "*" of the keypad; "@3" a click on a row, "^3" with
    // Ctrl; "all" a command; "again" lists the folder again, "new" after another file came.
    void enter(QString word)
    {
        if (word == u"again"_s || word == u"new"_s) {
            if (word == u"new"_s)
                folder.write(u"left/aa"_s);
            return show(Side::Left, u"left"_s);
        }
        if (word == u"all"_s)
            return run(Command::SelectAll);
        if (word.startsWith(u'@') || word.startsWith(u'^')) {
            const QModelIndex cell = left.model()->index(word.mid(1).toInt(), 1);
            return QTest::mouseClick(left.viewport(), Qt::LeftButton,
                                     word[0] == u'^' ? Qt::ControlModifier : Qt::NoModifier,
                                     left.visualRect(cell).center());
        }
        if (word == u"*"_s)
            return QTest::keyClick(&left, Qt::Key_Asterisk, Qt::KeypadModifier);
        const bool shift = word.startsWith(u'+');
        QTest::keyClick(&left, Qt::Key(QKeySequence(word.mid(shift))[0].key()),
                        shift ? Qt::ShiftModifier : Qt::NoModifier);
    }
};

} // namespace

class tst_RowMarks : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keysAndMarks()
    {
        const struct {
            const char *words;
            RowSet selected;
            int keyboard;
            int newest;
        } rows[] = {
            { "Ins", { 1 }, 1, 1 }, // on ".." a step
            { "Down Ins", { 1 }, 2, 1 },
            { "Down Ins Ins", { 1, 2 }, 3, 2 },
            { "Down Ins Down Down Ins", { 1, 4 }, 5, 4 },
            { "Down Ins Ins Up Up Up", { 1, 2 }, 0, 2 },
            { "Down Ins Ins Home Ins", { 1, 2 }, 1, 2 },
            { "Down Ins End Ins", { 1, 5 }, 5, 5 },
            { "Down Ins End Ins Ins", { 1 }, 5, 1 },
            { "Down Ins PgDown", { 1 }, 5, 1 },
            { "Down Down Ins C D", { 2 }, 4, 2 },
            { "Down Ins Ins Up Up Ins", { 2 }, 2, 2 },
            { "Down Ins Up Ins Down", { 3 }, 3, 3 }, // the last mark goes: all is as before
            { "Down Ins Esc", {}, 2, -1 },
            { "Down Ins Esc Down", { 3 }, 3, 3 },
            { "Down Ins Ins @4", { 4 }, 4, 4 },
            { "Down Ins Ins @4 Down", { 5 }, 5, 5 },
            { "Down Ins Ins @1 Down", { 2 }, 2, 2 }, // also on a mark
            { "Down Ins Ins ^5 Up", { 1, 2, 5 }, 4, 5 },
            { "Down Ins Down +Down", { 1, 3, 4 }, 4, 4 },
            { "Down Ins Down +Down +Down +Up Down", { 1, 3, 4 }, 5, 4 },
            { "Down Ins Down +Down Up Up Up +Up", { 1, 3, 4 }, 0, -1 },
            { "Down Ins all Up", { 1, 2, 3, 4, 5 }, 1, -1 },
            { "Down Ins Ins again Down", { 1, 2 }, 4, 2 },
            { "Down Ins Ins new Down", { 1, 3 }, 5, 3 },
            { "*", { 1, 2, 3, 4, 5 }, 0, 5 },
            { "Down Ins Down * Up", { 2, 3, 4, 5 }, 2, 5 },
            { "all *", {}, 5, -1 },
            { "all Ins Up", { 1, 2, 3, 4 }, 4, -1 }, // what looks marked is
        };
        for (const auto &[words, selected, keyboard, newest] : rows) {
            Marking panes;
            for (const QString &word : QString::fromLatin1(words).split(u' '))
                panes.enter(word);
            QVERIFY2(panes.left.selectedRows() == selected, words);
            QVERIFY2(panes.left.currentIndex().row() == keyboard, words);
            if (newest >= 0)
                QVERIFY2(panes.left.selectedRow() == newest, words);
        }
    }

    void commandsActOnTheMarks()
    {
        Marking panes;
        panes.alerts.decide = [](const Alert &) { return Alert::Yes; };
        for (const char *word : { "Down", "Ins", "Down", "Ins", "End" })
            panes.enter(QString::fromLatin1(word));
        QTest::keyClick(&panes.left, Qt::Key_F8);
        panes.twinleaf.drain();
        QCOMPARE(panes.names(), u".. b d e"_s);
        // One is selected again, and goes with the arrows.
        QCOMPARE(panes.selected(), u"b"_s);
        panes.enter(u"Down"_s);
        QCOMPARE(panes.selected(), u"d"_s);
        // Another folder begins without marks.
        panes.enter(u"Ins"_s);
        panes.enter(u"Backspace"_s);
        panes.enter(u"Down"_s);
        QCOMPARE(panes.left.selectedRows().size(), 1);
    }

    void aKeyOfTheKeypadAsksForAPattern()
    {
        Marking panes;
        for (const auto &[key, title] : { std::pair(Qt::Key_Plus, u"Group selection"_s),
                                          std::pair(Qt::Key_Minus, u"Group deselection"_s) }) {
            QString asked;
            whenSheetOpens(panes.window, [&](QWidget &sheet) {
                asked = sheet.accessibleName();
                QTest::keyClick(&sheet, Qt::Key_Escape);
            });
            QTest::keyClick(&panes.left, key); // not of the keypad
            QTest::keyClick(&panes.left, key, Qt::KeypadModifier);
            QCOMPARE(asked, title);
        }
    }

    void aKeyBoundToACommandMarksNothing()
    {
        Marking panes;
        const QVariantMap copy { { u"CopyKey"_s, VirtualKeys::Insert },
                                 { u"CopyModifierFlag"_s, 1 } };
        panes.defaults.setValue(Settings::ClassicKeys, QVariantMap { { u"CopyKeys"_s, copy } });
        TableViewLeft table(panes.bus, panes.model, panes.defaults);
        table.selectRow(2);
        QTest::keyClick(&table, Qt::Key_Insert);
        QTest::keyClick(&table, Qt::Key_Down);
        QCOMPARE(table.selectedRows(), RowSet { 3 });
    }
};

QTEST_MAIN(tst_RowMarks)
#include "tst_RowMarks.moc"
