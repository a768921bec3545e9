#pragma once

#include "settings/BookmarkStore.h"
#include "window/ToolbarSettings.h"

#include <QHash>
#include <QIcon>
#include <QObject>
#include <QPointer>

class Commands;
class Launching;
class MainWindowLayout;
class PathIcons;
struct MenuState;
class QAction;
class UnifiedToolBar;

// The toolbar of the main window: which items it can show, how each looks, and what happens when it
// is clicked. While it is hidden there is no bar at all. Main thread.
class Toolbar final : public QObject {
    Q_OBJECT

public:
    Toolbar(Commands &commands, const BookmarkStore &favorites, Launching &launching,
            PathIcons &applicationIcons, UserDefaults &defaults);

    // Reads the favourites, and gives the window its bar, unless that is hidden. At the start, and
    // when the favourites may have changed.
    void setupToolbarForWindow(MainWindowLayout &window);

    // Every item that the bar may show, in the order in which they are offered.
    QStringList toolbarAllowedItemIdentifiers() const;
    // A new item, which belongs to the bar; null for what nobody knows.
    QAction *itemForItemIdentifier(const QString &identifier);

    const QList<FavoriteApplication> &favoriteApplications() const { return _favorites; }
    void setFavoriteApplications(const QList<FavoriteApplication> &favorites);
    void favoriteApplicationButtonClicked(const QString &label); // launches each of that name

    // What stands for an identifier. All texts are plain.
    struct Look {
        QString label;
        QString toolTip;
        bool isOffered = true; // false: nothing is behind it now, and it is not to be seen
    };
    std::optional<Look> look(const QString &identifier) const; // nothing: nobody knows it
    QIcon icon(const QString &identifier);

    QStringList identifiers() const { return _settings.identifiers(); }
    ToolbarDisplay display() const { return _settings.display(); }
    // The person's choices: stored and shown at once.
    void setIdentifiers(const QStringList &identifiers);
    void setDisplay(ToolbarDisplay display);
    void restoreDefaults();

    void showToolbarClicked();
    void validate(const MenuState &state); // by the menus' rules
    void takeKeyboard();

Q_SIGNALS:
    void changed(); // its items, or which of all are offered
    void iconArrived(const QString &identifier);

private:
    void showOrHide(); // as stored
    void fill();
    void showOffered();
    void showIcon(const QString &application);
    void popUpMenu(const QPoint &position);
    const FavoriteApplication *favoriteOf(const QString &name) const;

    Commands &commands;
    const BookmarkStore &store;
    Launching &launching;
    PathIcons &icons;
    ToolbarSettings _settings;
    QList<FavoriteApplication> _favorites;
    QHash<QString, qsizetype> _places; // of them, by name
    MainWindowLayout *_window = nullptr;
    QPointer<UnifiedToolBar> _bar; // none while hidden
    QList<std::pair<QString, QAction *>> _items; // in the bar, by identifier
};
