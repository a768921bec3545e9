#include "platform/VirtualKeys.h"
#include "tests/views/PanesOnFolder.h"
#include "util/SettingsKeys.h"

#include <sys/xattr.h>

using namespace Qt::StringLiterals;

namespace {

const QStringList FiveFiles { u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s };

// Writes down what the panes post: "copy Left 1,2".
class Receiver {
public:
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

    QStringList posts;

private:
    static QString text(char what, std::optional<Side> side, const RowSet &rows)
    {
        QStringList numbers;
        for (const int row : rows)
            numbers.append(QString::number(row));
        return u"%1 %2 %3"_s.arg(QLatin1Char(what))
            .arg(side ? sideWord(*side) : u"?"_s, numbers.join(u','))
            .trimmed();
    }
    template <char What>
    void item(const ItemRequest &request)
    {
        posts.append(text(What, request.side, request.item));
    }
    template <char What>
    void rows(Side side, const RowsOfPane &payload)
    {
        posts.append(text(What, side, payload.rows));
    }
    void folder(const NewFolderRequest &request) { posts.append(text('f', request.side, {})); }
    void letter(const TypedLetter &typed) { posts.append(u"letter "_s + typed.characters); }
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
    void keyPostsForItsPane_data();
    void keyPostsForItsPane();
    void commandsRefuseNothingAndParentRow_data();
    void commandsRefuseNothingAndParentRow();
    void onlyRightPaneAsksInformationForNothing();
    void bindingWinsOverFixedKeyButNotOverLetter();
    void navigationKeysMoveTheSelection();
    void tabAndExitKeyAreHandedOn();
    void onlyTheSecondClickOpens();
    void rowsOutsideTheListingSelectNothing();
    void newestRowIsTheSelectedOne();
    void scatteredRowsAreFast();
    void activePaneIsPlain();
    void labelShowsUnderTheRow();
};

void tst_PaneTableView::keyPostsForItsPane_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("post"); // with % for the side
    QTest::newRow("F5") << int(Qt::Key_F5) << u"c % 2,3"_s;
    QTest::newRow("F6") << int(Qt::Key_F6) << u"m % 2,3"_s;
    QTest::newRow("F7") << int(Qt::Key_F7) << u"f %"_s;
    QTest::newRow("F8") << int(Qt::Key_F8) << u"d % 2,3"_s;
    QTest::newRow("F9 takes the newest row") << int(Qt::Key_F9) << u"r % 3"_s;
    QTest::newRow("Return") << int(Qt::Key_Return) << u"o % 2,3"_s;
    QTest::newRow("Backspace") << int(Qt::Key_Backspace) << u"o % 0"_s;
    QTest::newRow("Left") << int(Qt::Key_Left) << u"o % 0"_s;
    QTest::newRow("Right") << int(Qt::Key_Right) << u"n % 2,3"_s;
    QTest::newRow("Space") << int(Qt::Key_Space) << u"s % 2,3"_s;
    QTest::newRow("letter") << int(Qt::Key_B) << u"letter b"_s;
    QTest::newRow("digit") << int(Qt::Key_7) << u"letter 7"_s;
}

void tst_PaneTableView::keyPostsForItsPane()
{
    QFETCH(int, key);
    QFETCH(QString, post);
    for (const Side side : { Side::Left, Side::Right }) {
        PanesOnFolder panes(FiveFiles);
        panes.start();
        panes.table(side).setFocus();
        panes.table(side).selectRows({ 2, 3 });
        Receiver receiver(panes.bus);
        QTest::keyClick(&panes.table(side), Qt::Key(key));
        QVERIFY(!receiver.posts.isEmpty());
        QCOMPARE(receiver.posts.first(), QString(post).replace(u'%', sideWord(side)));
    }
}

void tst_PaneTableView::commandsRefuseNothingAndParentRow_data()
{
    QTest::addColumn<RowSet>("rows");
    QTest::newRow("nothing") << RowSet {};
    QTest::newRow("parent row") << RowSet { 0 };
}

void tst_PaneTableView::commandsRefuseNothingAndParentRow()
{
    QFETCH(RowSet, rows);
    PanesOnFolder panes(FiveFiles);
    panes.start();
    panes.left.selectRows(rows);
    Receiver receiver(panes.bus);
    for (const auto key : { Qt::Key_F5, Qt::Key_F6, Qt::Key_F8, Qt::Key_F9 })
        QTest::keyClick(&panes.left, key);
    panes.left.showInfoClicked();
    QCOMPARE(receiver.posts, QStringList());

    // A parent row that is not the newest one passes; deleting refuses it later.
    panes.left.selectRows({ 0, 4 });
    QTest::keyClick(&panes.left, Qt::Key_F5);
    QCOMPARE(receiver.posts, QStringList { u"c Left 0,4"_s });
}

void tst_PaneTableView::onlyRightPaneAsksInformationForNothing()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    Receiver receiver(panes.bus);
    for (const Side side : { Side::Left, Side::Right }) {
        panes.table(side).clearSelection();
        panes.table(side).showInfoClicked();
    }
    panes.right.selectRow(0);
    panes.right.showInfoClicked();
    QCOMPARE(receiver.posts, QStringList { u"i Right -1"_s });
}

void tst_PaneTableView::bindingWinsOverFixedKeyButNotOverLetter()
{
    PanesOnFolder panes(FiveFiles);
    const auto keys = [](const QString &name, int key, int choice) {
        return QVariantMap { { name + u"Key"_s, key }, { name + u"ModifierFlag"_s, choice } };
    };
    panes.defaults.setValue(
        Settings::ClassicKeys,
        QVariantMap { { u"CopyKeys"_s, keys(u"Copy"_s, VirtualKeys::Return, 1) },
                      { u"DeleteKeys"_s, keys(u"Delete"_s, 0, 0) } }); // 0 is the key A
    TableViewLeft table(panes.bus, panes.model, panes.defaults);
    panes.start();
    table.selectRow(1);
    Receiver receiver(panes.bus);
    QTest::keyClick(&table, Qt::Key_Return, Qt::ShiftModifier);
    QTest::keyClick(&table, Qt::Key_A, Qt::ShiftModifier); // the flag the binding needs
    QCOMPARE(receiver.posts, QStringList({ u"c Left 1"_s, u"letter a"_s }));
}

void tst_PaneTableView::navigationKeysMoveTheSelection()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    QTest::keyClick(&panes.left, Qt::Key_End);
    QCOMPARE(panes.left.selectedRows(), RowSet { 5 });
    QTest::keyClick(&panes.left, Qt::Key_Up);
    QCOMPARE(panes.left.selectedRows(), RowSet { 4 });
    QTest::keyClick(&panes.left, Qt::Key_Up, Qt::ShiftModifier);
    QCOMPARE(panes.left.selectedRows(), (RowSet { 3, 4 }));
    QCOMPARE(panes.left.selectedRow(), 3);
    QTest::keyClick(&panes.left, Qt::Key_Home);
    QCOMPARE(panes.left.selectedRows(), RowSet { 0 });
    QTest::keyClick(&panes.left, Qt::Key_Escape);
    QCOMPARE(panes.left.selectedRow(), -1);
    QCOMPARE(panes.right.selectedRows(), RowSet { 0 });
}

void tst_PaneTableView::tabAndExitKeyAreHandedOn()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    QSignalSpy other(&panes.left, &PaneTableView::otherPaneRequested);
    QSignalSpy exit(&panes.left, &PaneTableView::terminateRequested);
    QTest::keyClick(&panes.left, Qt::Key_Tab);
    QTest::keyClick(&panes.left, Qt::Key_Tab, Qt::ShiftModifier);
    QCOMPARE(other.count(), 2);
    QTest::keyClick(&panes.left, Qt::Key_F10);
    QCOMPARE(exit.count(), 1);
}

void tst_PaneTableView::onlyTheSecondClickOpens()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    Receiver receiver(panes.bus);
    QWidget *viewport = panes.left.viewport();
    const auto clickOn = [&](QPoint place) {
        QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
        QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
    };
    clickOn(panes.left.visualRect(panes.left.model()->index(2, 1)).center());
    QCOMPARE(receiver.posts, QStringList { u"o Left 2"_s });
    clickOn(QPoint(40, viewport->height() - 5));
    QCOMPARE(receiver.posts.size(), 1);
    QCOMPARE(panes.left.selectedRow(), -1);
}

void tst_PaneTableView::rowsOutsideTheListingSelectNothing()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    for (const int row : { -1, 6, 1000 }) {
        panes.left.selectRow(1);
        panes.left.selectRow(row);
        QCOMPARE(panes.left.selectedRows(), RowSet());
        panes.left.scrollToRow(row);
    }
    panes.left.selectRows({ 4, 5, 6, 7 });
    QCOMPARE(panes.left.selectedRows(), (RowSet { 4, 5 }));
}

void tst_PaneTableView::newestRowIsTheSelectedOne()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    const auto click = [&](int row, Qt::KeyboardModifiers held) {
        QTest::mouseClick(panes.left.viewport(), Qt::LeftButton, held,
                          panes.left.visualRect(panes.left.model()->index(row, 1)).center());
    };
    click(4, {});
    click(1, Qt::ControlModifier);
    QCOMPARE(panes.left.selectedRow(), 1);
    click(1, Qt::ControlModifier);
    QCOMPARE(panes.left.selectedRow(), 4);
    click(2, Qt::ShiftModifier);
    QCOMPARE(panes.left.selectedRow(), 2);
}

void tst_PaneTableView::scatteredRowsAreFast()
{
    PanesOnFolder panes({});
    for (int i = 0; i < 20000; ++i)
        QVERIFY(QFile(panes.folder.filePath(QString::number(i))).open(QIODevice::WriteOnly));
    panes.start();
    RowSet even, odd;
    for (int row = 1; row < 20000; row += 2) {
        odd.append(row);
        even.append(row + 1);
    }
    QElapsedTimer timer;
    timer.start();
    panes.left.selectRows(odd);
    panes.left.selectRows(even);
    panes.left.grab();
    QCOMPARE(panes.left.selectedRows(), even);
    QVERIFY2(timer.elapsed() < 1000,
             qPrintable(QString::number(timer.elapsed()))); // quadratic: many seconds
}

void tst_PaneTableView::activePaneIsPlain()
{
    PanesOnFolder panes(FiveFiles);
    panes.start();
    for (const Side side : { Side::Left, Side::Right })
        panes.table(side).selectRow(2);
    const QColor highlight = panes.left.palette().color(QPalette::Active, QPalette::Highlight);
    QCOMPARE(rowColor(panes.left, 2), highlight);
    QVERIFY(rowColor(panes.right, 2) != highlight);
    QVERIFY(rowColor(panes.right, 2) != panes.right.palette().color(QPalette::Base));
    panes.right.setFocus();
    QCOMPARE(rowColor(panes.right, 2), highlight);
    QVERIFY(rowColor(panes.left, 2) != highlight);
}

void tst_PaneTableView::labelShowsUnderTheRow()
{
    PanesOnFolder panes(FiveFiles);
    QByteArray finderInfo(32, '\0');
    finderInfo[9] = 4; // the label field of the flag word
    if (setxattr(panes.folder.filePath(u"c"_s).toLocal8Bit().constData(),
                 "user.com.apple.FinderInfo", finderInfo.constData(), 32, 0)
        != 0)
        QSKIP("no extended attributes here");
    panes.start();
    const int row = int(panes.names(Side::Left).indexOf(u"c"_s));
    const int label = panes.model.rowsLeft()[row].finderLabel();
    QVERIFY(label != 0);
    QCOMPARE(rowColor(panes.left, row), FileQueries::finderLabelColor(label));
    QVERIFY(rowColor(panes.left, row - 1) != FileQueries::finderLabelColor(label));
}

QTEST_MAIN(tst_PaneTableView)
#include "tst_PaneTableView.moc"
