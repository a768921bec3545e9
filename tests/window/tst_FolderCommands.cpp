#include "window/FolderCommands.h"

#include "model/MainModel.h"
#include "model/OperationDesk.h"
#include "platform/FileKinds.h"
#include "platform/FileName.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/PaneWindowStub.h"
#include "tests/support/RecordedDesk.h"
#include "tests/support/RecordedOpenPanel.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/FileQueries.h"
#include "util/Launching.h"
#include "util/SettingsKeys.h"
#include "window/BookmarksMenu.h"
#include "window/OpenWithMenu.h"
#include "window/PaneCommands.h"
#include "window/PathNavigators.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The commands over the pane model, in a window without widgets but for the menus.
struct World {
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    MessageBus bus;
    AlertScript alerts;
    RecordedWorkspace workspace;
    RecordedOpenPanel openPanel;
    RecordedDesk desk;
    FileKinds kinds;
    FileQueries queries { workspace, kinds };
    Launching launching { workspace, alerts };
    PaneWindowStub window;
    MainModel model { bus, defaults, alerts, queries, launching, kinds };
    SegmentedControl left;
    SegmentedControl right;
    PathNavigators navigators { left, right, bus, model, queries, defaults };
    BookmarkStore store { defaults };
    PaneCommands panes { window, bus, model, desk, queries, openPanel, alerts };
    FolderCommands folders { window, navigators, bus, queries, workspace, alerts };
    QMenu menu;
    BookmarksMenu bookmarks { menu, store, panes, window, bus, queries, alerts };
    OpenWithMenu openWith { menu, store, panes, workspace };

    World()
    {
        model.setWindowController(&window);
        model.setTwinleaf(&desk);
        for (const Side side : { Side::Left, Side::Right })
            show(side, folder.path());
    }
    void show(Side side, const QString &path)
    {
        window.paths[side] = path;
        bus.post(DirectoryChanged[side], { .path = path });
        window.tables[side].rows = int(model.rows(side).size());
    }
    void select(Side side, const QString &name)
    {
        window.focus = side;
        window.tables[side].selectRow(int(model.rows(side).rowOfName(name)));
    }
    QString shown(Side side) const { return model.rows(side).folder(); }
};

} // namespace

class tst_FolderCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLeftPaneGoesToTheVolumesWhileItIsActive_data();
    void theLeftPaneGoesToTheVolumesWhileItIsActive();
    void anotherFolderMustBeOne();
    void aPathIsCopiedAsItIsOrAsShown();
    void aBookmarkIsNamedByItsFolder();
    void theLastBookmarkOfATitleIsGoneTo();
    void filesOpenWithTheChosenApplication();
    void aPackageIsEntered();
    void anEjectionThatFailsIsTold();
};

void tst_FolderCommands::theLeftPaneGoesToTheVolumesWhileItIsActive_data()
{
    QTest::addColumn<Side>("menu");
    QTest::addColumn<Side>("focus");
    QTest::addColumn<Side>("gone");
    QTest::newRow("left menu") << Side::Left << Side::Right << Side::Left;
    QTest::newRow("right menu") << Side::Right << Side::Right << Side::Right;
    QTest::newRow("right menu, left pane active") << Side::Right << Side::Left << Side::Left;
}

void tst_FolderCommands::theLeftPaneGoesToTheVolumesWhileItIsActive()
{
    QFETCH(Side, menu);
    QFETCH(Side, focus);
    QFETCH(Side, gone);
    World world;
    world.window.focus = focus;
    world.folders.volumesClicked(menu);
    QCOMPARE(world.shown(gone), world.workspace.volumesFolder());
    QCOMPARE(world.shown(otherSide(gone)), world.folder.path());
}

void tst_FolderCommands::anotherFolderMustBeOne()
{
    World world;
    world.folder.makeFolder(u"there"_s);
    world.folders.otherFolderClicked(Side::Right); // cancelled
    QCOMPARE(world.window.prompts,
             QStringList { u"Please enter full path to folder:|"_s + world.folder.path() });
    world.window.typed = world.folder.path(u"there"_s);
    world.folders.otherFolderClicked(Side::Right);
    QCOMPARE(world.shown(Side::Right), world.window.typed);
    world.window.typed = u"/not/there"_s;
    world.alerts.answer(Alert::Ok);
    world.folders.otherFolderClicked(Side::Left);
    QCOMPARE(world.alerts.shown().last().text, u"Folder does not exists!"_s);
    QCOMPARE(world.shown(Side::Left), world.folder.path());
}

void tst_FolderCommands::aPathIsCopiedAsItIsOrAsShown()
{
    World world;
    const QString odd = world.folder.path(QString(QChar(0xDCFF)));
    world.window.paths.left = odd;
    const auto copied = [] {
        return QGuiApplication::clipboard()->mimeData()->data(u"text/plain"_s);
    };
    world.folders.copyPathClicked(Side::Left, FolderCommands::PathForm::Plain);
    QCOMPARE(copied(), FileName::toBytes(odd));
    world.folders.copyPathClicked(Side::Left, FolderCommands::PathForm::Localized);
    QCOMPARE(copied(), FileName::toBytes(world.queries.getLocalizedPath(odd)));
    QVERIFY(copied() != FileName::toBytes(odd));
}

void tst_FolderCommands::aBookmarkIsNamedByItsFolder()
{
    World world;
    world.folder.makeFolder(u"a&b"_s);
    world.folder.write(u"file"_s);
    world.show(Side::Left, world.folder.path());
    world.window.typed = u"anything"_s;
    world.select(Side::Left, u"file"_s);
    world.bookmarks.addBookmark(); // no folder
    world.window.typed.clear();
    world.select(Side::Left, u"a&b"_s);
    world.bookmarks.addBookmark(); // cancelled
    QVERIFY(world.store.getBookmarksFromUserDefaults().isEmpty());
    // Kept: what was typed only confirms.
    world.window.typed = u"anything"_s;
    world.bookmarks.addBookmark();
    const QString path = world.folder.path(u"a&b"_s);
    QCOMPARE(world.store.getBookmarksFromUserDefaults().value(0).localizedPath,
             world.queries.getLocalizedPath(path));
    QVERIFY(world.menu.actions().last()->text().endsWith(u"a&&b"_s));
    world.menu.actions().last()->trigger();
    QCOMPARE(world.shown(Side::Left), path);
}

void tst_FolderCommands::theLastBookmarkOfATitleIsGoneTo()
{
    World world;
    world.folder.makeFolder(u"first"_s);
    world.folder.makeFolder(u"last"_s);
    QVariantList records;
    for (const QString &name : { u"first"_s, u"last"_s })
        records.append(QVariantMap { { u"LocalizedPath"_s, u"title"_s },
                                     { u"RealPath"_s, world.folder.path(name) } });
    world.defaults.setValue(Settings::Bookmarks, records);
    world.bookmarks.clickedBookmark(u"title"_s);
    QCOMPARE(world.shown(Side::Left), world.folder.path(u"last"_s));
    world.alerts.answer(Alert::Ok);
    world.bookmarks.clickedBookmark(u"gone"_s);
    QCOMPARE(world.alerts.shown().last().text, u"Folder doesn't exists or it's not a folder!"_s);
}

void tst_FolderCommands::filesOpenWithTheChosenApplication()
{
    World world;
    world.folder.write(u"file"_s);
    world.show(Side::Left, world.folder.path());
    world.select(Side::Left, u"file"_s);
    world.panes.openWithClicked(); // nothing chosen
    QVERIFY(world.workspace.calls.isEmpty());
    world.openPanel.application = u"/apps/a.desktop"_s;
    world.panes.openWithClicked();
    const QStringList opened { u"open"_s, world.folder.path(u"file"_s), u"/apps/a.desktop"_s };
    QCOMPARE(world.workspace.calls.value(0), opened);
    world.store.addFavoriteApplicationsEntry(u"/apps/a.desktop"_s, u"a"_s);
    world.openWith.setOpenWithFavoriteApplications();
    world.menu.actions().first()->trigger();
    QCOMPARE(world.workspace.calls.value(1), opened);
}

void tst_FolderCommands::aPackageIsEntered()
{
    World world;
    world.folder.makeFolder(u"bundle.app"_s);
    world.show(Side::Left, world.folder.path());
    world.select(Side::Left, u"bundle.app"_s);
    world.panes.packageContentClicked();
    QVERIFY(world.model.insideBundle());
    QCOMPARE(world.shown(Side::Left), world.folder.path(u"bundle.app"_s));
}

void tst_FolderCommands::anEjectionThatFailsIsTold()
{
    World world;
    world.folder.makeFolder(u"stick"_s);
    world.show(Side::Left, world.folder.path());
    world.select(Side::Left, u"stick"_s);
    world.panes.ejectClicked();
    QCOMPARE(world.workspace.calls.value(0),
             QStringList({ u"eject"_s, world.folder.path(u"stick"_s) }));
    world.workspace.succeeds = false;
    world.alerts.answer(Alert::Ok);
    world.panes.ejectClicked();
    QCOMPARE(world.alerts.shown().last().text, u"'stick' could not be ejected!"_s);
}

QTEST_MAIN(tst_FolderCommands)
#include "tst_FolderCommands.moc"
