#include "files/FileName.h"
#include "tests/model/PaneModelWorld.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_MainModel : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void startSortsByWhatIsStored()
    {
        constexpr auto Up = SortDirection::Ascending;
        constexpr auto Down = SortDirection::Descending;
        const QList<std::tuple<QVariant, QVariant, Column, SortDirection>> cases {
            { {}, {}, Column::Name, Up }, // the first start
            { u"Size"_s, {}, Column::Size, Down },
            { {}, true, Column::Name, Up },
            { u"Date"_s, true, Column::Date, Up },
            { u"size"_s, {}, Column::Name, Down }, // no such column
            { u"Icon"_s, true, Column::Name, Up },
        };
        for (const auto &[column, direction, sortedBy, towards] : cases) {
            PaneModelWorld world;
            world.defaults.setValue(Settings::LeftFileListSortedColumn, column);
            world.defaults.setValue(Settings::LeftFileListSortingDirection, direction);
            world.model.awakeFromNib();
            QCOMPARE(world.window.tables.left.column, sortedBy);
            QCOMPARE(world.window.tables.left.direction, towards);
            if (sortedBy == Column::Name)
                QCOMPARE(world.row(u"a"_s) < world.row(u"b"_s), towards == Up);
            QCOMPARE(world.refreshed, QList<Side>({ Side::Left, Side::Right }));
        }
    }

    void foldersOfTheStart()
    {
        PaneModelWorld world;
        world.model.setStartFolder(Side::Right, { world.left, u"b"_s });
        world.model.setStartFolder(Side::Left, { world.folder.path(u"right"_s), u"not there"_s });
        world.model.awakeFromNib();
        QCOMPARE(world.shown(), world.folder.path(u"right"_s));
        QCOMPARE(world.window.tables.left.selected, RowSet { 0 });
        const int row = world.row(u"b"_s, Side::Right);
        QVERIFY(row > 0);
        QCOMPARE(world.window.tables.right.selected, RowSet { row });
        QCOMPARE(world.window.tables.right.scrolledTo, row);

        PaneModelWorld nothingStored;
        nothingStored.defaults.remove(Settings::LeftFileListLastPath);
        nothingStored.defaults.setValue(Settings::RightFileListLastPath, QString());
        nothingStored.model.awakeFromNib();
        for (const Side side : { Side::Left, Side::Right })
            QCOMPARE(nothingStored.shown(side), PathText::homeFolder());
    }

    void optionsAreAsStored()
    {
        const QList<std::tuple<QVariant, QString, bool>> cases {
            { {}, u"Show system files"_s, true },
            { false, u"Show system files"_s, false },
            { true, u"Hide system files"_s, true },
        };
        for (const auto &[stored, title, follows] : cases) {
            PaneModelWorld world;
            world.defaults.setValue(Settings::ShowHiddenFiles, stored);
            world.defaults.setValue(Settings::TraverseLinks, stored);
            world.model.awakeFromNib();
            QCOMPARE(world.window.hiddenItemsTitle, title);
            // The panes and what is asked about a path go by the same option.
            QCOMPARE(world.model.rowsLeft()[world.row(u"to sub"_s)].isFolder(), follows);
            QCOMPARE(world.queries.isPackage(world.left + u"/to sub"_s), follows);
        }
    }

    void reloadSortsByTheLastDirectionOfEitherPane()
    {
        StartedWorld world;
        world.model.sortRowEntries(Column::Size, Side::Right, SortDirection::Descending);
        QVERIFY(world.row(u"a"_s) < world.row(u"b"_s));
        world.list(world.left);
        QVERIFY(world.row(u"a"_s) > world.row(u"b"_s));
        QCOMPARE(world.window.tables.left.column, Column::Name);
    }

    void rememberedRowIsKeptOrForgotten()
    {
        const QList<std::tuple<int, std::optional<QString>, int, RowSet>> cases {
            { 2, u".."_s, 2, { 2 } }, // going up
            { 99, u".."_s, 99, {} }, // beyond the end
            { 2, u"sub"_s, 2, { 2 } }, // on the way the pane shows
            { 2, u"su"_s, 2, { 2 } }, // part of a name on that way
            { 2, u"elsewhere"_s, 0, { 0 } }, // reached anew
            { 2, u""_s, 0, { 0 } }, // no name
            { 2, {}, 0, { 3, 4 } }, // a plain reload forgets it, and keeps what is selected
        };
        StartedWorld world;
        world.bus.post(DirectoryChanged.right, { .path = world.left });
        for (const auto &[remembered, item, row, selected] : cases) {
            for (const Side side : { Side::Left, Side::Right }) {
                world.model.selectedItems(side).setRow(remembered, world.left);
                world.window.paths[side] = world.left + u"/sub"_s;
                world.window.tables[side].selectRows({ 3, 4 });
                world.bus.post(DirectoryChanged[side], { .path = world.left, .item = item });
                QCOMPARE(world.window.tables[side].selected, selected);
                QCOMPARE(world.window.tables[side].scrolledTo, row);
                QCOMPARE(world.model.selectedItems(side).row(world.left), row);
            }
        }
    }

    void rememberedRowsSurviveTheSettings()
    {
        PaneModelWorld world;
        SelectionMemory memory;
        const QString odd = world.folder.path(FileName::fromBytes("odd \xff"));
        memory.setRow(7, odd);
        QVariantMap stored = memory.toDictionary();
        stored.insert(u"/damaged"_s, u"no number"_s);
        world.defaults.setValue(Settings::SelectedItemsRight, stored);
        QVERIFY(world.defaults.synchronize());
        const UserDefaults again(world.defaults.filePath());
        QCOMPARE(again.dictionary(Settings::SelectedItemsRight), stored);
        world.model.awakeFromNib();
        QCOMPARE(world.model.selectedItems(Side::Right).row(odd), 7);
        QCOMPARE(world.model.selectedItems(Side::Right).toDictionary().size(), 1);
        QCOMPARE(world.model.selectedItems(Side::Left).row(odd), 0);
    }

    void openingARow()
    {
        const struct {
            QString name;
            QString shown; // the folder listed afterwards
            QString call;
        } rows[] = {
            { u"sub"_s, u"/left/sub"_s, {} },
            { u"to sub"_s, u"/left/sub"_s, {} },
            { u".."_s, {}, {} },
            { u"a"_s, u"/left"_s, u"open"_s },
            { u"Program.app"_s, u"/left"_s, u"launch"_s },
            { u"Tool.AppDir"_s, u"/left"_s, u"launch"_s },
            { u"file.app"_s, u"/left"_s, u"launch"_s },
            { u"installed.desktop"_s, u"/left"_s, u"launch"_s },
            { u"Setup.pkg"_s, u"/left"_s, u"install"_s },
            { u"Kit.framework"_s, u"/left/Kit.framework"_s, {} },
            { u"to sub.desktop"_s, u"/left/sub"_s, {} },
            { u"to Kit.framework.desktop"_s, u"/left"_s, u"open"_s },
            { u"to nowhere.desktop"_s, u"/left"_s, u"open"_s },
        };
        for (const auto &[name, shown, call] : rows) {
            PaneModelWorld world;
            makeTree(world.folder,
                     u"left/Tool.AppDir/, left/Kit.framework/, left/file.app, "
                     "left/installed.desktop"_s);
            world.workspace.installed = { world.left + u"/installed.desktop"_s };
            for (const QString &target : { u"sub"_s, u"Kit.framework"_s, u"nowhere"_s })
                world.folder.write(u"left/to "_s + target + u".desktop"_s,
                                   "[Desktop Entry]\nType=Link\nURL=file://"
                                       + (world.left + u'/' + target).toUtf8());
            world.model.awakeFromNib();
            world.window.focus = Side::Right;
            world.changes.clear();
            world.refreshed.clear();
            const int row = world.row(name);
            world.open(name);
            QCOMPARE(name + world.workspace.calls.value(0).value(0), name + call);
            const bool enters = call.isEmpty();
            if (!enters)
                QCOMPARE(world.workspace.calls[0][1], world.left + u'/' + name);
            // A link to a folder is entered by the folder's own path, or by the link's; it is that
            // folder.
            QVERIFY2(world.shown() == world.folder.path() + shown || name == u"to sub"_s,
                     qPrintable(name));
            QCOMPARE(world.row(u"deep"_s) > 0, shown == u"/left/sub"_s);
            QCOMPARE(world.changes.size(), enters ? 1 : 0);
            if (enters)
                QCOMPARE(world.changes[0].item, name);
            // The row is remembered where a folder was opened; the active pane is refreshed after
            // "..".
            QCOMPARE(world.model.selectedItems(Side::Left).row(world.left),
                     name.endsWith(u"sub"_s) ? row : 0);
            QCOMPARE(world.refreshed,
                     name == u".."_s ? QList<Side> { Side::Right } : QList<Side> {});
        }
    }

    void openingSeveralRowsEntersNone()
    {
        StartedWorld world;
        world.open(RowSet { world.row(u"sub"_s), world.row(u"a"_s) });
        QCOMPARE(world.shown(), world.left);
        const QList<QStringList> calls { { u"open"_s, world.left + u"/sub"_s, u""_s },
                                         { u"open"_s, world.left + u"/a"_s, u""_s } };
        QCOMPARE(world.workspace.calls, calls);
    }

    void goingUpSelectsTheFolderLeftAndEndsAtTheRoot()
    {
        StartedWorld world;
        const int row = world.row(u"sub"_s);
        QVERIFY(row > 0);
        world.open(u"sub"_s);
        QCOMPARE(world.window.tables.left.selected, RowSet { 0 });
        world.open(u".."_s);
        QCOMPARE(world.shown(), world.left);
        QCOMPARE(world.window.tables.left.selected, RowSet { row });
        world.list(u"/"_s);
        world.open(u".."_s);
        QCOMPARE(world.shown(), u"/"_s);
        QVERIFY(world.model.rowsLeft().size() > 1);
    }

    void packagesAreEnteredInsideABundle()
    {
        // The way leads through one, or through none.
        for (const auto &[way, inside] : { std::pair(u"/x/app/y"_s, true), { u"/x/y"_s, false } }) {
            StartedWorld world;
            world.model.setInsideBundle(true);
            world.window.paths.left = way;
            world.open(u"Program.app"_s);
            QCOMPARE(world.shown(), world.left + u"/Program.app"_s);
            QVERIFY(world.workspace.calls.isEmpty());
            QCOMPARE(world.model.insideBundle(), inside);
        }
    }

    void goForwardFollowsThePath()
    {
        const QList<std::tuple<QString, QString, bool, QString>> cases {
            { u"/sub/deep"_s, u"/sub"_s, false, u"sub"_s },
            { {}, {}, true, u"sub"_s }, // the deepest stays
            { u"/Program.app/Contents"_s, u"/Program.app"_s, true, u"sub"_s },
            // The parent row's path is the listed folder's own: nothing is remembered.
            { u"/sub"_s, u"/sub"_s, false, u".."_s },
        };
        for (const auto &[way, shown, inside, selected] : cases) {
            StartedWorld world;
            world.model.setInsideBundle(true);
            world.model.selectedItems(Side::Left).setRow(9, world.folder.path());
            world.window.paths.left = world.left + way;
            world.window.segment = int(PathText::components(world.left).size()) - 1;
            world.changes.clear();
            const int row = world.row(selected);
            world.bus.post(GotoNextDirectory.left, { { row }, world.model.rowsLeft() });
            QCOMPARE(world.shown(), world.left + shown);
            QCOMPARE(world.model.insideBundle(), inside);
            QCOMPARE(world.changes.size(), way.isEmpty() ? 0 : 1);
            QCOMPARE(world.changes.value(0).item.value_or(u".."_s), u".."_s);
            QCOMPARE(world.model.selectedItems(Side::Left).row(world.left),
                     way.isEmpty() ? 0 : row);
            QCOMPARE(world.model.selectedItems(Side::Left).row(world.folder.path()), 9);
        }
    }

    void aForeignProgramIsAskedAboutOnceAndByName()
    {
        StartedWorld world;
        makeTree(world.folder, u"left/Tool.AppDir/AppRun=1"_s);
        world.list(world.left);
        const QString tool = world.left + u"/Tool.AppDir"_s;
        world.workspace.foreign[tool] = tool + u"/AppRun"_s;
        Alert::Answer answer = Alert::No;
        world.alerts.decide = [&](const Alert &) { return answer; };
        const auto open = [&] { world.open(u"Tool.AppDir"_s); };
        const auto both = [&] { world.launching.launchFileURLs({ tool, world.left + u"/a"_s }); };
        const auto chosen = [&] { world.launching.openFiles({ world.left + u"/a"_s }, tool); };
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

    void aFailedLaunchHasItsOwnTextAndButton()
    {
        PaneModelWorld world;
        Launching &launching = world.launching;
        world.workspace.succeeds = false;
        world.alerts.decide = [](const Alert &) { return Alert::Ok; };
        launching.launchApp(u"/a"_s);
        launching.launchInstallerPackage(u"/a"_s);
        launching.launchFileURLs({ u"/a"_s, u"/b"_s }); // the first failure stops nothing
        launching.openAddress(u"https://a"_s);

        QStringList calls;
        QStringList texts;
        for (const QStringList &call : std::as_const(world.workspace.calls))
            calls.append(call[0] + call[1]);
        for (const Alert &alert : world.alerts.shown()) {
            texts.append(alert.text);
            QCOMPARE(alert.title, u"Twinleaf - Error"_s);
            QCOMPARE(alert.buttons.size(), 1);
            QCOMPARE(alert.buttons[0].text, u"Ok"_s);
        }
        QCOMPARE(world.alerts.shown()[0].details, u"/a\nNo such file or directory"_s);
        QCOMPARE(calls.join(u", "_s), u"launch/a, install/a, open/a, open/b, addresshttps://a"_s);
        QCOMPARE(
            texts,
            QStringList({ u"Cannot launch application!"_s, u"Cannot launch installer or package!"_s,
                          u"Application cannot open given file!"_s,
                          u"Application cannot open given file!"_s,
                          u"Cannot launch application!"_s }));
    }
};

QTEST_MAIN(tst_MainModel)
#include "tst_MainModel.moc"
