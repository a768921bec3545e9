#include "operations/RequestValidation.h"
#include "tests/operations/DeskWorld.h"
#include "tests/support/Watched.h"
#include "widgets/ActivitySpinner.h"

#include <QRegularExpression>

namespace {

using Focus = std::optional<Side>;

// Both panes on one folder or on two, and selected in.
struct Panes : Desk {
    explicit Panes(Focus focus, bool sameFolder)
        : Desk(u"from/a, from/b, from/c, from/d, to/a, to/b, to/c, to/d"_s)
        , active(list(focus.value_or(Side::Left)))
        , other(list(otherSide(active.side())))
    {
        showBoth(source, sameFolder ? source : destination);
        active.setFocus();
        if (!focus)
            window.segmentedControls.left->setFocus();
        active.selectRows({ 2, 3 });
        other.selectRows({ 1, 4 });
    }
    QString posted() const // the sides listed again, in order
    {
        return QString(listed).remove(QRegularExpression(u"[^LR]"_s));
    }

    PaneTableView &active;
    PaneTableView &other;
};

} // namespace

class tst_FileOperations : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFaultyRequestIsRefused()
    {
        const auto request = [](const SideEntry &side, const UpdateBothEntry &updateBoth,
                                const QString &source = u"/a"_s) {
            return OperationRequest { source, u"/b"_s, { u"x"_s }, side, updateBoth };
        };
        const std::pair<OperationRequest, const char *> faulty[] = {
            { {}, "count != 5" },
            { request(SideEntry(), UpdateBoth::Yes), "count != 5" },
            { request(Side::Left, UpdateBoth::Yes, {}), "Source.*empty" },
            { request(Side::Left, UpdateBoth::Yes, u"/b"_s), "Source.*equal" },
            { request(SideEntry(u""_s), UpdateBoth::Yes), "Side.*empty" },
            { request(SideEntry(u"LEFT"_s), UpdateBoth::Yes), "Side.*not" },
            { request(Side::Left, UpdateBothEntry(u""_s)), "UpdateBoth.*empty" },
            { request(Side::Left, UpdateBothEntry(u"yes"_s)), "UpdateBoth.*not" },
        };
        for (const auto &[each, why] : faulty) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(QLatin1StringView(why)));
            QVERIFY2(!isPerformFileOperationDictionaryValid(each), why);
        }
        for (const QString &word : { u"Left"_s, u"left"_s, u"Right"_s, u"right"_s }) {
            QCOMPARE(SideEntry(word).value() == Side::Left, word.endsWith(u"eft"_s));
            QVERIFY(
                isPerformFileOperationDictionaryValid(request(SideEntry(word), UpdateBoth::No)));
        }
        for (const QString &word :
             { u"YES"_s, u"NO"_s, u"DragDropCopy"_s, u"DragDropMove"_s, u"DragDropFinder"_s })
            QVERIFY(
                isPerformFileOperationDictionaryValid(request(Side::Left, UpdateBothEntry(word))));
    }

    void whatIsRefusedAtTheDoorStartsNothing()
    {
        Desk desk(u"from/a=new, from/b=old"_s);
        const auto request = [&](std::optional<Side> side) {
            return OperationRequest {
                desk.source, desk.destination, { u"a"_s }, side, UpdateBoth::No
            };
        };
        int askedAgain = 0;
        desk.operations.setNameRefused([&](Operation, const OperationRequest &) { ++askedAgain; });
        desk.operations.stopAll(); // for an end that is called off
        desk.alerts.answer({ Alert::Ok, Alert::No });
        desk.operations.newFolder(request(Side::Left));
        QCOMPARE(desk.alerts.last().text, u"Folder already exists!"_s);
        QTRY_COMPARE(askedAgain, 1);
        desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
        for (const auto verb : { &FileOperations::deleteItems, &FileOperations::copyItems,
                                 &FileOperations::createAlias }) {
            QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"count != 5"_s));
            (desk.operations.*verb)(request(std::nullopt));
        }
        QVERIFY(!desk.operations.anyRunning());
        QCOMPARE(desk.tree(), u"from/a=new, from/b=old"_s);
        QCOMPARE(desk.listed, u""_s);
        QVERIFY(!desk.window.progressIndicator->isSpinning());
    }

    // A new folder and a deletion turn no spinner on, and leave that of a copy under way.
    void copiesAndMovesSpinUntilTheyEnd()
    {
        Desk desk(u"from/a=x, from/b=x, from/c=x, from/d=x"_s);
        const auto request = [&](const QString &name) {
            return OperationRequest {
                desk.source, desk.destination, { name }, Side::Left, UpdateBoth::No
            };
        };
        desk.operations.newFolder(request(u"new"_s));
        desk.operations.deleteItems(request(u"c"_s));
        QVERIFY(!desk.window.progressIndicator->isSpinning());
        desk.operations.copyItems(request(u"a"_s));
        desk.operations.moveItems(request(u"b"_s));
        desk.operations.createAlias(request(u"d"_s));
        QVERIFY(desk.window.progressIndicator->isSpinning());
        desk.operations.drain();
        QVERIFY(!desk.window.progressIndicator->isSpinning());
    }

    void panesAreNotListedAgainUnderAnOpenQuestion()
    {
        Desk desk;
        const QString made = desk.source + u"/new"_s;
        {
            const OpenDialogs::Guard open(desk.openDialogs);
            desk.operations.newFolder(
                { desk.source, desk.destination, { u"new"_s }, Side::Left, UpdateBoth::No });
            QTRY_VERIFY(exists(made));
            QCoreApplication::processEvents();
            QCOMPARE(desk.listed, u""_s);
        }
        desk.operations.drain();
        QCOMPARE(desk.listed, u"L from "_s);
        QCOMPARE(desk.selected(), u"new"_s);
    }

    void theOperationAndTheFocusDecideWhatIsListedAndSelected()
    {
        using enum Operation;
        const struct {
            const char *name;
            Operation operation;
            bool sameFolder;
            QString left; // listed with the focus there, in this order
            QString right;
            RowSet active; // none: the item of the record
            RowSet other;
        } cases[] = {
            // Kept: a copy lists only the opposite pane, though both may show what changed. There
            // the same items stay selected.
            { "copy", Copy, false, u"R"_s, u"L"_s, { 2, 3 }, { 1, 5 } },
            { "copy, same folder", Copy, true, u"R"_s, u"L"_s, { 2, 3 }, { 1, 5 } },
            // The first of the selected rows stays selected.
            { "move", Move, false, u"LR"_s, u"LR"_s, { 2 }, { 1 } },
            { "delete", Delete, false, u"L"_s, u"R"_s, { 2 }, { 1 } },
            { "delete, same folder", Delete, true, u"LR"_s, u"LR"_s, { 2 }, { 1 } },
            { "duplicate", Duplicate, false, u"L"_s, u"R"_s, { 2 }, { 1, 4 } },
            { "duplicate, same folder", Duplicate, true, u"LR"_s, u"RL"_s, { 2 }, { 1 } },
            { "rename", Rename, false, u"L"_s, u"R"_s, {}, { 1, 4 } },
            { "new folder, same folder", NewFolder, true, u"LR"_s, u"LR"_s, {}, { 1, 5 } },
            { "information", Info, false, u"L"_s, u"R"_s, {}, { 1, 4 } },
        };
        for (const auto &[name, operation, sameFolder, left, right, active, other] : cases) {
            for (const Focus focus : { Focus(Side::Left), Focus(Side::Right), Focus() }) {
                Panes panes(focus, sameFolder);
                const Side side = panes.active.side();
                makeTree(panes.folder, u"from/bb, to/bb"_s);
                panes.operations.updateFileLists(
                    { operation,
                      panes.shown(side) + (operation == Duplicate ? QString() : u"/bb"_s) });
                const RowSet made { panes.row(u"bb"_s, side) };
                QVERIFY2(panes.posted() == (side == Side::Left ? left : right), name);
                const auto rows = [&](const RowSet &set) {
                    QString words = QString::fromLatin1(name);
                    for (const int row : set)
                        words += u' ' + QString::number(row);
                    return words;
                };
                QCOMPARE(rows(panes.active.selectedRows()), rows(active.isEmpty() ? made : active));
                QCOMPARE(rows(panes.other.selectedRows()), rows(other));
            }
        }
        // The keyboard went to the other pane while the duplicate was made.
        Panes left(Side::Right, false);
        left.operations.updateFileLists({ Duplicate, left.shown(Side::Left) });
        QCOMPARE(left.posted(), u"L"_s);
        // A row beyond the end selects none.
        Panes panes(Side::Left, false);
        panes.active.selectRows({ 4 });
        panes.folder.shell(u"rm from/d"_s);
        panes.operations.updateFileLists({ Delete });
        QCOMPARE(panes.active.rowCount(), 4);
        QCOMPARE(panes.active.selectedRows(), RowSet {});
    }

    void aDropFromOutsideIsListedWhereItLanded()
    {
        const std::tuple<UpdateBoth, Side, QString> drops[] = {
            { UpdateBoth::DragDropFinder, Side::Left, u"RL"_s }, // on the pane with the focus
            { UpdateBoth::DragDropFinder, Side::Right, u"R"_s },
            { UpdateBoth::DragDropCopy, Side::Left, u"R"_s },
        };
        for (const auto &[update, dropped, posted] : drops) {
            Panes panes(Side::Left, false);
            makeTree(panes.folder, u"outside/new"_s);
            panes.operations.copyItems({ panes.folder.path(u"outside"_s),
                                         panes.shown(dropped),
                                         { u"new"_s },
                                         dropped,
                                         update });
            panes.operations.drain();
            QCOMPARE(panes.posted(), posted);
            if (update == UpdateBoth::DragDropFinder)
                QVERIFY(panes.row(u"new"_s, dropped) > 0);
        }
    }

    // Last, as no event loop of this process waits any more after it.
    void theEndOfTheSessionWaitsForTheWork()
    {
        Desk desk(u"from/a=x"_s);
        desk.operations.duplicateItem(desk.source + u"/a"_s, desk.source + u"/b"_s);
        QCoreApplication::exit(); // what ends every event loop must not end the wait
        desk.operations.drain();
        QCOMPARE(desk.from(u"b"_s), "x");
    }
};

QTEST_MAIN(tst_FileOperations)
#include "tst_FileOperations.moc"
