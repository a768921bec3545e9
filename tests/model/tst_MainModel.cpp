#include "tests/support/World.h"

namespace {

constexpr auto Tree = "left/sub/deep/, left/Program.app/Contents/, left/Program.app/In.app/, "
                      "left/Setup.pkg/, left/a=a, left/b=b, left/c=c, left/to sub->sub";

struct Panes : StartedWorld {
    explicit Panes(const QString &words = {})
        : StartedWorld(QString::fromLatin1(Tree) + words)
    {
    }
    // The way that the navigator shows stays longer than the path.
    void showOnTheWayTo(Side side, const QString &way)
    {
        show(side, u"left"_s + way);
        for (QString path = way; !path.isEmpty(); path = path.section(u'/', 0, -2))
            show(side, u"left"_s + path.section(u'/', 0, -2), u".."_s);
    }
    int remembered(const QString &name, Side side = Side::Left)
    {
        return model.selectedItems(side).row(folder.path(name));
    }
};

} // namespace

class tst_MainModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void foldersOfTheStart()
    {
        World world(u"left/a=a, left/b=b"_s);
        world.model.setStartFolder(Side::Right, { world.folder.path(u"left"_s), u"b"_s });
        world.model.setStartFolder(Side::Left, { world.folder.path(u"right"_s), u"not there"_s });
        world.start();
        QCOMPARE(world.shown(), world.folder.path(u"right"_s));
        QCOMPARE(world.selected(), u".."_s);
        QCOMPARE(world.selected(Side::Right), u"b"_s);

        World nothingStored;
        nothingStored.defaults.remove(Settings::LeftFileListLastPath);
        nothingStored.defaults.setValue(Settings::RightFileListLastPath, QString());
        nothingStored.start();
        for (const Side side : { Side::Left, Side::Right })
            QCOMPARE(nothingStored.shown(side), PathText::homeFolder());
    }

    // By the panes and by what is asked about a path.
    void linksAreFollowedAsStored()
    {
        for (const QVariant &stored : { QVariant(), QVariant(false), QVariant(true) }) {
            World world(u"left/sub/, left/to sub->sub"_s);
            world.defaults.setValue(Settings::TraverseLinks, stored);
            world.start();
            const bool follows = stored != QVariant(false);
            QCOMPARE(world.model.rowsLeft()[world.row(u"to sub"_s)].isFolder(), follows);
            QCOMPARE(world.twinleaf.isPackage(world.folder.path(u"left/to sub"_s)), follows);
        }
    }

    void rememberedRowIsKeptOrForgotten()
    {
        const std::tuple<int, std::optional<QString>, int, RowSet> cases[] = {
            { 2, u".."_s, 2, { 2 } }, // going up
            { 99, u".."_s, 99, {} }, // beyond the end
            { 2, u"sub"_s, 2, { 2 } }, // on the way the pane shows
            { 2, u"su"_s, 2, { 2 } }, // part of a name on that way
            { 2, u"elsewhere"_s, 0, { 0 } }, // reached anew
            { 2, u""_s, 0, { 0 } }, // no name
            { 2, {}, 0, { 3, 4 } }, // a plain reload forgets it, and keeps what is selected
        };
        Panes world;
        for (const auto &[remembered, item, row, selected] : cases) {
            for (const Side side : { Side::Left, Side::Right }) {
                world.showOnTheWayTo(side, u"/sub"_s);
                world.list(side).selectRows({ 3, 4 });
                world.model.selectedItems(side).setRow(remembered, world.folder.path(u"left"_s));
                world.show(side, u"left"_s, item);
                QCOMPARE(world.list(side).selectedRows(), selected);
                QCOMPARE(world.remembered(u"left"_s, side), row);
            }
        }
    }

    void rememberedRowsSurviveTheSettings()
    {
        World world;
        SelectionMemory memory;
        const QString odd = world.folder.path(FileName::fromBytes("odd \xff"));
        memory.setRow(7, odd);
        QVariantMap stored = memory.toDictionary();
        stored.insert(u"/damaged"_s, u"no number"_s);
        world.defaults.setValue(Settings::SelectedItemsRight, stored);
        QVERIFY(world.defaults.synchronize());
        const UserDefaults again(world.defaults.filePath());
        QCOMPARE(again.dictionary(Settings::SelectedItemsRight), stored);
        world.start();
        const SelectionMemory &right = world.model.selectedItems(Side::Right);
        QCOMPARE(right.row(odd), 7);
        QVERIFY(!right.toDictionary().contains(u"/damaged"_s));
        QCOMPARE(world.model.selectedItems(Side::Left).row(odd), 0);
    }

    void openingARow()
    {
        const struct {
            QString name;
            QString shown; // the folder listed afterwards
            QString call {};
        } rows[] = {
            { u"sub"_s, u"/left/sub"_s },
            { u"to sub"_s, u"/left/sub"_s },
            { u".."_s, {} },
            { u"a"_s, u"/left"_s, u"open"_s },
            { u"Program.app"_s, u"/left"_s, u"launch"_s },
            { u"Tool.AppDir"_s, u"/left"_s, u"launch"_s },
            { u"file.app"_s, u"/left"_s, u"launch"_s },
            { u"installed.desktop"_s, u"/left"_s, u"launch"_s },
            { u"Setup.pkg"_s, u"/left"_s, u"install"_s },
            { u"Kit.framework"_s, u"/left/Kit.framework"_s },
            { u"to sub.desktop"_s, u"/left/sub"_s },
            { u"to Kit.framework.desktop"_s, u"/left"_s, u"open"_s },
            { u"to nowhere.desktop"_s, u"/left"_s, u"open"_s },
        };
        for (const auto &[name, shown, call] : rows) {
            Panes world(u", left/Tool.AppDir/, left/Kit.framework/, left/file.app, "
                        "left/installed.desktop"_s);
            const QString left = world.folder.path(u"left/"_s);
            world.workspace.installed = { left + u"installed.desktop"_s };
            for (const QString &target : { u"sub"_s, u"Kit.framework"_s, u"nowhere"_s })
                world.folder.write(u"left/to "_s + target + u".desktop"_s,
                                   "[Desktop Entry]\nType=Link\nURL=file://"
                                       + (left + target).toUtf8());
            world.show(Side::Left, u"left"_s);
            const int row = world.row(name);
            world.open(name);
            QCOMPARE(name + world.workspace.calls.value(0).value(0), name + call);
            if (!call.isEmpty())
                QCOMPARE(world.workspace.calls[0][1], left + name);
            // A link to a folder is entered by the folder's own path, or by the link's; it is that
            // folder.
            QVERIFY2(world.shown() == world.folder.path() + shown || name == u"to sub"_s,
                     qPrintable(name));
            QCOMPARE(world.row(u"deep"_s) > 0, shown == u"/left/sub"_s);
            // The row is remembered where a folder was opened.
            QCOMPARE(world.remembered(u"left"_s), name.endsWith(u"sub"_s) ? row : 0);
        }
        Panes world;
        world.open(RowSet { world.row(u"sub"_s), world.row(u"a"_s) }); // of several none is entered
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        const QList<QStringList> calls { { u"open"_s, world.shown() + u"/sub"_s, u""_s },
                                         { u"open"_s, world.shown() + u"/a"_s, u""_s } };
        QCOMPARE(world.workspace.calls, calls);
    }

    void goingUpSelectsTheFolderLeftAndEndsAtTheRoot()
    {
        Panes world;
        world.open(u"sub"_s);
        QCOMPARE(world.selected(), u".."_s);
        world.open(u".."_s);
        QCOMPARE(world.shown(), world.folder.path(u"left"_s));
        QCOMPARE(world.selected(), u"sub"_s);
        world.bus.post(DirectoryChanged.left, { .path = u"/"_s });
        world.open(u".."_s);
        QCOMPARE(world.shown(), u"/"_s);
        QVERIFY(world.model.rowsLeft().size() > 1);
    }

    void packagesAreEnteredInsideABundle()
    {
        // The way leads through one, or through none.
        for (const auto &[folder, name, inside] :
             { std::tuple(u"left/Program.app"_s, u"In.app"_s, true),
               { u"left"_s, u"Program.app"_s, false } }) {
            Panes world;
            world.show(Side::Left, folder);
            world.model.setInsideBundle(true);
            world.open(name);
            QCOMPARE(world.shown(), world.folder.path(folder + u'/' + name));
            QVERIFY(world.workspace.calls.isEmpty());
            QCOMPARE(world.model.insideBundle(), inside);
        }
    }

    void goForwardFollowsThePath()
    {
        const std::tuple<QString, QString, bool, QString> cases[] = {
            { u"/sub/deep"_s, u"/sub"_s, false, u"sub"_s },
            { {}, {}, true, u"sub"_s }, // the deepest stays
            { u"/Program.app/Contents"_s, u"/Program.app"_s, true, u"sub"_s },
            // The parent row's path is the listed folder's own: nothing is remembered.
            { u"/sub"_s, u"/sub"_s, false, u".."_s },
        };
        for (const auto &[way, shown, inside, selected] : cases) {
            Panes world;
            world.showOnTheWayTo(Side::Left, way);
            world.model.setInsideBundle(true);
            world.model.selectedItems(Side::Left).setRow(9, world.folder.path());
            const int row = world.row(selected);
            world.bus.post(GotoNextDirectory.left, { { row }, world.model.rowsLeft() });
            QCOMPARE(world.shown(), world.folder.path(u"left"_s) + shown);
            QCOMPARE(world.model.insideBundle(), inside);
            QCOMPARE(world.remembered(u"left"_s), way.isEmpty() ? 0 : row);
            QCOMPARE(world.model.selectedItems(Side::Left).row(world.folder.path()), 9);
        }
    }

    void aForeignProgramIsAskedAboutOnceAndByName()
    {
        Panes world(u", left/Tool.AppDir/AppRun=1"_s);
        const QString file = world.folder.path(u"left/a"_s);
        const QString tool = world.folder.path(u"left/Tool.AppDir"_s);
        world.workspace.foreign[tool] = tool + u"/AppRun"_s;
        Alert::Answer answer = Alert::No;
        world.alerts.decide = [&](const Alert &) { return answer; };
        const auto open = [&] { world.open(u"Tool.AppDir"_s); };
        const auto both = [&] { world.twinleaf.launchFileURLs({ tool, file }); };
        const auto chosen = [&] { world.twinleaf.openFiles({ file }, tool); };
        const auto change = [&] {
            world.folder.write(u"left/Tool.AppDir/AppRun"_s, "another");
            open();
        };
        const struct {
            std::function<void()> step;
            Alert::Answer answer;
            int questions; // so far
            int starts; // so far, of anything
        } steps[] = { { chosen, Alert::No, 0, 1 }, { open, Alert::No, 1, 1 },
                      { both, Alert::No, 2, 2 },   { open, Alert::Yes, 3, 3 },
                      { open, Alert::No, 3, 4 },   { both, Alert::No, 3, 6 },
                      { change, Alert::No, 4, 6 } };
        for (const auto &step : steps) {
            answer = step.answer;
            step.step();
            QCOMPARE(world.alerts.shown().size(), step.questions);
            QCOMPARE(world.workspace.calls.size(), step.starts);
        }
        const Alert question = world.alerts.shown().first();
        QCOMPARE(question.text, u"Start 'Tool.AppDir'?"_s);
        QVERIFY(question.details.endsWith(tool));
        QCOMPARE(question.buttons.first().answer, Alert::No); // Return alone starts nothing
    }

    void aFailedLaunchIsToldAndStopsNothing()
    {
        World world;
        world.workspace.succeeds = false;
        world.alerts.decide = [](const Alert &) { return Alert::Ok; };
        world.twinleaf.launchApp(u"/proc/a"_s);
        world.twinleaf.launchInstallerPackage(u"/proc/a"_s);
        world.twinleaf.launchFileURLs({ u"/proc/a"_s, u"/proc/b"_s });
        world.twinleaf.openAddress(u"https://a"_s);
        QStringList calls;
        for (const QStringList &call : std::as_const(world.workspace.calls))
            calls.append(call[0] + call[1]);
        QCOMPARE(calls.join(u", "_s),
                 u"launch/proc/a, install/proc/a, open/proc/a, open/proc/b, addresshttps://a"_s);
        QStringList texts;
        for (const Alert &alert : world.alerts.shown())
            texts.append(alert.text);
        const QString launch = u"Cannot launch application!"_s;
        const QString open = u"Application cannot open given file!"_s;
        QCOMPARE(
            texts,
            QStringList({ launch, u"Cannot launch installer or package!"_s, open, open, launch }));
        QCOMPARE(world.alerts.shown()[0].details, u"/proc/a\nNo such file or directory"_s);
    }
};

QTEST_MAIN(tst_MainModel)
#include "tst_MainModel.moc"
