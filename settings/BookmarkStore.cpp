#include "settings/BookmarkStore.h"

#include "files/PathText.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString LocalizedPath = u"LocalizedPath"_s;
const QString RealPath = u"RealPath"_s;
const QString Name = u"Name"_s;

// Whether it is a record with the text; an element of another kind has none, not an empty one.
bool has(const QVariant &element, const QString &key, const QString &text)
{
    const QVariantMap record = element.toMap();
    return record.contains(key) && record[key].toString() == text;
}

// The records with another at the end, unless one has the same text under the key.
UserDefaults::Edit adding(const QVariantMap &record, const QString &key)
{
    return [record, key](const QVariant &stored) {
        QVariantList records = stored.toList();
        const bool known = std::ranges::any_of(
            records, [&](const QVariant &each) { return has(each, key, record[key].toString()); });
        if (!known)
            records.append(record);
        return records;
    };
}

UserDefaults::Edit deleting(const QString &text, const QString &key)
{
    return [text, key](const QVariant &stored) {
        QVariantList records = stored.toList();
        records.removeIf([&](const QVariant &each) { return has(each, key, text); });
        return records;
    };
}

// All records with the text together, before the first with the other text.
UserDefaults::Edit moving(const QString &text, const std::optional<QString> &before,
                          const QString &key)
{
    return [text, before, key](const QVariant &stored) -> QVariant {
        if (before == text)
            return stored;
        const QVariantList records = stored.toList();
        QVariantList moved;
        QVariantList others;
        for (const QVariant &each : records)
            (has(each, key, text) ? moved : others).append(each);
        auto place = others.cend();
        if (before)
            place = std::find_if(others.cbegin(), others.cend(),
                                 [&](const QVariant &each) { return has(each, key, *before); });
        return others.first(place - others.cbegin()) + moved
            + others.sliced(place - others.cbegin());
    };
}

} // namespace

QList<Bookmark> BookmarkStore::getBookmarksFromUserDefaults() const
{
    QList<Bookmark> bookmarks;
    const QVariantList records = defaults.array(Settings::Bookmarks).value_or(QVariantList());
    for (const QVariant &each : records) {
        const QVariantMap record = each.toMap();
        if (record.contains(LocalizedPath) && record.contains(RealPath))
            bookmarks.append({ record[LocalizedPath].toString(), record[RealPath].toString() });
    }
    return bookmarks;
}

void BookmarkStore::addBookmarkEntry(const QString &localizedPath, const QString &realPath)
{
    defaults.change(
        Settings::Bookmarks,
        adding({ { LocalizedPath, localizedPath }, { RealPath, realPath } }, LocalizedPath));
}

void BookmarkStore::deleteBookmarkEntry(const Bookmark &bookmark)
{
    defaults.change(Settings::Bookmarks, deleting(bookmark.localizedPath, LocalizedPath));
}

void BookmarkStore::moveBookmarkEntry(const Bookmark &bookmark,
                                      const std::optional<Bookmark> &before)
{
    defaults.change(Settings::Bookmarks,
                    moving(bookmark.localizedPath,
                           before ? std::optional(before->localizedPath) : std::nullopt,
                           LocalizedPath));
}

QList<FavoriteApplication> BookmarkStore::getFavoriteApplicationsFromUserDefaults() const
{
    QList<FavoriteApplication> favorites;
    const QVariantList records =
        defaults.array(Settings::OpenWithFavoriteApplications).value_or(QVariantList());
    for (const QVariant &each : records) {
        const QVariantMap record = each.toMap();
        if (record.contains(Name) && record.contains(RealPath))
            favorites.append({ record[RealPath].toString(), record[LocalizedPath].toString(),
                               record[Name].toString() });
    }
    return favorites;
}

void BookmarkStore::addFavoriteApplicationsEntry(const QString &path, const QString &localizedPath)
{
    defaults.change(Settings::OpenWithFavoriteApplications,
                    adding({ { RealPath, path },
                             { LocalizedPath, localizedPath },
                             { Name, PathText::lastComponent(path) } },
                           RealPath));
}

void BookmarkStore::deleteFavoriteApplicationsEntry(const QString &realPath)
{
    defaults.change(Settings::OpenWithFavoriteApplications, deleting(realPath, RealPath));
}

void BookmarkStore::moveFavoriteApplicationsEntry(const QString &realPath,
                                                  const std::optional<QString> &before)
{
    defaults.change(Settings::OpenWithFavoriteApplications, moving(realPath, before, RealPath));
}
