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
        for (const Side each : { Side::Left, Side::Right })
            window.tables[each].column = Column::Name;
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
        using Focus = std::optional<Side>;
        for (const auto &[name, operation, sameFolder, left, right, active, other] : cases) {
            for (const Focus focus : { Focus(Side::Left), Focus(Side::Right), Focus() }) {
                Panes panes(focus, sameFolder);
                const QString item = panes.model.folder(panes.side()) + u"/bb"_s;
                makeTree(panes.folder, u"from/bb, to/bb"_s);
                panes.operations.updateFileLists({ operation, item });
                const int row = panes.model.getRowFromValueInFileList(panes.side(), item);
                QVERIFY2(panes.posted() == (panes.side() == Side::Left ? left : right), name);
                QVERIFY2(panes.active().selected == (active.isEmpty() ? RowSet { row } : active),
                         name);
                QVERIFY2(panes.other().selected == other, name);
                if (operation != Copy)
                    QCOMPARE(panes.active().scrolledTo, panes.active().selected.first());
                QCOMPARE(panes.active().redraws, 1);
                QCOMPARE(panes.other().redraws, 1);
                QCOMPARE(panes.window.updates, 1);
            }
        }
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

    void aRowBeyondTheEndSelectsNone()
    {
        Panes panes(Side::Left, false);
        panes.active().selectRows({ 4 });
        QVERIFY(!FileSystem::removeTree(panes.folder.path(u"from/d"_s)));
        panes.operations.updateFileLists({ Operation::Delete });
        QCOMPARE(panes.active().rows, 4);
        QCOMPARE(panes.active().selected, RowSet {});
        QCOMPARE(panes.active().scrolledTo, 4);
    }
};

QTEST_MAIN(tst_PaneRefresh)
#include "tst_PaneRefresh.moc"
