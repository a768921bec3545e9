#include "sheets/preferences/FavoriteApplicationsController.h"

#include "tests/sheets/ShownPreferences.h"

#include <QTabWidget>

class tst_FavoriteApplications : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void favoritesAreAddedOnceMovedAndDeletedByKeys()
    {
        StartedWorld world;
        const auto names = [&world] {
            QStringList all;
            for (const auto &each :
                 world.application.bookmarkStore().getFavoriteApplicationsFromUserDefaults())
                all.append(each.name);
            return all.join(u' ');
        };
        preferences(
            world,
            [&](const Shown &shown) {
                for (const char *path :
                     { "/a/One.app", "/b/Two.app", "/a/One.app", "/c/Three.app" }) {
                    world.openPanel.application = QLatin1StringView(path);
                    shown.click(u"Add..."_s);
                }
                QCOMPARE(names(), u"One.app Two.app Three.app"_s);
                RecordTable &table = shown.table();
                table.selectRow(0);
                QTest::keyClick(&table, Qt::Key_Down, Qt::AltModifier);
                QCOMPARE(names(), u"Two.app One.app Three.app"_s);
                QCOMPARE(table.selectedRow(), 1);
                QTest::keyClick(&table, Qt::Key_Up, Qt::AltModifier);
                QTest::keyClick(&table, Qt::Key_Up, Qt::AltModifier); // at the top already
                QTest::keyClick(&table, Qt::Key_Delete);
                QCOMPARE(names(), u"Two.app Three.app"_s);
                table.clearSelection();
                QTest::keyClick(&table, Qt::Key_Delete);
            },
            End::Close);
        QCOMPARE(names(), u"Two.app Three.app"_s);
        // Without OK, too, they are what there is now.
        const QList<QAction *> items = world.application.menus().openWithMenu().actions();
        QCOMPARE(items.first()->text(), u"Two.app"_s);
        QCOMPARE(world.application.toolbar().favoriteApplications().size(), 2);
    }

    void ofThousandsOfFavoritesOnlyTheVisibleOnesAreLookedAt()
    {
        World world;
        QVariantList favorites;
        for (int i = 0; i < 5000; ++i) {
            const QString name = u"%1.app"_s.arg(i);
            if (i < 50) // more than fit in the table
                makeTree(world.folder, u"left/"_s + name);
            favorites.append(QVariantMap {
                { u"Name"_s, name }, { u"RealPath"_s, world.folder.path(u"left/"_s + name) } });
        }
        world.defaults.setValue(Settings::OpenWithFavoriteApplications, favorites);
        world.start();
        world.workspace.iconLoads.clear();
        preferences(
            world,
            [&](const Shown &shown) {
                auto &tabs = *shown.sheet.findChild<QTabWidget *>();
                tabs.setCurrentIndex(tabs.count() - 1);
                QTRY_VERIFY(world.workspace.iconLoads.size() > 2);
                RecordTable &table = shown.table();
                const int page = table.viewport()->height()
                    / table.visualRect(table.model()->index(0, 0)).height();
                QVERIFY(world.workspace.iconLoads.size() <= page + 2);
                const auto before = world.workspace.iconLoads;
                table.viewport()->repaint();
                QCOMPARE(world.workspace.iconLoads, before); // kept
            },
            End::Close);
    }
};

QTEST_MAIN(tst_FavoriteApplications)
#include "tst_FavoriteApplications.moc"
