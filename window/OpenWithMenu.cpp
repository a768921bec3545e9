#include "window/OpenWithMenu.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/PaneCommands.h"
#include "model/FileQueries.h"
#include "platform/Workspace.h"
#include "settings/BookmarkStore.h"
#include "widgets/MenuText.h"

#include <QMenu>

OpenWithMenu::OpenWithMenu(QMenu &menu, const BookmarkStore &favorites, PaneCommands &paneCommands,
                           const Workspace &desktop, const FileQueries &fileQueries)
    : menuOpenWithFavorite(menu)
    , store(favorites)
    , commands(paneCommands)
    , workspace(desktop)
    , queries(fileQueries)
{
}

void OpenWithMenu::setOpenWithFavoriteApplications()
{
    menuOpenWithFavorite.clear();
    const auto favorites = store.getFavoriteApplicationsFromUserDefaults();
    for (const FavoriteApplication &favorite : favorites) {
        // Not from a server that is gone.
        const QIcon icon = queries.isThere(favorite.realPath)
            ? workspace.iconOfApplication(favorite.realPath)
            : QIcon();
        QAction *item = menuOpenWithFavorite.addAction(icon, menuText(favorite.name));
        connect(item, &QAction::triggered, this, [this, name = favorite.name] {
            Arrivals::afterWait(this, [this, name] { clickedOpenWithFavoriteApplications(name); });
        });
    }
    if (!favorites.isEmpty())
        menuOpenWithFavorite.addSeparator();
    connect(menuOpenWithFavorite.addAction(localized("Other...")), &QAction::triggered, this,
            [this] { Arrivals::afterWait(this, [this] { commands.openWithClicked(); }); });
}

void OpenWithMenu::clickedOpenWithFavoriteApplications(const QString &name)
{
    // Of several with one name the last counts.
    QString path;
    const auto favorites = store.getFavoriteApplicationsFromUserDefaults();
    for (const FavoriteApplication &favorite : favorites)
        if (favorite.name == name)
            path = favorite.realPath;
    if (!path.isEmpty())
        commands.openWith(path);
}
