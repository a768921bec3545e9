#include "window/BookmarksMenu.h"

#include "base/Arrivals.h"
#include "commands/PaneCommands.h"
#include "files/FileName.h"
#include "files/PathText.h"
#include "model/FileQueries.h"
#include "model/MainModel.h"
#include "model/PaneWindow.h"
#include "platform/Alerts.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"

#include <QMenu>

using namespace Qt::StringLiterals;

BookmarksMenu::BookmarksMenu(QMenu &menu, BookmarkStore &bookmarks,
                             const PaneCommands &paneCommands, PaneWindow &paneWindow,
                             const MainModel &model, const FileQueries &fileQueries,
                             Alerts &alertsToAsk, PathIcons &fileIcons)
    : bookmarksMenu(menu)
    , _firstBookmark(menu.actions().size())
    , store(bookmarks)
    , commands(paneCommands)
    , window(paneWindow)
    , mainModel(model)
    , queries(fileQueries)
    , alerts(alertsToAsk)
    , _icons(menu, fileIcons)
{
}

std::optional<QString> BookmarksMenu::folderToAdd() const
{
    const QString path = commands.selectedPath(true);
    return !path.isEmpty() && queries.isDirectory(path) ? std::optional(path) : std::nullopt;
}

void BookmarksMenu::setBookmarksMenu()
{
    const auto shown = bookmarksMenu.actions().mid(_firstBookmark);
    qDeleteAll(shown);
    const QIcon generic = themedIcon(u"folder"_s);
    const auto bookmarks = store.getBookmarksFromUserDefaults();
    for (const Bookmark &bookmark : bookmarks) {
        QAction *item = bookmarksMenu.addAction(_icons.icon(bookmark.realPath, generic),
                                                menuText(bookmark.localizedPath));
        connect(item, &QAction::triggered, this, [this, title = bookmark.localizedPath] {
            Arrivals::afterWait(this, [this, title] { clickedBookmark(title); });
        });
    }
}

void BookmarksMenu::addBookmark()
{
    const auto path = folderToAdd();
    if (!path)
        return;
    const QString shown = queries.getLocalizedPath(*path);
    // Kept: what is typed there only confirms; the bookmark is named by the folder's own path.
    if (window.getStringFromInputSheet(localized("Enter path for bookmark:"), shown).isEmpty())
        return;
    store.addBookmarkEntry(shown, *path);
    setBookmarksMenu();
}

void BookmarksMenu::clickedBookmark(const QString &title)
{
    // Of several with one title the last counts.
    QString path;
    const auto bookmarks = store.getBookmarksFromUserDefaults();
    for (const Bookmark &bookmark : bookmarks)
        if (bookmark.localizedPath == title)
            path = bookmark.realPath;
    if (const auto error = queries.whyNotThere(path)) {
        alerts.ask(
            Alert::failure(localized("Folder doesn't exists or it's not a folder!"),
                           FileName::shown(path) + u'\n' + QString::fromStdString(error.message()),
                           localized("Ok")));
        return;
    }
    if (const PaneTable *list = window.getFirstResponderTableView())
        mainModel.showFolder(list->side(), { .path = path, .item = PathText::lastComponent(path) });
}
