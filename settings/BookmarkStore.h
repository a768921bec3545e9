#pragma once

#include <QList>
#include <QString>

#include <optional>

class UserDefaults;

// A folder of the Bookmarks menu. Two with one shown path are the same bookmark.
struct Bookmark {
    QString localizedPath;
    QString realPath;
};

// An application of the Open With menu. Two with one path are the same favourite.
struct FavoriteApplication {
    QString realPath;
    QString localizedPath;
    QString name;
};

// The bookmarks and favourite applications in the settings, which are their only copy; new ones go
// to the end of those that are stored then, by whichever program. Entries that are no such records
// are passed over. Main thread.
class BookmarkStore {
public:
    explicit BookmarkStore(UserDefaults &settings)
        : defaults(settings)
    {
    }

    QList<Bookmark> getBookmarksFromUserDefaults() const;
    void addBookmarkEntry(const QString &localizedPath, const QString &realPath);
    void deleteBookmarkEntry(const Bookmark &bookmark);
    // Before the other one, or to the end; where another program took that out, to the end.
    void moveBookmarkEntry(const Bookmark &bookmark, const std::optional<Bookmark> &before);

    QList<FavoriteApplication> getFavoriteApplicationsFromUserDefaults() const;
    void addFavoriteApplicationsEntry(const QString &path, const QString &localizedPath);
    void deleteFavoriteApplicationsEntry(const QString &realPath);
    void moveFavoriteApplicationsEntry(const QString &realPath,
                                       const std::optional<QString> &before);

private:
    UserDefaults &defaults;
};
