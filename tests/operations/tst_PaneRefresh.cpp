#include "operations/PaneRefresh.h"

#include "files/FileSystem.h"
#include "tests/operations/DeskWorld.h"

#include <QTest>

namespace {

// The real pane model on one folder or on two, both focused and selected in.
struct Panes : Desk {
    explicit Panes(std::optional<Side> focus, bool sameFolder)
        : Desk(u"from/a, from/b, from/c, from/d, to/a, to/b, to/c, to/d"_s)
    {
        window.focus = focus;
        show(source, sameFolder ? source : destination);
        active().selectRows({ 2, 3 });
        other().selectRows({ 1, 4 });
    }

    Side side() const { return window.focus.value_or(Side::Left); }
    PaneTableStub &active() { return window.tables[side()]; }
    PaneTableStub &other() { return window.tables[otherSide(side())]; }
    QString posted() const // the sides listed again, in order
    {
        QString sides;
        for (const QString &each : listed)
            sides += each.front().toUpper();
        return sides;
    }
};

} // namespace

class tst_PaneRefresh : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theOperationAndTheFocusDecideWhatIsListedAndSelected_data();
    void theOperationAndTheFocusDecideWhatIsListedAndSelected();
    void aDropFromOutsideIsListedWhereItLanded();
    void aRowBeyondTheEndSelectsNone();
};

void tst_PaneRefresh::theOperationAndTheFocusDecideWhatIsListedAndSelected_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("sameFolder");
    QTest::addColumn<QString>("leftActive");
    QTest::addColumn<QString>("rightActive");
    QTest::addColumn<RowSet>("active");
    QTest::addColumn<RowSet>("other");
    const auto row = [](const char *name, Operation operation, bool same, const QString &left,
                        const QString &right, const RowSet &active, const RowSet &other) {
        QTest::newRow(name) << operation << same << left << right << active << other;
    };
    using enum Operation;
    // Kept: a copy lists only the opposite pane, though both may show what changed.
    row("copy", Copy, false, u"R"_s, u"L"_s, { 2, 3 }, { 0 });
    row("copy, same folder", Copy, true, u"R"_s, u"L"_s, { 2, 3 }, { 0 });
    // The first of the selected rows stays selected.
    row("move", Move, false, u"LR"_s, u"LR"_s, { 2 }, { 1 });
    row("delete", Delete, false, u"L"_s, u"R"_s, { 2 }, { 1 });
    row("delete, same folder", Delete, true, u"LR"_s, u"LR"_s, { 2 }, { 1 });
    row("duplicate", Duplicate, false, u"L"_s, u"R"_s, { 2 }, { 1, 4 });
    row("duplicate, same folder: active first", Duplicate, true, u"LR"_s, u"RL"_s, { 2 }, { 1 });
    // The item of the record is selected, here written as none.
    row("rename", Rename, false, u"L"_s, u"R"_s, {}, { 1, 4 });
    row("new folder, same folder", NewFolder, true, u"LR"_s, u"LR"_s, {}, { 0 });
    row("information", Info, false, u"L"_s, u"R"_s, {}, { 1, 4 });
}

void tst_PaneRefresh::theOperationAndTheFocusDecideWhatIsListedAndSelected()
{
    QFETCH(Operation, operation);
    QFETCH(bool, sameFolder);
    QFETCH(RowSet, active);
    using Focus = std::optional<Side>;
    for (const Focus focus : { Focus(Side::Left), Focus(Side::Right), Focus() }) {
        Panes panes(focus, sameFolder);
        const QString item = panes.model.folder(panes.side()) + u"/bb"_s;
        makeTree(panes.folder, u"from/bb, to/bb"_s);
        panes.operations.updateFileLists({ operation, item });
        const int row = panes.model.getRowFromValueInFileList(panes.side(), item);
        QTEST(panes.posted(), panes.side() == Side::Left ? "leftActive" : "rightActive");
        QCOMPARE(panes.active().selected, active.isEmpty() ? RowSet { row } : active);
        QTEST(panes.other().selected, "other");
        if (operation != Operation::Copy)
            QCOMPARE(panes.active().scrolledTo, panes.active().selected.first());
        QCOMPARE(panes.active().redraws, 1);
        QCOMPARE(panes.other().redraws, 1);
        QCOMPARE(panes.window.updates, 1);
    }
}

void tst_PaneRefresh::aDropFromOutsideIsListedWhereItLanded()
{
    const std::tuple<UpdateBoth, Side, QString> drops[] = {
        { UpdateBoth::DragDropFinder, Side::Left, u"RL"_s }, // on the pane with the focus
        { UpdateBoth::DragDropFinder, Side::Right, u"R"_s },
        { UpdateBoth::DragDropCopy, Side::Left, u"R"_s },
    };
    for (const auto &[update, dropped, posted] : drops) {
        Panes panes(Side::Left, false);
        panes.folder.makeFolder(u"outside"_s);
        panes.folder.write(u"outside/new"_s);
        panes.operations.copyItems({ panes.folder.path(u"outside"_s),
                                     panes.model.folder(dropped),
                                     { u"new"_s },
                                     dropped,
                                     update });
        panes.operations.drain();
        QCOMPARE(panes.posted(), posted);
        if (update == UpdateBoth::DragDropFinder)
            QVERIFY(panes.model.rows(dropped).rowOfName(u"new"_s) > 0);
    }
}

void tst_PaneRefresh::aRowBeyondTheEndSelectsNone()
{
    Panes panes(Side::Left, false);
    panes.active().selectRows({ 4 });
    QVERIFY(!FileSystem::removeTree(panes.folder.path(u"from/d"_s)));
    panes.operations.updateFileLists({ Operation::Delete });
    QCOMPARE(panes.active().rows, 4);
    QCOMPARE(panes.active().selected, RowSet {});
    QCOMPARE(panes.active().scrolledTo, 4);
}

QTEST_MAIN(tst_PaneRefresh)
#include "tst_PaneRefresh.moc"
