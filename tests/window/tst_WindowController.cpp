#include "window/WindowController.h"

#include "base/Localized.h"
#include "tests/support/World.h"
#include "widgets/ElidedLabel.h"
#include "window/InfoBarTextField.h"

#include <QAccessible>
#include <QSplitter>

using namespace Qt::StringLiterals;

class tst_WindowController : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theButtonRowGivesItsHeightToThePanes()
    {
        for (const QVariant &stored : { QVariant(), QVariant(false) }) {
            World world;
            world.defaults.setValue(Settings::ShowClassicButtons, stored);
            world.start();
            const auto row = [&] {
                return world.window.buttons[Command::Copy]->isVisible() ? 45 : 0;
            };
            QCOMPARE(row(), stored.isValid() ? 0 : 45);
            const int both = world.window.splitView->height() + row();
            for (int toggles = 0; toggles < 2; ++toggles) {
                const bool shown = row() > 0;
                QCOMPARE(world.commands.action(Command::ShowClassicButtons)->text(),
                         shown ? u"Hide Classic buttons"_s : u"Show Classic buttons"_s);
                world.run(Command::ShowClassicButtons);
                QCOMPARE(row() > 0, !shown);
                QTRY_COMPARE(world.window.splitView->height(), both - row());
                QCOMPARE(world.defaults.boolean(Settings::ShowClassicButtons), !shown);
            }
        }
    }

    void withoutAnActivePaneCommandsHaveNone()
    {
        StartedWorld world;
        WindowController &controller = world.application.windowController();
        QCOMPARE(controller.getFirstResponderTableView(), &controller.getTableView(Side::Left));
        QCOMPARE(controller.getOtherResponderTableView(), &controller.getTableView(Side::Right));
        world.window.segmentedControls.left->setFocus();
        QCOMPARE(controller.getFirstResponderTableView(), nullptr);
        QCOMPARE(controller.getOtherResponderTableView(), nullptr);
        QCOMPARE(controller.getCurrentPath(), QString());
        world.window.rightFileList->setFocus();
        QCOMPARE(controller.getCurrentPath(), world.folder.path(u"right"_s));
    }

    void buttonsActOnTheActivePane()
    {
        World world(u"right/a.txt=a"_s);
        world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
        world.start();
        world.window.rightFileList->setFocus();
        world.select(u"a.txt"_s, Side::Right);
        world.click(Command::Copy);
        QCOMPARE(world.folder.read(u"left/a.txt"_s), "a");
        QVERIFY(world.window.rightFileList->hasFocus());

        world.answerSheet(u"b.txt"_s);
        world.click(Command::Rename);
        world.answerSheet(u"made"_s);
        world.click(Command::NewFolder);
        QCOMPARE(world.folder.names(u"right"_s), QStringList({ u"b.txt"_s, u"made"_s }));

        world.select(u"b.txt"_s, Side::Right);
        world.run(Command::Duplicate);
        QCOMPARE(world.folder.read(u"right/b Copy.txt"_s), "a");

        world.window.rightFileList->selectRow(0);
        for (const Command command :
             { Command::Copy, Command::Move, Command::Delete, Command::Rename })
            world.click(command); // ".." is nobody's to touch: nothing is asked
        QVERIFY(!world.twinleaf.anyRunning());
    }

    void menusFollowTheSelection()
    {
        StartedWorld world(u"left/a=a"_s);
        QVERIFY(!world.isEnabled(Command::Copy));
        QVERIFY(world.isEnabled(Command::NewFolder));
        world.select(u"a"_s);
        QVERIFY(world.isEnabled(Command::Copy));
        QVERIFY(world.isEnabled(Command::Duplicate));
        // Alt gives the menu bar the focus; the pane stays the active one.
        world.window.activateWindow();
        QTRY_VERIFY(world.window.leftFileList->hasFocus());
        world.window.menuBar()->setFocus();
        QVERIFY(world.isEnabled(Command::Duplicate));
        world.window.segmentedControls.left->setFocus();
        world.window.menuBar()->setFocus();
        QVERIFY(!world.isEnabled(Command::Duplicate));
        world.window.leftFileList->setFocus();
        world.window.leftFileList->selectRow(0);
        QVERIFY(!world.isEnabled(Command::Duplicate));
        // Closed again, its key must work for the next selection.
        world.closeMenus();
        QVERIFY(world.commands.action(Command::Duplicate)->isEnabled());
    }

    void theInfoBarTellsOfTheSelection()
    {
        World world;
        world.folder.write(u"left/a"_s, QByteArray(1536, 'x'));
        world.folder.write(u"left/b"_s, QByteArray(300, 'x'));
        world.start();
        const InfoBarFields &bar = world.window.infoBars.left;
        world.select(u"b"_s);
        QCOMPARE(bar.fileName->text(), u"b"_s);
        QCOMPARE(bar.fileSize->text(), u"300 Bytes"_s);
        QVERIFY(!bar.fileDate->text().isEmpty());
        // Kept: the sum of the rounded texts, 2 KB and 300 bytes.
        world.window.leftFileList->selectRows({ 1, 2 });
        QCOMPARE(bar.fileName->text(), u"2 item(s)"_s);
        QCOMPARE(bar.fileSize->text(), SizeText::getCalcFileSizeWithDouble(2048 + 300));
        QCOMPARE(bar.fileDate->text(), QString());
        world.window.leftFileList->clearSelection();
        QCOMPARE(bar.fileName->text(), QString());
        // Nor does it tell of an item that went with its listing.
        world.select(u"b"_s);
        world.window.leftFileList->reset();
        QCOMPARE(bar.fileName->text(), QString());
    }

    void hiddenFilesComeAndGoInBothPanes()
    {
        StartedWorld world(u"left/.h=h, right/.h=h"_s);
        for (const QString &toggle : { u"Show system files"_s, u"Hide system files"_s }) {
            for (const Side side : { Side::Left, Side::Right })
                QCOMPARE(world.row(u".h"_s, side) > 0, toggle.startsWith(u"Hide"));
            QCOMPARE(world.commands.action(Command::ShowHiddenFiles)->text(), toggle);
            world.run(Command::ShowHiddenFiles);
        }
        QCOMPARE(world.row(u".h"_s, Side::Right), -1);
    }

    void onlyAPaneAmongTheVolumesFollowsAMount()
    {
        StartedWorld world;
        for (const QString &name : { u"left/new"_s, u"right/new"_s })
            world.folder.write(name);
        // "/" and "media" stand before the folder of the volumes.
        world.window.segmentedControls.right->setSegmentCount(3);
        world.window.segmentedControls.right->setLabel(2, localized("Volumes"));
        {
            const OpenDialogs::Guard open(world.openDialogs); // about the rows on the screen
            Q_EMIT world.workspace.volumeDidMount();
            QCOMPARE(world.row(u"new"_s, Side::Right), -1);
        }
        QTRY_VERIFY(world.row(u"new"_s, Side::Right) > 0);
        QCOMPARE(world.row(u"new"_s), -1);
        world.folder.write(u"right/newer"_s);
        world.window.segmentedControls.right->setLabel(2, localized("Volumes"));
        Q_EMIT world.workspace.volumeDidUnmount();
        QVERIFY(world.row(u"newer"_s, Side::Right) > 0);
    }

    void screenReadersFindANameOnEverything()
    {
        StartedWorld world;
        int controls = 0;
        const auto all = world.window.findChildren<QWidget *>();
        for (QWidget *widget : all) {
            const auto is = [widget](const char *type) { return widget->inherits(type); };
            const bool isControl = is("PaneTableView") || is("SegmentedControl")
                || is("QAbstractButton") || is("ElidedLabel") || is("ActivitySpinner");
            if (!isControl || widget->window() != &world.window || is("QTableCornerButton")
                || widget->objectName().startsWith(u"qt_"_s))
                continue;
            ++controls;
            QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(widget);
            QVERIFY(interface);
            QVERIFY2(!interface->text(QAccessible::Name).isEmpty(),
                     widget->metaObject()->className());
        }
        QVERIFY(controls >= 15);
    }

    void whatIsSavedAtTheEnd()
    {
        for (const bool savePaths : { true, false }) {
            World world;
            world.folder.makeFolder(u"left/in"_s);
            world.defaults.setValue(Settings::SaveLastPaths, savePaths);
            world.start();
            world.select(u"in"_s);
            QTest::keyClick(world.window.leftFileList, Qt::Key_Return);
            QCOMPARE(world.application.windowController().getCurrentPath(),
                     world.folder.path(u"left/in"_s));
            world.bus.post(ApplicationWillTerminate);
            QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath),
                     world.folder.path(savePaths ? u"left/in"_s : u"left"_s));
            const auto remembered = world.defaults.dictionary(Settings::SelectedItemsLeft);
            QCOMPARE(remembered->value(world.folder.path(u"left"_s)).toInt(), 1);
        }
    }
};

QTEST_MAIN(tst_WindowController)
#include "tst_WindowController.moc"
