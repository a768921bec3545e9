#include "commands/FolderCommands.h"

#include "commands/PaneCommands.h"
#include "files/FileName.h"
#include "tests/support/PaneWorld.h"
#include "tests/support/RecordedOpenPanel.h"
#include "window/BookmarksMenu.h"
#include "window/OpenWithMenu.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QMimeData>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

// The commands, in a window without widgets but for the menus; both panes show one folder.
struct World : PaneWorld {
    RecordedOpenPanel openPanel;
    BookmarkStore store { defaults };
    PaneCommands panes { window, bus, model, desk, queries, openPanel, alerts };
    FolderCommands folders { window, bus, queries, workspace, alerts };
    QMenu menu;
    BookmarksMenu bookmarks { menu, store, panes, window, bus, queries, alerts };
    OpenWithMenu openWith { menu, store, panes, workspace };

    World(const QStringList &folderNames = {}, const QStringList &fileNames = {})
    {
        for (const QString &name : folderNames)
            folder.makeFolder(name);
        for (const QString &name : fileNames)
            folder.write(name);
        for (const Side side : { Side::Left, Side::Right })
            show(side);
    }
    void select(const QString &name) { window.tables.left.selectRow(row(name)); }
};

} // namespace

class tst_FolderCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLeftPaneGoesToTheVolumesWhileItIsActive();
    void theOtherPanesFolder();
    void anotherFolderMustBeOne();
    void aPathIsCopiedAsItIsOrAsShown();
    void aBookmarkIsNamedByItsFolder();
    void theLastBookmarkOfATitleIsGoneTo();
    void filesOpenWithTheChosenApplication();
    void packagesAreEnteredAndVolumesEjected();
};

void tst_FolderCommands::theLeftPaneGoesToTheVolumesWhileItIsActive()
{
    const struct {
        Side menu, focus, gone;
    } cases[] = { { Side::Left, Side::Right, Side::Left },
                  { Side::Right, Side::Right, Side::Right },
                  { Side::Right, Side::Left, Side::Left } };
    for (const auto &[menu, focus, gone] : cases) {
        World world;
        world.window.focus = focus;
        world.folders.volumesClicked(menu);
        QCOMPARE(world.shown(gone), world.workspace.volumesFolder());
        QCOMPARE(world.shown(otherSide(gone)), world.folder.path());
    }
}

void tst_FolderCommands::theOtherPanesFolder()
{
    World world({ u"A"_s, u"B"_s });
    world.show(Side::Left, u"A"_s);
    world.show(Side::Right, u"B"_s);
    world.folders.useOpositePath(Side::Right);
    for (const Side side : { Side::Left, Side::Right })
        QCOMPARE(world.shown(side), world.folder.path(u"A"_s));
}

void tst_FolderCommands::anotherFolderMustBeOne()
{
    World world({ u"there"_s });
    world.folders.otherFolderClicked(Side::Right); // cancelled
    QCOMPARE(world.window.prompts,
             QStringList { u"Please enter full path to folder:|"_s + world.folder.path() });
    world.window.typed = world.folder.path(u"there"_s);
    world.folders.otherFolderClicked(Side::Right);
    QCOMPARE(world.shown(Side::Right), world.window.typed);
    world.window.typed += u"//"_s;
    world.folders.otherFolderClicked(Side::Left);
    QCOMPARE(world.shown(Side::Left), world.folder.path(u"there"_s));
    // A path that is not whole would be looked for where the program was started.
    for (const QString &typed : { u"/not/there"_s, u"."_s }) {
        world.window.typed = typed;
        world.alerts.answer(Alert::Ok);
        world.folders.otherFolderClicked(Side::Left);
        QCOMPARE(world.alerts.shown().last().text, u"Folder does not exists!"_s);
        QCOMPARE(world.shown(Side::Left), world.folder.path(u"there"_s));
    }
}

void tst_FolderCommands::aPathIsCopiedAsItIsOrAsShown()
{
    World world;
    const QString odd = world.folder.path(QString(QChar(0xDCFF)));
    world.window.paths.left = odd;
    const auto copied = [&](FolderCommands::PathForm form) {
        world.folders.copyPathClicked(Side::Left, form);
        return QGuiApplication::clipboard()->mimeData()->data(u"text/plain"_s);
    };
    const QByteArray plain = copied(FolderCommands::PathForm::Plain);
    const QByteArray localized = copied(FolderCommands::PathForm::Localized);
    QCOMPARE(plain, FileName::toBytes(odd));
    QCOMPARE(localized, FileName::toBytes(world.queries.getLocalizedPath(odd)));
    QVERIFY(localized != plain);
}

void tst_FolderCommands::aBookmarkIsNamedByItsFolder()
{
    World world({ u"a&b"_s }, { u"file"_s });
    world.window.typed = u"anything"_s;
    world.select(u"file"_s);
    world.bookmarks.addBookmark(); // no folder
    world.bookmarks.setBookmarksMenu();
    const auto offered = [&] {
        Q_EMIT world.menu.aboutToShow();
        const bool enabled = world.menu.actions().first()->isEnabled();
        Q_EMIT world.menu.aboutToHide();
        // With the menu closed its key goes on working.
        return enabled && world.menu.actions().first()->isEnabled();
    };
    QVERIFY(!offered());
    world.window.typed.clear();
    world.select(u"a&b"_s);
    QVERIFY(offered());
    world.bookmarks.addBookmark(); // cancelled
    QVERIFY(world.store.getBookmarksFromUserDefaults().isEmpty());
    // Kept: what was typed only confirms.
    world.window.typed = u"anything"_s;
    world.bookmarks.addBookmark();
    const QString path = world.folder.path(u"a&b"_s);
    QCOMPARE(world.store.getBookmarksFromUserDefaults().value(0).localizedPath,
             world.queries.getLocalizedPath(path));
    QAction *item = world.menu.actions().last();
    QVERIFY(item->text().endsWith(u"a&&b"_s));
    item->trigger();
    QCOMPARE(world.shown(), path);
}

void tst_FolderCommands::theLastBookmarkOfATitleIsGoneTo()
{
    World world({ u"first"_s, u"last"_s });
    QVariantList records;
    for (const QString &name : { u"first"_s, u"last"_s })
        records.append(QVariantMap { { u"LocalizedPath"_s, u"title"_s },
                                     { u"RealPath"_s, world.folder.path(name) } });
    world.defaults.setValue(Settings::Bookmarks, records);
    world.bookmarks.clickedBookmark(u"title"_s);
    QCOMPARE(world.shown(), world.folder.path(u"last"_s));
    world.alerts.answer(Alert::Ok);
    world.bookmarks.clickedBookmark(u"gone"_s);
    QCOMPARE(world.alerts.shown().last().text, u"Folder doesn't exists or it's not a folder!"_s);
}

void tst_FolderCommands::filesOpenWithTheChosenApplication()
{
    World world({}, { u"file"_s });
    world.select(u"file"_s);
    world.panes.openWithClicked(); // nothing chosen
    QVERIFY(world.workspace.calls.isEmpty());
    world.openPanel.application = u"/apps/a.desktop"_s;
    world.panes.openWithClicked();
    world.store.addFavoriteApplicationsEntry(u"/apps/a.desktop"_s, u"a"_s);
    world.openWith.setOpenWithFavoriteApplications();
    world.menu.actions().first()->trigger();
    const QStringList opened { u"open"_s, world.folder.path(u"file"_s), u"/apps/a.desktop"_s };
    QCOMPARE(world.workspace.calls, QList({ opened, opened }));
}

void tst_FolderCommands::packagesAreEnteredAndVolumesEjected()
{
    World world({ u"bundle.app"_s, u"stick"_s });
    const QString stick = world.folder.path(u"stick"_s);
    world.select(u"stick"_s);
    world.panes.ejectClicked();
    QCOMPARE(world.workspace.calls.value(0), QStringList({ u"eject"_s, stick }));
    world.workspace.succeeds = false;
    world.alerts.answer(Alert::Ok);
    world.panes.ejectClicked();
    QCOMPARE(world.alerts.shown().last().text, u"'stick' could not be ejected!"_s);
    world.workspace.whileEjecting = [&] {
        QCOMPARE(world.window.spinners, 1);
        world.panes.ejectClicked(); // again, while it goes on
    };
    world.workspace.succeeds = true;
    world.workspace.calls.clear();
    world.panes.ejectClicked();
    QCOMPARE(world.workspace.calls.size(), 1);
    QCOMPARE(world.window.spinners, 0);

    world.select(u"bundle.app"_s);
    world.panes.packageContentClicked();
    QVERIFY(world.model.insideBundle());
    QCOMPARE(world.shown(), world.folder.path(u"bundle.app"_s));
}

QTEST_MAIN(tst_FolderCommands)
#include "tst_FolderCommands.moc"
