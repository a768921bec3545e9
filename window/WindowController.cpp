#include "window/WindowController.h"

#include "base/Localized.h"
#include "commands/Commands.h"
#include "files/FileName.h"
#include "model/MainModel.h"
#include "model/PaneSettings.h"
#include "platform/OpenDialogs.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "views/TableViews.h"
#include "widgets/ActivitySpinner.h"
#include "widgets/InputSheet.h"
#include "window/FilterBar.h"
#include "window/MainWindowLayout.h"
#include "window/NoticeLabel.h"
#include "window/PathNavigators.h"
#include "window/WindowFrame.h"

#include <QAction>
#include <QApplication>
#include <QMenuBar>
#include <QToolBar>

using namespace Qt::StringLiterals;

WindowController::WindowController(MainWindowLayout &layout, MessageBus &messages,
                                   const PathNavigators &pathNavigators, MainModel &model,
                                   UserDefaults &settings, OpenDialogs &dialogs)
    : mainWindow(layout)
    , bus(messages)
    , navigators(pathNavigators)
    , mainModel(model)
    , defaults(settings)
    , openDialogs(dialogs)
{
    bus.subscribe(ApplicationWillTerminate, this, &WindowController::applicationWillTerminate);
    bus.subscribe(DirectoryChanged, this, &WindowController::showTitle);
    connect(qApp, &QApplication::focusChanged, this, [this](QWidget *before, const QWidget *now) {
        if (isBar(now) && !isBar(before))
            _focusBeforeBars = before;
        const auto active = activeSide();
        for (const Side side : { Side::Left, Side::Right })
            mainWindow.fileList(side).setActivePane(side == active);
        if (!active)
            return;
        _lastActive = *active;
        showTitle(*active, {});
    });
}

WindowController::~WindowController()
{
    bus.unsubscribe(this);
}

void WindowController::awakeFromNib()
{
    if (!defaults.boolean(Settings::ShowClassicButtons).value_or(true))
        showClassicButtonsClicked();
    setDateFormatters();
    restoreColumns(mainWindow, defaults);
    _lastActive = activeSide().value_or(Side::Left);
    mainWindow.fileList(_lastActive).setActivePane(true); // before the keyboard is there
}

void WindowController::showTitle(Side side, const FolderChange &)
{
    if (side != activeSide().value_or(Side::Left))
        return;
    const SegmentedControl &navigator = navigators.control(side);
    const QString folder = FileName::shown(navigator.label(navigator.selectedSegment()));
    if (folder.isEmpty())
        return; // nothing is listed yet
    // "[*]" has a meaning of its own in titles.
    mainWindow.setWindowTitle(QString(folder).replace("[*]"_L1, "[*][*]"_L1) + u" – Twinleaf"_s);
}

void WindowController::setDateFormatters()
{
    const Qt::Alignment dates = mainModel.dateRightAlignment() ? Qt::AlignRight : Qt::AlignLeft;
    for (const Side side : { Side::Left, Side::Right }) {
        mainWindow.fileList(side).tableModel().setDateAlignment(dates);
        mainWindow.fileList(side).setDateFormat(mainModel.dateFormat());
    }
}

void WindowController::showClassicButtonsClicked()
{
    const bool show = TWClassicButtonsVisible;
    _commands->action(Command::ShowClassicButtons)
        ->setText(show ? localized("Hide Classic buttons") : localized("Show Classic buttons"));
    defaults.setValue(Settings::ShowClassicButtons, show);
    setClassicButtonsVisible(show);
    TWClassicButtonsVisible = !TWClassicButtonsVisible;
}

void WindowController::setClassicButtonsVisible(bool visible)
{
    // The split view takes the row's height, 45 points, when it goes.
    mainWindow.classicButtons->setVisible(visible);
    updateMainWindow();
}

void WindowController::applicationWillTerminate(const NoPayload &)
{
    saveFrame(mainWindow, _lastActive, defaults);
    const bool savePaths = defaults.boolean(Settings::SaveLastPaths).value_or(true);
    for (const Side side : { Side::Left, Side::Right }) {
        if (mainModel.folder(side).isEmpty())
            continue; // nobody answered for what it was to show: that stays stored
        if (savePaths)
            defaults.setValue(paneSettings(side).lastPath,
                              navigators.getCurrentNavigatorPath(side));
        defaults.setValue(paneSettings(side).selectedItems,
                          mainModel.selectedItems(side).toDictionary());
    }
}

bool WindowController::isBar(const QWidget *focus) const
{
    return focus
        && (focus == mainWindow.menuBar() || qobject_cast<const QToolBar *>(focus->parentWidget()));
}

std::optional<Side> WindowController::activeSide() const
{
    // The window's own focus, which stays while a menu or a sheet has the keyboard; the menu bar
    // and the toolbar alone take it for themselves.
    const QWidget *focus = mainWindow.focusWidget();
    if (isBar(focus))
        focus = _focusBeforeBars;
    for (const Side side : { Side::Left, Side::Right })
        if (focus == &mainWindow.fileList(side) || focus == mainWindow.filterBars[side]->field)
            return side;
    return std::nullopt;
}

QString WindowController::getCurrentPath() const
{
    const auto side = activeSide();
    return side ? mainModel.folder(*side) : QString();
}

PaneTable &WindowController::getTableView(Side side)
{
    return mainWindow.fileList(side);
}

PaneTable *WindowController::getFirstResponderTableView()
{
    const auto side = activeSide();
    return side ? &mainWindow.fileList(*side) : nullptr;
}

PaneTable *WindowController::getOtherResponderTableView()
{
    const auto side = activeSide();
    return side ? &mainWindow.fileList(otherSide(*side)) : nullptr;
}

QString WindowController::getCurrentPathFromSegmentedControl(Side side) const
{
    return mainModel.folder(side);
}

int WindowController::getSelectedSegmentFromSegmentedControl(Side side) const
{
    return navigators.getSelectedSegmentFromSegmentedControl(side);
}

QString WindowController::completeNavigatorPath(Side side) const
{
    return navigators.completeNavigatorPath(side);
}

bool WindowController::isItemInNavigatorPath(const QString &item, Side side) const
{
    return navigators.isItemInNavigatorPath(item, side);
}

void WindowController::setMenuItemShowHiddenItems(const QString &title)
{
    _commands->action(Command::ShowHiddenFiles)->setText(title);
}

QString WindowController::getStringFromInputSheet(const QString &prompt, const QString &inputText)
{
    const OpenDialogs::Guard guard(openDialogs);
    InputSheet sheet(prompt, inputText, &mainWindow);
    return sheet.getString();
}

void WindowController::setProgressIndicator(bool spinning)
{
    if (spinning)
        mainWindow.progressIndicator->start();
    else
        mainWindow.progressIndicator->stop();
}

void WindowController::showNotice(const QString &line)
{
    mainWindow.notice->tell(line);
}

void WindowController::updateMainWindow()
{
    mainWindow.centralWidget()->repaint();
}
