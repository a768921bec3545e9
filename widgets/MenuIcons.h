#pragma once

#include <QIcon>

class PathIcons;
class QMenu;

// The icons of a menu's items that stand for paths. One is asked for when its item is painted, so
// of a long menu those on the screen; until it has come, and where nothing stands, the item shows
// the general one. No item changes, which would have the whole menu measure itself. Main thread.
class MenuIcons final {
public:
    MenuIcons(QMenu &menu, PathIcons &icons); // both outlive the items

    QIcon icon(const QString &path, const QIcon &general) const;

private:
    PathIcons &icons;
};
