#include "window/MenuBar.h"

#include "base/Localized.h"
#include "commands/FolderCommands.h"
#include "commands/PaneCommands.h"
#include "commands/SelectionCommands.h"
#include "model/PaneWindow.h"
#include "views/ClassicKeys.h"
#include "widgets/Icons.h"

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

using namespace Qt::StringLiterals;

MenuBar::MenuBar(QMenuBar &menuBar, PaneCommands &paneCommands, FolderCommands &folderCommands,
                 SelectionCommands &selection, PaneWindow &paneWindow,
                 const FileQueries &fileQueries, const ClassicKeys &keys)
    : QObject(&menuBar)
    , menus(menuBar)
    , commands(paneCommands)
    , folders(folderCommands)
    , window(paneWindow)
    , queries(fileQueries)
{
    addFileMenu(keys);
    addSelectMenu(selection);
    addViewMenu();
    addGoMenu();
    _bookmarksMenu = &addMenu(localized("&Bookmarks"));
    _toolsMenu = &addMenu(localized("&Tools"));
    _toolsMenu->menuAction()->setVisible(false); // until a tool is found
    _helpMenu = &addMenu(localized("&Help"));
    setUpPopUpMenu();
}

QMenu &MenuBar::addMenu(const QString &title)
{
    QMenu *menu = menus.addMenu(title);
    validateWhileOpen(*menu);
    return *menu;
}

void MenuBar::validateWhileOpen(QMenu &menu)
{
    connect(&menu, &QMenu::aboutToShow, this, &MenuBar::validate);
    // A disabled item's key would be dead until the menu is opened again; the commands look at the
    // selection themselves.
    connect(&menu, &QMenu::aboutToHide, this, &MenuBar::enableAll);
}

QAction *MenuBar::add(QMenu &menu, const QString &text, const Look &look,
                      const std::function<void()> &command)
{
    QAction *item = menu.addAction(text);
    if (!look.icon.isEmpty())
        item->setIcon(themedIcon(look.icon));
    if (look.isShortcut)
        item->setShortcut(QKeySequence(look.key));
    else if (!look.key.isEmpty())
        item->setText(text + u'\t' + look.key);
    connect(item, &QAction::triggered, this, command);
    return item;
}

QAction *MenuBar::addValidated(QMenu &menu, CommandItem item, const QString &text, const Look &look,
                               void (PaneCommands::*command)())
{
    QAction *action = add(menu, text, look, [this, command] { (commands.*command)(); });
    _validated.append({ action, item });
    return action;
}

void MenuBar::addFileMenu(const ClassicKeys &keys)
{
    QMenu &file = addMenu(localized("&File"));
    addValidated(file, CommandItem::Open, localized("Open"),
                 { .icon = u"document-open"_s, .key = localized("Return") },
                 &PaneCommands::openClicked);
    _openWithMenu = file.addMenu(localized("Open with"));
    _validated.append({ _openWithMenu->menuAction(), CommandItem::OpenWith });
    addValidated(file, CommandItem::PackageContent, localized("Show package contents"), {},
                 &PaneCommands::packageContentClicked);
    file.addSeparator();
    addValidated(file, CommandItem::NewFolder, localized("New folder"),
                 { .icon = u"folder-new"_s, .key = keys.menuText(ClassicAction::NewFolder) },
                 &PaneCommands::newFolderButtonClicked);
    addValidated(file, CommandItem::Duplicate, localized("Duplicate"),
                 { .key = u"Ctrl+D"_s, .isShortcut = true }, &PaneCommands::duplicateClicked);
    addValidated(file, CommandItem::Rename, localized("Rename"),
                 { .icon = u"edit-rename"_s, .key = keys.menuText(ClassicAction::Rename) },
                 &PaneCommands::renameButtonClicked);
    file.addSeparator();
    addValidated(file, CommandItem::Copy, localized("Copy"),
                 { .icon = u"edit-copy"_s, .key = keys.menuText(ClassicAction::Copy) },
                 &PaneCommands::copyButtonClicked);
    addValidated(file, CommandItem::Move, localized("Move"),
                 { .icon = u"edit-move"_s, .key = keys.menuText(ClassicAction::Move) },
                 &PaneCommands::moveButtonClicked);
    addValidated(file, CommandItem::Delete, localized("Delete"),
                 { .icon = u"edit-delete"_s, .key = keys.menuText(ClassicAction::Delete) },
                 &PaneCommands::deleteButtonClicked);
    file.addSeparator();
    addValidated(file, CommandItem::CreateArchive, localized("Create archive..."), {},
                 &PaneCommands::archiveClicked);
    addValidated(file, CommandItem::Unpack, localized("Unpack"), {}, &PaneCommands::unpackClicked);
    file.addSeparator();
    addValidated(file, CommandItem::Eject, localized("Eject"), {}, &PaneCommands::ejectClicked);
    file.addSeparator();
    const auto quit = [this] { Q_EMIT terminateAsked(); };
    add(file, localized("Quit"), { .key = keys.menuText(ClassicAction::Exit) }, quit);
    // Beside the key shown: the one that quits every other program of the desktop.
    connect(new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q), &menus), &QShortcut::activated, this,
            quit);
}

void MenuBar::addSelectMenu(SelectionCommands &selection)
{
    QMenu &menu = addMenu(localized("&Select"));
    const auto item = [&](const char *text, const QString &key, auto command) {
        add(menu, localized(text), { .key = key, .isShortcut = true },
            [&selection, command] { (selection.*command)(); });
    };
    item(QT_TRANSLATE_NOOP("Twinleaf", "Select all"), u"Ctrl+A"_s,
         &SelectionCommands::selectAllClicked);
    item(QT_TRANSLATE_NOOP("Twinleaf", "Select same"), u"Ctrl+M"_s,
         &SelectionCommands::selectSameClicked);
    item(QT_TRANSLATE_NOOP("Twinleaf", "Group selection..."), u"Ctrl+G"_s,
         &SelectionCommands::groupSelectClicked);
    item(QT_TRANSLATE_NOOP("Twinleaf", "Group deselection..."), u"Ctrl+Shift+G"_s,
         &SelectionCommands::groupDeselectClicked);
    item(QT_TRANSLATE_NOOP("Twinleaf", "Compare folders"), u"Ctrl+K"_s,
         &SelectionCommands::compareFoldersClicked);
    menu.addSeparator();
    add(menu, localized("Find..."), { .key = u"Ctrl+F"_s, .isShortcut = true },
        [&selection] { selection.searchClicked(SelectionCommands::Ask::Always); });
    add(menu, localized("Find next"), { .key = u"F3"_s, .isShortcut = true },
        [&selection] { selection.searchClicked(SelectionCommands::Ask::WithoutTerm); });
}

void MenuBar::addViewMenu()
{
    QMenu &view = addMenu(localized("&View"));
    addValidated(view, CommandItem::Reload, localized("Reload"),
                 { .icon = u"view-refresh"_s, .key = u"Ctrl+R"_s, .isShortcut = true },
                 &PaneCommands::reloadClicked);
    view.addSeparator();
    _showHiddenFiles =
        add(view, localized("Show system files"), { .key = u"Ctrl+H"_s, .isShortcut = true },
            [this] { Q_EMIT showHiddenFilesClicked(); });
    _showClassicButtons = add(view, localized("Hide Classic buttons"), {},
                              [this] { Q_EMIT showClassicButtonsClicked(); });
    _validated.append({ _showClassicButtons, CommandItem::ShowClassicButtons });
}

void MenuBar::addGoMenu()
{
    QMenu &go = addMenu(localized("&Go"));
    add(go, localized("Choose in path"), { .key = u"Ctrl+L"_s, .isShortcut = true },
        [this] { Q_EMIT pathAsked(); });
    go.addSeparator();
    for (const Side side : { Side::Left, Side::Right }) {
        QMenu *menu = go.addMenu(localized(side == Side::Left ? "Left pane" : "Right pane"));
        _pathMenus[side] = menu;
        add(*menu, localized("Home folder"), { .icon = u"user-home"_s },
            [this, side] { folders.homeFolderClicked(side); });
        add(*menu, localized("Volumes"), { .icon = u"drive-harddisk"_s },
            [this, side] { folders.volumesClicked(side); });
        add(*menu, localized("Other folder..."), { .icon = u"folder"_s },
            [this, side] { folders.otherFolderClicked(side); });
        add(*menu, localized("Folder of other pane"), {},
            [this, side] { folders.useOpositePath(side); });
        menu->addSeparator();
        add(*menu, localized("Copy path"), { .icon = u"edit-copy"_s },
            [this, side] { folders.copyPathClicked(side, FolderCommands::PathForm::Plain); });
        add(*menu, localized("Copy path as shown"), {},
            [this, side] { folders.copyPathClicked(side, FolderCommands::PathForm::Localized); });
    }
}

void MenuBar::setUpPopUpMenu()
{
    _popUpMenu = new QMenu(&menus);
    validateWhileOpen(*_popUpMenu);
    for (const auto &[item, command] : std::as_const(_validated)) {
        if (command == CommandItem::Reload)
            break; // what follows is about the pane, not about its items
        if (command == CommandItem::NewFolder || command == CommandItem::Copy
            || command == CommandItem::CreateArchive || command == CommandItem::Eject)
            _popUpMenu->addSeparator();
        _popUpMenu->addAction(item);
    }
}

void MenuBar::addTool(const QString &text, const QIcon &icon, const std::function<void()> &launch)
{
    QAction *item = _toolsMenu->addAction(icon, text);
    connect(item, &QAction::triggered, this, launch);
    _toolsMenu->menuAction()->setVisible(true);
}

void MenuBar::addHelp(const QString &text, const std::function<void()> &command)
{
    connect(_helpMenu->addAction(text), &QAction::triggered, this, command);
}

void MenuBar::validate() const
{
    MenuState state;
    if (const PaneTable *list = window.getFirstResponderTableView())
        state = { list->selectedRow(), commands.selectedPath() };
    for (const auto &[item, command] : _validated)
        item->setEnabled(validateMenuItem(command, state, queries));
}

void MenuBar::enableAll() const
{
    for (const auto &[item, command] : _validated)
        item->setEnabled(true);
}
