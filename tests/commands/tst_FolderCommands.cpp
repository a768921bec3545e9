#include "commands/FolderCommands.h"

#include "tests/support/World.h"
#include "widgets/ActivitySpinner.h"

#include <QClipboard>
#include <QMimeData>

class tst_FolderCommands : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLeftPaneGoesToTheVolumesWhileItIsActive()
    {
        const struct {
            Side menu, focus, gone;
        } cases[] = { { Side::Left, Side::Right, Side::Left },
                      { Side::Right, Side::Right, Side::Right },
                      { Side::Right, Side::Left, Side::Left } };
        for (const auto &[menu, focus, gone] : cases) {
            StartedWorld world;
            const QString other = world.shown(otherSide(gone));
            world.focus(focus);
            world.run(Command::Volumes, menu);
            QCOMPARE(world.shown(gone),
                     *world.twinleaf.nearestFolder(world.workspace.volumesFolder()));
            QCOMPARE(world.shown(otherSide(gone)), other);
        }
    }

    void aPaneGoesToAnotherFolderThatIsOneOrToTheOtherPanes()
    {
        StartedWorld world(u"there/"_s);
        const QString left = world.shown();
        const QString there = world.folder.path(u"there"_s);
        const auto choose = [&](Side menu, const QString &typed) {
            world.answerSheet(typed);
            world.run(Command::OtherFolder, menu);
            return world.shown(menu);
        };
        QCOMPARE(choose(Side::Right, {}), world.folder.path(u"right"_s));
        QCOMPARE(
            world.prompts,
            QStringList { u"Please enter full path to folder:|"_s + world.shown(Side::Right) });
        QCOMPARE(choose(Side::Right, there), there);
        QCOMPARE(choose(Side::Left, there + u"//"_s), there);
        world.show(Side::Left, u"left"_s);
        world.run(Command::FolderOfOtherPane, Side::Right);
        QCOMPARE(world.shown(Side::Right), left);
        QCOMPARE(world.shown(), left);
        // A path that is not whole would be looked for where the program was started.
        const QString gone = world.folder.path(u"not/there"_s);
        const std::pair<QString, QString> refused[] = {
            { gone, gone + u"\nNo such file or directory"_s },
            { u"."_s, u".\nNo such file or directory"_s },
            { u"/dev/null"_s, u"/dev/null\nIt is no folder."_s },
        };
        for (const auto &[typed, details] : refused) {
            world.alerts.answer(Alert::Ok);
            QCOMPARE(choose(Side::Left, typed), left);
            QCOMPARE(world.alerts.last().text, u"Folder does not exists!"_s);
            QCOMPARE(world.alerts.last().details, details);
        }
    }

    void aPathIsCopiedAsItIsOrAsShown()
    {
        const QString odd = QString(QChar(0xDCFF));
        StartedWorld world(u"left/"_s + odd + u'/');
        world.show(Side::Left, u"left/"_s + odd);
        const auto copied = [&](Command command) {
            world.run(command);
            return QGuiApplication::clipboard()->mimeData()->data(u"text/plain"_s);
        };
        const QString path = world.folder.path(u"left/"_s + odd);
        const QByteArray plain = copied(Command::CopyPath);
        const QByteArray localized = copied(Command::CopyLocalizedPath);
        QCOMPARE(plain, FileName::toBytes(path));
        QCOMPARE(localized, FileName::toBytes(world.twinleaf.getLocalizedPath(path)));
        QVERIFY(localized != plain);
    }

    void aBookmarkIsNamedByItsFolder()
    {
        StartedWorld world(u"left/a&b/, left/file=a"_s);
        BookmarkStore &store = world.application.bookmarkStore();
        QMenu &menu = world.application.menus().bookmarksMenu();
        world.select(u"file"_s);
        QVERIFY(!world.isEnabled(Command::AddBookmark));
        world.closeMenus();
        world.run(Command::AddBookmark); // no folder: nothing is asked
        world.select(u"a&b"_s);
        QVERIFY(world.isEnabled(Command::AddBookmark));
        world.answerSheet({});
        world.run(Command::AddBookmark);
        QVERIFY(store.getBookmarksFromUserDefaults().isEmpty());
        // Kept: what was typed only confirms.
        world.answerSheet(u"anything"_s);
        world.run(Command::AddBookmark);
        const QString path = world.folder.path(u"left/a&b"_s);
        QCOMPARE(store.getBookmarksFromUserDefaults().value(0).localizedPath,
                 world.twinleaf.getLocalizedPath(path));
        QAction *item = menu.actions().last();
        QVERIFY(item->text().endsWith(u"a&&b"_s));
        item->trigger();
        QCOMPARE(world.shown(), path);
    }

    void theLastBookmarkOfATitleIsGoneTo()
    {
        World world(u"first/, last/"_s);
        QVariantList records;
        const auto bookmark = [&](const QString &title, const QString &name) {
            records.append(QVariantMap { { u"LocalizedPath"_s, title },
                                         { u"RealPath"_s, world.folder.path(name) } });
        };
        bookmark(u"title"_s, u"first"_s);
        bookmark(u"title"_s, u"last"_s);
        bookmark(u"gone"_s, u"gone"_s);
        world.folder.link(u"nothing"_s, u"gone"_s); // leads nowhere
        world.defaults.setValue(Settings::Bookmarks, records);
        world.start();
        const auto items = world.application.menus().bookmarksMenu().actions().last(3);
        items[0]->trigger();
        QCOMPARE(world.shown(), world.folder.path(u"last"_s));
        world.alerts.answer(Alert::Ok);
        items[2]->trigger();
        QCOMPARE(world.alerts.last().text, u"Folder doesn't exists or it's not a folder!"_s);
    }

    void filesOpenWithTheChosenApplication()
    {
        World world(u"left/file=a"_s);
        world.application.bookmarkStore().addFavoriteApplicationsEntry(u"/apps/a.desktop"_s,
                                                                       u"a"_s);
        world.start();
        world.select(u"file"_s);
        const auto items = world.application.menus().openWithMenu().actions();
        items.last()->trigger(); // nothing chosen
        QVERIFY(world.workspace.calls.isEmpty());
        world.openPanel.application = u"/apps/a.desktop"_s;
        items.last()->trigger();
        items.first()->trigger();
        const QStringList opened { u"open"_s, world.folder.path(u"left/file"_s),
                                   u"/apps/a.desktop"_s };
        QCOMPARE(world.workspace.calls, QList({ opened, opened }));
    }

    void applicationsForTheTypeComeFirst()
    {
        World world(u"left/a=a, left/b=b"_s);
        world.application.bookmarkStore().addFavoriteApplicationsEntry(u"/apps/f.desktop"_s,
                                                                       u"f"_s);
        world.workspace.applications = { .all = { { u"/apps/1.desktop"_s, u"One"_s },
                                                  { u"/apps/2.desktop"_s, u"Two & a half"_s } },
                                         .standard = u"/apps/1.desktop"_s,
                                         .type = u"text/plain"_s,
                                         .kind = u"plain text"_s };
        world.start();
        QMenu &menu = world.application.menus().openWithMenu();
        const auto texts = [&] {
            QStringList all;
            for (const QAction *item : menu.actions())
                all.append(item->isSeparator() ? u"-"_s : item->text());
            return all.join(u' ').remove(u'&');
        };
        const auto open = [&] { Q_EMIT world.application.menus().popUpMenu().aboutToShow(); };
        const QString own = u"f.desktop - Other..."_s;
        world.select(u"a"_s);
        open();
        QCOMPARE(texts(), own); // at first
        const QString both = u"One (default) Two  a half"_s;
        QTRY_COMPARE(texts(), both + u" Always open with - "_s + own);
        menu.actions().at(1)->trigger();
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"open"_s, world.folder.path(u"left/a"_s), u"/apps/2.desktop"_s }));
        const auto choice = menu.actions().at(2)->menu()->actions();
        QVERIFY(choice.at(0)->isChecked() && !choice.at(1)->isChecked());
        for (const auto answer : { Alert::No, Alert::Yes }) {
            world.workspace.calls.clear();
            world.alerts.answer(answer);
            choice.at(1)->trigger();
            QCOMPARE(world.alerts.last().text,
                     u"Always open files of the type 'plain text' with 'Two & a half'?"_s);
            QCOMPARE(world.workspace.calls.size(), answer == Alert::Yes);
        }
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"default"_s, u"/apps/2.desktop"_s, u"text/plain"_s }));
        world.workspace.succeeds = false;
        world.alerts.answer({ Alert::Yes, Alert::Ok });
        choice.at(0)->trigger();
        QCOMPARE(world.alerts.last().details, u"Read-only file system"_s);
        // Files of several types have no default; what comes into the open menu moves nothing.
        world.run(Command::SelectAll);
        open();
        QCOMPARE(texts(), own);
        menu.popup({});
        QTRY_COMPARE(texts(), own + u" - "_s + both);
        menu.close();
        // A long list is cut, and what has come for other files is not shown.
        world.workspace.applications.all.resize(1000);
        open();
        world.list().selectRow(0);
        open();
        QTRY_VERIFY(!DiskQuestions::anyUnderWay());
        QCoreApplication::processEvents();
        QCOMPARE(texts(), own);
        world.run(Command::SelectAll);
        open();
        QTRY_COMPARE(menu.actions().size(), 10 + 1 + 3);
    }

    void aTerminalStartsInThePanesFolder()
    {
        World world;
        world.workspace.application = u"/usr/bin/terminal"_s;
        world.start();
        QTRY_VERIFY(world.commands.action(Command::TerminalHere)->isVisible());
        world.focus(Side::Right);
        world.run(Command::TerminalHere);
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"terminal"_s, world.shown(Side::Right) }));
        world.workspace.succeeds = false;
        world.alerts.answer(Alert::Ok);
        world.run(Command::TerminalHere);
        QCOMPARE(world.alerts.last().text, u"Cannot open a terminal in this folder!"_s);
        QVERIFY(world.alerts.last().details.endsWith(u"Permission denied"));
    }

    void packagesAreEnteredAndVolumesEjected()
    {
        StartedWorld world(u"left/bundle.app/, left/stick/"_s);
        world.select(u"stick"_s);
        world.run(Command::Eject);
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"eject"_s, world.folder.path(u"left/stick"_s) }));
        world.workspace.succeeds = false;
        world.alerts.answer(Alert::Ok);
        world.run(Command::Eject);
        QCOMPARE(world.alerts.last().text, u"'stick' could not be ejected!"_s);
        QCOMPARE(world.alerts.last().details, u"The target is busy."_s);
        world.workspace.whileEjecting = [&] {
            QVERIFY(world.window.progressIndicator->isSpinning());
            world.run(Command::Eject); // again, while it goes on
        };
        world.workspace.succeeds = true;
        world.workspace.calls.clear();
        world.run(Command::Eject);
        QCOMPARE(world.workspace.calls.size(), 1);
        QVERIFY(!world.window.progressIndicator->isSpinning());

        world.select(u"bundle.app"_s);
        world.run(Command::PackageContent);
        QVERIFY(world.model.insideBundle());
        QCOMPARE(world.shown(), world.folder.path(u"left/bundle.app"_s));
    }
};

QTEST_MAIN(tst_FolderCommands)
#include "tst_FolderCommands.moc"
