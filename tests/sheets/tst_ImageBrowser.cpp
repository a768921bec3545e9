#include "tests/support/StoppedDisk.h"
#include "tests/support/TestPictures.h"
#include "tests/support/World.h"

#include "sheets/images/ImageBrowserSheet.h"
#include "sheets/images/ImageRows.h"
#include "sheets/images/ImageTable.h"
#include "widgets/ElidedLabel.h"

#include <QAbstractButton>
#include <QButtonGroup>

using namespace TestPictures;

namespace {

// The image browser as a person finds it, while its sheet is open.
struct Shown {
    explicit Shown(ImageBrowserSheet &open)
        : sheet(open)
    {
    }
    QString header() const
    {
        return rows.headerData(ImageRows::IconColumn, Qt::Horizontal, Qt::DisplayRole).toString();
    }
    QString names() const
    {
        QStringList names;
        for (int row = 0; row < rows.rowCount(); ++row)
            names.append(rows.index(row, ImageRows::NameColumn).data().toString());
        return names.join(u' ');
    }
    // Of the thumbnails: + shown, ! broken, . not there.
    QString thumbnails() const
    {
        QString states;
        for (int row = 0; row < rows.rowCount(); ++row)
            states += u".+!"_s[int(rows.thumbnail(row).state)];
        return states;
    }
    QString texts() const
    {
        return QStringList { sheet.imageName->text(), sheet.imageDimensions->text(),
                             sheet.imageSize->text() }
            .join(u'|');
    }
    QColor color() const // in the middle of the large picture
    {
        const QImage image = sheet.imageView->viewport()->grab().toImage();
        return image.pixelColor(image.rect().center());
    }
    void press(Qt::Key key) const { QTest::keyClick(sheet.focusWidget(), key); }
    void click(const QString &name) const
    {
        const auto buttons = sheet.findChildren<QAbstractButton *>();
        for (QAbstractButton *each : buttons)
            if (each->accessibleName() == name)
                return each->click();
        QFAIL(qPrintable(name));
    }

    ImageBrowserSheet &sheet;
    const ImageRows &rows = *qobject_cast<ImageRows *>(sheet.tableView->model());
};

void browse(World &world, const std::function<void(const Shown &)> &act)
{
    bool seen = false;
    whenSheetOpens(world.window, [&](QWidget &opened) {
        auto *sheet = qobject_cast<ImageBrowserSheet *>(&opened);
        QVERIFY(sheet);
        seen = true;
        act(Shown(*sheet));
        Shown(*sheet).click(u"Done"_s);
        QVERIFY(!sheet->isVisible());
    });
    world.run(Command::ImageBrowser);
    QVERIFY(seen);
}

} // namespace

class tst_ImageBrowser : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { qputenv("XDG_CACHE_HOME", _cache.path().toUtf8()); }

    void thumbnailsAreAsHighAsAllOthers()
    {
        QCOMPARE(ImageRows::thumbnailSize({ 500, 500 }), QSizeF(60, 60));
        QCOMPARE(ImageRows::thumbnailSize({ 500, 250 }), QSizeF(120, 60));
        QCOMPARE(ImageRows::thumbnailSize({ 30, 90 }), QSizeF(20, 60));
        QCOMPARE(ImageRows::thumbnailSize({}), QSizeF(60, 60)); // of nothing: no division by it
    }

    void scalingsPutThePictureInItsRoom_data()
    {
        QTest::addColumn<QSize>("picture");
        QTest::addColumn<double>("ratio");
        QTest::addColumn<QList<QSizeF>>("sizes"); // in the order of the choices
        const auto row = [](const char *name, const QSize &picture, double ratio,
                            const QList<QSizeF> &sizes) {
            QTest::newRow(name) << picture << ratio << sizes;
        };
        row("larger", { 800, 200 }, 1, { { 400, 100 }, { 400, 100 }, { 400, 300 }, { 800, 200 } });
        row("smaller", { 40, 60 }, 1, { { 40, 60 }, { 200, 300 }, { 400, 300 }, { 40, 60 } });
        row("sharp screen", { 600, 60 }, 2,
            { { 300, 30 }, { 400, 40 }, { 400, 300 }, { 300, 30 } });
    }
    void scalingsPutThePictureInItsRoom()
    {
        QFETCH(const QSize, picture);
        QFETCH(const double, ratio);
        QList<QSizeF> sizes;
        for (int choice = 0; choice < 4; ++choice)
            sizes.append(scaledSize(picture, { 400, 300 }, ratio, ImageScaling(choice)));
        QTEST(sizes, "sizes");
    }

    void imagesOfOneFolderAreListed()
    {
        StartedWorld world(u"left/sub/, left/notes.txt=x, left/.hidden.png=x, right/none.txt=x"_s);
        const QByteArray png = encoded(plain({ 40, 20 }, Qt::red), "png");
        const QString odd = u"caf"_s + QChar(0xDCE9) + u".png"_s;
        for (const QString &name : { u"b & c.png"_s, u"sub/in.png"_s, u"coded"_s, odd })
            world.folder.write(u"left/"_s + name, png);
        world.folder.setAttribute(u"left/coded"_s, "user.twinleaf.type", "PNGf");
        world.folder.write(u"left/a.jpg"_s, "no picture");
        world.folder.makeFolder(u"left/folder.png"_s);
        browse(world, [&](const Shown &shown) {
            QTRY_COMPARE(shown.header(), u"4 images"_s);
            QCOMPARE(shown.names(), u"a.jpg b & c.png caf\ufffd.png coded"_s);
            QTRY_COMPARE(shown.thumbnails(), u"!+++"_s);
            QCOMPARE(shown.rows.thumbnail(1).size, QSize(120, 60));
            QVERIFY(shown.sheet.currentPath->toolTip().contains(u"/left"_s));
            QCOMPARE(shown.texts(), u"||"_s);
            QCOMPARE(shown.sheet.imageView->accessibleDescription(),
                     u"Select an image in the list."_s);
            shown.press(Qt::Key_Down);
            shown.press(Qt::Key_Down);
            QTRY_COMPARE(shown.texts(),
                         u"b & c.png|40 x 20|"_s + SizeText::getCalcFileSize(png.size()));
            QCOMPARE(shown.sheet.imageDate->text(),
                     world.twinleaf.getLocalizedShortDateAndTime(
                         world.twinleaf.getDateForFile(world.folder.path(u"left/b & c.png"_s))));
            QCOMPARE(shown.sheet.imageName->toolTip(), u"b & c.png"_s);
            QTRY_COMPARE(shown.color(), QColor(Qt::red));
            // Another folder starts anew.
            world.openPanel.folder = world.folder.path(u"right"_s);
            shown.click(u"Choose..."_s);
            QCOMPARE(world.openPanel.startFolder, world.folder.path(u"left"_s));
            QCOMPARE(shown.texts(), u"||"_s);
            QTRY_COMPARE(shown.header(), u"0 images"_s);
            QCOMPARE(shown.names(), QString());
        });
    }

    void keysLeadThroughThePictures()
    {
        StartedWorld world;
        const QColor colors[] = { Qt::red, Qt::green, Qt::blue };
        for (int number = 0; number < 3; ++number)
            world.folder.write(u"left/%1.png"_s.arg(number),
                               encoded(plain({ 1500, 900 + number }, colors[number]), "png"));
        world.folder.write(u"left/3.png"_s, "no picture");
        browse(world, [&](const Shown &shown) {
            QTRY_COMPARE(shown.rows.rowCount(), 4);
            const std::pair<Qt::Key, int> keys[] = {
                { Qt::Key_Right, 0 }, { Qt::Key_Space, 1 },     { Qt::Key_Down, 2 },
                { Qt::Key_Left, 1 },  { Qt::Key_Backspace, 0 }, { Qt::Key_Up, 0 },
                { Qt::Key_End, 3 },   { Qt::Key_Right, 3 },     { Qt::Key_Home, 0 },
            };
            for (QWidget *focus : { static_cast<QWidget *>(shown.sheet.tableView),
                                    static_cast<QWidget *>(shown.sheet.imageView) }) {
                focus->setFocus();
                for (const auto &[key, row] : keys) {
                    shown.press(key);
                    QCOMPARE(shown.sheet.tableView->selectedRow(), row);
                    if (row == 3) { // broken: that is said, and nothing of the one before it
                        QTRY_COMPARE(shown.sheet.imageView->accessibleDescription(),
                                     u"This picture cannot be shown."_s);
                        QCOMPARE(shown.texts(), u"3.png||10 Bytes"_s);
                        continue;
                    }
                    // The real size, whatever the view's.
                    QTRY_COMPARE(shown.texts().section(u'|', 1, 1), u"1500 x %1"_s.arg(900 + row));
                    QCOMPARE(shown.color(), colors[row]);
                }
                world.application.imageBrowser().setupPaths(world.folder.path(u"left"_s));
                QTRY_COMPARE(shown.rows.rowCount(), 4);
            }
        });
    }

    void theLatestFolderIsShown()
    {
        StartedWorld world(u"left/slow/"_s);
        world.folder.write(u"left/slow/old.png"_s, encoded(plain({ 4, 4 }, Qt::red), "png"));
        world.folder.write(u"right/new.png"_s, encoded(plain({ 4, 4 }, Qt::red), "png"));
        ImageBrowser &browser = world.application.imageBrowser();
        Disk disk;
        browse(world, [&](const Shown &shown) {
            QTRY_COMPARE(shown.header(), u"0 images"_s);
            disk.stopAt(world.folder.path(u"left/slow"_s));
            browser.setupPaths(world.folder.path(u"left/slow"_s));
            browser.setupPaths(world.folder.path(u"right"_s));
            QTRY_COMPARE(shown.names(), u"new.png"_s);
            disk.answer();
            browser.setupPaths(world.folder.path(u"right"_s)); // after what then comes
            QTRY_COMPARE(shown.names(), u"new.png"_s);
            browser.setupPaths(world.folder.path(u"gone"_s));
            QTRY_VERIFY(shown.sheet.imageView->accessibleDescription().startsWith(
                u"This folder cannot be read"_s));
        });
        for (const QByteArray &asked : std::as_const(disk.askedByWindow))
            QVERIFY2(!asked.contains("slow"), asked);
    }

    void oneThatHangsHoldsUpNoOther()
    {
        StartedWorld world;
        for (const char *name : { "a", "b", "c", "d" })
            world.folder.write(u"left/%1.png"_s.arg(QLatin1StringView(name)),
                               encoded(plain({ 4, 4 }, Qt::red), "png"));
        std::mutex stopped;
        std::unique_lock stop(stopped);
        const Watched watched([&](Call call, const char *name, unsigned) {
            if (call == Call::Open && QByteArrayView(name).endsWith("/left/a.png"))
                const std::lock_guard wait(stopped);
            return 0;
        });
        browse(world, [&](const Shown &shown) {
            QTRY_COMPARE(shown.thumbnails(), u".+++"_s);
            shown.press(Qt::Key_Home); // it is waited for beside the window
            QCOMPARE(shown.texts(), u"a.png||"_s + shown.rows.image(0).size());
            shown.press(Qt::Key_Down);
            QTRY_COMPARE(shown.texts().section(u'|', 0, 1), u"b.png|4 x 4"_s);
            stop.unlock();
            shown.press(Qt::Key_Up);
            QTRY_COMPARE(shown.texts().section(u'|', 0, 1), u"a.png|4 x 4"_s);
            QTRY_COMPARE(shown.thumbnails(), u"++++"_s);
        });
    }

private:
    TestFolder _cache;
};

QTEST_MAIN(tst_ImageBrowser)
#include "tst_ImageBrowser.moc"
