#include "commands/CommandTable.h"

#include "tests/support/World.h"
#include "widgets/Mnemonics.h"

class tst_CommandTable : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void menuRulesFollowTheRow()
    {
        using enum Command;
        const QList<Command> about {
            Open,       OpenWith, PackageContent, NewFolder, Duplicate, Rename, Copy,
            Move,       Delete,   CreateArchive,  Unpack,    Eject,     Reload, ShowClassicButtons,
            AddBookmark
        };
        const QList<Command> always { NewFolder, Reload, ShowClassicButtons };
        const auto onRow =
            always + QList { Open, Copy, Move, Delete, Rename, Duplicate, CreateArchive };
        const struct {
            std::optional<int> row; // of the active pane
            QString name;
            QList<Command> enabled;
        } rows[] = {
            { {}, {}, always },
            { -1, {}, always + QList { AddBookmark } },
            { 0, u"."_s, always + QList { AddBookmark } },
            { 1, u"file"_s, onRow + QList { OpenWith } },
            { 1, u"folder"_s, onRow + QList { AddBookmark } },
            { 1, u"volume"_s, onRow + QList { Eject, AddBookmark } },
            { 1, u"bundle.app"_s, onRow + QList { OpenWith, PackageContent } },
            { 1, u"a.zip"_s, onRow + QList { OpenWith, Unpack } },
            { 1, u"a.cpgz"_s, onRow + QList { OpenWith } }, // Kept: the command would unpack it
        };
        World world(u"folder/, volume/, bundle.app/, file=, a.zip=, a.cpgz="_s);
        world.workspace.volumes.append(world.folder.path(u"volume"_s));
        for (const auto &[row, name, enabled] : rows) {
            const MenuState state { row, name.isEmpty() ? QString() : world.folder.path(name),
                                    world.twinleaf };
            QList<Command> valid, expected = enabled;
            for (const Command command : about)
                if (entryOf(command).menuRule(state))
                    valid.append(command);
            std::ranges::sort(expected);
            std::ranges::sort(valid);
            QVERIFY2(valid == expected, qPrintable(name));
        }
    }

    void noTwoCommandsShareAKey()
    {
        QStringList keys;
        for (const CommandEntry &entry : commandTable()) {
            if (entry.shortcut)
                keys.append(QString::fromLatin1(entry.shortcut));
            if (const QString key = shownKey(entry, ClassicKeys()); !key.isEmpty())
                keys.append(key);
        }
        QCOMPARE(keys.removeDuplicates(), 0);
        QVERIFY(keys.size() >= 20);
        for (const QString &key : std::as_const(keys))
            QVERIFY2(!QKeySequence(key).isEmpty(), qPrintable(key));
    }

    void everyMenuItemDoesSomething()
    {
        World world;
        world.workspace.application = u"/apps/tool.desktop"_s;
        world.start();
        // Once the window stands, each installed tool is offered as well.
        QTRY_VERIFY(world.commands.action(Command::Terminal)->isVisible());
        world.run(Command::Terminal);
        QCOMPARE(world.workspace.calls.value(0),
                 QStringList({ u"open"_s, world.workspace.application, {} }));
        using enum Command;
        const QList<Command> unseen { CheckForNewerVersion }; // this build has no address to ask
        for (const CommandEntry &entry : commandTable()) {
            const QAction *item = world.commands.action(entry.id);
            QVERIFY2(item->isVisible() != unseen.contains(entry.id), entry.text);
            QVERIFY2(!item->associatedObjects().isEmpty(), entry.text); // stands in some menu
        }
    }

    void everyMenuItemHasAKeyOfItsOwn()
    {
        StartedWorld world;
        world.isEnabled(Command::Open); // opens all menus
        QList<QWidget *> menus { world.window.menuBar() };
        for (QMenu *menu : world.window.menuBar()->findChildren<QMenu *>())
            menus.append(menu);
        QVERIFY(menus.size() > 12);
        for (QWidget *menu : std::as_const(menus)) {
            // An item that stands in several has the key of the one that is open.
            if (auto *opened = qobject_cast<QMenu *>(menu))
                Q_EMIT opened->aboutToShow();
            QStringList keys;
            const auto items = menu->actions();
            for (const QAction *item : items) {
                const QString key = QKeySequence::mnemonic(item->text()).toString();
                if (item->isSeparator())
                    continue;
                QVERIFY2(key.isEmpty() != item->isVisible(), qPrintable(item->text()));
                if (item->isVisible())
                    keys.append(key);
            }
            QCOMPARE(keys.removeDuplicates(), 0);
        }
        Mnemonics mnemonics;
        const std::pair<QString, QString> rows[] = {
            { u"Copy"_s, u"&Copy"_s },         { u"Copy path\tF5"_s, u"Copy &path\tF5"_s },
            { u"A && B"_s, u"&A && B"_s },     { u"c&cx"_s, u"cc&x"_s }, // a wish that is taken
            { u"Dat&ei"_s, u"Dat&ei"_s },      { u"&Datei"_s, u"&Datei"_s },
            { u"\u00d6 c"_s, u"&\u00d6 c"_s }, { u"pac\tXYZ"_s, u"pac\tXYZ"_s }, // none is left
        };
        for (const auto &[text, marked] : rows)
            QCOMPARE(mnemonics.marked(text), marked);
    }
};

QTEST_MAIN(tst_CommandTable)
#include "tst_CommandTable.moc"
