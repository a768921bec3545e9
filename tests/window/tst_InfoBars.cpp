#include "window/InfoBars.h"

#include "files/FolderWalk.h"
#include "tests/support/World.h"
#include "window/FolderSize.h"
#include "window/InfoBarTextField.h"

class tst_InfoBars : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theInfoBarTellsOfTheSelection()
    {
        World world;
        world.folder.write(u"left/a"_s, QByteArray(1536, 'x'));
        world.folder.write(u"left/b"_s, QByteArray(300, 'x'));
        world.start();
        const InfoBarFields &bar = world.window.infoBars.left;
        world.select(u"b"_s);
        QCOMPARE(bar.fileName->text(), u"b"_s);
        QCOMPARE(bar.fileSize->text(), u"300 Bytes"_s);
        QVERIFY(!bar.fileDate->text().isEmpty());
        // Kept: the sum of the rounded texts, 2 KB and 300 bytes.
        world.window.leftFileList->selectRows({ 1, 2 });
        QCOMPARE(bar.fileName->text(), u"2 item(s)"_s);
        QCOMPARE(bar.fileSize->text(), SizeText::getCalcFileSizeWithDouble(2048 + 300));
        QCOMPARE(bar.fileDate->text(), QString());
        world.window.leftFileList->clearSelection();
        QCOMPARE(bar.fileName->text(), QString());
        // Nor does it tell of an item that went with its listing.
        world.select(u"b"_s);
        world.window.leftFileList->reset();
        QCOMPARE(bar.fileName->text(), QString());
    }

    void eachFileCountsItsSizeAnd4095Bytes()
    {
        const TestFolder folder;
        const std::atomic<bool> never { false };
        QCOMPARE(folderTotal(folder.path(), never), 0.0);
        folder.makeFolder(u"a/b/c"_s);
        QCOMPARE(folderTotal(folder.path(), never), 0.0); // folders count nothing
        folder.write(u"a/b/c/one"_s, "x");
        QCOMPARE(folderTotal(folder.path(), never), 4096.0);
        folder.write(QString(u"a/"_s) + QChar(0xDCFF), QByteArray(10, 'x'));
        folder.link(folder.path(), u"a/loop"_s); // counts as itself, is not entered
        QCOMPARE(folderTotal(folder.path(), never),
                 1.0 + 10 + double(folder.path().size()) + 3 * 4095);
        const std::atomic<bool> stop { true };
        QVERIFY(folderTotal(folder.path(), stop) < 3 * 4095);
        QCOMPARE(folderTotal(folder.path(u"gone"_s), never), 0.0);
    }

    void aFolderIsCountedWhateverIsSelectedMeanwhile()
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
        QTRY_COMPARE(text(Side::Right), u"4 KB"_s);
        QCOMPARE(text(Side::Left), u"--"_s); // of its own row
        QCOMPARE(ask({ folder }), u"Calculating..."_s);
    }

    void aFieldIsPaintedInItsColors()
    {
        const TestFolder folder;
        UserDefaults defaults(folder.path(u"settings.plist"_s));
        InfoBarTextField field(Qt::ElideRight);
        field.readFrameColors(defaults);
        QCOMPARE(field.frameColor().alpha(), 0);
        for (const bool dark : { false, true, false }) { // as the desktop turns
            field.setPalette(dark ? QPalette(Qt::black) : QPalette(Qt::white));
            QCOMPARE(field.textColor().lightness() > 127, dark);
        }
        defaults.setValue(Settings::InfoBarFontColor,
                          QVariantMap { { u"Blue"_s, 1.0 }, { u"Alpha"_s, 1 } });
        defaults.setValue(Settings::InfoBarFrameColor,
                          QVariantMap { { u"Red"_s, 1.0 }, { u"Alpha"_s, 1 } });
        field.readFrameColors(defaults);
        QCOMPARE(field.textColor(), QColor(Qt::blue));
        field.resize(40, 20);
        QImage image(field.size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::white);
        // Kept: the frame goes round the part alone that is painted anew.
        field.render(&image, QPoint(10, 5), QRect(10, 5, 20, 10), {});
        QCOMPARE(image.pixelColor(10, 5), QColor(Qt::red));
        QCOMPARE(image.pixelColor(0, 0), QColor(Qt::white));
        QVERIFY(field.contentsRect().x() > 1); // the text stands clear of the frame
        defaults.remove(Settings::InfoBarFrameColor);
        field.readFrameColors(defaults);
        QCOMPARE(field.frameColor().alpha(), 0);
    }
};

QTEST_MAIN(tst_InfoBars)
#include "tst_InfoBars.moc"
