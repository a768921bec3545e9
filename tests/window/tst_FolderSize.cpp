#include "window/FolderSize.h"

#include "tests/support/World.h"
#include "window/InfoBars.h"
#include "window/InfoBarTextField.h"

#include <QThread>

class tst_FolderSize : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachFileCountsItsSizeAnd4095Bytes()
    {
        const TestFolder folder;
        const std::atomic<bool> never { false };
        QCOMPARE(FolderSize::totalOf(folder.path(), never), 0.0);
        folder.makeFolder(u"a/b/c"_s);
        QCOMPARE(FolderSize::totalOf(folder.path(), never), 0.0); // folders count nothing
        folder.write(u"a/b/c/one"_s, "x");
        QCOMPARE(FolderSize::text(FolderSize::totalOf(folder.path(), never)), u"4 KB"_s);
        folder.write(QString(u"a/"_s) + QChar(0xDCFF), QByteArray(10, 'x'));
        folder.link(folder.path(), u"a/loop"_s); // counts as itself, is not entered
        QCOMPARE(FolderSize::totalOf(folder.path(), never),
                 1.0 + 10 + double(folder.path().size()) + 3 * 4095);
        const std::atomic<bool> stop { true };
        QVERIFY(FolderSize::totalOf(folder.path(), stop) < 3 * 4095);
        QCOMPARE(FolderSize::totalOf(folder.path(u"gone"_s), never), 0.0);
        const std::pair<double, QString> texts[] = {
            { 1023, u"1023 Bytes"_s }, { 1024, u"1 KB"_s },       { 1048575, u"1024 KB"_s },
            { 4608, u"4 KB"_s },       { 1048576, u"1.00 MB"_s }, { 1610612736, u"1.50 GB"_s },
        };
        for (const auto &[total, text] : texts)
            QCOMPARE(FolderSize::text(total), text);
    }

    void aFolderIsCountedOnceAtATimeWhateverIsSelectedMeanwhile()
    {
        StartedWorld world(u"right/a/file=x, right/b=x"_s);
        world.list(Side::Right).clearSelection();
        InfoBars bars(world.window.infoBars, world.model, world.twinleaf, world.defaults);
        FolderSize sizes(world.bus, world.model, world.twinleaf, bars);
        const auto text = [&](Side side) { return world.window.infoBars[side].fileSize->text(); };
        const auto ask = [&](const RowSet &rows) {
            world.bus.post(ShowFolderSize.right, { rows, world.model.rowsRight() });
            return text(Side::Right);
        };
        const int folder = world.row(u"a"_s, Side::Right);
        const int file = world.row(u"b"_s, Side::Right);
        for (const RowSet &rows : { RowSet(), RowSet { 0 }, RowSet { file } })
            QCOMPARE(ask(rows), u""_s);
        for (int times = 0; times < 3; ++times)
            QCOMPARE(ask({ folder, file }), u"Calculating..."_s);
        QCOMPARE(sizes.findChildren<QThread *>().size(), 1);
        QTRY_COMPARE(text(Side::Right), u"4 KB"_s);
        QCOMPARE(text(Side::Left), u"--"_s); // of its own row
        QTRY_COMPARE(sizes.findChildren<QThread *>().size(), 0);
        QCOMPARE(ask({ folder }), u"Calculating..."_s);
    }
};

QTEST_MAIN(tst_FolderSize)
#include "tst_FolderSize.moc"
