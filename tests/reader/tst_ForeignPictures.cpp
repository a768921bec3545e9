#include "platform/ReaderProcess.h"
#include "tests/reader/Samples.h"

#include <QColor>

using namespace Samples;
using Outcome = ForeignFiles::Outcome;

// Pictures as the running program hands them over.
class tst_ForeignPictures : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { qputenv("PATH", TWINLEAF_READER_FOLDER ":" + qgetenv("PATH")); }
    void picturesComeAsTheyAreToBeSeen_data();
    void picturesComeAsTheyAreToBeSeen();
    void drawingsReferToNothing();

private:
    Outcome pictureOf(const QByteArray &bytes, QImage &image, QSize &size)
    {
        _folder.write(u"picture"_s, bytes);
        return _reader.picture(opened(_folder, u"picture"_s).number(), { 40, 40 }, image, size);
    }

    TestFolder _folder;
    ReaderProcess _reader;
};

void tst_ForeignPictures::picturesComeAsTheyAreToBeSeen_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QSize>("shown");
    QTest::addColumn<bool>("isTurned"); // by a quarter, so that red is above
    const QImage large = twoColors(160, 80);
    QTest::newRow("HEIF") << heif(large, heif_compression_HEVC) << QSize(160, 80) << QSize(40, 20)
                          << false;
    QTest::newRow("AVIF") << heif(large, heif_compression_AV1) << QSize(160, 80) << QSize(40, 20)
                          << false;
    QTest::newRow("drawing") << QByteArray(
        "<svg xmlns='http://www.w3.org/2000/svg' width='160' height='80'>"
        "<rect width='80' height='80' fill='red'/>"
        "<rect x='80' width='80' height='80' fill='blue'/></svg>")
                             << QSize(160, 80) << QSize(40, 20) << false;
    QTest::newRow("turned") << jpeg(
        large,
        [](Exiv2::Image &image) { image.exifData()["Exif.Image.Orientation"] = uint16_t(6); })
                            << QSize(80, 160) << QSize(20, 40) << true;
    // The toolkit scales those on threads of its own.
    QTest::newRow("large") << encoded(twoColors(3000, 1500), "png") << QSize(3000, 1500)
                           << QSize(40, 20) << false;
    QTest::newRow("small enough") << encoded(twoColors(8, 6), "png") << QSize(8, 6) << QSize(8, 6)
                                  << false;
    QTest::newRow("thin") << encoded(twoColors(1000, 2), "png") << QSize(1000, 2) << QSize(40, 1)
                          << false;
}

void tst_ForeignPictures::picturesComeAsTheyAreToBeSeen()
{
    QFETCH(QByteArray, bytes);
    QFETCH(bool, isTurned);
    QImage image;
    QSize size;
    QCOMPARE(pictureOf(bytes, image, size), Outcome::Read);
    QTEST(size, "size");
    QTEST(image.size(), "shown");
    const QColor first = image.pixelColor(1, 0);
    const QColor last =
        isTurned ? image.pixelColor(1, image.height() - 1) : image.pixelColor(image.width() - 2, 0);
    constexpr int Clearly = 150; // what is packed is not exact
    QVERIFY2(first.red() > first.blue() + Clearly, qPrintable(first.name()));
    QVERIFY2(last.blue() > last.red() + Clearly, qPrintable(last.name()));
}

void tst_ForeignPictures::drawingsReferToNothing()
{
    _folder.write(u"other.png"_s, encoded(twoColors(20, 20), "png"));
    const QByteArray path = _folder.bytes(u"other.png"_s);
    QImage image;
    QSize size;
    QCOMPARE(pictureOf("<svg xmlns='http://www.w3.org/2000/svg' "
                       "xmlns:xlink='http://www.w3.org/1999/xlink' width='20' height='20'>"
                       "<image width='20' height='20' xlink:href='"
                           + path + "'/></svg>",
                       image, size),
             Outcome::Read);
    QCOMPARE(image.pixelColor(2, 2).alpha(), 0);
}

QTEST_GUILESS_MAIN(tst_ForeignPictures)
#include "tst_ForeignPictures.moc"
