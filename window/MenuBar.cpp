#include "window/MenuBar.h"

#include "model/PaneWindow.h"
#include "platform/Icons.h"
#include "platform/Localized.h"
#include "views/ClassicKeys.h"
#include "window/PaneCommands.h"

#include <QMenu>
#include <QMenuBar>
#include <QShortcut>

using namespace Qt::StringLiterals;

MenuBar::MenuBar(QMenuBar &menuBar, PaneCommands &commands, PaneWindow &paneWindow,
                 const ClassicKeys &keys)
    : QObject(&menuBar)
    , menus(menuBar)
    , window(paneWindow)
{
    addFileMenu(commands, keys);
    addViewMenu(commands);
    addGoMenu();
}

QMenu &MenuBar::addMenu(const QString &title)
{
    QMenu *menu = menus.addMenu(title);
    connect(menu, &QMenu::aboutToShow, this, &MenuBar::validate);
    // A disabled item's key would be dead until the menu is opened again; the commands look at the
    // selection themselves.
    connect(menu, &QMenu::aboutToHide, this, &MenuBar::enableAll);
    return *menu;
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

void MenuBar::validated(QAction *item, CommandItem command)
{
    _validated.append({ item, command });
}

void MenuBar::addFileMenu(PaneCommands &commands, const ClassicKeys &keys)
{
    QMenu &file = addMenu(localized("&File"));
    validated(add(file, localized("Open"),
                  { .icon = u"document-open"_s, .key = localized("Return") },
                  [&commands] { commands.openClicked(); }),
              CommandItem::Open);
    file.addSeparator();
    validated(add(file, localized("New folder"),
                  { .icon = u"folder-new"_s, .key = keys.menuText(ClassicAction::NewFolder) },
                  [&commands] { commands.newFolderButtonClicked(); }),
              CommandItem::NewFolder);
    validated(add(file, localized("Duplicate"), { .key = u"Ctrl+D"_s, .isShortcut = true },
                  [&commands] { commands.duplicateClicked(); }),
              CommandItem::Duplicate);
    validated(add(file, localized("Rename"),
                  { .icon = u"edit-rename"_s, .key = keys.menuText(ClassicAction::Rename) },
                  [&commands] { commands.renameButtonClicked(); }),
              CommandItem::Rename);
    file.addSeparator();
    validated(add(file, localized("Copy"),
                  { .icon = u"edit-copy"_s, .key = keys.menuText(ClassicAction::Copy) },
                  [&commands] { commands.copyButtonClicked(); }),
              CommandItem::Copy);
    validated(add(file, localized("Move"),
                  { .icon = u"edit-move"_s, .key = keys.menuText(ClassicAction::Move) },
                  [&commands] { commands.moveButtonClicked(); }),
              CommandItem::Move);
    validated(add(file, localized("Delete"),
                  { .icon = u"edit-delete"_s, .key = keys.menuText(ClassicAction::Delete) },
                  [&commands] { commands.deleteButtonClicked(); }),
              CommandItem::Delete);
    file.addSeparator();
    const auto quit = [this] { Q_EMIT terminateAsked(); };
    add(file, localized("Quit"), { .key = keys.menuText(ClassicAction::Exit) }, quit);
    // Beside the key shown: the one that quits every other program of the desktop.
    connect(new QShortcut(QKeySequence::Quit, &menus), &QShortcut::activated, this, quit);
}

void MenuBar::addViewMenu(PaneCommands &commands)
{
    QMenu &view = addMenu(localized("&View"));
    validated(add(view, localized("Reload"),
                  { .icon = u"view-refresh"_s, .key = u"Ctrl+R"_s, .isShortcut = true },
                  [&commands] { commands.reloadClicked(); }),
              CommandItem::Reload);
    view.addSeparator();
    _showHiddenFiles =
        add(view, localized("Show system files"), { .key = u"Ctrl+H"_s, .isShortcut = true },
            [this] { Q_EMIT showHiddenFilesClicked(); });
    _showClassicButtons = add(view, localized("Hide Classic buttons"), {},
                              [this] { Q_EMIT showClassicButtonsClicked(); });
    validated(_showClassicButtons, CommandItem::ShowClassicButtons);
}

void MenuBar::addGoMenu()
{
    QMenu &go = addMenu(localized("&Go"));
    add(go, localized("Choose in Path"), { .key = u"Ctrl+L"_s, .isShortcut = true },
        [this] { Q_EMIT pathAsked(); });
    add(go, localized("Folder of Other Pane"), { .key = u"Ctrl+E"_s, .isShortcut = true },
        [this] { Q_EMIT useOpositePathAsked(); });
}

void MenuBar::validate() const
{
    const PaneTable *list = window.getFirstResponderTableView();
    const auto row = list ? std::optional(list->selectedRow()) : std::nullopt;
    for (const auto &[item, command] : _validated)
        item->setEnabled(validateMenuItem(command, row));
}

void MenuBar::enableAll() const
{
    for (const auto &[item, command] : _validated)
        item->setEnabled(true);
}
