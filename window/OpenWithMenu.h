#pragma once

#include "widgets/MenuIcons.h"

#include <QObject>

class BookmarkStore;
class PaneCommands;
class PathIcons;
class QMenu;

// The menu of the applications to open the selected files with: the favourites, then any other.
class OpenWithMenu final : public QObject {
    Q_OBJECT

public:
    OpenWithMenu(QMenu &menu, const BookmarkStore &store, PaneCommands &commands,
                 PathIcons &applicationIcons);

    void setOpenWithFavoriteApplications(); // builds it anew
    void clickedOpenWithFavoriteApplications(const QString &name);

private:
    QMenu &menuOpenWithFavorite;
    const BookmarkStore &store;
    PaneCommands &commands;
    const MenuIcons _icons;
};
