#include "commands/CommandTable.h"

#include "base/Localized.h"
#include "commands/FolderCommands.h"
#include "commands/PaneCommands.h"
#include "commands/SelectionCommands.h"
#include "platform/Workspace.h"

namespace {

constexpr CommandEntry table[] = {
    { .id = Command::Open,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Open"),
      .icon = "document-open",
      .paneKey = QT_TRANSLATE_NOOP("Twinleaf", "Return"),
      .menuRule = &onItem,
      .run = &PaneCommands::openClicked },
    { .id = Command::OpenWith,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Open with"),
      .menuRule = &onFile,
      .run = &PaneCommands::openWithClicked },
    { .id = Command::PackageContent,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Show package contents"),
      .menuRule = &onPackage,
      .run = &PaneCommands::packageContentClicked },
    { .id = Command::NewFolder,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "New folder"),
      .icon = "folder-new",
      .classic = ClassicAction::NewFolder,
      .run = &PaneCommands::newFolderButtonClicked },
    { .id = Command::Duplicate,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Duplicate"),
      .shortcut = "Ctrl+D",
      .menuRule = &onItem,
      .run = &PaneCommands::duplicateClicked },
    { .id = Command::Rename,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Rename"),
      .icon = "edit-rename",
      .classic = ClassicAction::Rename,
      .menuRule = &onItem,
      .run = &PaneCommands::renameButtonClicked },
    { .id = Command::Copy,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Copy"),
      .icon = "edit-copy",
      .classic = ClassicAction::Copy,
      .menuRule = &onItem,
      .run = &PaneCommands::copyButtonClicked },
    { .id = Command::Move,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Move"),
      .icon = "edit-move",
      .classic = ClassicAction::Move,
      .menuRule = &onItem,
      .run = &PaneCommands::moveButtonClicked },
    { .id = Command::Delete,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Delete"),
      .icon = "edit-delete",
      .classic = ClassicAction::Delete,
      .menuRule = &onItem,
      .run = &PaneCommands::deleteButtonClicked },
    { .id = Command::CreateArchive,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Create archive..."),
      .menuRule = &onItem,
      .run = &PaneCommands::archiveClicked },
    { .id = Command::Unpack,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Unpack"),
      .menuRule = &onArchive,
      .run = &PaneCommands::unpackClicked },
    { .id = Command::Eject,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Eject"),
      .menuRule = &onVolume,
      .run = &PaneCommands::ejectClicked },
    { .id = Command::Quit,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Quit"),
      .shortcut = "Ctrl+Q", // beside the key shown: it quits every other program of the desktop
      .classic = ClassicAction::Exit },
    { .id = Command::SelectAll,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Select all"),
      .shortcut = "Ctrl+A",
      .run = &SelectionCommands::selectAllClicked },
    { .id = Command::SelectSame,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Select same"),
      .shortcut = "Ctrl+M",
      .run = &SelectionCommands::selectSameClicked },
    { .id = Command::GroupSelect,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Group selection..."),
      .shortcut = "Ctrl+G",
      .run = &SelectionCommands::groupSelectClicked },
    { .id = Command::GroupDeselect,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Group deselection..."),
      .shortcut = "Ctrl+Shift+G",
      .run = &SelectionCommands::groupDeselectClicked },
    { .id = Command::CompareFolders,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Compare folders"),
      .shortcut = "Ctrl+K",
      .run = &SelectionCommands::compareFoldersClicked },
    { .id = Command::Find,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Find..."),
      .shortcut = "Ctrl+F",
      .run = &SelectionCommands::searchClicked },
    { .id = Command::FindNext,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Find next"),
      .shortcut = "F3",
      .run = &SelectionCommands::searchNextClicked },
    { .id = Command::Reload,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Reload"),
      .icon = "view-refresh",
      .shortcut = "Ctrl+R",
      .run = &PaneCommands::reloadClicked },
    { .id = Command::SortByName,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Name"),
      .chosenRule = &isSortedBy<Column::Name> },
    { .id = Command::SortBySize,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Size"),
      .chosenRule = &isSortedBy<Column::Size> },
    { .id = Command::SortByDate,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Date"),
      .chosenRule = &isSortedBy<Column::Date> },
    { .id = Command::SortByType,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Type"),
      .chosenRule = &isSortedBy<Column::Type> },
    { .id = Command::ShowHiddenFiles, // the pane model turns its text to what it would do
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Show system files"),
      .shortcut = "Ctrl+H",
      .run = &PaneCommands::showHiddenFilesClicked },
    { .id = Command::ShowClassicButtons, // the window turns its text to what it would do
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Hide Classic buttons") },
    { .id = Command::ChooseInPath,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Choose in path"),
      .shortcut = "Ctrl+L" },
    { .id = Command::HomeFolder,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Home folder"),
      .icon = "user-home",
      .run = &FolderCommands::homeFolderClicked },
    { .id = Command::Volumes,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Volumes"),
      .icon = "drive-harddisk",
      .run = &FolderCommands::volumesClicked },
    { .id = Command::OtherFolder,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Other folder..."),
      .icon = "folder",
      .run = &FolderCommands::otherFolderClicked },
    { .id = Command::FolderOfOtherPane,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Folder of other pane"),
      .run = &FolderCommands::useOpositePath },
    { .id = Command::CopyPath,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Copy path"),
      .icon = "edit-copy",
      .run = &FolderCommands::copyPathClicked },
    { .id = Command::CopyLocalizedPath,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Copy path as shown"),
      .run = &FolderCommands::copyLocalizedPathClicked },
    { .id = Command::AddBookmark,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Add bookmark..."),
      .shortcut = "Ctrl+Shift+A",
      .menuRule = &onFolderOrNothing },
    { .id = Command::Terminal,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Terminal"),
      .run = Tool::Terminal },
    { .id = Command::Console,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Console"),
      .run = Tool::Console },
    { .id = Command::ActivityMonitor,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Activity monitor"),
      .run = Tool::ActivityMonitor },
    { .id = Command::DiskUtility,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Disk utility"),
      .run = Tool::DiskUtility },
    { .id = Command::Keychain,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Keychain"),
      .run = Tool::Keychain },
    { .id = Command::NetworkUtility,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Network"),
      .run = Tool::NetworkUtility },
    { .id = Command::NetInfoManager,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Users"),
      .run = Tool::NetInfoManager },
    { .id = Command::SystemProfiler,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "System information"),
      .run = Tool::SystemProfiler },
    { .id = Command::CheckForNewerVersion,
      .text = QT_TRANSLATE_NOOP("Twinleaf", "Check for newer version...") },
    { .id = Command::About, .text = QT_TRANSLATE_NOOP("Twinleaf", "About Twinleaf") },
};

constexpr bool hasEachOnceInOrder()
{
    for (std::size_t i = 0; i < std::size(table); ++i)
        if (table[i].id != Command(i))
            return false;
    return std::size(table) == std::size_t(Command::About) + 1;
}
static_assert(hasEachOnceInOrder());

} // namespace

std::span<const CommandEntry> commandTable()
{
    return table;
}

const CommandEntry &entryOf(Command command)
{
    return table[std::size_t(command)];
}

QString shownKey(const CommandEntry &entry, const ClassicKeys &keys)
{
    if (entry.classic)
        return keys.menuText(*entry.classic);
    return entry.paneKey ? localized(entry.paneKey) : QString();
}
