#include "window/MenuBar.h"

#include "base/Localized.h"
#include "commands/Commands.h"
#include "widgets/Mnemonics.h"

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
    Command::Information,
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
    Command::Preferences,
    Separator,
    Command::Quit,
};
constexpr std::size_t LinesAboutItems = 17; // of the file menu: those of a row's context menu
constexpr Line selectMenu[] = {
    Command::SelectAll,      Command::SelectSame, Command::GroupSelect, Command::GroupDeselect,
    Command::CompareFolders, Separator,           Command::Find,        Command::FindNext,
};
constexpr Line viewMenu[] = {
    Command::Reload,
    Separator,
    Command::ShowHiddenFiles,
    Command::ShowClassicButtons,
    Separator,
    Command::ShowToolbar,
    Command::CustomizeToolbar,
};
constexpr Line sortMenuLines[] = { Command::SortByName, Command::SortBySize, Command::SortByDate,
                                   Command::SortByType };
constexpr Line goMenu[] = { Command::ChooseInPath, Command::ChooseInToolbar, Separator };
constexpr Line pathMenuLines[] = {
    Command::HomeFolder, Command::Volumes,  Command::OtherFolder,       Command::FolderOfOtherPane,
    Separator,           Command::CopyPath, Command::CopyLocalizedPath,
};
constexpr Line folderMenuLines[] = {
    Command::NewFolder,       Separator,         Command::SelectAll,
    Command::GroupSelect,     Separator,         Command::Reload,
    Command::ShowHiddenFiles, Separator,         Command::FolderOfOtherPane,
    Command::OtherFolder,     Command::CopyPath, Command::CopyLocalizedPath,
};
constexpr Line bookmarksMenuLines[] = { Command::AddBookmark, Command::BookmarkManager, Separator };
constexpr Line toolsMenuLines[] = {
    Command::ImageBrowser,   Command::InternalTerminal, Separator,
    Command::Terminal,       Command::Console,          Command::ActivityMonitor,
    Command::DiskUtility,    Command::Keychain,         Command::NetworkUtility,
    Command::NetInfoManager, Command::SystemProfiler,
};
constexpr Line helpMenu[] = { Command::CheckForNewerVersion, Command::About };

} // namespace

MenuBar::MenuBar(QMenuBar &menuBar, Commands &allCommands)
    : menus(menuBar)
    , commands(allCommands)
{
    _openWithMenu = &newMenu({});
    commands.action(Command::OpenWith)->setMenu(_openWithMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&File"), fileMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Select"), selectMenu);
    QMenu &view = addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&View"), viewMenu);
    QMenu &sortBy = newMenu(sortMenuLines);
    sortBy.setTitle(localized("Sort by"));
    view.insertMenu(commands.action(Command::ShowHiddenFiles), &sortBy);
    QMenu &go = addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Go"), goMenu);
    for (const Side side : { Side::Left, Side::Right }) {
        _pathMenus[side] = &newMenu(pathMenuLines, side);
        _pathMenus[side]->setTitle(localized(side == Side::Left ? "Left pane" : "Right pane"));
        go.addMenu(_pathMenus[side]);
        _folderMenus[side] = &newMenu(folderMenuLines, side);
        validateWhileOpen(*_folderMenus[side]);
        _folderMenus[side]->insertMenu(commands.action(Command::ShowHiddenFiles), &sortBy);
    }
    _bookmarksMenu = &addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Bookmarks"), bookmarksMenuLines);
    _toolsMenu = &addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Tools"), toolsMenuLines);
    _toolsMenu->menuAction()->setVisible(false); // until a tool is found
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Help"), helpMenu);
    markTitles(menus, *_toolsMenu);

    _popUpMenu = &newMenu(Lines(fileMenu).first(LinesAboutItems));
    validateWhileOpen(*_popUpMenu);
}

QMenu &MenuBar::newMenu(Lines lines, Side side)
{
    auto *menu = new QMenu(&menus);
    markWhenShown(*menu);
    for (const Line &line : lines) {
        if (line)
            menu->addAction(commands.action(*line, side));
        else
            menu->addSeparator();
    }
    return *menu;
}

QMenu &MenuBar::addMenu(const char *title, Lines lines)
{
    QMenu &menu = newMenu(lines);
    menu.setTitle(localized(title));
    menus.addMenu(&menu);
    validateWhileOpen(menu);
    return menu;
}

void MenuBar::validateWhileOpen(QMenu &menu) const
{
    QObject::connect(&menu, &QMenu::aboutToShow, &commands, &Commands::validate);
    // A disabled item's key would be dead until the menu is opened again; the commands look at the
    // selection themselves.
    QObject::connect(&menu, &QMenu::aboutToHide, &commands, &Commands::enableAll);
}
