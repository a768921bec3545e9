#include "operations/PaneRefresh.h"

#include "model/MainModel.h"
#include "platform/FileKinds.h"
#include "platform/FileSystem.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"

#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The refresh over the real pane model, on one folder of four files or on two.
struct Panes {
    explicit Panes(Side focus, bool sameFolder = true)
    {
        for (const QString &folderName : { u"one/"_s, u"two/"_s }) {
            folder.makeFolder(folderName);
            for (const QString &name : { u"a"_s, u"b"_s, u"c"_s, u"d"_s })
                folder.write(folderName + name);
        }
        window.paths = { folder.path(u"one"_s), folder.path(sameFolder ? u"one"_s : u"two"_s) };
        window.focus = focus;
        model.setWindowController(&window);
        QObject::connect(&model, &MainModel::rowsChanged, &model, [this](Side side) {
            window.tables[side].rows = int(model.rows(side).size());
            posted += side == Side::Left ? u'L' : u'R';
        });
        for (const Side side : { Side::Left, Side::Right })
            refresh.postDirectoryChangedNotification(side, window.paths[side]);
        refresh.setMainModel(&model);
        refresh.setWindowController(&window);
        posted.clear();
    }

    void select(Side side, const RowSet &rows) { window.tables[side].selectRows(rows); }
    RowSet selected(Side side) const { return window.tables[side].selected; }

    TestFolder folder;
    MessageBus bus;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    AlertScript alerts;
    RecordedWorkspace workspace;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    PaneWindowStub window;
    PaneRefresh refresh { bus };
    QString posted; // the sides listed again, in order
};

} // namespace

class tst_PaneRefresh : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theOperationAndTheFocusDecideWhatIsListedAgain_data();
    void theOperationAndTheFocusDecideWhatIsListedAgain();
    void theFirstOfTheSelectedRowsStaysSelected_data();
    void theFirstOfTheSelectedRowsStaysSelected();
    void theItemOfTheRecordIsSelectedInTheActivePane_data();
    void theItemOfTheRecordIsSelectedInTheActivePane();
    void aRowBeyondTheEndSelectsNone();
};

void tst_PaneRefresh::theOperationAndTheFocusDecideWhatIsListedAgain_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("sameFolder");
    QTest::addColumn<QString>("leftActive");
    QTest::addColumn<QString>("rightActive");
    const auto row = [](const char *name, Operation operation, bool same, const QString &left,
                        const QString &right) {
        QTest::newRow(name) << operation << same << left << right;
    };
    // Kept: a copy lists only the opposite pane, though both may show what changed.
    row("copy", Operation::Copy, false, u"R"_s, u"L"_s);
    row("copy, same folder", Operation::Copy, true, u"R"_s, u"L"_s);
    row("move", Operation::Move, false, u"LR"_s, u"LR"_s);
    row("delete", Operation::Delete, false, u"L"_s, u"R"_s);
    row("delete, same folder", Operation::Delete, true, u"LR"_s, u"LR"_s);
    // The active pane first.
    row("duplicate", Operation::Duplicate, false, u"L"_s, u"R"_s);
    row("duplicate, same folder", Operation::Duplicate, true, u"LR"_s, u"RL"_s);
    row("rename", Operation::Rename, false, u"L"_s, u"R"_s);
    row("new folder, same folder", Operation::NewFolder, true, u"LR"_s, u"LR"_s);
    row("information", Operation::Info, false, u"L"_s, u"R"_s);
}

void tst_PaneRefresh::theOperationAndTheFocusDecideWhatIsListedAgain()
{
    QFETCH(Operation, operation);
    QFETCH(bool, sameFolder);
    for (const Side focus : { Side::Left, Side::Right }) {
        Panes panes(focus, sameFolder);
        panes.refresh.updateFileLists({ operation });
        QTEST(panes.posted, focus == Side::Left ? "leftActive" : "rightActive");
        QCOMPARE(panes.window.tables.left.redraws, 1);
        QCOMPARE(panes.window.tables.right.redraws, 1);
        QCOMPARE(panes.window.updates, 1);
    }
}

void tst_PaneRefresh::theFirstOfTheSelectedRowsStaysSelected_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::addColumn<bool>("sameFolder");
    QTest::addColumn<RowSet>("active");
    QTest::addColumn<RowSet>("other");
    QTest::newRow("move") << Operation::Move << false << RowSet { 2 } << RowSet { 1 };
    QTest::newRow("delete") << Operation::Delete << false << RowSet { 2 } << RowSet { 1 };
    QTest::newRow("duplicate") << Operation::Duplicate << true << RowSet { 2 } << RowSet { 1 };
    QTest::newRow("copy") << Operation::Copy << true << RowSet { 2, 3 } << RowSet { 0 };
}

void tst_PaneRefresh::theFirstOfTheSelectedRowsStaysSelected()
{
    QFETCH(Operation, operation);
    QFETCH(bool, sameFolder);
    for (const Side focus : { Side::Left, Side::Right }) {
        Panes panes(focus, sameFolder);
        panes.select(focus, { 2, 3 });
        panes.select(otherSide(focus), { 1, 4 });
        panes.refresh.updateFileLists({ operation });
        QTEST(panes.selected(focus), "active");
        QTEST(panes.selected(otherSide(focus)), "other");
    }
}

void tst_PaneRefresh::theItemOfTheRecordIsSelectedInTheActivePane_data()
{
    QTest::addColumn<Operation>("operation");
    QTest::newRow("new folder") << Operation::NewFolder;
    QTest::newRow("rename") << Operation::Rename;
    QTest::newRow("information") << Operation::Info;
}

void tst_PaneRefresh::theItemOfTheRecordIsSelectedInTheActivePane()
{
    QFETCH(Operation, operation);
    for (const Side focus : { Side::Left, Side::Right }) {
        Panes panes(focus);
        panes.folder.write(u"one/bb"_s);
        panes.refresh.updateFileLists({ operation, panes.folder.path(u"one/bb"_s) });
        const int row =
            panes.model.getRowFromValueInFileList(focus, panes.folder.path(u"one/bb"_s));
        QVERIFY(row > 0);
        QCOMPARE(panes.selected(focus), RowSet { row });
        QCOMPARE(panes.window.tables[focus].scrolledTo, row);
    }
}

void tst_PaneRefresh::aRowBeyondTheEndSelectsNone()
{
    Panes panes(Side::Left, false);
    panes.select(Side::Left, { 4 });
    QVERIFY(!FileSystem::removeTree(panes.folder.path(u"one/d"_s)));
    panes.refresh.updateFileLists({ Operation::Delete });
    QCOMPARE(panes.window.tables.left.rows, 4);
    QCOMPARE(panes.selected(Side::Left), RowSet {});
    QCOMPARE(panes.window.tables.left.scrolledTo, 4);
}

QTEST_MAIN(tst_PaneRefresh)
#include "tst_PaneRefresh.moc"
