#include "settings/BookmarkStore.h"

#include "files/PathText.h"
#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"

using namespace Qt::StringLiterals;

namespace {

const QString LocalizedPath = u"LocalizedPath"_s;
const QString RealPath = u"RealPath"_s;
const QString Name = u"Name"_s;

bool holds(const QVariantList &records, const QString &key, const QString &text)
{
    return std::any_of(records.begin(), records.end(), [&](const QVariant &record) {
        return record.toMap().value(key).toString() == text;
    });
}

QVariantList without(QVariantList records, const QString &key, const QString &text)
{
    records.removeIf(
        [&](const QVariant &record) { return record.toMap().value(key).toString() == text; });
    return records;
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
    QVariantList records = defaults.array(Settings::Bookmarks).value_or(QVariantList());
    if (holds(records, LocalizedPath, localizedPath))
        return;
    records.append(QVariantMap { { LocalizedPath, localizedPath }, { RealPath, realPath } });
    defaults.setValue(Settings::Bookmarks, records);
}

void BookmarkStore::deleteBookmarkEntry(const Bookmark &bookmark)
{
    const auto records = defaults.array(Settings::Bookmarks).value_or(QVariantList());
    defaults.setValue(Settings::Bookmarks, without(records, LocalizedPath, bookmark.localizedPath));
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
    QVariantList records =
        defaults.array(Settings::OpenWithFavoriteApplications).value_or(QVariantList());
    if (holds(records, RealPath, path))
        return;
    records.append(QVariantMap { { RealPath, path },
                                 { LocalizedPath, localizedPath },
                                 { Name, PathText::lastComponent(path) } });
    defaults.setValue(Settings::OpenWithFavoriteApplications, records);
}

void BookmarkStore::deleteFavoriteApplicationsEntry(const QString &realPath)
{
    const auto records =
        defaults.array(Settings::OpenWithFavoriteApplications).value_or(QVariantList());
    defaults.setValue(Settings::OpenWithFavoriteApplications, without(records, RealPath, realPath));
}
