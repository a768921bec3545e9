#include "window/FolderStatus.h"

#include "files/DiskQuestions.h"
#include "tests/support/OwnMounts.h"
#include "tests/support/World.h"
#include "widgets/ElidedLabel.h"

class tst_FolderStatus : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFolderIsCounted_data()
    {
        QTest::addColumn<QString>("items");
        QTest::addColumn<QString>("text");
        QTest::newRow("nothing") << u""_s << u"Empty folder"_s;
        QTest::newRow("one each") << u"a/, b=1"_s << u"1 folder, 1 file, 1 Bytes"_s;
        QTest::newRow("folders have no size") << u"a/, b/, b/c=12345"_s << u"2 folders"_s;
        QTest::newRow("files without bytes") << u"a=, b="_s << u"2 files, 0 Bytes"_s;
        QTest::newRow("a package is no folder to a person")
            << u"x.app/, x.app/a=12, b=123"_s << u"2 files, 3 Bytes"_s;
        QTest::newRow("a link counts as what it leads to")
            << u"a/, link->a, gone->none"_s << u"2 folders, 1 file, 0 Bytes"_s;
    }
    void aFolderIsCounted()
    {
        QFETCH(QString, items);
        World world;
        makeTree(world.folder, u"left/"_s + items.split(u", "_s).join(u", left/"_s));
        world.start();
        QTEST(world.window.folderStatus.left.contents->text(), "text");
    }

    void aFilterTellsHowManyItLeaves()
    {
        StartedWorld world(u"left/a=, left/ab/, left/c="_s);
        const ElidedLabel &contents = *world.window.folderStatus.left.contents;
        world.model.setFilter(Side::Left, u"a"_s);
        QCOMPARE(contents.text(), u"2 of 3 items"_s);
        world.folder.write(u"left/d"_s); // noticed, and left out
        QTRY_COMPARE(contents.text(), u"2 of 4 items"_s);
        world.model.setFilter(Side::Left, {});
        QCOMPARE(contents.text(), u"1 folder, 3 files, 0 Bytes"_s);
    }

    void oneFolderInBothPanesIsSoonNoQuestionAnyMore()
    {
        World world(u"left/a=1"_s);
        world.startOnLeft();
        for (const Side side : { Side::Left, Side::Right })
            world.bus.post(DirectoryChanged[side], { .path = world.folder.path(u"left"_s) });
        for (int round = 0; round < 5; ++round) {
            QTRY_VERIFY(!DiskQuestions::anyUnderWay());
            QCoreApplication::sendPostedEvents(); // the answers
        }
        QVERIFY(!DiskQuestions::anyUnderWay());
        for (const Side side : { Side::Left, Side::Right })
            QVERIFY(!world.window.folderStatus[side].space->text().isEmpty());
    }

    void aVolumeTellsItsRoom()
    {
        const quint64 gigabyte = 1 << 30;
        QCOMPARE(textOf(VolumeSpace { gigabyte / 2, 3 * gigabyte, false }),
                 u"512 MB free of 3 GB"_s);
        QCOMPARE(textOf(VolumeSpace { gigabyte, 3 * gigabyte, true }), u"3 GB, read-only"_s);

        StartedWorld world(u"left/disk/, left/small/, left/small/file="_s);
        const ElidedLabel &space = *world.window.folderStatus.left.space;
        const ElidedLabel &contents = *world.window.folderStatus.left.contents;
        TestMount mount(world.folder.path(u"left/disk"_s));
        mount.fresh("size=1m");
        world.show(Side::Left, u"left/disk"_s);
        QTRY_COMPARE(space.text(), u"1 MB free of 1 MB"_s);
        // A new file is noticed by itself.
        world.folder.write(u"left/disk/half"_s, QByteArray(1 << 19, 'x'));
        QTRY_COMPARE(contents.text(), u"1 file, 512 KB"_s);
        QTRY_COMPARE(space.text(), u"512 KB free of 1 MB"_s);
        // And what takes room in other folders.
        world.folder.write(u"left/disk/half"_s, QByteArray(1 << 18, 'x'));
        QEvent active(QEvent::WindowActivate);
        QCoreApplication::sendEvent(&world.window, &active);
        QTRY_COMPARE(space.text(), u"768 KB free of 1 MB"_s);
        mount.makeReadOnly();
        QTRY_COMPARE_WITH_TIMEOUT(space.text(), u"1 MB, read-only"_s, 20'000);
        world.bus.post(DirectoryChanged.left, { .path = u"/proc/self"_s });
        QTRY_COMPARE(space.text(), QString()); // has no size
        QVERIFY(!contents.text().isEmpty());
    }
};

int main(int argc, char **argv)
{
    enterOwnMounts();
    const QApplication application(argc, argv);
    tst_FolderStatus test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_FolderStatus.moc"
