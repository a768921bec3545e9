#include "window/MenuBar.h"

#include "base/Localized.h"
#include "commands/Commands.h"
#include "widgets/Mnemonics.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QMenuBar>

namespace {

using Line = std::optional<Command>;
constexpr Line Separator = std::nullopt;

// The menus, from the left. The bookmarks stand below the lines of theirs.
constexpr Line fileMenu[] = {
    Command::Open,
    Command::OpenWith,
    Command::View,
    Command::Edit,
    Command::PackageContent,
    Command::SpotlightSearchForItem,
    Separator,
    Command::NewFolder,
    Command::NewFile,
    Command::Duplicate,
    Command::Rename,
    Command::Information,
    Separator,
    Command::Copy,
    Command::Move,
    Command::Delete,
    Command::DeletePermanently,
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
constexpr std::size_t LinesAboutItems = 22; // of the file menu: those of a row's context menu
constexpr Line editMenu[] = {
    Command::Undo,  Separator, Command::Cut,          Command::CopyToClipboard,
    Command::Paste, Separator, Command::CopyItemName, Command::CopyItemPath,
};
constexpr Line selectMenu[] = {
    Command::SelectAll,      Command::SelectSame,
    Command::GroupSelect,    Command::GroupDeselect,
    Command::CompareFolders, Separator,
    Command::Find,           Command::FindNext,
    Command::QuickFilter,    Command::SpotlightSearch,
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
constexpr Line goMenu[] = { Command::Back,
                            Command::Forward,
                            Separator,
                            Command::SwapPanes,
                            Command::SameFolderInBoth,
                            Separator,
                            Command::OtherFolder,
                            Command::ChooseInPath,
                            Command::ChooseInToolbar,
                            Separator,
                            Command::Trash,
                            Separator };
constexpr Line pathMenuLines[] = {
    Command::HomeFolder, Command::Volumes,  Command::OtherFolder,       Command::FolderOfOtherPane,
    Separator,           Command::CopyPath, Command::CopyLocalizedPath,
};
constexpr Line folderMenuLines[] = {
    Command::Paste,
    Separator,
    Command::NewFolder,
    Command::NewFile,
    Separator,
    Command::SelectAll,
    Command::GroupSelect,
    Separator,
    Command::Reload,
    Command::ShowHiddenFiles,
    Separator,
    Command::FolderOfOtherPane,
    Command::OtherFolder,
    Command::TerminalHere,
    Command::CopyPath,
    Command::CopyLocalizedPath,
};
constexpr Line bookmarksMenuLines[] = { Command::AddBookmark, Command::BookmarkManager, Separator };
constexpr Line toolsMenuLines[] = {
    Command::ImageBrowser,    Command::InternalTerminal,
    Command::TerminalHere,    Separator,
    Command::Terminal,        Command::Console,
    Command::ActivityMonitor, Command::DiskUtility,
    Command::Keychain,        Command::NetworkUtility,
    Command::NetInfoManager,  Command::SystemProfiler,
};
constexpr Line helpMenu[] = { Command::CheckForNewerVersion, Command::About };

// One Escape leads back to the pane. The toolkit would leave the keyboard in the bar, where nothing
// shows that it is there.
class EscapeFromMenu final : public QObject {
public:
    explicit EscapeFromMenu(QMenuBar &menuBar)
        : QObject(&menuBar)
        , bar(menuBar)
    {
    }

protected:
    bool eventFilter(QObject *menu, QEvent *event) override
    {
        if (event->type() == QEvent::KeyPress
            && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape)
            QMetaObject::invokeMethod(
                &bar,
                [this] {
                    QKeyEvent escape(QEvent::KeyPress, Qt::Key_Escape, Qt::NoModifier);
                    if (bar.hasFocus())
                        QCoreApplication::sendEvent(&bar, &escape);
                },
                Qt::QueuedConnection); // when the menu is closed
        return QObject::eventFilter(menu, event);
    }

private:
    QMenuBar &bar;
};

} // namespace

MenuBar::MenuBar(QMenuBar &menuBar, Commands &allCommands)
    : menus(menuBar)
    , commands(allCommands)
    , _escape(new EscapeFromMenu(menuBar))
{
    _openWithMenu = &newMenu({});
    commands.action(Command::OpenWith)->setMenu(_openWithMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&File"), fileMenu);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Edit"), editMenu);
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
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Tools"), toolsMenuLines);
    addMenu(QT_TRANSLATE_NOOP("Twinleaf", "&Help"), helpMenu);
    giveMnemonics(menus.actions());

    _popUpMenu = &newMenu(Lines(fileMenu).first(LinesAboutItems));
    QAction *next = commands.action(Command::Copy);
    for (const Command command : { Command::Cut, Command::CopyToClipboard, Command::Paste })
        _popUpMenu->insertAction(next, commands.action(command));
    _popUpMenu->insertSeparator(next);
    validateWhileOpen(*_popUpMenu);
}

QMenu &MenuBar::newMenu(Lines lines, std::optional<Side> side)
{
    auto *menu = new QMenu(&menus);
    markWhenShown(*menu);
    for (const Line &line : lines) {
        if (line)
            menu->addAction(side ? commands.action(*line, *side)
                                 : commands.actionOfActivePane(*line));
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
    menu.installEventFilter(_escape);
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
