#pragma once

#include "model/Messages.h"
#include "model/PaneWindow.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

class Commands;
class MainModel;
class MainWindowLayout;
class OpenDialogs;
class PathNavigators;
class UserDefaults;

// The main window at its start and its end, its button row, and the answers that the pane model and
// the operations ask of it. Main thread.
class WindowController final : public QObject, public PaneWindow {
    Q_OBJECT

public:
    WindowController(MainWindowLayout &mainWindow, MessageBus &bus,
                     const PathNavigators &navigators, MainModel &mainModel, UserDefaults &defaults,
                     OpenDialogs &openDialogs);
    ~WindowController() override;

    // Outlet, set before the pane model awakes.
    void setCommands(Commands *commands) { _commands = commands; }

    void awakeFromNib();
    void setDateFormatters();
    void showClassicButtonsClicked();
    void setClassicButtonsVisible(bool visible);
    QString getCurrentPath() const; // the active pane's; empty without one

    PaneTable &getTableView(Side side) override;
    PaneTable *getFirstResponderTableView() override;
    PaneTable *getOtherResponderTableView() override;
    QString getCurrentPathFromSegmentedControl(Side side) const override;
    int getSelectedSegmentFromSegmentedControl(Side side) const override;
    QString completeNavigatorPath(Side side) const override;
    bool isItemInNavigatorPath(const QString &item, Side side) const override;
    void setMenuItemShowHiddenItems(const QString &title) override;
    QString getStringFromInputSheet(const QString &prompt, const QString &inputText) override;
    void setProgressIndicator(bool spinning) override;
    void updateMainWindow() override;
    void showNotice(const QString &line) override;

private:
    void applicationWillTerminate(const NoPayload &);
    void showTitle(Side side, const FolderChange &);
    std::optional<Side> activeSide() const;
    bool isBar(const QWidget *focus) const; // of the menus, or a button in the toolbar

    MainWindowLayout &mainWindow;
    MessageBus &bus;
    const PathNavigators &navigators;
    MainModel &mainModel;
    UserDefaults &defaults;
    OpenDialogs &openDialogs;
    Commands *_commands = nullptr; // not owned
    QPointer<QWidget> _focusBeforeBars;
    Side _lastActive = Side::Left; // the pane that last had the keyboard
    // Kept: despite its name, true while the button row is hidden.
    bool TWClassicButtonsVisible = false;
};
