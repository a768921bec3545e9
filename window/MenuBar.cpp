#include "window/MenuBar.h"

#include "base/Localized.h"
#include "commands/Commands.h"

#include <QMenu>
#include <QMenuBar>

namespace {

using Line = std::optional<Command>;
constexpr Line Separator = std::nullopt;

// The menus, from the left. The bookmarks stand below the lines of theirs.
constexpr Line fileMenu[] = {
    Command::Open,
    Command::OpenWith,
    Command::PackageContent,
    Separator,
    Command::NewFolder,
    Command::Duplicate,
    Command::Rename,
    Separator,
    Command::Copy,
    Command::Move,
    Command::Delete,
    Separator,
    Command::CreateArchive,
    Command::Unpack,
    Separator,
    Command::Eject,
    Separator,
    Command::Quit,
};
constexpr std::size_t LinesAboutItems = 16; // of the file menu: those of a row's context menu
constexpr Line selectMenu[] = {
    Command::SelectAll,      Command::SelectSame, Command::GroupSelect, Command::GroupDeselect,
    Command::CompareFolders, Separator,           Command::Find,        Command::FindNext,
};
constexpr Line viewMenu[] = {
    Command::Reload,
    Separator,
    Command::ShowHiddenFiles,
    Command::ShowClassicButtons,
};
constexpr Line goMenu[] = { Command::ChooseInPath, Separator };
constexpr Line pathMenuLines[] = {
    Command::HomeFolder, Command::Volumes,  Command::OtherFolder,       Command::FolderOfOtherPane,
    Separator,           Command::CopyPath, Command::CopyLocalizedPath,
};
constexpr Line bookmarksMenuLines[] = { Command::AddBookmark, Separator };
constexpr Line toolsMenuLines[] = {
    Command::Terminal, Command::Console,        Command::ActivityMonitor, Command::DiskUtility,
    Command::Keychain, Command::NetworkUtility, Command::NetInfoManager,  Command::SystemProfiler,
};
constexpr Line helpMenu[] = { Command::CheckForNewerVersion, Command::About };

} // namespace

MenuBar::MenuBar(QMenuBar &menuBar, Commands &allCommands)
    : menus(menuBar)
    , commands(allCommands)
{
    _openWithMenu = new QMenu(&menus);
    commands.action(Command::OpenWith)->setMenu(_openWithMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&File"), fileMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Select"), selectMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&View"), viewMenu);
    QMenu &go = addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Go"), goMenu);
    for (const Side side : { Side::Left, Side::Right }) {
        _pathMenus[side] = go.addMenu(localized(side == Side::Left ? "Left pane" : "Right pane"));
        fill(*_pathMenus[side], pathMenuLines, side);
    }
    _bookmarksMenu = &addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Bookmarks"), bookmarksMenuLines);
    _toolsMenu = &addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Tools"), toolsMenuLines);
    _toolsMenu->menuAction()->setVisible(false); // until a tool is found
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Help"), helpMenu);

    _popUpMenu = new QMenu(&menus);
    validateWhileOpen(*_popUpMenu);
    fill(*_popUpMenu, Lines(fileMenu).first(LinesAboutItems));
}

QMenu &MenuBar::addMenu(const char *title, Lines lines)
{
    QMenu *menu = menus.addMenu(localized(title));
    validateWhileOpen(*menu);
    fill(*menu, lines);
    return *menu;
}

void MenuBar::fill(QMenu &menu, Lines lines, Side side) const
{
    for (const Line &line : lines) {
        if (line)
            menu.addAction(commands.action(*line, side));
        else
            menu.addSeparator();
    }
}

void MenuBar::validateWhileOpen(QMenu &menu) const
{
    QObject::connect(&menu, &QMenu::aboutToShow, &commands, &Commands::validate);
    // A disabled item's key would be dead until the menu is opened again; the commands look at the
    // selection themselves.
    QObject::connect(&menu, &QMenu::aboutToHide, &commands, &Commands::enableAll);
}
