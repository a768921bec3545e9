#pragma once

#include "settings/BookmarkStore.h"
#include "widgets/MenuIcons.h"

#include <QObject>

#include <optional>

class Alerts;
class FileQueries;
class MainModel;
class PaneCommands;
class PaneWindow;
class PathIcons;
class QMenu;

// The menu of the bookmarked folders, and adding to it.
class BookmarksMenu final : public QObject {
    Q_OBJECT

public:
    // Below the lines that the menu has already.
    BookmarksMenu(QMenu &menu, BookmarkStore &store, const PaneCommands &commands,
                  PaneWindow &window, const MainModel &mainModel, const FileQueries &queries,
                  Alerts &alerts, PathIcons &fileIcons);

    void setBookmarksMenu(); // builds it anew
    void addBookmark();
    void clickedBookmark(const QString &title);

private:
    std::optional<QString> folderToAdd() const; // the selected one

    QMenu &bookmarksMenu;
    const qsizetype _firstBookmark; // its place in the menu
    BookmarkStore &store;
    const PaneCommands &commands;
    PaneWindow &window;
    const MainModel &mainModel;
    const FileQueries &queries;
    Alerts &alerts;
    const MenuIcons _icons;
};
