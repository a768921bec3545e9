#include "window/Toolbar.h"

#include "files/DiskQuestions.h"
#include "tests/window/ToolbarWorld.h"
#include "widgets/Icons.h"
#include "window/ToolbarCustomization.h"

#include <QListView>
#include <QSet>

#include <memory>

class tst_Toolbar : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyItemHasItsOwnIdentifierAndDrawing()
    {
        QSet<QString> seen;
        const auto check = [&](const char *identifier, const char *image) {
            QVERIFY2(!seen.contains(QString::fromLatin1(identifier)), identifier);
            seen.insert(QString::fromLatin1(identifier));
            const QImage drawn = toolbarIcon(QString::fromLatin1(image)).pixmap(24).toImage();
            bool anyInk = false;
            for (int i = 0; i < drawn.width() * drawn.height(); ++i)
                anyInk |= drawn.pixelColor(i % drawn.width(), i / drawn.width()).alpha() > 200;
            QVERIFY2(anyInk, image);
        };
        for (const ToolbarItem &item : toolbarItems())
            check(item.identifier, item.image);
        for (const ToolbarGap *gap : toolbarGaps())
            check(gap->identifier, gap->image);
        const QStringList defaults = toolbarDefaultItemIdentifiers();
        for (const QString &identifier : defaults)
            QVERIFY(seen.contains(identifier));
    }

    void theBarIsAsStored_data()
    {
        QTest::addColumn<QVariant>("stored");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<bool>("iconOnly");
        const auto row = [](const char *name, const QVariant &stored, const QString &shown,
                            bool iconOnly = false) {
            QTest::newRow(name) << stored << shown << iconOnly;
        };
        const auto mode = [](const QVariant &stored) {
            return QVariantMap { { u"TB Display Mode"_s, stored } };
        };
        row("nothing", {}, Default);
        row("no dictionary", u"Copy Identifier"_s, Default);
        row("no list", QVariantMap { { u"TB Item Identifiers"_s, 7LL } }, Default);
        row("an empty list", items({}), {});
        row("no texts in the list",
            QVariantMap {
                { u"TB Item Identifiers"_s, QVariantList { 7LL, u"Move Identifier"_s, true } } },
            u"Move"_s);
        row("unknown ones", items({ u"From the future"_s, u"Move Identifier"_s }), u"Move"_s);
        row("twice", items({ u"Move Identifier"_s, u"Copy Identifier"_s, u"Move Identifier"_s }),
            u"Move Copy"_s);
        row("favourites, one gone", items({ u"b & c"_s, u"gone"_s, u"Copy Identifier"_s, u"a"_s }),
            u"b_&&_c Copy a"_s);
        row("separators with nothing to separate",
            items({ Separator, u"Copy Identifier"_s, Separator, u"gone"_s, Separator,
                    u"Move Identifier"_s, Separator }),
            u"Copy | Move"_s);
        row("spaces",
            items({ u"NSToolbarFlexibleSpaceItem"_s, u"Copy Identifier"_s, u"NSToolbarSpaceItem"_s,
                    u"NSToolbarSpaceItem"_s, u"Move Identifier"_s }),
            u"- Copy - - Move"_s);
        row("icons only", mode(2LL), Default, true);
        row("another mode", mode(77LL), Default);
        row("no number as mode", mode(u"2"_s), Default);
        row("shown by no truth", QVariantMap { { u"TB Is Shown"_s, u"NO"_s } }, Default);
    }
    void theBarIsAsStored()
    {
        QFETCH(QVariant, stored);
        QFETCH(bool, iconOnly);
        ToolbarWorld world;
        world.defaults.setValue(
            Settings::OpenWithFavoriteApplications,
            QVariantList { favorite(u"a"_s, u"/a"_s), favorite(u"b & c"_s, u"/b"_s) });
        if (stored.isValid())
            world.defaults.setValue(Settings::Toolbar, stored);
        world.start();
        QTEST(world.shown(), "shown");
        QCOMPARE(world.bar()->toolButtonStyle(),
                 iconOnly ? Qt::ToolButtonIconOnly : Qt::ToolButtonTextUnderIcon);
        QCOMPARE(world.stored(), stored); // nothing is written over it
        world.application.toolbar().setDisplay(ToolbarDisplay::IconOnly);
        QCOMPARE(world.stored().toMap().value(u"TB Item Identifiers"_s),
                 stored.toMap().value(u"TB Item Identifiers"_s));
    }

    void clicksDoWhatTheCommandsDo()
    {
        ToolbarWorld world(u"right/a.txt=a"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        world.defaults.setValue(Settings::Toolbar,
                                items({ u"Copy Identifier"_s, u"Move Identifier"_s,
                                        u"New Folder Identifier"_s, u"Rename Identifier"_s }));
        world.start();
        world.focus(Side::Right);
        for (const auto &[text, enabled] :
             { std::pair(u"Copy"_s, false), { u"Rename"_s, false }, { u"New folder"_s, true } })
            QCOMPARE(world.item(text)->isEnabled(), enabled); // on ".."
        world.select(u"a.txt"_s, Side::Right);
        QVERIFY(world.item(u"Copy"_s)->isEnabled());

        QTest::mouseClick(world.button(u"Copy"_s), Qt::LeftButton);
        world.twinleaf.drain();
        QCOMPARE(world.folder.read(u"left/a.txt"_s), "a");
        QVERIFY(world.list(Side::Right).hasFocus());

        // By keyboard: the pane stays the active one, and has the keyboard again when a button
        // acts.
        world.run(Command::ChooseInToolbar);
        QVERIFY(world.button(u"Copy"_s)->hasFocus());
        QVERIFY(world.item(u"Copy"_s)->isEnabled());
        const auto key = [](Qt::Key pressed) {
            QTest::keyClick(QApplication::focusWidget(), pressed);
        };
        key(Qt::Key_Left); // there is none
        key(Qt::Key_Right);
        QVERIFY(world.button(u"Move"_s)->hasFocus());
        key(Qt::Key_Escape);
        QVERIFY(world.list(Side::Right).hasFocus());
        world.run(Command::ChooseInToolbar);
        key(Qt::Key_End);
        world.answerSheet(u"b.txt"_s);
        key(Qt::Key_Return);
        world.twinleaf.drain();
        QCOMPARE(world.folder.names(u"right"_s), QStringList(u"b.txt"_s));
        QCOMPARE(world.window.focusWidget(), &world.list(Side::Right));
    }

    void itemsComeWithWhatIsBehindThem()
    {
        ToolbarWorld world;
        world.defaults.setValue(Settings::Toolbar,
                                items({ u"Copy Identifier"_s, Separator, u"Terminal Identifier"_s,
                                        u"Console Identifier"_s }));
        world.start();
        QCOMPARE(world.shown(), u"Copy"_s);
        world.commands.offerTool(Command::Console, {});
        QCOMPARE(world.shown(), u"Copy | Console"_s);
        world.workspace.application = u"/apps/console.desktop"_s;
        QTest::mouseClick(world.button(u"Console"_s), Qt::LeftButton);
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"open"_s, world.workspace.application, {} }));
        world.commands.offerTool(Command::Terminal, {});
        QCOMPARE(world.shown(), u"Copy | Terminal Console"_s);
    }

    // They are stored by these words, odd spellings included: one that changed would be gone from
    // the bars that people have.
    void itemsAreOfferedByTheWordsTheyAreStoredBy()
    {
        const QStringList words {
            u"Copy Identifier"_s,
            u"Move Identifier"_s,
            u"New Folder Identifier"_s,
            u"Delete Identifier"_s,
            u"Rename Identifier"_s,
            u"Image browser Identifier"_s,
            u"Intern terminal Identifier"_s,
            u"Terminal Identifier"_s,
            u"Console Identifier"_s,
            u"ActivityMonitorItemIdentifier"_s,
            u"Disk Utility Identifier"_s,
            u"Keychain accesss Identifier"_s,
            u"Network Utility Identifier"_s,
            u"NetInfo Manager Identifier"_s,
            u"System Profiler Identifier"_s,
            u"NSToolbarSeparatorItem"_s,
            u"NSToolbarSpaceItem"_s,
            u"NSToolbarFlexibleSpaceItem"_s,
            u"b"_s,
            u"a"_s,
        };
        ToolbarWorld world;
        world.defaults.setValue(
            Settings::OpenWithFavoriteApplications,
            QVariantList { favorite(u"b"_s, u"/b"_s), favorite(u"a"_s, u"/a"_s) });
        world.start();
        QCOMPARE(world.application.toolbar().toolbarAllowedItemIdentifiers(), words);
        QCOMPARE(world.application.toolbar().identifiers(),
                 words.mid(0, 5) + QStringList(Separator) + words.mid(5, 2));
    }

    void favouritesOfOneNameAreOneItem()
    {
        ToolbarWorld world(u"one/edit=, two/edit=, play="_s);
        const QVariantList both { favorite(u"edit"_s, world.folder.path(u"one/edit"_s)),
                                  favorite(u"play"_s, world.folder.path(u"play"_s)),
                                  favorite(u"edit"_s, world.folder.path(u"two/edit"_s)) };
        world.defaults.setValue(Settings::OpenWithFavoriteApplications, both);
        world.defaults.setValue(Settings::Toolbar, items({ u"edit"_s, u"play"_s }));
        world.start();
        Toolbar &toolbar = world.application.toolbar();
        QCOMPARE(toolbar.toolbarAllowedItemIdentifiers().mid(toolbarItems().size() + 3),
                 QStringList({ u"edit"_s, u"play"_s }));
        QTest::mouseClick(world.button(u"edit"_s), Qt::LeftButton);
        QCOMPARE(world.workspace.calls,
                 QList<QStringList>({ { u"launch"_s, world.folder.path(u"one/edit"_s) },
                                      { u"launch"_s, world.folder.path(u"two/edit"_s) } }));

        world.defaults.setValue(Settings::OpenWithFavoriteApplications, both.mid(0, 1));
        QCOMPARE(world.shown(), u"edit play"_s);
        toolbar.setupToolbarForWindow(world.window);
        QTRY_COMPARE(world.window.findChildren<UnifiedToolBar *>().size(), 1);
        QCOMPARE(world.shown(), u"edit"_s);
        QCOMPARE(world.storedItems(), QStringList({ u"edit"_s, u"play"_s })); // it may come back
    }

    void iconsAreMadeForWhatIsShown()
    {
        ToolbarWorld world;
        QVariantList favorites;
        for (int i = 0; i < 5000; ++i)
            favorites.append(
                favorite(u"tool %1"_s.arg(i), world.folder.path(u"left"_s) + u"/%1"_s.arg(i)));
        makeTree(world.folder, u"left/7=, left/1="_s);
        world.defaults.setValue(Settings::OpenWithFavoriteApplications, favorites);
        world.defaults.setValue(Settings::Toolbar, items({ u"tool 7"_s, u"tool 8"_s }));
        world.start();
        // The other one is not there.
        QTRY_COMPARE(world.workspace.iconLoads, QStringList(world.folder.path(u"left/7"_s)));

        ToolbarCustomization sheet(world.application.toolbar(), &world.window);
        auto *palette = sheet.findChild<QListView *>();
        QCOMPARE(palette->model()->rowCount(), 7 + 3 + 4998);
        sheet.show();
        QTRY_VERIFY(world.workspace.iconLoads.contains(world.folder.path(u"left/1"_s)));
    }

    void aLongMenuAsksForWhatIsOnTheScreen()
    {
        ToolbarWorld world;
        QVariantList favorites;
        for (int i = 0; i < 5000; ++i) {
            const QString path =
                world.folder.path(u"left"_s) + u"/./"_s.repeated(i % 50) + QString(i / 50, u'/');
            favorites.append(favorite(u"tool %1"_s.arg(i), path));
        }
        world.defaults.setValue(Settings::OpenWithFavoriteApplications, favorites);
        world.start();
        QMenu &menu = world.application.menus().openWithMenu();
        QCOMPARE(menu.actions().size(), 5000 + 2);
        QVERIFY(world.workspace.iconLoads.isEmpty());
        menu.popup({});
        QTRY_VERIFY(!world.workspace.iconLoads.isEmpty());
        QTRY_VERIFY(!DiskQuestions::anyUnderWay());
        QCoreApplication::processEvents();
        QVERIFY2(world.workspace.iconLoads.size() < 500, // of an offscreen screen
                 qPrintable(QString::number(world.workspace.iconLoads.size())));
        menu.close();
    }

    void aHiddenBarIsNotThere()
    {
        for (const QVariant &isShown : { QVariant(false), QVariant(true), QVariant(0LL) }) {
            const bool shown = isShown.toBool();
            ToolbarWorld world(u"left/app="_s);
            world.defaults.setValue(
                Settings::Toolbar,
                QVariantMap { { u"TB Is Shown"_s, isShown }, { u"Other"_s, 5LL } });
            world.start();
            for (const bool now : { shown, !shown, shown }) {
                QTRY_COMPARE(world.window.findChildren<UnifiedToolBar *>().size(), now ? 1 : 0);
                QCOMPARE(world.commands.action(Command::ChooseInToolbar)->isVisible(), now);
                QCOMPARE(world.commands.action(Command::ShowToolbar)->text(),
                         now ? u"Hide toolbar"_s : u"Show toolbar"_s);
                const QVariantMap stored = world.stored().toMap();
                QCOMPARE(stored.value(u"TB Is Shown"_s).toBool(), now);
                QCOMPARE(stored.value(u"Other"_s), QVariant(5LL));
                world.run(Command::ShowToolbar);
            }
        }
    }

    void whatFindsNoRoomIsBehindAButton()
    {
        ToolbarWorld world;
        QStringList all;
        for (const ToolbarItem &item : toolbarItems())
            all.append(QString::fromLatin1(item.identifier));
        for (const ToolbarItem &item : toolbarItems())
            world.commands.setRunner(item.command, [] {});
        world.start();
        const int least = world.window.minimumWidth();
        world.application.toolbar().setIdentifiers(all);
        QCOMPARE(world.window.minimumWidth(), least);
        world.window.resize(world.window.minimumSize());
        QTRY_COMPARE(world.window.width(), least);
        auto *more = world.bar()->findChild<QToolButton *>(u"qt_toolbar_ext_button"_s);
        QTRY_VERIFY(more->isVisible());
        QCOMPARE(more->accessibleName(), u"More items"_s);
        world.run(Command::ChooseInToolbar);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_End);
        QVERIFY(more->hasFocus());
        const auto inMenu = more->menu()->actions();
        QVERIFY(inMenu.contains(world.item(u"System Profiler"_s)));
        QVERIFY(!inMenu.contains(world.item(u"Copy"_s)));
    }
};

QTEST_MAIN(tst_Toolbar)
#include "tst_Toolbar.moc"
