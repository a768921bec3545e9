#include "window/WindowController.h"

#include "model/MainModel.h"
#include "operations/Twinleaf.h"
#include "platform/FileKinds.h"
#include "platform/Localized.h"
#include "platform/Questions.h"
#include "platform/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/RecordedOpenPanel.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedWorkspace.h"
#include "tests/support/TestFolder.h"
#include "util/SettingsKeys.h"
#include "views/ElidedLabel.h"
#include "views/InfoBarTextField.h"
#include "views/TableViewDataSources.h"
#include "window/ClassicButton.h"
#include "window/MainWindowLayout.h"

#include <QAccessible>
#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QPushButton>
#include <QSplitter>
#include <QTest>
#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

// The whole window over real folders, with a person and a desktop by script.
struct World {
    TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    MessageBus bus;
    Questions questions;
    AlertScript alerts;
    RecordedPrograms programs;
    RecordedWorkspace workspace;
    FileKinds kinds;
    Twinleaf twinleaf { bus, defaults, alerts, programs, workspace, kinds, questions };
    MainModel model { bus, defaults, alerts, twinleaf, twinleaf, kinds };
    MainWindowLayout window { bus, model, defaults };
    TableViewDataSourceLeft leftSource { *window.leftFileList, model, bus, defaults };
    TableViewDataSourceRight rightSource { *window.rightFileList, model, bus, defaults };
    RecordedOpenPanel openPanel;
    WindowController controller {
        window, bus, model, twinleaf, { defaults, workspace, openPanel, alerts, questions }
    };

    World()
    {
        folder.makeFolder(u"left"_s);
        folder.makeFolder(u"right"_s);
        model.setWindowController(&controller);
        model.setTwinleaf(&twinleaf);
        twinleaf.setMainModel(&model);
        twinleaf.setWindowController(&controller, &controller.workingSheet());
        for (PaneDataSource *source : { static_cast<PaneDataSource *>(&leftSource),
                                        static_cast<PaneDataSource *>(&rightSource) })
            QObject::connect(source, &PaneDataSource::selectionDidChange, &controller,
                             &WindowController::setFileInfoBar);
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
        window.fileList(side).selectRow(int(model.rows(side).rowOfName(name)));
    }
};

} // namespace

class tst_WindowController : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theButtonRowGivesItsHeightToThePanes();
    void aHiddenButtonRowStaysHidden();
    void withoutAnActivePaneCommandsHaveNone();
    void buttonsActOnTheActivePane();
    void menusFollowTheSelection();
    void theInfoBarTellsOfTheSelection();
    void hiddenFilesComeAndGoInBothPanes();
    void onlyAPaneAmongTheVolumesFollowsAMount();
    void screenReadersFindANameOnEverything();
    void whatIsSavedAtTheEnd_data();
    void whatIsSavedAtTheEnd();
};

void tst_WindowController::theButtonRowGivesItsHeightToThePanes()
{
    World world;
    world.start();
    QAction *toggle = world.item(u"Hide Classic buttons"_s);
    QVERIFY(toggle);
    const int height = world.window.splitView->height();
    toggle->trigger();
    QTRY_COMPARE(world.window.splitView->height(), height + 45);
    QCOMPARE(toggle->text(), u"Show Classic buttons"_s);
    QCOMPARE(world.defaults.boolean(Settings::ShowClassicButtons), false);
    toggle->trigger();
    QTRY_COMPARE(world.window.splitView->height(), height);
    QCOMPARE(world.defaults.boolean(Settings::ShowClassicButtons), true);
}

void tst_WindowController::aHiddenButtonRowStaysHidden()
{
    World world;
    world.defaults.setValue(Settings::ShowClassicButtons, false);
    world.start();
    QVERIFY(!world.window.copyButton->isVisible());
    QVERIFY(world.item(u"Show Classic buttons"_s));
}

void tst_WindowController::withoutAnActivePaneCommandsHaveNone()
{
    World world;
    world.start();
    QCOMPARE(world.controller.getFirstResponderTableView(),
             &world.controller.getTableView(Side::Left));
    QCOMPARE(world.controller.getOtherResponderTableView(),
             &world.controller.getTableView(Side::Right));
    world.window.segmentedControls.left->setFocus();
    QCOMPARE(world.controller.getFirstResponderTableView(), nullptr);
    QCOMPARE(world.controller.getOtherResponderTableView(), nullptr);
    QCOMPARE(world.controller.getCurrentPath(), QString());
    world.window.rightFileList->setFocus();
    QCOMPARE(world.controller.getCurrentPath(), world.folder.path(u"right"_s));
}

void tst_WindowController::buttonsActOnTheActivePane()
{
    World world;
    world.folder.write(u"right/a.txt"_s, "a");
    world.defaults.setValue(Settings::ConfirmationForFileOperations, false);
    world.start();
    world.window.rightFileList->setFocus();
    world.select(Side::Right, u"a.txt"_s);
    QTest::mouseClick(world.window.copyButton, Qt::LeftButton);
    world.twinleaf.drain();
    QCOMPARE(world.folder.read(u"left/a.txt"_s), "a");
    QVERIFY(world.window.rightFileList->hasFocus());

    world.answerSheet(u"b.txt"_s);
    QTest::mouseClick(world.window.renameButton, Qt::LeftButton);
    world.twinleaf.drain();
    QCOMPARE(world.folder.names(u"right"_s), QStringList { u"b.txt"_s });

    world.answerSheet(u"made"_s);
    QTest::mouseClick(world.window.newFolderButton, Qt::LeftButton);
    world.twinleaf.drain();
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
    World world;
    world.folder.write(u"left/a"_s);
    world.start();
    const auto enabled = [&](const QString &text) {
        for (QMenu *menu : world.window.menuBar()->findChildren<QMenu *>())
            Q_EMIT menu->aboutToShow();
        return world.item(text)->isEnabled();
    };
    QVERIFY(!enabled(u"Copy"_s));
    QVERIFY(enabled(u"New folder"_s));
    world.select(Side::Left, u"a"_s);
    QVERIFY(enabled(u"Copy"_s));
    QVERIFY(enabled(u"Duplicate"_s));
    world.window.leftFileList->selectRow(0);
    QVERIFY(!enabled(u"Duplicate"_s));
    // Closed again, its key must work for the next selection.
    for (QMenu *menu : world.window.menuBar()->findChildren<QMenu *>())
        Q_EMIT menu->aboutToHide();
    QVERIFY(world.item(u"Duplicate"_s)->isEnabled());
}

void tst_WindowController::theInfoBarTellsOfTheSelection()
{
    World world;
    world.folder.write(u"left/a"_s, QByteArray(1536, 'x'));
    world.folder.write(u"left/b"_s, QByteArray(300, 'x'));
    world.folder.makeFolder(u"left/f"_s);
    world.start();
    const InfoBarFields &bar = world.window.infoBars.left;
    world.select(Side::Left, u"b"_s);
    QCOMPARE(bar.fileName->text(), u"b"_s);
    QCOMPARE(bar.fileSize->text(), u"300 Bytes"_s);
    QVERIFY(!bar.fileDate->text().isEmpty());
    // Kept: the sum of the rounded texts, 2 KB and 300 bytes.
    world.window.leftFileList->selectRows({ int(world.model.rowsLeft().rowOfName(u"a"_s)),
                                            int(world.model.rowsLeft().rowOfName(u"b"_s)) });
    QCOMPARE(bar.fileName->text(), u"2 item(s)"_s);
    QCOMPARE(bar.fileSize->text(), SizeText::getCalcFileSizeWithDouble(2048 + 300));
    QCOMPARE(bar.fileDate->text(), QString());
    world.window.leftFileList->clearSelection();
    QCOMPARE(bar.fileName->text(), QString());
}

void tst_WindowController::hiddenFilesComeAndGoInBothPanes()
{
    World world;
    for (const QString &name : { u"left/.h"_s, u"right/.h"_s })
        world.folder.write(name);
    world.start();
    QCOMPARE(world.model.rowsLeft().rowOfName(u".h"_s), -1);
    world.item(u"Show system files"_s)->trigger();
    QVERIFY(world.model.rowsLeft().rowOfName(u".h"_s) > 0);
    QVERIFY(world.model.rowsRight().rowOfName(u".h"_s) > 0);
    QVERIFY(world.item(u"Hide system files"_s));
    world.item(u"Hide system files"_s)->trigger();
    QCOMPARE(world.model.rowsRight().rowOfName(u".h"_s), -1);
}

void tst_WindowController::onlyAPaneAmongTheVolumesFollowsAMount()
{
    World world;
    world.start();
    world.folder.write(u"left/new"_s);
    world.folder.write(u"right/new"_s);
    // "/" and "media" stand before the folder of the volumes.
    world.window.segmentedControls.right->setSegmentCount(3);
    world.window.segmentedControls.right->setLabel(2, localized("Volumes"));
    world.controller.volumeDidMount();
    QCOMPARE(world.model.rowsLeft().rowOfName(u"new"_s), -1);
    QVERIFY(world.model.rowsRight().rowOfName(u"new"_s) > 0);
}

void tst_WindowController::screenReadersFindANameOnEverything()
{
    World world;
    world.start();
    QList<QWidget *> controls;
    for (const char *type : { "PaneTableView", "SegmentedControl", "QAbstractButton", "ElidedLabel",
                              "ActivitySpinner" }) {
        const auto all = world.window.findChildren<QWidget *>();
        for (QWidget *widget : all)
            if (widget->inherits(type) && widget->window() == &world.window
                && !widget->objectName().startsWith(u"qt_"_s)
                && !widget->inherits("QTableCornerButton"))
                controls.append(widget);
    }
    QVERIFY(controls.size() >= 15);
    for (QWidget *control : std::as_const(controls)) {
        QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(control);
        QVERIFY(interface);
        if (interface->text(QAccessible::Name).isEmpty())
            qWarning() << control;
        QVERIFY(!interface->text(QAccessible::Name).isEmpty());
    }
}

void tst_WindowController::whatIsSavedAtTheEnd_data()
{
    QTest::addColumn<bool>("savePaths");
    QTest::newRow("with the paths") << true;
    QTest::newRow("without") << false;
}

void tst_WindowController::whatIsSavedAtTheEnd()
{
    QFETCH(bool, savePaths);
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
    QCOMPARE(world.defaults.dictionary(Settings::SelectedItemsLeft)
                 ->value(world.folder.path(u"left"_s))
                 .toInt(),
             1);
}

QTEST_MAIN(tst_WindowController)
#include "tst_WindowController.moc"
