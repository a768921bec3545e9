#include "window/WindowController.h"

#include "base/Localized.h"
#include "operations/Twinleaf.h"
#include "platform/OpenDialogs.h"
#include "tests/support/PaneWorld.h"
#include "tests/support/RecordedOpenPanel.h"
#include "tests/support/RecordedPrograms.h"
#include "views/TableViewDataSources.h"
#include "widgets/ElidedLabel.h"
#include "window/ClassicButton.h"
#include "window/InfoBarTextField.h"
#include "window/MainWindowLayout.h"

#include <QAccessible>
#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QSplitter>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// The whole window over real folders, with a person and a desktop by script.
struct World : ModelWorld {
    OpenDialogs openDialogs;
    RecordedPrograms programs;
    Twinleaf twinleaf { bus, defaults, alerts, programs, workspace, kinds, openDialogs };
    MainWindowLayout window { bus, model, defaults };
    TableViewDataSourceLeft leftSource { *window.leftFileList, model, bus, defaults };
    TableViewDataSourceRight rightSource { *window.rightFileList, model, bus, defaults };
    RecordedOpenPanel openPanel;
    WindowController controller {
        window, bus, model, twinleaf, { defaults, workspace, openPanel, alerts, openDialogs }
    };

    World(const QStringList &files = {})
    {
        for (const QString &name : { u"left"_s, u"right"_s })
            folder.makeFolder(name);
        for (const QString &name : files)
            folder.write(name, "a");
        model.setWindowController(&controller);
        model.setTwinleaf(&twinleaf);
        twinleaf.setMainModel(&model);
        twinleaf.setWindowController(&controller, &controller.workingSheet());
        const auto follow = [&](const PaneDataSource &source) {
            QObject::connect(&source, &PaneDataSource::selectionDidChange, &controller,
                             &WindowController::setFileInfoBar);
        };
        follow(leftSource);
        follow(rightSource);
    }

    void start()
    {
        defaults.setValue(Settings::LeftFileListLastPath, folder.path(u"left"_s));
        defaults.setValue(Settings::RightFileListLastPath, folder.path(u"right"_s));
        model.awakeFromNib();
        leftSource.awakeFromNib();
        rightSource.awakeFromNib();
        controller.awakeFromNib();
        window.leftFileList->setFocus();
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
    }
    QAction *item(const QString &text) const
    {
        const auto actions = window.menuBar()->findChildren<QAction *>();
        const auto found = std::find_if(actions.begin(), actions.end(), [&](QAction *action) {
            return action->text().section(u'\t', 0, 0) == text;
        });
        return found == actions.end() ? nullptr : *found;
    }
    void click(ClassicButton *button)
    {
        QTest::mouseClick(button, Qt::LeftButton);
        twinleaf.drain();
    }
    // Types into the sheet that opens next.
    void answerSheet(const QString &text)
    {
        QTimer::singleShot(0, &window, [text] {
            auto *field = QApplication::activeModalWidget()->findChild<QLineEdit *>();
            field->setText(text);
            QTest::keyClick(field, Qt::Key_Return);
        });
    }
    void select(Side side, const QString &name)
    {
        window.fileList(side).selectRow(row(name, side));
    }
};

} // namespace

class tst_WindowController : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theButtonRowGivesItsHeightToThePanes();
    void withoutAnActivePaneCommandsHaveNone();
    void buttonsActOnTheActivePane();
    void menusFollowTheSelection();
    void theInfoBarTellsOfTheSelection();
    void hiddenFilesComeAndGoInBothPanes();
    void onlyAPaneAmongTheVolumesFollowsAMount();
    void screenReadersFindANameOnEverything();
    void whatIsSavedAtTheEnd();
};

void tst_WindowController::theButtonRowGivesItsHeightToThePanes()
{
    for (const QVariant &stored : { QVariant(), QVariant(false) }) {
        World world;
        world.defaults.setValue(Settings::ShowClassicButtons, stored);
        world.start();
        const auto row = [&] { return world.window.copyButton->isVisible() ? 45 : 0; };
        QCOMPARE(row(), stored.isValid() ? 0 : 45);
        const int both = world.window.splitView->height() + row();
        for (int toggles = 0; toggles < 2; ++toggles) {
            const bool shown = row() > 0;
            QAction *toggle =
                world.item(shown ? u"Hide Classic buttons"_s : u"Show Classic buttons"_s);
            QVERIFY(toggle);
            toggle->trigger();
            QCOMPARE(row() > 0, !shown);
            QTRY_COMPARE(world.window.splitView->height(), both - row());
            QCOMPARE(world.defaults.boolean(Settings::ShowClassicButtons), !shown);
        }
    }
}

void tst_WindowController::withoutAnActivePaneCommandsHaveNone()
{
    World world;
    world.start();
    WindowController &controller = world.controller;
    QCOMPARE(controller.getFirstResponderTableView(), &controller.getTableView(Side::Left));
    QCOMPARE(controller.getOtherResponderTableView(), &controller.getTableView(Side::Right));
    world.window.segmentedControls.left->setFocus();
    QCOMPARE(controller.getFirstResponderTableView(), nullptr);
    QCOMPARE(controller.getOtherResponderTableView(), nullptr);
    QCOMPARE(controller.getCurrentPath(), QString());
    world.window.rightFileList->setFocus();
    QCOMPARE(controller.getCurrentPath(), world.folder.path(u"right"_s));
}

void tst_WindowController::buttonsActOnTheActivePane()
{
    World world({ u"right/a.txt"_s });
    world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
    world.start();
    world.window.rightFileList->setFocus();
    world.select(Side::Right, u"a.txt"_s);
    world.click(world.window.copyButton);
    QCOMPARE(world.folder.read(u"left/a.txt"_s), "a");
    QVERIFY(world.window.rightFileList->hasFocus());

    world.answerSheet(u"b.txt"_s);
    world.click(world.window.renameButton);
    world.answerSheet(u"made"_s);
    world.click(world.window.newFolderButton);
    QCOMPARE(world.folder.names(u"right"_s), QStringList({ u"b.txt"_s, u"made"_s }));

    world.select(Side::Right, u"b.txt"_s);
    world.item(u"Duplicate"_s)->trigger();
    QCOMPARE(world.folder.read(u"right/b Copy.txt"_s), "a");

    world.window.rightFileList->selectRow(0);
    for (ClassicButton *button : { world.window.copyButton, world.window.moveButton,
                                   world.window.deleteButton, world.window.renameButton })
        QTest::mouseClick(button, Qt::LeftButton); // ".." is nobody's to touch: nothing is asked
    QVERIFY(!world.twinleaf.anyRunning());
}

void tst_WindowController::menusFollowTheSelection()
{
    World world({ u"left/a"_s });
    world.start();
    const auto menus = world.window.menuBar()->findChildren<QMenu *>();
    const auto enabled = [&](const QString &text) {
        for (QMenu *menu : menus)
            Q_EMIT menu->aboutToShow();
        return world.item(text)->isEnabled();
    };
    QVERIFY(!enabled(u"Copy"_s));
    QVERIFY(enabled(u"New folder"_s));
    world.select(Side::Left, u"a"_s);
    QVERIFY(enabled(u"Copy"_s));
    QVERIFY(enabled(u"Duplicate"_s));
    // Alt gives the menu bar the focus; the pane stays the active one.
    world.window.activateWindow();
    QTRY_VERIFY(world.window.leftFileList->hasFocus());
    world.window.menuBar()->setFocus();
    QVERIFY(enabled(u"Duplicate"_s));
    world.window.segmentedControls.left->setFocus();
    world.window.menuBar()->setFocus();
    QVERIFY(!enabled(u"Duplicate"_s));
    world.window.leftFileList->setFocus();
    world.window.leftFileList->selectRow(0);
    QVERIFY(!enabled(u"Duplicate"_s));
    // Closed again, its key must work for the next selection.
    for (QMenu *menu : menus)
        Q_EMIT menu->aboutToHide();
    QVERIFY(world.item(u"Duplicate"_s)->isEnabled());
}

void tst_WindowController::theInfoBarTellsOfTheSelection()
{
    World world;
    world.folder.write(u"left/a"_s, QByteArray(1536, 'x'));
    world.folder.write(u"left/b"_s, QByteArray(300, 'x'));
    world.start();
    const InfoBarFields &bar = world.window.infoBars.left;
    world.select(Side::Left, u"b"_s);
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
    world.select(Side::Left, u"b"_s);
    world.window.leftFileList->reset();
    QCOMPARE(bar.fileName->text(), QString());
}

void tst_WindowController::hiddenFilesComeAndGoInBothPanes()
{
    World world({ u"left/.h"_s, u"right/.h"_s });
    world.start();
    for (const QString &toggle : { u"Show system files"_s, u"Hide system files"_s }) {
        for (const Side side : { Side::Left, Side::Right })
            QCOMPARE(world.row(u".h"_s, side) > 0, toggle.startsWith(u"Hide"));
        QVERIFY(world.item(toggle));
        world.item(toggle)->trigger();
    }
    QCOMPARE(world.row(u".h"_s, Side::Right), -1);
}

void tst_WindowController::onlyAPaneAmongTheVolumesFollowsAMount()
{
    World world;
    world.start();
    for (const QString &name : { u"left/new"_s, u"right/new"_s })
        world.folder.write(name);
    // "/" and "media" stand before the folder of the volumes.
    world.window.segmentedControls.right->setSegmentCount(3);
    world.window.segmentedControls.right->setLabel(2, localized("Volumes"));
    {
        const OpenDialogs::Guard open(world.openDialogs); // about the rows on the screen
        world.controller.volumeDidMount();
        QCOMPARE(world.row(u"new"_s, Side::Right), -1);
    }
    QTRY_VERIFY(world.row(u"new"_s, Side::Right) > 0);
    QCOMPARE(world.row(u"new"_s), -1);
    world.folder.write(u"right/newer"_s);
    world.window.segmentedControls.right->setLabel(2, localized("Volumes"));
    world.controller.volumeDidUnmount();
    QVERIFY(world.row(u"newer"_s, Side::Right) > 0);
}

void tst_WindowController::screenReadersFindANameOnEverything()
{
    World world;
    world.start();
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
        QVERIFY2(!interface->text(QAccessible::Name).isEmpty(), widget->metaObject()->className());
    }
    QVERIFY(controls >= 15);
}

void tst_WindowController::whatIsSavedAtTheEnd()
{
    for (const bool savePaths : { true, false }) {
        World world;
        world.folder.makeFolder(u"left/in"_s);
        world.defaults.setValue(Settings::SaveLastPaths, savePaths);
        world.start();
        world.select(Side::Left, u"in"_s);
        QTest::keyClick(world.window.leftFileList, Qt::Key_Return);
        QCOMPARE(world.controller.getCurrentPath(), world.folder.path(u"left/in"_s));
        world.bus.post(ApplicationWillTerminate);
        QCOMPARE(world.defaults.string(Settings::LeftFileListLastPath),
                 world.folder.path(savePaths ? u"left/in"_s : u"left"_s));
        const auto remembered = world.defaults.dictionary(Settings::SelectedItemsLeft);
        QCOMPARE(remembered->value(world.folder.path(u"left"_s)).toInt(), 1);
    }
}

QTEST_MAIN(tst_WindowController)
#include "tst_WindowController.moc"
