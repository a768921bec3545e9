#include "window/WindowController.h"

#include "base/Localized.h"
#include "tests/support/World.h"
#include "widgets/ElidedLabel.h"
#include "widgets/SegmentedControl.h"
#include "window/WindowFrame.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QSplitter>

class tst_WindowController : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theButtonRowComesAndGoes()
    {
        for (const bool stored : { true, false }) {
            World world;
            if (!stored) // else nothing is stored yet
                world.defaults.setValue(Settings::ShowClassicButtons, false);
            world.start();
            for (const bool shown : { stored, !stored }) {
                QCOMPARE(world.window.buttons[Command::Copy]->isVisible(), shown);
                QCOMPARE(world.commands.action(Command::ShowClassicButtons)->text(),
                         shown ? u"Hide Classic buttons"_s : u"Show Classic buttons"_s);
                world.run(Command::ShowClassicButtons);
                QCOMPARE(world.defaults.boolean(Settings::ShowClassicButtons), !shown);
            }
        }
    }

    void withoutAnActivePaneCommandsHaveNone()
    {
        StartedWorld world;
        WindowController &controller = world.application.windowController();
        QCOMPARE(controller.getFirstResponderTableView(), &world.list());
        QCOMPARE(controller.getOtherResponderTableView(), &world.list(Side::Right));
        world.window.segmentedControls.left->setFocus();
        QCOMPARE(controller.getFirstResponderTableView(), nullptr);
        QCOMPARE(controller.getOtherResponderTableView(), nullptr);
        QCOMPARE(controller.getCurrentPath(), QString());
        world.focus(Side::Right);
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

        world.list(Side::Right).selectRow(0);
        using enum Command;
        for (const Command command : { Copy, Move, Delete, Rename }) {
            QVERIFY(!world.window.buttons[command]->isEnabled());
            world.click(command); // ".." is nobody's to touch: nothing is asked
        }
        QVERIFY(!world.twinleaf.anyRunning());
        QVERIFY(world.window.buttons[NewFolder]->isEnabled());
        world.select(u"b.txt"_s, Side::Right);
        QVERIFY(world.window.buttons[Copy]->isEnabled());
        world.window.activateWindow(); // after the sheets
        world.focus(Side::Left); // where ".." is selected
        QTRY_VERIFY(!world.window.buttons[Copy]->isEnabled());
    }

    void aRefusedNameComesBackAsItWasTyped()
    {
        for (const Command command : { Command::Rename, Command::NewFolder, Command::NewFile }) {
            StartedWorld world(u"left/a=a, left/taken=t"_s);
            world.alerts.answer(Alert::Ok);
            world.alerts.answer(Alert::Ok);
            QStringList shown;
            QStringList typed { u"taken"_s, u"in/side"_s, u"free"_s };
            QTimer person;
            person.callOnTimeout([&] {
                QWidget *sheet = QApplication::activeModalWidget();
                auto *field = sheet ? sheet->findChild<QLineEdit *>() : nullptr;
                if (!field || typed.isEmpty())
                    return;
                shown.append(field->text());
                field->setText(typed.takeFirst());
                QTest::keyClick(field, Qt::Key_Return);
            });
            person.start(1);
            world.select(u"a"_s);
            world.run(command);
            QTRY_VERIFY(world.folder.names(u"left"_s).contains(u"free"_s));
            const QString first = command == Command::Rename ? u"a"_s : QString();
            QCOMPARE(shown, QStringList({ first, u"taken"_s, u"in/side"_s }));
            world.twinleaf.drain();
        }
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
        StartedWorld world(u"left/a=a"_s);
        world.select(u"a"_s);
        world.list(Side::Right).selectRow(0);
        const auto of = [](QObject *object) {
            return QAccessible::queryAccessibleInterface(object);
        };
        const auto name = [](QAccessibleInterface *one) { return one->text(QAccessible::Name); };
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
            QVERIFY2(of(widget) && !name(of(widget)).isEmpty(), widget->metaObject()->className());
        }
        QVERIFY(controls >= 15);
        QAccessibleTableInterface *table = of(world.window.leftFileList)->tableInterface();
        QCOMPARE(name(table->cellAt(1, 1)) + u'|' + name(table->cellAt(1, 2)), u"a|1 Bytes"_s);

        SegmentedControl *navigator = world.window.segmentedControls.left;
        QAccessibleInterface *segments = of(navigator);
        // Behind the segments comes the menu of what is folded.
        QAccessibleInterface *fold = segments->child(navigator->segmentCount());
        QCOMPARE(segments->childCount(), navigator->segmentCount() + 1);
        QCOMPARE(segments->indexOfChild(fold), navigator->segmentCount());
        QVERIFY(!name(fold).isEmpty());
        QCOMPARE(bool(fold->state().invisible), navigator->foldRect().isEmpty());
        for (int segment = 0; segment < navigator->segmentCount(); ++segment) {
            QAccessibleInterface *child = segments->child(segment);
            QCOMPARE(name(child), FileName::shown(navigator->label(segment)));
            QCOMPARE(bool(child->state().selected), segment == navigator->selectedSegment());
            QCOMPARE(segments->indexOfChild(child), segment);
        }
        QAccessibleInterface *last = segments->child(navigator->segmentCount() - 1);
        segments->child(navigator->segmentCount() - 2)
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(world.shown(), world.folder.path());
        navigator->setSegmentCount(navigator->segmentCount() - 1);
        QVERIFY(!last->isValid());

        // What is painted in place of rows is told as well.
        for (const auto &[shown, why] :
             { std::pair(u"left/a"_s, u"Not a directory"_s), std::pair(u"left"_s, QString()) }) {
            world.show(Side::Left, shown);
            const QString told = of(world.window.leftFileList)->text(QAccessible::Description);
            QVERIFY2(why.isEmpty() ? told.isEmpty() : told.endsWith(why), qPrintable(told));
        }
    }

    void theFrameOnlyAsksToClose()
    {
        World world;
        world.defaults.setValue(Settings::UseFlatUnifiedLook, true);
        UnifiedWindow window(world.defaults);
        QVERIFY(!window.flat()); // Kept: the other way round
        window.setMinSize({ 100, 400 });
        QCOMPARE(window.minimumSize(), QSize(150, 400));
        window.show();
        const QSignalSpy asked(&window, &UnifiedWindow::closeAsked);
        window.close();
        QCOMPARE(asked.size(), 1);
        QVERIFY(window.isVisible());
    }

    void theFrameComesBackAsFarAsTheScreenHasRoom()
    {
        const QRect screen(0, 20, 640, 400);
        const std::pair<QRect, QRect> rows[] = {
            { { 10, 30, 600, 300 }, { 10, 30, 600, 300 } },
            { { -50, 0, 600, 300 }, { 0, 20, 600, 300 } },
            { { 300, 300, 600, 300 }, { 40, 120, 600, 300 } },
            { { 100, 100, 1120, 700 }, { 0, 20, 640, 400 } },
        };
        for (const auto &[frame, fitted] : rows)
            QCOMPARE(fittedTo(screen, frame), fitted);

        StartedWorld world;
        QCOMPARE(world.window.windowTitle(), u"left – Twinleaf"_s);
        world.focus(Side::Right);
        QTRY_COMPARE(world.window.windowTitle(), u"right – Twinleaf"_s);
        QSplitter &panes = *world.window.splitView;
        const auto set = [&](QSize size, int left, int column) {
            world.window.resize(size);
            QTRY_COMPARE(world.window.size(), size);
            panes.setSizes({ left, 700 - left });
            world.list().setColumnWidths({ 0, 0, column, column + 1, column + 2 });
        };
        const auto state = [&] {
            return std::tuple(world.window.size(), panes.sizes(), world.list().chosenWidths());
        };
        set({ 760, 500 }, 300, 61);
        const auto left = state();
        world.bus.post(ApplicationWillTerminate);
        set({ 700, 450 }, 350, 71);
        QVERIFY(state() != left);
        restoreFrame(world.window, world.defaults);
        restoreColumns(world.window, world.defaults);
        QTRY_COMPARE(state(), left);
    }

    void theFrameStaysBehindALargerWindow_data()
    {
        QTest::addColumn<bool>("maximized");
        QTest::newRow("maximized") << true;
        QTest::newRow("full screen") << false;
    }
    void theFrameStaysBehindALargerWindow()
    {
        QFETCH(const bool, maximized);
        World settings;
        const QVariantMap frame { { u"X"_s, 40LL },
                                  { u"Y"_s, 60LL },
                                  { u"Width"_s, 700LL },
                                  { u"Height"_s, 500LL },
                                  { u"Maximized"_s, maximized },
                                  { u"FullScreen"_s, !maximized },
                                  { u"ActivePane"_s, u"Right"_s } };
        settings.defaults.setValue(Settings::MainWindowFrame, frame);
        for (int session = 0; session < 2; ++session) {
            World world;
            restoreFrame(world.window, settings.defaults);
            world.window.show();
            QVERIFY(QTest::qWaitForWindowExposed(&world.window));
            QVERIFY(world.window.isMaximized() == maximized && world.window.width() > 700);
            saveFrame(world.window, lastActivePane(settings.defaults), settings.defaults);
            QCOMPARE(settings.defaults.dictionary(Settings::MainWindowFrame), frame);
        }
    }

    void whatAPersonMovedDuringTheStartStays()
    {
        World world;
        world.defaults.setValue(Settings::PaneWidths, QVariantList { 300, 400 });
        struct Person {
            QSplitter &panes;
            void listed(Side, const FolderChange &) { panes.setSizes({ 400, 300 }); }
        } person { *world.window.splitView };
        world.bus.subscribe(DirectoryChanged, &person, &Person::listed);
        world.start();
        world.bus.unsubscribe(&person);
        QVERIFY(person.panes.sizes()[0] > person.panes.sizes()[1]);
        // Columns that nobody changed are not stored: another date format gets its own width.
        QCOMPARE(world.list().chosenWidths(), QList<int>(ColumnCount));
    }

    void whatIsSavedAtTheEnd()
    {
        for (const bool savePaths : { true, false }) {
            World world;
            world.folder.makeFolder(u"left/in"_s);
            world.defaults.setValue(Settings::SaveLastPaths, savePaths);
            world.start();
            Q_EMIT world.workspace.willPowerOff(); // and was called off
            world.select(u"in"_s);
            QTest::keyClick(world.window.leftFileList, Qt::Key_Return);
            QCOMPARE(world.application.windowController().getCurrentPath(),
                     world.folder.path(u"left/in"_s));
            Q_EMIT world.workspace.willPowerOff();
            QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath),
                     world.folder.path(savePaths ? u"left/in"_s : u"left"_s));
            const auto remembered = world.defaults.dictionary(Settings::SelectedItemsLeft);
            QCOMPARE(remembered->value(world.folder.path(u"left"_s)).toInt(), 1);
        }
    }
};

QTEST_MAIN(tst_WindowController)
#include "tst_WindowController.moc"
