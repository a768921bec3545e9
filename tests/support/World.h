#pragma once

#include "app/Application.h"
#include "base/Arrivals.h"
#include "files/PathText.h"
#include "files/Waiting.h"
#include "platform/OpenDialogs.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/AlertScript.h"
#include "tests/support/OpenSheet.h"
#include "tests/support/RecordedPrograms.h"
#include "tests/support/RecordedServices.h"
#include "tests/support/ScriptedMetadataIndex.h"
#include "tests/support/TestTree.h"
#include "views/TableViews.h"
#include "window/ClassicButton.h"

#include <QAction>
#include <QApplication>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>

#include <numeric>

// Presses keys and buttons when what arrived meanwhile has been shown, as a person does. Behind it
// they would be kept, and act after the test has looked.
class CalmPerson final : public QObject {
public:
    explicit CalmPerson(Waiting &waits)
        : waiting(waits)
    {
        qApp->installEventFilter(this); // asked before those of the program
    }

private:
    bool eventFilter(QObject *, QEvent *event) override
    {
        const bool isPress = event->type() == QEvent::ShortcutOverride
            || event->type() == QEvent::KeyPress || event->type() == QEvent::MouseButtonPress;
        if (isPress && Arrivals::areHeld() && !waiting.isWaiting() && !Arrivals::isDelivering())
            [[maybe_unused]]
            const bool calm = QTest::qWaitFor([] { return !Arrivals::areHeld(); });
        return false;
    }

    Waiting &waiting;
};

// The whole program over the real folders "left" and "right", with a person and a desktop by
// script.
struct World {
    TestFolder folder;
    TestFolder settings;
    UserDefaults defaults { settings.path(u"settings.plist"_s) };
    OpenDialogs openDialogs;
    AlertScript alerts;
    RecordedOpenPanel openPanel;
    RecordedPrograms programs;
    RecordedWorkspace workspace;
    ScriptedVersionServer versionServer;
    RecordedAuthorization authorization;
    ScriptedMetadataIndex metadataIndex;
    Application application { { defaults, openDialogs, alerts, openPanel, programs, workspace,
                                versionServer, authorization, metadataIndex } };
    CalmPerson person { application.waiting() };
    MessageBus &bus = application.bus();
    Twinleaf &twinleaf = application.twinleaf();
    MainModel &model = application.mainModel();
    MainWindowLayout &window = application.mainWindow();
    Commands &commands = application.commands();
    QStringList prompts; // of the answered sheets, with the text they came up with

    // The files of makeTree().
    explicit World(const QString &words = {})
    {
        makeTree(folder, u"left/, right/, "_s + words);
        defaults.setValue(Settings::LeftFileListLastPath, folder.path(u"left"_s));
        defaults.setValue(Settings::RightFileListLastPath, folder.path(u"right"_s));
    }

    void start()
    {
        application.start();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        // What arrives in the middle of a test would have its keys wait.
        QTRY_VERIFY(!application.infoSheetController().isReadingAccounts());
    }
    void startOnLeft() // in both panes
    {
        defaults.setValue(Settings::RightFileListLastPath, folder.path(u"left"_s));
        start();
    }

    PaneTableView &list(Side side = Side::Left) { return application.fileList(side); }
    int row(const QString &name, Side side = Side::Left) const
    {
        return int(model.rows(side).rowOfName(name));
    }
    QString shown(Side side = Side::Left) const { return model.rows(side).folder(); }
    void show(Side side, const QString &name, const std::optional<QString> &item = {})
    {
        bus.post(DirectoryChanged[side], { .path = folder.path(name), .item = item });
    }
    void open(const RowSet &rows) { bus.post(GetRows.left, { rows, model.rowsLeft() }); }
    void open(const QString &name) { open(RowSet { row(name) }); }
    void focus(Side side) { list(side).setFocus(); }
    void select(const QString &name, Side side = Side::Left)
    {
        list(side).selectRow(row(name, side));
    }
    // The names in some rows, the selected ones, and in all.
    QString names(const RowSet &rows, Side side) const
    {
        QStringList names;
        for (const int row : rows)
            names.append(model.rows(side)[row].name());
        return names.join(u' ');
    }
    QString selected(Side side = Side::Left) { return names(list(side).selectedRows(), side); }
    QString names(Side side = Side::Left) const
    {
        RowSet all(model.rows(side).size());
        std::iota(all.begin(), all.end(), 0);
        return names(all, side);
    }

    // As from its menu, and until the work it started has ended.
    void run(Command command, Side menu = Side::Left)
    {
        commands.action(command, menu)->trigger();
        twinleaf.drain();
    }
    void click(Command button)
    {
        QTest::mouseClick(window.buttons[button], Qt::LeftButton);
        twinleaf.drain();
    }
    // As a menu that opens shows it.
    bool isEnabled(Command command)
    {
        const auto menus = window.menuBar()->findChildren<QMenu *>();
        for (QMenu *menu : menus)
            Q_EMIT menu->aboutToShow();
        return commands.action(command)->isEnabled();
    }
    void closeMenus()
    {
        const auto menus = window.menuBar()->findChildren<QMenu *>();
        for (QMenu *menu : menus)
            Q_EMIT menu->aboutToHide();
    }
    // Types into the input sheet that opens next; nothing cancels it.
    void answerSheet(const QString &text)
    {
        whenSheetOpens(window, [this, text](QWidget &sheet) {
            auto *field = sheet.findChild<QLineEdit *>();
            QVERIFY2(field, "the sheet that opened asks for no text");
            prompts.append(sheet.accessibleName() + u'|' + field->text());
            field->setText(text);
            QTest::keyClick(field, text.isEmpty() ? Qt::Key_Escape : Qt::Key_Return);
        });
    }
};

struct StartedWorld : World {
    explicit StartedWorld(const QString &words = {})
        : World(words)
    {
        start();
    }
};
