#include "settings/BookmarkStore.h"

#include "settings/SettingsKeys.h"
#include "settings/UserDefaults.h"
#include "tests/support/TestFolder.h"

#include <QTest>

using namespace Qt::StringLiterals;

class tst_BookmarkStore : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneShownPathIsOneBookmark();
    void onePathIsOneFavorite();

private:
    const TestFolder folder;
    UserDefaults defaults { folder.path(u"settings.plist"_s) };
    BookmarkStore store { defaults };
};

void tst_BookmarkStore::oneShownPathIsOneBookmark()
{
    // Damaged records are passed over.
    defaults.setValue(Settings::Bookmarks,
                      QVariantList { u"text"_s, 7, QVariantMap { { u"RealPath"_s, u"/a"_s } } });
    QVERIFY(store.getBookmarksFromUserDefaults().isEmpty());
    store.addBookmarkEntry(u"File System/a"_s, u"/a"_s);
    store.addBookmarkEntry(u"File System/b"_s, u"/b"_s);
    store.addBookmarkEntry(u"File System/a"_s, u"/elsewhere/a"_s);
    QCOMPARE(store.getBookmarksFromUserDefaults().size(), 2);
    QCOMPARE(store.getBookmarksFromUserDefaults().at(0).realPath, u"/a"_s);
    store.deleteBookmarkEntry({ u"File System/a"_s, u"/other"_s });
    QCOMPARE(store.getBookmarksFromUserDefaults().size(), 1);
    QCOMPARE(store.getBookmarksFromUserDefaults().at(0).realPath, u"/b"_s);
}

void tst_BookmarkStore::onePathIsOneFavorite()
{
    store.addFavoriteApplicationsEntry(u"/usr/share/applications/b.desktop"_s, u"x"_s);
    store.addFavoriteApplicationsEntry(u"/usr/share/applications/b.desktop"_s, u"y"_s);
    store.addFavoriteApplicationsEntry(u"/usr/share/applications/a.desktop"_s, u"z"_s);
    QCOMPARE(store.getFavoriteApplicationsFromUserDefaults().size(), 2);
    QCOMPARE(store.getFavoriteApplicationsFromUserDefaults().at(0).name, u"b.desktop"_s);
    store.deleteFavoriteApplicationsEntry(u"/usr/share/applications/b.desktop"_s);
    QCOMPARE(store.getFavoriteApplicationsFromUserDefaults().size(), 1);
}

QTEST_MAIN(tst_BookmarkStore)
#include "tst_BookmarkStore.moc"
