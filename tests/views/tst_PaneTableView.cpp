#include "tests/support/World.h"
#include "views/VirtualKeys.h"
#include "widgets/Colors.h"

#include <QContextMenuEvent>
#include <QScrollBar>
#include <QSignalSpy>

namespace {

// Started with both panes on five files. The person says "No" to everything, so that a request ends
// in the pane model.
struct FivePanes : World {
    PaneTableView &left = list(Side::Left);

    FivePanes()
        : World(u"left/a=a, left/b=b, left/c=c, left/d=d, left/e=e"_s)
    {
        alerts.decide = [](const Alert &) { return Alert::No; };
        startOnLeft();
    }
    QPoint cell(int row) const { return left.visualRect(left.model()->index(row, 1)).center(); }
};

// Writes down what the panes post: "c Left 1,2".
struct Receiver {
    explicit Receiver(MessageBus &bus)
    {
        bus.subscribe(CopyItem, this, &Receiver::item<'c'>);
        bus.subscribe(MoveItem, this, &Receiver::item<'m'>);
        bus.subscribe(DeleteItem, this, &Receiver::item<'d'>);
        bus.subscribe(RenameItem, this, &Receiver::item<'r'>);
        bus.subscribe(ShowInfo, this, &Receiver::item<'i'>);
        bus.subscribe(NewFolder, this, &Receiver::folder);
        bus.subscribe(LetterPressed, this, &Receiver::letter);
        bus.subscribe(GetRows, this, &Receiver::rows<'o'>);
        bus.subscribe(GotoNextDirectory, this, &Receiver::rows<'n'>);
        bus.subscribe(ShowFolderSize, this, &Receiver::rows<'s'>);
    }
    template <char What>
    void rows(Side side, const RowsOfPane &payload)
    {
        QStringList numbers;
        for (const int row : payload.rows)
            numbers.append(QString::number(row));
        posts.append(u"%1 %2 %3"_s.arg(QLatin1Char(What)).arg(sideWord(side), numbers.join(u',')));
    }
    template <char What>
    void item(const ItemRequest &request)
    {
        rows<What>(request.side.value(), { request.item, {} });
    }
    void folder(const NewFolderRequest &request) { rows<'f'>(request.side.value(), {}); }
    void letter(const TypedLetter &typed) { posts.append(u"letter "_s + typed.characters); }

    QStringList posts;
};

// What a row is painted on, seen at the end of its name.
QColor rowColor(PaneTableView &table, int row)
{
    const QRect cell = table.visualRect(table.model()->index(row, int(Column::Name)));
    return table.viewport()->grab().toImage().pixelColor(cell.right() - 4, cell.center().y());
}

} // namespace

class tst_PaneTableView : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void keyPostsForItsPane()
    {
        const std::pair<Qt::Key, QString> keys[] = {
            { Qt::Key_F5, u"c % 2,3"_s },     { Qt::Key_F6, u"m % 2,3"_s },
            { Qt::Key_F7, u"f % "_s },        { Qt::Key_F8, u"d % 2,3"_s },
            { Qt::Key_F9, u"r % 3"_s }, // the newest row
            { Qt::Key_Return, u"o % 2,3"_s }, { Qt::Key_Backspace, u"o % 0"_s },
            { Qt::Key_Left, u"o % 0"_s },     { Qt::Key_Right, u"n % 2,3"_s },
            { Qt::Key_Space, u"s % 2,3"_s },  { Qt::Key_B, u"letter b"_s },
            { Qt::Key_7, u"letter 7"_s },     { Qt::Key_Enter, u"o % 2,3"_s },
            { Qt::Key_Delete, u"d % 2,3"_s }, { Qt::Key_F2, u"r % 3"_s },
        };
        for (const Side side : { Side::Left, Side::Right }) {
            for (const auto &[key, post] : keys) {
                FivePanes panes;
                panes.list(side).setFocus();
                panes.list(side).selectRows({ 2, 3 });
                Receiver receiver(panes.bus);
                if (key == Qt::Key_F7 || key == Qt::Key_F9 || key == Qt::Key_F2)
                    panes.answerSheet({});
                QTest::keyClick(&panes.list(side), key);
                QCOMPARE(receiver.posts.value(0), QString(post).replace(u'%', sideWord(side)));
            }
        }
    }

    void commandsRefuseNothingAndParentRow()
    {
        FivePanes panes;
        Receiver receiver(panes.bus);
        for (const RowSet &rows : { RowSet { 0 }, RowSet {} }) {
            QCOMPARE(receiver.posts, QStringList());
            for (const Side side : { Side::Left, Side::Right }) {
                panes.list(side).selectRows(rows);
                for (const auto key : { Qt::Key_F5, Qt::Key_F6, Qt::Key_F8, Qt::Key_F9 })
                    QTest::keyClick(&panes.list(side), key);
                panes.list(side).showInfoClicked();
            }
        }
        QCOMPARE(receiver.posts, QStringList { u"i Right -1"_s }); // Sides differ.
        // Of several, ".." is none.
        panes.left.selectRows({ 0, 4 });
        QTest::keyClick(&panes.left, Qt::Key_F5);
        QCOMPARE(receiver.posts.last(), u"c Left 4"_s);
    }

    void bindingWinsOverFixedKeyButNotOverLetter()
    {
        FivePanes panes;
        const QVariantMap copy { { u"CopyKey"_s, VirtualKeys::Return },
                                 { u"CopyModifierFlag"_s, 1 } };
        const QVariantMap remove { { u"DeleteKey"_s, 0 },
                                   { u"DeleteModifierFlag"_s, 0 } }; // the key A
        const QVariantMap move { { u"MoveKey"_s, VirtualKeys::Delete },
                                 { u"MoveModifierFlag"_s, 1 } };
        panes.defaults.setValue(Settings::ClassicKeys,
                                QVariantMap { { u"CopyKeys"_s, copy },
                                              { u"MoveKeys"_s, move },
                                              { u"DeleteKeys"_s, remove } });
        TableViewLeft table(panes.bus, panes.model, panes.defaults);
        table.selectRow(1);
        Receiver receiver(panes.bus);
        QTest::keyClick(&table, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClick(&table, Qt::Key_A, Qt::ShiftModifier); // the flag the binding needs
        QTest::keyClick(&table, Qt::Key_Delete); // is no longer the key of F8
        QCOMPARE(receiver.posts, QStringList({ u"c Left 1"_s, u"letter a"_s }));
    }

    void selectionExtendsFromWhereItWasPutLast()
    {
        // Words: keys, with "+" together with Shift; "3,5" selects rows as a command does, "@3" is
        // a click on a row, "again" lists the folder again.
        const std::pair<const char *, RowSet> rows[] = {
            { "Down Down End +Up Delete", { 4, 5 } },
            { "Down Home +End", { 1, 2, 3, 4, 5 } },
            { "End +Home", { 1, 2, 3, 4, 5 } },
            { "End +Home +Down", { 1, 2, 3, 4, 5 } },
            { "Home +Down", { 1 } },
            { "Home +Down +Down +Up", { 1 } },
            { "End C +Up", { 2, 3 } },
            { "End C +@5", { 3, 4, 5 } },
            { "2,4 +Down", { 4, 5 } },
            { "Home 2,4 +@3", { 3, 4 } },
            { "Down +Down +Down Escape +Down", { 3, 4 } },
            { "Home D again +Up", { 3, 4 } },
            { "End +Up +Up again +Down", { 4, 5 } },
            { "Home +Down again +Down", { 1, 2 } },
            { "End again Up", { 4 } },
            { "Down Escape", {} },
        };
        for (const auto &[words, selected] : rows) {
            FivePanes panes;
            for (QString word : QString::fromLatin1(words).split(u' ')) {
                const bool shift = word.startsWith(u'+');
                const Qt::KeyboardModifiers held = shift ? Qt::ShiftModifier : Qt::NoModifier;
                word = word.mid(shift);
                if (word == u"again"_s)
                    panes.show(Side::Left, u"left"_s);
                else if (word.startsWith(u'@'))
                    QTest::mouseClick(panes.left.viewport(), Qt::LeftButton, held,
                                      panes.cell(word.mid(1).toInt()));
                else if (word.contains(u','))
                    panes.left.selectRows({ word[0].digitValue(), word[2].digitValue() });
                else
                    QTest::keyClick(&panes.left, Qt::Key(QKeySequence(word)[0].key()), held);
            }
            QVERIFY2(panes.left.selectedRows() == selected, words);
            QCOMPARE(panes.list(Side::Right).selectedRows(), RowSet { 0 });
        }
    }

    void listingAgainKeepsSelectionAndViewByPath()
    {
        FivePanes panes;
        for (int i = 0; i < 200; ++i)
            panes.folder.write(u"left/f%1"_s.arg(i, 3));
        panes.show(Side::Left, u"left"_s);
        panes.left.selectRows({ 120, 130, 131 });
        panes.left.verticalScrollBar()->setValue(110);
        panes.folder.write(u"left/0 first"_s);
        QVERIFY(QFile::remove(panes.folder.path(u"left/"_s + panes.model.rowsLeft()[130].name())));
        panes.show(Side::Left, u"left"_s);
        QCOMPARE(panes.left.selectedRows(), (RowSet { 121, 131 }));
        QCOMPARE(panes.left.verticalScrollBar()->value(), 111);
        panes.show(Side::Left, u"left"_s, u"left"_s); // entered anew
        QCOMPARE(panes.left.selectedRows(), RowSet { 0 });
        QCOMPARE(panes.left.verticalScrollBar()->value(), 0);
    }

    void otherKeysAreHandedOn()
    {
        FivePanes panes;
        const auto after = [&](Qt::Key key, Qt::KeyboardModifiers held = {}) {
            QTest::keyClick(&panes.left, key, held);
        };
        const QSignalSpy other(&panes.left, &PaneTableView::otherPaneRequested);
        panes.left.disconnect(&panes.application); // nor does the program end
        const QSignalSpy exit(&panes.left, &PaneTableView::terminateRequested);
        after(Qt::Key_Tab);
        after(Qt::Key_Tab, Qt::ShiftModifier);
        const QSignalSpy menu(&panes.left, &PaneTableView::contextMenuRequested);
        after(Qt::Key_F10, Qt::ShiftModifier);
        after(Qt::Key_Menu);
        QCOMPARE(exit.count(), 0);
        QCOMPARE(menu.count(), 1); // for the other key the desktop asks by itself
        after(Qt::Key_F10);
        QCOMPARE(other.count(), 2);
        QCOMPARE(exit.count(), 1);
    }

    void aRightClickIsForTheRowThereOrForTheFolder()
    {
        FivePanes panes;
        panes.left.selectRows({ 1, 2 });
        const struct {
            QPoint place;
            RowSet selected;
            bool folder = false;
        } clicks[] = {
            { panes.cell(2), { 1, 2 } },
            { QPoint(40, panes.left.viewport()->height() - 5), { 1, 2 }, true },
            { panes.cell(4), { 4 } },
        };
        for (const auto &[place, selected, folder] : clicks) {
            const QSignalSpy ofRows(&panes.left, &PaneTableView::contextMenuRequested);
            const QSignalSpy ofFolder(&panes.left, &PaneTableView::folderMenuRequested);
            QContextMenuEvent asked(QContextMenuEvent::Mouse, place,
                                    panes.left.viewport()->mapToGlobal(place));
            QCoreApplication::sendEvent(panes.left.viewport(), &asked);
            QCOMPARE(ofRows.count(), folder ? 0 : 1);
            QCOMPARE(ofFolder.count(), folder ? 1 : 0);
            QCOMPARE(panes.left.selectedRows(), selected);
        }
    }

    void onlyTheSecondClickOpens()
    {
        FivePanes panes;
        Receiver receiver(panes.bus);
        QWidget *viewport = panes.left.viewport();
        const auto clickOn = [&](QPoint place) {
            QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
            QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
            QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
        };
        clickOn(panes.cell(2));
        QCOMPARE(receiver.posts, QStringList { u"o Left 2"_s });
        clickOn(QPoint(40, viewport->height() - 5));
        QCOMPARE(receiver.posts.size(), 1);
        QCOMPARE(panes.left.selectedRow(), -1);
    }

    void onlyRowsOfTheListingAreSelectedAndTheNewestIsTheOneActedOn()
    {
        FivePanes panes;
        for (const int row : { -1, 6, 1000 }) {
            panes.left.selectRow(1);
            panes.left.selectRow(row);
            QCOMPARE(panes.left.selectedRows(), RowSet());
            panes.left.scrollToRow(row);
        }
        panes.left.selectRows({ 4, 5, 6, 7 });
        QCOMPARE(panes.left.selectedRows(), (RowSet { 4, 5 }));

        const auto afterClick = [&](int row, Qt::KeyboardModifiers held = {}) {
            QTest::mouseClick(panes.left.viewport(), Qt::LeftButton, held, panes.cell(row));
            return panes.left.selectedRow();
        };
        afterClick(4);
        QCOMPARE(afterClick(1, Qt::ControlModifier), 1);
        QCOMPARE(afterClick(1, Qt::ControlModifier), 4);
        QCOMPARE(afterClick(2, Qt::ShiftModifier), 2);
    }

    void rowsArePaintedByTheirPaneAndTheirLabel()
    {
        FivePanes panes;
        panes.folder.setFinderFlags(u"left/c"_s, 4);
        panes.show(Side::Left, u"left"_s);
        const QColor label = FileQueries::finderLabelColor(panes.model.rowsLeft()[3].finderLabel());
        QVERIFY(label != FileQueries::finderLabelColor(0));
        QCOMPARE(rowColor(panes.left, 3), label);
        QVERIFY(rowColor(panes.left, 2) != label);
        for (const Side side : { Side::Left, Side::Right })
            panes.list(side).selectRow(3);
        const QColor highlight = panes.left.palette().color(QPalette::Active, QPalette::Highlight);
        for (const Side active : { Side::Left, Side::Right }) {
            panes.focus(active);
            const QColor passive = rowColor(panes.list(otherSide(active)), 3);
            QCOMPARE(rowColor(panes.list(active), 3), highlight);
            QVERIFY(passive != highlight);
            QVERIFY(contrast(passive, panes.left.palette().color(QPalette::Base)) >= 3);
        }
        // The label of a selected row is seen at the ends alone.
        panes.left.setColumnWidths({ 0, 0, 40, 40, 40 }); // all in view
        const QImage picture = panes.left.viewport()->grab().toImage();
        for (const int x : { 2, picture.width() - 3 })
            QCOMPARE(picture.pixelColor(x, panes.cell(3).y()), label);
    }

    void noColumnIsCutAtTheEdge()
    {
        FivePanes panes;
        const auto width = [&](Column column) { return panes.left.columnWidth(int(column)); };
        const int whole = width(Column::Size) + width(Column::Date);
        int names = 0;
        for (const int room : { 240, 330, 420, 540, 900 }) {
            panes.left.resize(room, 200);
            QList<int> edges;
            for (const auto column : { Column::Name, Column::Size, Column::Date, Column::Type })
                edges.append(panes.left.columnViewportPosition(int(column)) + width(column));
            QVERIFY2(edges.contains(panes.left.viewport()->width()), qPrintable(u"%1"_s.arg(room)));
            QCOMPARE(width(Column::Size) + width(Column::Date), whole);
            QVERIFY(width(Column::Name) >= 120);
            names = width(Column::Name);
        }
        QVERIFY(names > 300); // the names have what is left
        panes.left.setColumnWidths({ 0, 0, 61, 0, 0 });
        panes.left.resize(240, 200);
        QCOMPARE(width(Column::Size), 61); // as a person chose
        QCOMPARE(panes.left.chosenWidths(), QList<int>({ 0, 0, 61, 0, 0 }));
    }
};

QTEST_MAIN(tst_PaneTableView)
#include "tst_PaneTableView.moc"
