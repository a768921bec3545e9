#include "platform/desktop/InstalledApplications.h"
#include "tests/support/TestFolder.h"

#include <QBuffer>
#include <QImageReader>
#include <QTest>

using namespace Qt::StringLiterals;

namespace {

QByteArray picture(const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::red);
    QByteArray bytes;
    QBuffer buffer(&bytes);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

class tst_ApplicationIcons : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aPictureOfAnEntryIsReadWithinLimits_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<bool>("isShown");
        const QByteArray good = picture({ 256, 128 });
        QTest::newRow("picture") << good << true;
        QTest::newRow("cut short") << good.first(40) << false;
        QTest::newRow("no picture") << QByteArray("#!/bin/sh\n") << false;
        const QByteArray drawing =
            R"(<svg xmlns="http://www.w3.org/2000/svg" width="64" height="64">)"
            R"(<rect width="64" height="64" fill="#ff0000"/>%1</svg>)";
        if (QImageReader::supportedImageFormats().contains("svg"))
            QTest::newRow("drawing") << QByteArray(drawing).replace("%1", "") << true;
        QTest::newRow("too large a drawing")
            << QByteArray(drawing).replace("%1", QByteArray("<g/>").repeated(100'000)) << false;
        QTest::newRow("too wide") << picture({ 10000, 2 }) << false;
        QTest::newRow("too large a file") << good + QByteArray(5 << 20, 'x') << false;
    }
    void aPictureOfAnEntryIsReadWithinLimits()
    {
        QFETCH(QByteArray, file);
        QFETCH(bool, isShown);
        TestFolder folder;
        folder.write(u"icon.xpm"_s, file); // the name does not say what it is
        folder.write(u"one.desktop"_s,
                     "[Desktop Entry]\nType=Application\nName=One\nExec=/bin/true\nIcon="
                         + folder.path(u"icon.xpm"_s).toUtf8() + '\n');
        const QIcon icon = InstalledApplications::iconOf(folder.path(u"one.desktop"_s));
        const QImage shown = icon.pixmap(16).toImage();
        QVERIFY(!shown.isNull()); // else the general one
        QCOMPARE(shown.pixelColor(shown.rect().center()) == QColor(Qt::red), isShown);
        if (isShown)
            QVERIFY(icon.availableSizes().first().width() <= 128);
    }
};

QTEST_MAIN(tst_ApplicationIcons)
#include "tst_ApplicationIcons.moc"
