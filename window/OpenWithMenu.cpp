#include "window/OpenWithMenu.h"

#include "base/Arrivals.h"
#include "base/Localized.h"
#include "commands/PaneCommands.h"
#include "settings/BookmarkStore.h"
#include "widgets/Icons.h"
#include "widgets/MenuText.h"

#include <QMenu>

using namespace Qt::StringLiterals;

OpenWithMenu::OpenWithMenu(QMenu &menu, const BookmarkStore &favorites, PaneCommands &paneCommands,
                           PathIcons &applicationIcons)
    : menuOpenWithFavorite(menu)
    , store(favorites)
    , commands(paneCommands)
    , _icons(menu, applicationIcons)
{
}

void OpenWithMenu::setOpenWithFavoriteApplications()
{
    menuOpenWithFavorite.clear();
    const QIcon generic = themedIcon(u"application-x-executable"_s);
    const auto favorites = store.getFavoriteApplicationsFromUserDefaults();
    for (const FavoriteApplication &favorite : favorites) {
        QAction *item = menuOpenWithFavorite.addAction(_icons.icon(favorite.realPath, generic),
                                                       menuText(favorite.name));
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
