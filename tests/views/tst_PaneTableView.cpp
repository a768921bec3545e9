#include "tests/support/World.h"
#include "views/VirtualKeys.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

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
            { Qt::Key_7, u"letter 7"_s },
        };
        for (const Side side : { Side::Left, Side::Right }) {
            for (const auto &[key, post] : keys) {
                FivePanes panes;
                panes.list(side).setFocus();
                panes.list(side).selectRows({ 2, 3 });
                Receiver receiver(panes.bus);
                if (key == Qt::Key_F7 || key == Qt::Key_F9)
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
        // A parent row that is not the newest one passes; deleting refuses it later.
        panes.left.selectRows({ 0, 4 });
        QTest::keyClick(&panes.left, Qt::Key_F5);
        QCOMPARE(receiver.posts.last(), u"c Left 0,4"_s);
    }

    void bindingWinsOverFixedKeyButNotOverLetter()
    {
        FivePanes panes;
        const QVariantMap copy { { u"CopyKey"_s, VirtualKeys::Return },
                                 { u"CopyModifierFlag"_s, 1 } };
        const QVariantMap remove { { u"DeleteKey"_s, 0 },
                                   { u"DeleteModifierFlag"_s, 0 } }; // the key A
        panes.defaults.setValue(
            Settings::ClassicKeys,
            QVariantMap { { u"CopyKeys"_s, copy }, { u"DeleteKeys"_s, remove } });
        TableViewLeft table(panes.bus, panes.model, panes.defaults);
        table.selectRow(1);
        Receiver receiver(panes.bus);
        QTest::keyClick(&table, Qt::Key_Return, Qt::ShiftModifier);
        QTest::keyClick(&table, Qt::Key_A, Qt::ShiftModifier); // the flag the binding needs
        QCOMPARE(receiver.posts, QStringList({ u"c Left 1"_s, u"letter a"_s }));
    }

    void navigationKeysMoveTheSelectionOrAreHandedOn()
    {
        FivePanes panes;
        const auto after = [&](Qt::Key key, Qt::KeyboardModifiers held = {}) {
            QTest::keyClick(&panes.left, key, held);
            return panes.left.selectedRows();
        };
        QCOMPARE(after(Qt::Key_End), RowSet { 5 });
        QCOMPARE(after(Qt::Key_Up), RowSet { 4 });
        QCOMPARE(after(Qt::Key_Up, Qt::ShiftModifier), (RowSet { 3, 4 }));
        QCOMPARE(panes.left.selectedRow(), 3);
        QCOMPARE(after(Qt::Key_Home), RowSet { 0 });
        QCOMPARE(after(Qt::Key_Escape), RowSet {});
        QCOMPARE(panes.list(Side::Right).selectedRows(), RowSet { 0 });
        const QSignalSpy other(&panes.left, &PaneTableView::otherPaneRequested);
        panes.left.disconnect(&panes.application); // nor does the program end
        const QSignalSpy exit(&panes.left, &PaneTableView::terminateRequested);
        after(Qt::Key_Tab);
        after(Qt::Key_Tab, Qt::ShiftModifier);
        after(Qt::Key_F10);
        QCOMPARE(other.count(), 2);
        QCOMPARE(exit.count(), 1);
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

    void rowsOutsideTheListingSelectNothing()
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
    }

    void newestRowIsTheSelectedOne()
    {
        FivePanes panes;
        const auto afterClick = [&](int row, Qt::KeyboardModifiers held = {}) {
            QTest::mouseClick(panes.left.viewport(), Qt::LeftButton, held, panes.cell(row));
            return panes.left.selectedRow();
        };
        afterClick(4);
        QCOMPARE(afterClick(1, Qt::ControlModifier), 1);
        QCOMPARE(afterClick(1, Qt::ControlModifier), 4);
        QCOMPARE(afterClick(2, Qt::ShiftModifier), 2);
    }

    void scatteredRowsAreFast()
    {
        FivePanes panes;
        for (int i = 5; i < 20000; ++i)
            panes.folder.write(u"left/"_s + QString::number(i));
        panes.show(Side::Left, u"left"_s);
        RowSet even, odd;
        for (int row = 1; row < 20000; row += 2) {
            odd.append(row);
            even.append(row + 1);
        }
        panes.left.selectRows(odd);
        panes.left.selectRows(even);
        panes.left.grab();
        QCOMPARE(panes.left.selectedRows(), even);
    }

    void activePaneIsPlain()
    {
        FivePanes panes;
        for (const Side side : { Side::Left, Side::Right })
            panes.list(side).selectRow(2);
        const QColor highlight = panes.left.palette().color(QPalette::Active, QPalette::Highlight);
        for (const Side active : { Side::Left, Side::Right }) {
            panes.list(active).setFocus();
            const QColor muted = rowColor(panes.list(otherSide(active)), 2);
            QCOMPARE(rowColor(panes.list(active), 2), highlight);
            QVERIFY(muted != highlight && muted != panes.left.palette().color(QPalette::Base));
        }
    }

    void labelShowsUnderTheRow()
    {
        FivePanes panes;
        panes.folder.setFinderFlags(u"left/c"_s, 4);
        panes.show(Side::Left, u"left"_s);
        const int row = panes.row(u"c"_s);
        const QColor color =
            FileQueries::finderLabelColor(panes.model.rowsLeft()[row].finderLabel());
        QVERIFY(color != FileQueries::finderLabelColor(0));
        QCOMPARE(rowColor(panes.left, row), color);
        QVERIFY(rowColor(panes.left, row == 1 ? 2 : row - 1) != color);
    }
};

QTEST_MAIN(tst_PaneTableView)
#include "tst_PaneTableView.moc"
